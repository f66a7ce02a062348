#include "ui/tunnel/route_head.h"

#include <QKeyEvent>
#include <QPainter>

#include "ui/widgets/focus_ring.h"

namespace zorvanelink::ui {
namespace {

constexpr int kHeight = 36;

}  // namespace

RouteHead::RouteHead(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
    setFixedHeight(kHeight);
    setSectionsClickable(true);
    setHighlightSections(false);
    setStretchLastSection(true);
    setMinimumSectionSize(40);
    setFocusPolicy(Qt::TabFocus);
}

void RouteHead::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Left:
            moveTo(column_ - 1);
            break;
        case Qt::Key_Right:
            moveTo(column_ + 1);
            break;
        case Qt::Key_Space:
        case Qt::Key_Return:
        case Qt::Key_Enter:
            Q_EMIT sectionClicked(column_);
            moveTo(column_);  // its text says how it is sorted now
            break;
        default:
            event->ignore();  // nothing here scrolls
    }
}

// A screen reader hears the name of what has the focus, and each change of it.
void RouteHead::moveTo(int column) {
    column_ = qBound(0, column, count() - 1);
    setAccessibleName(model()->headerData(column_, Qt::Horizontal).toString());
    viewport()->update();
}

void RouteHead::focusInEvent(QFocusEvent* event) {
    QHeaderView::focusInEvent(event);
    moveTo(column_);
}

void RouteHead::focusOutEvent(QFocusEvent* event) {
    QHeaderView::focusOutEvent(event);
    viewport()->update();
}

void RouteHead::paintSection(QPainter* painter, QRect const& rect, int logicalIndex) const {
    painter->save();
    QHeaderView::paintSection(painter, rect, logicalIndex);
    painter->restore();
    if (hasFocus() && logicalIndex == column_) {
        FocusRing::Paint(*painter, rect, outer_, inner_);
    }
}

}  // namespace zorvanelink::ui
