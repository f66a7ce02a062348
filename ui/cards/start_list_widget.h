// The list of cards. One stop of the keyboard: arrows choose a card, Return and Space start and
// stop, F2 modifies, Delete deletes. GUI thread.
#pragma once

#include <QListWidget>
#include <vector>

#include "ui/cards/profile_tab.h"

namespace zorvanelink::ui {

class StartListWidget : public QListWidget {
    Q_OBJECT

  public:
    explicit StartListWidget(QWidget* parent = nullptr);

    // Adds the card as a new item, whose text (the profile's name) sorts it; the list owns it.
    QListWidgetItem* AddCard(ProfileTab* card);
    ProfileTab* CardAt(int row) const;  // null for an item that is no card
    // From the top, without those that the search leaves out.
    std::vector<ProfileTab*> ListedCards() const;
    // The one that the keyboard is on, focus or not; null when it is not listed.
    ProfileTab* CurrentCard() const;

    void SetCompact(bool compact);
    // Leaves out the cards that do not match; the selected one stays selected.
    void Search(QString const& text);

    void keyboardSearch(QString const& text) override;

  protected:
    void currentChanged(QModelIndex const& current, QModelIndex const& previous) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void markFocus();

    QString search_;
    bool compact_ = false;
};

}  // namespace zorvanelink::ui
