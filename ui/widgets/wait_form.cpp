#include "ui/widgets/wait_form.h"

#include <QEvent>
#include <QFrame>
#include <QVBoxLayout>

#include "ui/widgets/spinner.h"

namespace zorvanelink::ui {
namespace {

constexpr int kPanelWidth = 260;

}  // namespace

WaitForm::WaitForm(QWidget* parent, int topMargin)
    : QWidget(parent), topMargin_(topMargin), text_(new QLabel(this)) {
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
    auto* outer = new QVBoxLayout(this);
    outer->addWidget(panel, 0, Qt::AlignCenter);
    parent->installEventFilter(this);
    hide();
}

void WaitForm::SetDesc(QString const& text) {
    text_->setText(text);
    setAccessibleName(text);
}

QString WaitForm::Desc() const {
    return text_->text();
}

void WaitForm::fillParent() {
    setGeometry(parentWidget()->rect().adjusted(0, topMargin_, 0, 0));
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
