// "Please wait" over a window: a spinner and one line of text.
#pragma once

#include <QLabel>
#include <QWidget>

namespace zorvanelink::ui {

// A child that covers its parent below `topMargin` pixels (so that the title bar stays usable) and
// keeps mouse and keyboard from what it covers. Hidden until shown.
class WaitForm : public QWidget {
    Q_OBJECT

  public:
    explicit WaitForm(QWidget* parent, int topMargin = 0);

    void SetDesc(QString const& text);
    QString Desc() const;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool event(QEvent* event) override;

  private:
    void fillParent();

    int topMargin_;
    QLabel* text_;
};

}  // namespace zorvanelink::ui
