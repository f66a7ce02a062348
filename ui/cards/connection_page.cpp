#include "ui/cards/connection_page.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScrollBar>
#include <QVBoxLayout>

#include "ui/text/texts.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;

constexpr int kMargin = 16;          // pixels
constexpr int kManyConnections = 7;  // from here on the cards are low and can be searched

}  // namespace

ConnectionPage::ConnectionPage(QWidget* parent)
    : QWidget(parent),
      addButton_(new QPushButtonExt(GetTrMsg(MsgCode::UI_TR_ADD_CONNECTION), this)),
      search_(new SearchEdit("connection_search_",
                             Translate(QT_TRANSLATE_NOOP("ui", "Search connections")), this)),
      note_(new QLabel(Translate(QT_TRANSLATE_NOOP("ui", "No matching connections")), this)),
      rule_(new QFrame(this)),
      list_(new StartListWidget(this)) {
    build();
    connect(search_, &QLineEdit::textChanged, this, &ConnectionPage::onSearch);
    connect(search_, &QLineEdit::returnPressed, list_, qOverload<>(&QWidget::setFocus));
    // What has just been added is shown.
    connect(list_->model(), &QAbstractItemModel::rowsInserted, search_, &QLineEdit::clear);
    connect(list_->model(), &QAbstractItemModel::rowsInserted, this,
            &ConnectionPage::onCountChanged);
    connect(list_->model(), &QAbstractItemModel::rowsRemoved, this,
            &ConnectionPage::onCountChanged);
    connect(list_->verticalScrollBar(), &QScrollBar::valueChanged, rule_,
            [this](int value) { rule_->setVisible(value > 0); });
}

void ConnectionPage::build() {
    auto* const heading = new QLabel(GetTrMsg(MsgCode::UI_INFO_CONNECTION), this);
    heading->setObjectName(QStringLiteral("list_heading_"));
    list_->setAccessibleName(heading->text());
    addButton_->setObjectName(QStringLiteral("add_button_"));
    addButton_->setProperty("outline", true);
    addButton_->setAccessibleName(GetTrMsg(MsgCode::UI_INFO_ADD_CONNECTION));
    note_->setObjectName(QStringLiteral("connection_note_"));
    note_->setProperty("role", QStringLiteral("secondary"));
    note_->setAlignment(Qt::AlignCenter);
    note_->setContentsMargins(0, kMargin, 0, 0);
    rule_->setObjectName(QStringLiteral("list_rule_"));
    QSizePolicy keeps_room = rule_->sizePolicy();
    keeps_room.setRetainSizeWhenHidden(true);
    rule_->setSizePolicy(keeps_room);
    for (QWidget* const later : std::initializer_list<QWidget*>{search_, note_, rule_}) {
        later->hide();
    }

    auto* const header = new QHBoxLayout;
    header->addWidget(heading);
    header->addStretch();
    header->addWidget(addButton_);
    auto* const top = new QVBoxLayout;
    top->setContentsMargins(kMargin, kMargin, kMargin, kMargin - kCardRing - 1);
    top->setSpacing(12);
    top->addLayout(header);
    top->addWidget(search_);
    auto* const cards = new QHBoxLayout;
    cards->setContentsMargins(kMargin - kCardRing, 0, 0, 0);
    cards->addWidget(list_);
    auto* const rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addLayout(top);
    rows->addWidget(rule_);
    rows->addWidget(note_);
    rows->addLayout(cards, 1);
}

void ConnectionPage::onCountChanged() {
    bool const many = list_->count() >= kManyConnections;
    list_->SetCompact(many);
    if (!many) {
        search_->clear();
    }
    search_->setVisible(many);
    onSearch(search_->text());
}

void ConnectionPage::onSearch(QString const& text) {
    list_->Search(text.trimmed());
    note_->setVisible(!text.isEmpty() && list_->ListedCards().empty());
}

void ConnectionPage::keyPressEvent(QKeyEvent* event) {
    if (search_->hasFocus() && event->key() == Qt::Key_Down) {
        list_->setFocus();
    } else {
        QWidget::keyPressEvent(event);
    }
}

}  // namespace zorvanelink::ui
