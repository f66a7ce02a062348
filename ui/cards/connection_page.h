// The left side of the window: a heading, the button to add, the list of cards, and a search once
// the list is long. GUI thread.
#pragma once

#include "ui/cards/start_list_widget.h"
#include "ui/widgets/search_edit.h"

namespace zorvanelink::ui {

class ConnectionPage : public QWidget {
    Q_OBJECT

  public:
    explicit ConnectionPage(QWidget* parent = nullptr);

    QPushButtonExt* AddButton() const { return addButton_; }
    StartListWidget* List() const { return list_; }

  protected:
    // What the search field leaves over: Down goes to the list, Escape ends the search.
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void build();
    void onCountChanged();
    void onSearch(QString const& text);

    QPushButtonExt* addButton_;
    SearchEdit* search_;
    QLabel* note_;
    QFrame* rule_;
    StartListWidget* list_;
};

}  // namespace zorvanelink::ui
