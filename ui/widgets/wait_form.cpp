#include "ui/widgets/wait_form.h"

#include <QEvent>
#include <QFrame>
#include <QVBoxLayout>

#include "ui/text/texts.h"
#include "ui/widgets/push_button_ext.h"
#include "ui/widgets/spinner.h"

namespace zorvanelink::ui {
namespace {

constexpr int kPanelWidth = 260;
constexpr int kHintWidth = 340;
constexpr int kBorder = 1;  // of the window's frame, which stays in sight

}  // namespace

WaitForm::WaitForm(QWidget* parent, int topMargin)
    : QWidget(parent),
      topMargin_(topMargin),
      text_(new QLabel(this)),
      hint_(new QLabel(this)),
      log_(new QPushButtonExt(Translate(QT_TRANSLATE_NOOP("ui", "Open Log Folder")), this)) {
    setObjectName(QStringLiteral("wait_form_"));
    setAttribute(Qt::WA_StyledBackground);
    setFocusPolicy(Qt::StrongFocus);
    text_->setObjectName(QStringLiteral("wait_text_"));
    text_->setTextFormat(Qt::PlainText);
    text_->setAlignment(Qt::AlignCenter);
    auto* panel = new QFrame(this);
    panel->setObjectName(QStringLiteral("wait_panel_"));
    panel->setMinimumWidth(kPanelWidth);
    auto* column = new QVBoxLayout(panel);
    column->setContentsMargins(24, 24, 24, 20);
    column->setSpacing(16);
    column->addWidget(new Spinner(32, 3, panel), 0, Qt::AlignHCenter);
    column->addWidget(text_);
    hint_->setObjectName(QStringLiteral("wait_hint_"));
    hint_->setTextFormat(Qt::PlainText);
    hint_->setAlignment(Qt::AlignCenter);
    hint_->setWordWrap(true);
    hint_->setFixedWidth(kHintWidth);
    column->addWidget(hint_);
    log_->setObjectName(QStringLiteral("wait_log_button_"));
    log_->setProperty("outline", true);
    column->addWidget(log_, 0, Qt::AlignHCenter);
    connect(log_, &QPushButton::clicked, this, &WaitForm::LogWanted);
    SetHint({}, false);
    auto* outer = new QVBoxLayout(this);
    outer->addWidget(panel, 0, Qt::AlignCenter);
    parent->installEventFilter(this);
    hide();
}

void WaitForm::SetDesc(QString const& text) {
    text_->setText(text);
    setAccessibleName(text);
}

void WaitForm::SetHint(QString const& text, bool withLog) {
    hint_->setText(text);
    hint_->setVisible(!text.isEmpty());
    setAccessibleDescription(text);
    if (withLog == log_->isHidden()) {
        log_->setVisible(withLog);
        if (hasFocus()) {
            log_->setFocus();
        }
    }
}

// Of the button: what is covered stays out of reach.
bool WaitForm::focusNextPrevChild(bool /*next*/) {
    return true;
}

QString WaitForm::Desc() const {
    return text_->text();
}

void WaitForm::fillParent() {
    setGeometry(parentWidget()->rect().adjusted(kBorder, topMargin_, -kBorder, -kBorder));
}

bool WaitForm::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize) {
        fillParent();
    }
    return QWidget::eventFilter(watched, event);
}

void WaitForm::showEvent(QShowEvent* event) {
    fillParent();
    raise();
    setFocus();
    QWidget::showEvent(event);
}

// Else the focus would go on to whatever comes next, which nobody has chosen.
void WaitForm::hideEvent(QHideEvent* event) {
    clearFocus();
    QWidget::hideEvent(event);
}

bool WaitForm::event(QEvent* event) {
    switch (event->type()) {
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::Wheel:
            event->accept();
            return true;
        default:
            return QWidget::event(event);
    }
}

}  // namespace zorvanelink::ui
