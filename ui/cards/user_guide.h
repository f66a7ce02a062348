// The first-use page: no connection yet, and a button to add one, which has the focus of the page.
#pragma once

#include <QFrame>

namespace zorvanelink::ui {

class UserGuide : public QFrame {
    Q_OBJECT

  public:
    explicit UserGuide(QWidget* parent = nullptr);

  Q_SIGNALS:
    void UserGuideStartConnect();
};

}  // namespace zorvanelink::ui
