#include "ui/widgets/zvl_dialog.h"

#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOption>

#include "components/logger/logger.h"
#include "ui/widgets/prompts.h"
#include "ui/widgets/round_corners.h"
#include "ui/widgets/style.h"
#include "ui/widgets/window_shadow.h"

namespace zorvanelink::ui {
namespace {

// Pixels, before scaling.
constexpr int kScreenMargin = 20;  // that a dialog leaves of the screen's height
constexpr int kSide = 20;
constexpr int kAboveFoot = 12;

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
      body_(new QWidget(panel_)),
      scroll_(new FormScroll(body_, panel_)) {
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
    column->addWidget(scroll_, 1);
    connect(titleBar_->CloseButton(), &QToolButton::clicked, this, &QDialog::reject);
    installEventFilter(this);
}

void ZVLDialog::DeleteBehindBoxes() {
    auto const boxes = findChildren<QDialog*>();
    if (boxes.isEmpty()) {
        deleteLater();
        return;
    }
    connect(boxes.front(), &QObject::destroyed, this, &ZVLDialog::DeleteBehindBoxes);
    for (QDialog* const box : boxes) {
        box->reject();
    }
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

void ZVLDialog::keyPressEvent(QKeyEvent* event) {
    bool const page = event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown;
    for (auto const* const area : findChildren<QAbstractScrollArea*>()) {
        QScrollBar* const bar = area->verticalScrollBar();
        if (page && area->isVisible() && bar->maximum() > bar->minimum()) {
            QCoreApplication::sendEvent(bar, event);
            return;
        }
    }
    QDialog::keyPressEvent(event);
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

void ZVLDialog::SetHead(QWidget* head) {
    head_ = head;
    static_cast<QVBoxLayout*>(panel_->layout())->insertWidget(1, head);
}

void ZVLDialog::SetFoot(QWidget* foot) {
    foot_ = foot;
    foot->setProperty("foot", true);
    foot->setAttribute(Qt::WA_StyledBackground);
    foot->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    foot->layout()->setContentsMargins(kSide, kAboveFoot, kSide, kSide);
    panel_->layout()->addWidget(foot);
    // What scrolls away behind the buttons does so under a line.
    connect(scroll_, &FormScroll::Scrolls, foot, [foot](bool scrolls) {
        foot->setProperty("lifted", scrolls);
        foot->style()->unpolish(foot);
        foot->style()->polish(foot);
    });
}

QWidget const* ZVLDialog::VisibleOwner() const {
    QWidget const* const owner = parentWidget() != nullptr ? parentWidget()->window() : nullptr;
    return owner != nullptr && owner->isVisible() && !owner->isMinimized() ? owner : nullptr;
}

int ZVLDialog::MaxHeight() const {
    return screen()->availableGeometry().height() - kScreenMargin;
}

void ZVLDialog::Fit() {
    // What has just come or gone reaches the outer layouts by events, which come too late.
    for (QLayout* const inner : {body_->layout(), panel_->layout()}) {
        if (inner != nullptr) {
            inner->activate();
        }
    }
    if (minimumWidth() != maximumWidth()) {
        setFixedWidth(layout()->totalSizeHint().width());
    }
    QMargins const frame = panel_->contentsMargins();
    int const inside = contentsRect().width() - frame.left() - frame.right();
    int rest = frame.top() + frame.bottom();
    for (QWidget const* const fixed : {static_cast<QWidget*>(titleBar_), head_, foot_}) {
        if (fixed != nullptr && !fixed->isHidden()) {
            rest += qMax(fixed->sizeHint().height(), fixed->minimumHeight());
        }
    }
    int const form = scroll_->hasHeightForWidth() ? scroll_->heightForWidth(inside)
                                                  : scroll_->sizeHint().height();
    // Else the layout takes what a wrapped text wants for what it needs.
    scroll_->setMaximumHeight(qMax(scroll_->minimumSizeHint().height(), MaxHeight() - rest));
    setFixedHeight(qMin(qMax(form + rest, MinHeight()), MaxHeight()) + height() -
                   contentsRect().height());
}

bool ZVLDialog::event(QEvent* event) {
    bool const done = QDialog::event(event);
    if (event->type() == QEvent::LayoutRequest && placed_) {
        Fit();
        moveOntoScreen();
    }
    return done;
}

void ZVLDialog::moveOntoScreen() {
    QRect const visible = screen()->availableGeometry().marginsAdded(contentsMargins());
    int const excess = geometry().bottom() - visible.bottom();
    if (excess > 0) {
        move(x(), qMax(visible.top(), y() - excess));
    }
}

// Its margins come on top of the width that the dialog has chosen.
void ZVLDialog::giveShadow() {
    if (internalWinId() == 0) {
        WindowShadow::Give(*this);
        if (minimumWidth() == maximumWidth()) {
            setFixedWidth(width() + contentsMargins().left() + contentsMargins().right());
        }
    }
}

void ZVLDialog::Place() {
    FrameLayout()->setSizeConstraint(QLayout::SetNoConstraint);
    giveShadow();
    Fit();
    QWidget const* const owner = VisibleOwner();
    QRect const visible = screen()->availableGeometry().marginsAdded(contentsMargins());
    QPoint target =
        (owner != nullptr ? owner->frameGeometry() : visible).center() - rect().center();
    target.setX(
        qBound(visible.left(), target.x(), qMax(visible.left(), visible.right() - width())));
    target.setY(
        qBound(visible.top(), target.y(), qMax(visible.top(), visible.bottom() - height())));
    move(target);
}

}  // namespace zorvanelink::ui
