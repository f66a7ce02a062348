// "Please wait" over a window: a spinner, a line of text, and a hint when it takes long.
#pragma once

#include <QLabel>
#include <QPushButton>
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
    // A second line, and a button for the folder of the log; empty for none.
    void SetHint(QString const& text, bool withLog);

  Q_SIGNALS:
    void LogWanted();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool event(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;

  private:
    void fillParent();

    int topMargin_;
    QLabel* text_;
    QLabel* hint_;
    QPushButton* log_;
};

}  // namespace zorvanelink::ui
