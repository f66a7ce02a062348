// How a card is built, laid out and painted.
#include <QApplication>
#include <QEvent>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QVariant>

#include "ui/cards/profile_tab.h"
#include "ui/text/texts.h"
#include "ui/widgets/elide.h"
#include "ui/widgets/style.h"

namespace zorvanelink::ui {

using common::MsgCode;

namespace {

constexpr int kRing = 3;      // room of the soft ring around the border
constexpr int kPadding = 16;  // from the border to what stands inside
constexpr int kInset = kRing + kPadding + 1;
constexpr int kNameTop = kRing + 12;
constexpr int kNameHeight = 26;
constexpr int kServerTop = kRing + 41;
constexpr int kUserTop = kRing + 61;
constexpr int kRowHeight = 20;
constexpr int kUserWidth = 190;  // at most
constexpr int kButtonWidth = 80;
constexpr int kButtonHeight = 32;
constexpr int kPageButton = 28;
constexpr int kLampWidth = 52;
constexpr int kLampMark = 12;
constexpr int kGap = 8;
constexpr qreal kRadius = 8;

// The name is set in bold, which GetElideText does not measure.
QString elideHeading(QString const& text, int width, bool& elided) {
    QFont font = QApplication::font();
    font.setPixelSize(14);
    font.setWeight(QFont::DemiBold);
    QString const shown = QFontMetrics(font).elidedText(text, Qt::ElideRight, width);
    elided = shown != text;
    return shown;
}

int textWidth(QLabel const* label) {
    return label->sizeHint().width();
}

}  // namespace

ProfileTab::ProfileTab(std::shared_ptr<Profile> shownProfile, QWidget* parent)
    : QWidget(parent), profile(std::move(shownProfile)) {
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    build();
    Render({});
}

QLabel* ProfileTab::addLabel(char const* name, char const* role) {
    auto* label = new QLabel(this);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setProperty("role", QLatin1String(role));
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    return label;
}

void ProfileTab::build() {
    name_ = addLabel("card_name_", "");
    serverName_ = addLabel("server_name_", "secondary");
    server_ = addLabel("server_", "");
    port_ = addLabel("port_", "secondary");
    userName_ = addLabel("user_name_", "secondary");
    user_ = addLabel("user_", "");
    loginMode_ = addLabel("login_mode_", "");
    stateLabel_ = addLabel("state_label_", "");
    stateLamp_ = addLabel("state_lamp_", "");
    stateLamp_->setFixedSize(kLampWidth, kButtonHeight);
    stateLamp_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    serverName_->setText(GetTrMsg(MsgCode::UI_INFO_SERVER));
    userName_->setText(GetTrMsg(MsgCode::UI_INFO_USER));

    buildMenu();
    conn_button_ = new QPushButton(this);
    conn_button_->setObjectName(QStringLiteral("conn_button_"));
    conn_button_->setFixedSize(kButtonWidth, kButtonHeight);
    conn_button_->setAutoDefault(false);
    connect(conn_button_, &QPushButton::clicked, this, &ProfileTab::onConnButtonTriggered);
}

void ProfileTab::buildMenu() {
    menu_panel_ = new QWidget(this);
    menu_panel_->setObjectName(QStringLiteral("menu_panel_"));
    auto* row = new QHBoxLayout(menu_panel_);
    row->setContentsMargins(6, 0, 0, 0);
    row->setSpacing(16);
    mod_config_button_ = addMenuButton("mod_config_button_", QStringLiteral("modify_connectinfo"),
                                       MsgCode::UI_INFO_MODIFY_CONNECTION);
    del_config_button_ =
        addMenuButton("del_config_button_", QStringLiteral("delete_gray"), MsgCode::UI_TR_DELETE);
    forgot_pwd_button_ = addMenuButton("forgot_pwd_button_", QStringLiteral("forgot_pwd"),
                                       MsgCode::UI_TR_INFO_FORGOT_PWD);
    menu_panel_->adjustSize();
}

QToolButton* ProfileTab::addMenuButton(char const* name, QString const& icon, MsgCode text) {
    auto* button = new QToolButton(menu_panel_);
    button->setObjectName(QLatin1String(name));
    button->setIcon(QIcon(QStringLiteral(":/assets/images/%1.png").arg(icon)));
    button->setIconSize({16, 16});
    button->setFixedSize(20, 16);
    button->setToolTip(GetTrMsg(text));
    button->setAccessibleName(GetTrMsg(text));
    button->setFocusPolicy(Qt::TabFocus);
    button->installEventFilter(this);
    menu_panel_->layout()->addWidget(button);
    connect(button, &QToolButton::clicked, this, &ProfileTab::MenuPanelBtnClicked);
    return button;
}

QToolButton* ProfileTab::addPageButton(SessionPage const& page) {
    bool const here = page.address.isEmpty();
    auto* button = new QToolButton(this);
    button->setObjectName(QLatin1String(here ? "change_pwd_button_" : "change_pwd_url_button_"));
    button->setIcon(QIcon(QStringLiteral(":/assets/images/%1.png")
                              .arg(QLatin1String(here ? "change_pwd" : "change_pwd_url"))));
    button->setIconSize({16, 16});
    button->setFixedSize(kPageButton, kPageButton);
    button->setToolTip(page.title);
    button->setAccessibleName(page.title);
    button->setFocusPolicy(Qt::TabFocus);
    button->show();
    connect(button, &QToolButton::clicked, this, [this, page] { Q_EMIT PageWanted(page); });
    return button;
}

void ProfileTab::renderProfile() {
    bool const gm = shown_.loginMode == kLoginModeGm;
    setAccessibleName(QString::fromStdString(shown_.name));
    port_->setText(
        QStringLiteral("%1 %2").arg(GetTrMsg(MsgCode::UI_INFO_PORT), QString::number(shown_.port)));
    loginMode_->setText(gm ? QStringLiteral("GM SSL") : QString());
    loginMode_->setToolTip(gm ? GetTrMsg(MsgCode::UI_INFO_LOGIN_MODE) + loginMode_->text()
                              : QString());
    loginMode_->setAttribute(Qt::WA_TransparentForMouseEvents, !gm);
    SetMenu(menu_);
}

void ProfileTab::SetMenu(CardMenu menu) {
    menu_ = menu;
    mod_config_button_->setVisible(menu.modify);
    del_config_button_->setVisible(menu.remove);
    forgot_pwd_button_->setVisible(menu.forgotPassword && shown_.forgotPassword);
    menu_panel_->adjustSize();
    updateMenu();
}

void ProfileTab::placeTexts() {
    int const right = width() - kInset;
    int const lampRight = stateLabel_->isHidden() ? right : right - textWidth(stateLabel_);
    stateLabel_->setGeometry(lampRight, kNameTop, right - lampRight, kNameHeight);
    stateLamp_->move(lampRight - 6 - kLampWidth,
                     kNameTop + (kNameHeight - stateLamp_->height()) / 2);
    int const nameRight = stateLabel_->isHidden() ? right : lampRight - 6 - kLampMark - kGap;
    auto const place = [](QLabel* label, QString const& text, bool heading, QRect const& area) {
        bool elided = false;
        label->setText(heading ? elideHeading(text, area.width(), elided)
                               : GetElideText(text, 12, area.width(), elided));
        label->setToolTip(elided ? PlainToolTip(text) : QString());
        label->setAttribute(Qt::WA_TransparentForMouseEvents, !elided);
        label->setGeometry(area);
    };
    place(name_, QString::fromStdString(shown_.name), true,
          QRect(kInset, kNameTop, nameRight - kInset, kNameHeight));

    auto const row = [&](QLabel* head, QLabel* value, QLabel* tail, QString const& text, int top,
                         int limit) {
        int const left = kInset + textWidth(head) + 4;
        int const tailWidth = tail->text().isEmpty() ? 0 : textWidth(tail);
        head->setGeometry(kInset, top, left - kInset, kRowHeight);
        tail->setGeometry(right - tailWidth, top, tailWidth, kRowHeight);
        int const room = right - left - (tailWidth > 0 ? tailWidth + kGap : 0);
        place(value, text, false, QRect(left, top, qMin(room, limit), kRowHeight));
    };
    row(serverName_, server_, port_, QString::fromStdString(shown_.server), kServerTop, width());
    row(userName_, user_, loginMode_, QString::fromStdString(shown_.userName), kUserTop,
        kUserWidth);
    conn_button_->move(right - conn_button_->width(),
                       height() - kRing - kPadding - conn_button_->height());
    int left = kInset - 6;
    for (QToolButton* const button : pageButtons_) {
        button->move(left, conn_button_->y() + (kButtonHeight - kPageButton) / 2);
        left += kPageButton + kGap;
    }
}

void ProfileTab::updateMenu() {
    bool const inside =
        hovered_ || selected_ || menu_panel_->isAncestorOf(QApplication::focusWidget());
    bool const shown = inside && menu_panel_->isEnabled();
    hoverMenu(shown ? QPoint(kInset - 6, height() - kRing - kPadding - kButtonHeight / 2 -
                                             menu_panel_->height() / 2)
                    : QPoint(kInset - 6, height()));
}

void ProfileTab::hoverMenu(QPoint position) {
    menu_panel_->move(position);
}

void ProfileTab::resizeEvent(QResizeEvent*) {
    placeTexts();
    updateMenu();
}

bool ProfileTab::event(QEvent* event) {
    switch (event->type()) {
        case QEvent::Enter:
        case QEvent::Leave:
            hovered_ = event->type() == QEvent::Enter;
            updateMenu();
            break;
        case QEvent::FocusIn:
        case QEvent::FocusOut:
            update();
            updateMenu();
            break;
        case QEvent::Polish:
        case QEvent::StyleChange:
            placeTexts();
            break;
        default:
            break;
    }
    return QWidget::event(event);
}

bool ProfileTab::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) {
        updateMenu();
    }
    return QWidget::eventFilter(watched, event);
}

void ProfileTab::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    DrawBorder(&painter);
}

void ProfileTab::DrawBorder(QPainter* painter) {
    bool const strong = hasFocus() || selected_;
    QColor const border(strong ? QStringLiteral("#1665D8") : QStringLiteral("#CCCCCC"));
    QRectF const card =
        QRectF(rect()).adjusted(kRing + 0.5, kRing + 0.5, -kRing - 0.5, -kRing - 0.5);
    if (strong) {
        QColor ring = border;
        ring.setAlphaF(0.12);
        painter->setPen(Qt::NoPen);
        painter->setBrush(ring);
        painter->drawRoundedRect(rect(), kRadius + kRing, kRadius + kRing);
    }
    painter->setPen(QPen(border, 1));
    painter->setBrush(palette().base());
    painter->drawRoundedRect(card, kRadius, kRadius);
}

}  // namespace zorvanelink::ui
