// The first-use page: no connection yet and, where one can be added, a button for it.
#pragma once

#include <QWidget>

namespace zorvanelink::ui {

class UserGuide : public QWidget {
    Q_OBJECT

  public:
    explicit UserGuide(bool canAdd, QWidget* parent = nullptr);

  Q_SIGNALS:
    void UserGuideStartConnect();
};

}  // namespace zorvanelink::ui
