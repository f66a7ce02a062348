// The first-use page: no connection yet, and a button to add one.
#pragma once

#include <QWidget>

namespace zorvanelink::ui {

class UserGuide : public QWidget {
    Q_OBJECT

  public:
    explicit UserGuide(QWidget* parent = nullptr);

  Q_SIGNALS:
    void UserGuideStartConnect();
};

}  // namespace zorvanelink::ui
