#include "ui/widgets/title_bar.h"

#include <QHBoxLayout>

#include "ui/text/texts.h"
#include "ui/widgets/style.h"

namespace zorvanelink::ui {
namespace {

QString image(char const* name) {
    return QStringLiteral(":/assets/images/%1.png").arg(QLatin1String(name));
}

}  // namespace

TitleBar::TitleBar(Kind kind, QWidget* parent) : QFrame(parent), kind_(kind) {
    setObjectName(QStringLiteral("title_bar_"));
    auto* row = new QHBoxLayout(this);
    bool const window = kind == Kind::kWindow;
    row->setContentsMargins(window ? 16 : 20, 1, 8, 0);
    row->setSpacing(0);
    if (window) {
        auto* icon = new QLabel(this);
        icon->setObjectName(QStringLiteral("app_icon_"));
        icon->setPixmap(LoadImage(image("app_small")));
        row->addWidget(icon);
        row->addSpacing(10);
    }
    title_ = new QLabel(this);
    title_->setObjectName(QStringLiteral("title_"));
    title_->setTextFormat(Qt::PlainText);
    subtitle_ = new ElidedLabel({}, this);
    subtitle_->setObjectName(QStringLiteral("subtitle_"));
    subtitle_->hide();
    auto* titles = new QVBoxLayout;
    titles->setSpacing(0);
    titles->addStretch();
    titles->addWidget(title_);
    titles->addWidget(subtitle_);
    titles->addStretch();
    row->addLayout(titles, 1);
    if (window) {
        more_ =
            addButton("btn_main_more_", image("more"), Translate(QT_TRANSLATE_NOOP("ui", "More")));
        min_ = addButton("btn_main_min_", image("minimise"),
                         Translate(QT_TRANSLATE_NOOP("ui", "Minimize")));
    }
    close_ = addButton(window ? "btn_main_close_" : "btn_close_", image("close"),
                       GetTrMsg(common::MsgCode::UI_TR_CLOSE));
}

QToolButton* TitleBar::addButton(char const* name, QString const& icon,
                                 QString const& accessibleName) {
    auto* button = new QToolButton(this);
    button->setObjectName(QLatin1String(name));
    button->setIcon(LoadImage(icon));
    button->setIconSize({16, 16});
    button->setAccessibleName(accessibleName);
    button->setToolTip(accessibleName);
    button->setFocusPolicy(Qt::TabFocus);
    layout()->addWidget(button);
    return button;
}

void TitleBar::SetTitle(QString const& title) {
    title_->setText(title);
}

void TitleBar::SetSubtitle(QString const& text) {
    subtitle_->SetFullText(text);
    subtitle_->setHidden(text.isEmpty());
    setProperty("tall", !text.isEmpty());
}

QString TitleBar::Title() const {
    return title_->text();
}

void TitleBar::mouseDoubleClickEvent(QMouseEvent* event) {
    if (kind_ == Kind::kWindow && event->button() == Qt::LeftButton) {
        mover_.Release();
        Q_EMIT MaximiseWanted();
    }
}

void TitleBar::mousePressEvent(QMouseEvent* event) {
    mover_.Press(*window(), *event);
}

void TitleBar::mouseMoveEvent(QMouseEvent* event) {
    mover_.Move(*window(), *event);
}

void TitleBar::mouseReleaseEvent(QMouseEvent*) {
    mover_.Release();
}

}  // namespace zorvanelink::ui
