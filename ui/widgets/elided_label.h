// One line of plain text, cut with an ellipsis to the label's own width. GUI thread.
#pragma once

#include <QLabel>

namespace zorvanelink::ui {

// The whole text is the accessible name, and the tooltip while it is cut.
class ElidedLabel : public QLabel {
    Q_OBJECT

  public:
    explicit ElidedLabel(QString const& text, QWidget* parent = nullptr);

    void SetFullText(QString const& text);
    QString const& FullText() const { return full_; }

    QSize minimumSizeHint() const override;

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void elide();

    QString full_;
};

}  // namespace zorvanelink::ui
