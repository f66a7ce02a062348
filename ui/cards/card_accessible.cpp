#include "ui/cards/card_accessible.h"

#include <QAbstractButton>
#include <QAccessibleWidget>

#include "ui/cards/start_list_widget.h"

namespace zorvanelink::ui {
namespace {

// What is scrolled away, or lies outside its card, is there and cannot be seen.
class AccessiblePart : public QAccessibleWidget {
  public:
    using QAccessibleWidget::QAccessibleWidget;

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.offscreen = widget()->visibleRegion().isEmpty();
        return state;
    }
};

class AccessibleCardLabel : public AccessiblePart {
  public:
    explicit AccessibleCardLabel(QLabel* label)
        : AccessiblePart(label, QAccessible::StaticText, label->text()) {}

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? static_cast<QLabel*>(widget())->text()
                                         : AccessiblePart::text(kind);
    }
};

class AccessibleCardButton : public AccessiblePart {
  public:
    explicit AccessibleCardButton(QAbstractButton* button)
        : AccessiblePart(button, QAccessible::Button) {}

    QStringList actionNames() const override {
        QStringList const own = widget()->isEnabled() ? QStringList{pressAction()} : QStringList();
        return own + AccessiblePart::actionNames();
    }

    void doAction(QString const& name) override {
        if (name == pressAction()) {
            static_cast<QAbstractButton*>(widget())->animateClick();
        } else {
            AccessiblePart::doAction(name);
        }
    }
};

// A list of its cards, from the top.
class AccessibleCardList : public QAccessibleWidget {
  public:
    explicit AccessibleCardList(StartListWidget* list)
        : QAccessibleWidget(list, QAccessible::List), list_(list) {}

    int childCount() const override { return static_cast<int>(list_->ListedCards().size()); }

    QAccessibleInterface* child(int index) const override {
        std::vector<ProfileTab*> const cards = list_->ListedCards();
        bool const within = index >= 0 && index < static_cast<int>(cards.size());
        return within
                   ? QAccessible::queryAccessibleInterface(cards[static_cast<std::size_t>(index)])
                   : nullptr;
    }

    QAccessibleInterface* childAt(int x, int y) const override {
        QPoint const place = list_->viewport()->mapFromGlobal({x, y});
        QListWidgetItem const* const item = list_->itemAt(place);
        return item == nullptr
                   ? nullptr
                   : QAccessible::queryAccessibleInterface(list_->CardAt(list_->row(item)));
    }

    int indexOfChild(QAccessibleInterface const* card) const override {
        std::vector<ProfileTab*> const cards = list_->ListedCards();
        auto const found = std::find(cards.begin(), cards.end(), card->object());
        return found == cards.end() ? -1 : static_cast<int>(found - cards.begin());
    }

    QAccessibleInterface* focusChild() const override {
        return list_->hasFocus() ? QAccessible::queryAccessibleInterface(list_->CurrentCard())
                                 : QAccessibleWidget::focusChild();
    }

  private:
    StartListWidget* const list_;
};

// Its place in the tree is the list, not the viewport that carries it.
class AccessibleCard : public AccessiblePart {
  public:
    explicit AccessibleCard(ProfileTab* card) : AccessiblePart(card, QAccessible::ListItem) {}

    QAccessibleInterface* parent() const override {
        for (QWidget* above = widget()->parentWidget(); above != nullptr;
             above = above->parentWidget()) {
            if (auto* const list = qobject_cast<StartListWidget*>(above)) {
                return QAccessible::queryAccessibleInterface(list);
            }
        }
        return AccessiblePart::parent();
    }

    QAccessible::State state() const override {
        QAccessible::State state = AccessiblePart::state();
        auto const* const card = static_cast<ProfileTab*>(widget());
        state.selectable = true;
        state.selected = card->IsSelected();
        state.focusable = true;
        state.focused = card->IsFocused();
        return state;
    }
};

bool isOnCard(QWidget const& widget) {
    QWidget const* above = widget.parentWidget();
    while (above != nullptr && qobject_cast<ProfileTab const*>(above) == nullptr) {
        above = above->parentWidget();
    }
    return above != nullptr;
}

QAccessibleInterface* makeInterface(QString const& /*className*/, QObject* object) {
    if (auto* const list = qobject_cast<StartListWidget*>(object)) {
        return new AccessibleCardList(list);
    }
    if (auto* const card = qobject_cast<ProfileTab*>(object)) {
        return new AccessibleCard(card);
    }
    auto* const label = qobject_cast<QLabel*>(object);
    if (label != nullptr && isOnCard(*label)) {
        return new AccessibleCardLabel(label);
    }
    auto* const button = qobject_cast<QAbstractButton*>(object);
    if (button != nullptr && isOnCard(*button)) {
        return new AccessibleCardButton(button);
    }
    return nullptr;
}

}  // namespace

void MakeCardsAccessible() {
    // Qt keeps a factory once, however often it is installed.
    QAccessible::installFactory(makeInterface);
}

}  // namespace zorvanelink::ui
