#include "ui/cards/start_list_widget.h"

#include <QScrollBar>
#include <QStyledItemDelegate>

#include "ui/cards/card_accessible.h"

namespace zorvanelink::ui {
namespace {

// The card covers its item; the item's text is there to sort by and to be read aloud.
class CardDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter*, QStyleOptionViewItem const&, QModelIndex const&) const override {}
};

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
    // Cards bring the room of their ring, so they stand 12 apart to the eye.
    item->setSizeHint(QSize(kCardWidth, kCardHeight + 6));
    item->setData(Qt::AccessibleTextRole, name);
    card->setFixedSize(kCardWidth, kCardHeight);
    setItemWidget(item, card);
    return item;
}

ProfileTab* StartListWidget::CardAt(int row) const {
    return qobject_cast<ProfileTab*>(itemWidget(item(row)));
}

}  // namespace zorvanelink::ui
