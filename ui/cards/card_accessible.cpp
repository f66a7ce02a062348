#include "ui/cards/card_accessible.h"

#include <QAccessibleWidget>

#include "ui/cards/start_list_widget.h"

namespace zorvanelink::ui {
namespace {

// A list of its cards, row by row.
class AccessibleCardList : public QAccessibleWidget {
  public:
    explicit AccessibleCardList(StartListWidget* list)
        : QAccessibleWidget(list, QAccessible::List), list_(list) {}

    int childCount() const override { return list_->count(); }

    QAccessibleInterface* child(int index) const override {
        return QAccessible::queryAccessibleInterface(list_->CardAt(index));
    }

    QAccessibleInterface* childAt(int x, int y) const override {
        QPoint const place = list_->viewport()->mapFromGlobal({x, y});
        QListWidgetItem const* const item = list_->itemAt(place);
        return item == nullptr ? nullptr : child(list_->row(item));
    }

    int indexOfChild(QAccessibleInterface const* card) const override {
        for (int row = 0; row < list_->count(); ++row) {
            if (card != nullptr && list_->CardAt(row) == card->object()) {
                return row;
            }
        }
        return -1;
    }

  private:
    StartListWidget* const list_;
};

// Its place in the tree is the list, not the viewport that carries it.
class AccessibleCard : public QAccessibleWidget {
  public:
    explicit AccessibleCard(ProfileTab* card) : QAccessibleWidget(card, QAccessible::ListItem) {}

    QAccessibleInterface* parent() const override {
        for (QWidget* above = widget()->parentWidget(); above != nullptr;
             above = above->parentWidget()) {
            if (auto* const list = qobject_cast<StartListWidget*>(above)) {
                return QAccessible::queryAccessibleInterface(list);
            }
        }
        return QAccessibleWidget::parent();
    }

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.selectable = true;
        state.selected = static_cast<ProfileTab*>(widget())->IsSelected();
        return state;
    }
};

QAccessibleInterface* makeInterface(QString const& /*className*/, QObject* object) {
    if (auto* const list = qobject_cast<StartListWidget*>(object)) {
        return new AccessibleCardList(list);
    }
    if (auto* const card = qobject_cast<ProfileTab*>(object)) {
        return new AccessibleCard(card);
    }
    return nullptr;
}

}  // namespace

void MakeCardsAccessible() {
    // Qt keeps a factory once, however often it is installed.
    QAccessible::installFactory(makeInterface);
}

}  // namespace zorvanelink::ui
