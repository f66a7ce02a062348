#include "ui/widgets/resize_edges.h"

#include <QMouseEvent>
#include <QWindow>

namespace zorvanelink::ui {
namespace {

// Pixels.
constexpr int kThickness = 4;
constexpr int kCorner = 10;

Qt::CursorShape cursorOf(Qt::Edges edges) {
    bool const across = edges & (Qt::LeftEdge | Qt::RightEdge);
    bool const along = edges & (Qt::TopEdge | Qt::BottomEdge);
    if (across && along) {
        bool const falling =
            edges == (Qt::TopEdge | Qt::LeftEdge) || edges == (Qt::BottomEdge | Qt::RightEdge);
        return falling ? Qt::SizeFDiagCursor : Qt::SizeBDiagCursor;
    }
    return across ? Qt::SizeHorCursor : Qt::SizeVerCursor;
}

}  // namespace

class ResizeEdges::Edge : public QWidget {
  public:
    Edge(Qt::Edges edges, QWidget& window) : QWidget(&window), edges_(edges) {
        setCursor(cursorOf(edges));
    }

    void Place() {
        QRect const all = window()->contentsRect();
        QRect mine = all;
        bool const corner =
            (edges_ & (Qt::LeftEdge | Qt::RightEdge)) && (edges_ & (Qt::TopEdge | Qt::BottomEdge));
        int const thickness = corner ? kCorner : kThickness;
        if (edges_ & Qt::LeftEdge) {
            mine.setRight(all.left() + thickness - 1);
        }
        if (edges_ & Qt::RightEdge) {
            mine.setLeft(all.right() - thickness + 1);
        }
        if (edges_ & Qt::TopEdge) {
            mine.setBottom(all.top() + thickness - 1);
        }
        if (edges_ & Qt::BottomEdge) {
            mine.setTop(all.bottom() - thickness + 1);
        }
        setGeometry(mine);
        setVisible(!window()->isMaximized() && !window()->isFullScreen());
        raise();
    }

  protected:
    void mousePressEvent(QMouseEvent* event) override {
        if (event->button() != Qt::LeftButton) {
            return;
        }
        from_ = window()->geometry();
        pressed_ = event->globalPos();
        QWindow* const handle = window()->windowHandle();
        follows_ = handle == nullptr || !handle->startSystemResize(edges_);
    }

    void mouseMoveEvent(QMouseEvent* event) override {
        if (!follows_ || !(event->buttons() & Qt::LeftButton)) {
            return;
        }
        QPoint const way = event->globalPos() - pressed_;
        QSize const least = window()->minimumSize();
        QRect wanted = from_;
        if (edges_ & Qt::LeftEdge) {
            wanted.setLeft(qMin(from_.left() + way.x(), from_.right() - least.width() + 1));
        }
        if (edges_ & Qt::RightEdge) {
            wanted.setRight(qMax(from_.right() + way.x(), from_.left() + least.width() - 1));
        }
        if (edges_ & Qt::TopEdge) {
            wanted.setTop(qMin(from_.top() + way.y(), from_.bottom() - least.height() + 1));
        }
        if (edges_ & Qt::BottomEdge) {
            wanted.setBottom(qMax(from_.bottom() + way.y(), from_.top() + least.height() - 1));
        }
        window()->setGeometry(wanted);
    }

    void mouseReleaseEvent(QMouseEvent*) override { follows_ = false; }

  private:
    Qt::Edges const edges_;
    QRect from_;
    QPoint pressed_;
    bool follows_ = false;
};

ResizeEdges::ResizeEdges(QWidget& window) : QObject(&window), window_(window) {
    // The corners last: they lie over the ends of the edges.
    for (Qt::Edges const edges :
         {Qt::Edges(Qt::LeftEdge), Qt::Edges(Qt::RightEdge), Qt::Edges(Qt::TopEdge),
          Qt::Edges(Qt::BottomEdge), Qt::TopEdge | Qt::LeftEdge, Qt::TopEdge | Qt::RightEdge,
          Qt::BottomEdge | Qt::LeftEdge, Qt::BottomEdge | Qt::RightEdge}) {
        edges_.push_back(new Edge(edges, window));
    }
    window.installEventFilter(this);
    place();
}

void ResizeEdges::place() {
    for (Edge* const edge : edges_) {
        edge->Place();
    }
}

bool ResizeEdges::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &window_ && (event->type() == QEvent::Resize || event->type() == QEvent::Show ||
                                event->type() == QEvent::WindowStateChange)) {
        place();
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace zorvanelink::ui
