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

// Pixels, tops from the border.
constexpr int kPadding = 16;  // from the border to what stands inside
constexpr int kInset = kCardRing + kPadding;
constexpr int kNameTop = kCardRing + 12;
constexpr int kNameHeight = 26;
constexpr int kServerTop = kCardRing + 38;
constexpr int kRowHeight = 20;
constexpr int kUserWidth = 190;   // at most
constexpr int kButtonWidth = 80;  // at least
constexpr int kButtonRoom = 28;   // beside the text
constexpr int kButtonHeight = 32;
constexpr int kIcon = 16;
constexpr int kIconButton = 28;  // to hit
constexpr int kIconInset = (kIconButton - kIcon) / 2;
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

// A full-width colon brings its own room.
int valueGap(QLabel const* head) {
    return head->text().endsWith(QChar(0xFF1A)) ? 0 : 4;
}

void placeText(QLabel* label, QString const& text, bool heading, QRect const& area) {
    bool elided = false;
    label->setText(heading ? elideHeading(text, area.width(), elided)
                           : GetElideText(text, 12, area.width(), elided));
    label->setToolTip(elided ? PlainToolTip(text) : QString());
    label->setAttribute(Qt::WA_TransparentForMouseEvents, !elided);
    label->setGeometry(area);
}

}  // namespace

ProfileTab::ProfileTab(std::shared_ptr<Profile> shownProfile, QWidget* parent)
    : QWidget(parent), profile(std::move(shownProfile)) {
    setAttribute(Qt::WA_Hover);
    setFixedSize(kCardWidth, kCardHeight);
    build();
    SetSelected(false);
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
    portName_ = addLabel("port_name_", "secondary");
    port_ = addLabel("port_", "");
    userName_ = addLabel("user_name_", "secondary");
    user_ = addLabel("user_", "");
    loginMode_ = addLabel("login_mode_", "");
    stateLabel_ = addLabel("state_label_", "");
    stateLamp_ = addLabel("state_lamp_", "");
    stateLamp_->setFixedSize(kLampWidth, kButtonHeight);
    stateLamp_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    serverName_->setText(GetTrMsg(MsgCode::UI_INFO_SERVER));
    portName_->setText(GetTrMsg(MsgCode::UI_INFO_PORT));
    userName_->setText(GetTrMsg(MsgCode::UI_INFO_USER));

    buildMenu();
    conn_button_ = new QPushButtonExt(QString(), this);
    conn_button_->setObjectName(QStringLiteral("conn_button_"));
    connect(conn_button_, &QPushButton::clicked, this, &ProfileTab::onConnButtonTriggered);
}

void ProfileTab::buildMenu() {
    menu_panel_ = new QWidget(this);
    menu_panel_->setObjectName(QStringLiteral("menu_panel_"));
    auto* row = new QHBoxLayout(menu_panel_);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(kGap / 2);
    mod_config_button_ = addMenuButton("mod_config_button_", "modify_connectinfo",
                                       MsgCode::UI_INFO_MODIFY_CONNECTION);
    del_config_button_ = addMenuButton("del_config_button_", "delete_gray", MsgCode::UI_TR_DELETE);
    forgot_pwd_button_ =
        addMenuButton("forgot_pwd_button_", "forgot_pwd", MsgCode::UI_TR_INFO_FORGOT_PWD);
}

QPushButtonExt* ProfileTab::addIconButton(QWidget* parent, char const* name, char const* icon,
                                          QString const& text) {
    auto* button = new QPushButtonExt(QString(), parent);
    button->setObjectName(QLatin1String(name));
    button->setProperty("tool", true);
    button->setIcon(LoadImage(QStringLiteral(":/assets/images/%1.png").arg(QLatin1String(icon))));
    button->setIconSize({kIcon, kIcon});
    button->setFixedSize(kIconButton, kIconButton);
    button->setToolTip(text);
    return button;
}

QPushButtonExt* ProfileTab::addMenuButton(char const* name, char const* icon, MsgCode text) {
    QPushButtonExt* const button = addIconButton(menu_panel_, name, icon, GetTrMsg(text));
    menu_panel_->layout()->addWidget(button);
    connect(button, &QPushButton::clicked, this, &ProfileTab::MenuPanelBtnClicked);
    return button;
}

QPushButtonExt* ProfileTab::addPageButton(SessionPage const& page) {
    bool const here = page.address.isEmpty();
    QPushButtonExt* const button =
        addIconButton(this, here ? "change_pwd_button_" : "change_pwd_url_button_",
                      here ? "change_pwd" : "change_pwd_url", page.title);
    button->show();
    connect(button, &QPushButton::clicked, this, [this, page] { Q_EMIT PageWanted(page); });
    return button;
}

void ProfileTab::renderProfile() {
    bool const gm = shown_.loginMode == kLoginModeGm;
    setAccessibleName(QString::fromStdString(shown_.name));
    port_->setText(QString::number(shown_.port));
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
    updateMenu();
}

void ProfileTab::SetCompact(bool compact) {
    if (compact_ == compact) {
        return;
    }
    compact_ = compact;
    setFixedSize(kCardWidth, compact ? kCompactCardHeight : kCardHeight);
    placeTexts();
    updateMenu();
}

void ProfileTab::placeTexts() {
    placeButtons();
    placeRows();
    int const right = width() - kInset;
    int const lampRight = stateLabel_->isHidden() ? right : right - textWidth(stateLabel_);
    stateLabel_->setGeometry(lampRight, kNameTop, right - lampRight, kNameHeight);
    stateLamp_->move(lampRight - 6 - kLampWidth,
                     kNameTop + (kNameHeight - stateLamp_->height()) / 2);
    int nameRight = right;
    if (!stateLabel_->isHidden()) {
        nameRight = lampRight - 6 - kLampMark - kGap;
    } else if (compact_ && !menu_panel_->isHidden()) {
        nameRight = menu_panel_->x();
    }
    placeText(name_, QString::fromStdString(shown_.name), true,
              QRect(kInset, kNameTop, nameRight - kInset, kNameHeight));
}

void ProfileTab::placeRows() {
    // Where the button stands beside the rows, they end before it.
    QWidget const* const first =
        pageButtons_.empty() ? static_cast<QWidget*>(conn_button_) : pageButtons_.front();
    int const right = compact_ ? first->x() - kGap : width() - kInset;
    int const userTop = kServerTop + kRowHeight;
    portName_->setVisible(!compact_);
    port_->setVisible(!compact_);
    loginMode_->setVisible(!compact_ && !loginMode_->text().isEmpty());

    int end = right;
    if (!compact_) {
        int const portLeft = right - textWidth(port_);
        int const headLeft = portLeft - valueGap(portName_) - textWidth(portName_);
        port_->setGeometry(portLeft, kServerTop, right - portLeft, kRowHeight);
        portName_->setGeometry(headLeft, kServerTop, textWidth(portName_), kRowHeight);
        end = headLeft - kGap;
    }
    auto const row = [](QLabel* head, QLabel* value, std::string const& text, int top, int until,
                        int limit) {
        int const left = kInset + textWidth(head) + valueGap(head);
        head->setGeometry(kInset, top, left - kInset, kRowHeight);
        placeText(value, QString::fromStdString(text), false,
                  QRect(left, top, qMin(until - left, limit), kRowHeight));
    };
    row(serverName_, server_, shown_.server, kServerTop, end, width());
    end = right;
    if (!loginMode_->isHidden()) {
        int const tag = textWidth(loginMode_);
        loginMode_->setGeometry(right - tag, userTop, tag, kRowHeight);
        end = right - tag - kGap;
    }
    row(userName_, user_, shown_.userName, userTop, end, kUserWidth);
}

void ProfileTab::placeButtons() {
    conn_button_->ensurePolished();
    int const text = conn_button_->fontMetrics().horizontalAdvance(conn_button_->text());
    int const width_needed = qMax(kButtonWidth, text + kButtonRoom);
    int const below = compact_ ? 12 : 14;
    conn_button_->setGeometry(width() - kInset - width_needed,
                              height() - kCardRing - below - kButtonHeight, width_needed,
                              kButtonHeight);
    int const step = kIconButton + kGap / 2;
    int const pages = static_cast<int>(pageButtons_.size());
    int left = compact_ ? conn_button_->x() - pages * step : kInset - kIconInset;
    for (QPushButtonExt* const button : pageButtons_) {
        button->move(left, conn_button_->y() + (kButtonHeight - kIconButton) / 2);
        left += step;
    }
}

// A running connection has no menu but a state, so in a low card the two share their place.
void ProfileTab::updateMenu() {
    menu_panel_->adjustSize();
    QPoint const place = compact_ ? QPoint(width() - kInset + kIconInset - menu_panel_->width(),
                                           kNameTop + (kNameHeight - kIconButton) / 2)
                                  : QPoint(kInset - kIconInset,
                                           conn_button_->y() + (kButtonHeight - kIconButton) / 2);
    bool const shown = (hovered_ || selected_) && view_.menuEnabled;
    hoverMenu(shown ? place : QPoint(place.x(), height()));
}

void ProfileTab::hoverMenu(QPoint position) {
    menu_panel_->move(position);
    bool const inside = rect().contains(position);
    bool const moved = inside == menu_panel_->isHidden();
    menu_panel_->setVisible(inside);
    if (moved && compact_) {
        placeTexts();
    }
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
        case QEvent::Polish:
        case QEvent::StyleChange:
            placeTexts();
            updateMenu();
            break;
        default:
            break;
    }
    return QWidget::event(event);
}

void ProfileTab::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    DrawBorder(&painter);
}

void ProfileTab::DrawBorder(QPainter* painter) {
    QRectF const card = QRectF(rect()).adjusted(kCardRing, kCardRing, -kCardRing, -kCardRing);
    auto const fill = [&](QBrush const& brush, qreal around) {
        painter->setBrush(brush);
        painter->drawRoundedRect(card.adjusted(-around, -around, around, around), kRadius + around,
                                 kRadius + around);
    };
    painter->setPen(Qt::NoPen);
    if (focused_) {
        QColor soft = accent_;
        soft.setAlphaF(0.12);
        fill(soft, kCardRing);
        fill(ring_, 3);
        fill(palette().base(), 1);
    }
    painter->setPen(QPen(focused_ || selected_ ? accent_ : border_, 1));
    fill(palette().base(), -0.5);
}

}  // namespace zorvanelink::ui
