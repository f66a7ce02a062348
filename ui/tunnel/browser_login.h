// A login that goes on in the user's browser: what to do there, the time left, and a way back to
// the page. GUI thread.
#pragma once

#include <QFrame>
#include <QLabel>
#include <QPushButton>

namespace zorvanelink::ui {

class BrowserLogin : public QFrame {
    Q_OBJECT

  public:
    explicit BrowserLogin(QWidget* parent = nullptr);

    void SetTimeLeft(QString const& text);  // empty hides the panel

  Q_SIGNALS:
    void PageWanted();

  private:
    QLabel* detail_;
    QPushButton* again_;
};

}  // namespace zorvanelink::ui
