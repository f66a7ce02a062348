// One line of plain text, cut with an ellipsis to the label's own width. GUI thread.
#pragma once

#include <QLabel>

namespace zorvanelink::ui {

// The whole text is the accessible name, and the tooltip while it is cut. A tail stands behind the
// text, cut or not, and is never cut itself.
class ElidedLabel : public QLabel {
    Q_OBJECT

  public:
    explicit ElidedLabel(QString const& text, QWidget* parent = nullptr);

    void SetFullText(QString const& text, QString const& tail = {});
    QString const& FullText() const { return full_; }

    QSize minimumSizeHint() const override;

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void elide();

    QString full_;
    QString tail_;
};

}  // namespace zorvanelink::ui
