// The part of a dialog that gives way when the screen is too low for the whole.
#pragma once

#include <QScrollArea>

namespace zorvanelink::ui {

// As large as its widget wants, never smaller in width, and scrolled when lower. The bar stands in
// the widget's right margin, so that fields keep their ends.
class FormScroll : public QScrollArea {
    Q_OBJECT

  public:
    FormScroll(QWidget* form, QWidget* parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override;
    int heightForWidth(int width) const override;

  Q_SIGNALS:
    void Scrolls(bool scrolls);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void follow();  // whether the bar stands

    bool scrolls_ = false;
};

}  // namespace zorvanelink::ui
