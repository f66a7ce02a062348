#include "ui/cards/start_list_widget.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QScrollBar>
#include <QStyledItemDelegate>

#include "ui/cards/card_accessible.h"

namespace zorvanelink::ui {
namespace {

// Cards bring the room of their ring, so they stand 12 apart to the eye.
constexpr int kCardSpacing = 12 - 2 * kCardRing;

// The card covers its item; the item's text is there to sort by and to be read aloud.
class CardDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter*, QStyleOptionViewItem const&, QModelIndex const&) const override {}
};

QSize itemSize(ProfileTab const& card) {
    return card.size() + QSize(0, kCardSpacing);
}

}  // namespace

StartListWidget::StartListWidget(QWidget* parent) : QListWidget(parent) {
    MakeCardsAccessible();
    setObjectName(QStringLiteral("connection_listwidget_"));
    setStyleSheet(QStringLiteral("QListWidget{background:transparent;}"));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalScrollBar()->setSingleStep(24);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setFrameShape(QFrame::NoFrame);
    setItemDelegate(new CardDelegate(this));
}

QListWidgetItem* StartListWidget::AddCard(ProfileTab* card) {
    QString const name = QString::fromStdString(card->GetProfile()->name);
    auto* item = new QListWidgetItem(name, this);
    item->setData(Qt::AccessibleTextRole, name);
    card->SetCompact(compact_);
    card->setFocusProxy(this);
    item->setSizeHint(itemSize(*card));
    setItemWidget(item, card);
    return item;
}

ProfileTab* StartListWidget::CardAt(int row) const {
    return qobject_cast<ProfileTab*>(itemWidget(item(row)));
}

std::vector<ProfileTab*> StartListWidget::ListedCards() const {
    std::vector<ProfileTab*> cards;
    for (int row = 0; row < count(); ++row) {
        ProfileTab* const card = item(row)->isHidden() ? nullptr : CardAt(row);
        if (card != nullptr) {
            cards.push_back(card);
        }
    }
    return cards;
}

ProfileTab* StartListWidget::CurrentCard() const {
    QListWidgetItem const* const current = currentItem();
    return current == nullptr || current->isHidden() ? nullptr : CardAt(currentRow());
}

void StartListWidget::SetCompact(bool compact) {
    if (compact_ == compact) {
        return;
    }
    compact_ = compact;
    for (int row = 0; row < count(); ++row) {
        if (ProfileTab* const card = CardAt(row)) {
            card->SetCompact(compact);
            item(row)->setSizeHint(itemSize(*card));
        }
    }
}

void StartListWidget::Search(QString const& text) {
    search_ = text;
    for (int row = 0; row < count(); ++row) {
        ProfileTab const* const card = CardAt(row);
        item(row)->setHidden(card != nullptr && !card->Matches(text));
    }
    if (CurrentCard() != nullptr) {
        scrollToItem(currentItem());
    } else {
        scrollToTop();
    }
}

// It would find what the search leaves out.
void StartListWidget::keyboardSearch(QString const& text) {
    if (search_.isEmpty()) {
        QListWidget::keyboardSearch(text);
    }
}

void StartListWidget::currentChanged(QModelIndex const& current, QModelIndex const& previous) {
    QListWidget::currentChanged(current, previous);
    markFocus();
}

void StartListWidget::focusInEvent(QFocusEvent* event) {
    QListWidget::focusInEvent(event);
    if (CurrentCard() == nullptr) {
        for (int row = 0; row < count(); ++row) {
            if (!item(row)->isHidden()) {
                setCurrentRow(row, QItemSelectionModel::NoUpdate);
                break;
            }
        }
    }
    markFocus();
    if (ProfileTab* const card = CurrentCard()) {
        QAccessibleEvent focus(card, QAccessible::Focus);
        QAccessible::updateAccessibility(&focus);
    }
}

void StartListWidget::focusOutEvent(QFocusEvent* event) {
    QListWidget::focusOutEvent(event);
    markFocus();
}

void StartListWidget::markFocus() {
    ProfileTab const* const current = hasFocus() ? CurrentCard() : nullptr;
    for (int row = 0; row < count(); ++row) {
        ProfileTab* const card = CardAt(row);
        if (card != nullptr && card->IsFocused() != (card == current)) {
            card->SetFocused(card == current);
        }
    }
}

void StartListWidget::keyPressEvent(QKeyEvent* event) {
    void (ProfileTab::*act)() = nullptr;
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Space:
            act = &ProfileTab::Press;
            break;
        case Qt::Key_F2:
            act = &ProfileTab::PressModify;
            break;
        case Qt::Key_Delete:
            act = &ProfileTab::PressDelete;
            break;
        default:
            QListWidget::keyPressEvent(event);
            return;
    }
    ProfileTab* const card = CurrentCard();
    // A key that is held would stop what it has just started.
    if (card != nullptr && !event->isAutoRepeat()) {
        (card->*act)();
    }
}

}  // namespace zorvanelink::ui
