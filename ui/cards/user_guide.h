// The first-use page: no connection yet, and a button to add one. GUI thread.
#pragma once

#include <QFrame>

namespace zorvanelink::ui {

class UserGuide : public QFrame {
    Q_OBJECT

  public:
    explicit UserGuide(QWidget* parent = nullptr);

    QWidget* Button() const { return button_; }

  Q_SIGNALS:
    void UserGuideStartConnect();

  private:
    QWidget* button_;
};

}  // namespace zorvanelink::ui
