// The list of cards.
#pragma once

#include <QListWidget>

#include "ui/cards/profile_tab.h"

namespace zorvanelink::ui {

class StartListWidget : public QListWidget {
    Q_OBJECT

  public:
    explicit StartListWidget(QWidget* parent = nullptr);

    // Adds the card as a new item, whose text (the profile's name) sorts it; the list owns it.
    QListWidgetItem* AddCard(ProfileTab* card);
    ProfileTab* CardAt(int row) const;  // null for an item that is no card
};

}  // namespace zorvanelink::ui
