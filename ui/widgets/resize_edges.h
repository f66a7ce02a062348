// Enlarging a frameless window by its edges and corners.
#pragma once

#include <QPoint>
#include <QRect>
#include <QWidget>
#include <vector>

namespace zorvanelink::ui {

// Thin children along the border of a window, each with its pointer. A press starts the window
// system's own resize; where there is none the edge follows the pointer. None while maximised.
class ResizeEdges : public QObject {
    Q_OBJECT

  public:
    // Owned by the window.
    explicit ResizeEdges(QWidget& window);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    class Edge;

    void place();

    QWidget& window_;
    std::vector<Edge*> edges_;
};

}  // namespace zorvanelink::ui
