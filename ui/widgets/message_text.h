// Text of a box: selectable, wrapped anywhere when a word is too long, scrolled when too tall.
#pragma once

#include <QTextEdit>

namespace zorvanelink::ui {

class MessageText : public QTextEdit {
    Q_OBJECT

  public:
    explicit MessageText(QWidget* parent = nullptr);

    // Takes the height that the text needs at `width` pixels, at most maxHeight.
    void FitTo(int width, int maxHeight);

  Q_SIGNALS:
    void LinkActivated(QString url);

  protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
};

}  // namespace zorvanelink::ui
