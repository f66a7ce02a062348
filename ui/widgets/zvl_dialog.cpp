#include "ui/widgets/zvl_dialog.h"

#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QPainter>
#include <QScreen>
#include <QStyleOption>

#include "components/logger/logger.h"
#include "ui/widgets/prompts.h"
#include "ui/widgets/round_corners.h"
#include "ui/widgets/style.h"

namespace zorvanelink::ui {
namespace {

// The list of a combo box is a window of its own that must not dim the dialog it belongs to.
bool isComboBoxPopup(QWidget const* popup) {
    return popup != nullptr && qobject_cast<QComboBox*>(popup->parentWidget()) != nullptr;
}

}  // namespace

ZVLDialog::ZVLDialog(QWidget* parent, Prompts* prompts)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint),
      prompts_(prompts),
      frame_(new QVBoxLayout(this)),
      panel_(new QFrame(this)),
      titleBar_(new TitleBar(TitleBar::Kind::kDialog, panel_)),
      body_(new QWidget(panel_)) {
    setModal(true);
    PrepareRoundCorners(*this);
    setStyleSheet(LoadStyle(QStringLiteral("controls")) + LoadStyle(QStringLiteral("dialog")));
    frame_->setContentsMargins(0, 0, 0, 0);
    frame_->addWidget(panel_);
    panel_->setObjectName(QStringLiteral("dialog_panel_"));
    auto* column = new QVBoxLayout(panel_);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(titleBar_);
    column->addWidget(body_, 1);
    connect(titleBar_->CloseButton(), &QToolButton::clicked, this, &QDialog::reject);
    installEventFilter(this);
}

void ZVLDialog::ToBack() {
    if (cover_ == nullptr) {
        cover_ = new DimCover(this, QStringLiteral("background-color:rgba(0,0,0,50%);"));
        cover_->setObjectName(QStringLiteral("dialog_cover_"));
    }
    cover_->ToBack();
}

void ZVLDialog::ToFront() {
    if (cover_ != nullptr) {
        cover_->ToFront();
    }
}

int ZVLDialog::ShowCriticalBox(QWidget* parent, QString const& title, QString const& text,
                               QString const& button) {
    return prompts_->Critical(parent, title, text, button);
}

bool ZVLDialog::eventFilter(QObject* watched, QEvent* event) {
    if (watched == this) {
        if (event->type() == QEvent::WindowBlocked &&
            !isComboBoxPopup(QApplication::activePopupWidget())) {
            components::logger::Log().info("deactive ZVLDialog");
            ToBack();
        } else if (event->type() == QEvent::WindowUnblocked) {
            components::logger::Log().info("active ZVLDialog");
            ToFront();
        }
    }
    return QDialog::eventFilter(watched, event);
}

void ZVLDialog::paintEvent(QPaintEvent*) {
    QStyleOption option;
    option.initFrom(this);
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
}

void ZVLDialog::changeEvent(QEvent* event) {
    if (event->type() == QEvent::WindowTitleChange) {
        titleBar_->SetTitle(windowTitle());
    }
    QDialog::changeEvent(event);
}

void ZVLDialog::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    CutRoundCorners(*this);
}

// Placed before the window exists: a move that meets the window manager's own leaves Qt with a
// wrong idea of where the dialog stands.
void ZVLDialog::setVisible(bool visible) {
    if (visible && !placed_) {
        placed_ = true;
        ensurePolished();
        for (QWidget* const child : findChildren<QWidget*>()) {
            child->ensurePolished();  // sizes follow from styles
        }
        Place();
    }
    QDialog::setVisible(visible);
}

void ZVLDialog::Place() {
    QWidget const* owner = parentWidget() != nullptr ? parentWidget()->window() : nullptr;
    bool const overOwner = owner != nullptr && owner->isVisible() && !owner->isMinimized();
    QRect const area = overOwner ? owner->frameGeometry() : screen()->availableGeometry();
    // What has just been fitted reaches the outer layouts by events, which come too late.
    for (QLayout* const inner : {body_->layout(), panel_->layout()}) {
        if (inner != nullptr) {
            inner->activate();
        }
    }
    adjustSize();
    // It stops at two thirds of the screen, which cuts wrapped texts on a small one.
    if (layout()->hasHeightForWidth()) {
        resize(width(), qMax(height(), layout()->totalHeightForWidth(width())));
    }
    QPoint target = area.center() - rect().center();
    QRect const visible = screen()->availableGeometry();
    target.setX(
        qBound(visible.left(), target.x(), qMax(visible.left(), visible.right() - width())));
    target.setY(
        qBound(visible.top(), target.y(), qMax(visible.top(), visible.bottom() - height())));
    move(target);
}

}  // namespace zorvanelink::ui
