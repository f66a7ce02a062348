#include "ui/tunnel/statistics_view.h"

#include <QGridLayout>
#include <QLocale>
#include <QVBoxLayout>

#include "ui/text/texts.h"
#include "ui/tunnel/format.h"
#include "ui/tunnel/scrolled.h"

namespace zorvanelink::ui {
namespace {

QString packets(unsigned long long count) {
    QString const number = QStringLiteral("%L1").arg(count);
    return Translate(QT_TRANSLATE_NOOP("ui", "%1 packets")).arg(number);
}

QString ratio(double percent) {
    return QStringLiteral("%1%").arg(QString::number(percent, 'f', 2));
}

}  // namespace

StatisticsView::StatisticsView(QWidget* parent) : QWidget(parent), body_(new QWidget) {
    received_ = addCard(Translate(QT_TRANSLATE_NOOP("ui", "Received")), "received_", true);
    sent_ = addCard(Translate(QT_TRANSLATE_NOOP("ui", "Sent")), "sent_", true);
    compressionReceived_ =
        addCard(Translate(QT_TRANSLATE_NOOP("ui", "Compression, received")), "ratio_in_", false);
    compressionSent_ =
        addCard(Translate(QT_TRANSLATE_NOOP("ui", "Compression, sent")), "ratio_out_", false);
    note_ = new QLabel(
        Translate(QT_TRANSLATE_NOOP("ui", "The counters come back with the connection.")), body_);
    note_->setObjectName(QStringLiteral("statistics_note_"));
    note_->setProperty("role", QStringLiteral("secondary"));
    note_->setAlignment(Qt::AlignCenter);
    auto* grid = new QGridLayout(body_);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(12);
    grid->addWidget(received_.frame, 0, 0);
    grid->addWidget(sent_.frame, 0, 1);
    grid->addWidget(compressionReceived_.frame, 1, 0);
    grid->addWidget(compressionSent_.frame, 1, 1);
    grid->addWidget(note_, 2, 0, 1, 2);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(3, 1);
    Scroll(*body_, *this).setFocusPolicy(Qt::NoFocus);  // hardly ever lower than its cards
    Clear();
}

void StatisticsView::show(bool filled) {
    for (auto const& card : {received_, sent_, compressionReceived_, compressionSent_}) {
        card.frame->setVisible(filled);
    }
    note_->setVisible(!filled);
}

StatisticsView::Card StatisticsView::addCard(QString const& name, char const* objectName,
                                             bool withDetail) {
    Card card{new QFrame(body_), nullptr, nullptr};
    card.frame->setProperty("card", true);
    auto* label = new QLabel(name, card.frame);
    label->setObjectName(QStringLiteral("card_label_"));
    card.value = new QLabel(card.frame);
    card.value->setObjectName(QLatin1String(objectName) + QStringLiteral("value_"));
    card.value->setProperty("role", QStringLiteral("figure"));
    auto* column = new QVBoxLayout(card.frame);
    column->setContentsMargins(16, 13, 16, 13);
    column->setSpacing(2);
    column->addWidget(label);
    column->addWidget(card.value);
    if (withDetail) {
        card.detail = new QLabel(card.frame);
        card.detail->setObjectName(QStringLiteral("card_detail_"));
        column->addWidget(card.detail);
    }
    for (auto* text : {card.value, card.detail}) {
        if (text != nullptr) {
            text->setTextFormat(Qt::PlainText);
            text->setTextInteractionFlags(Qt::TextSelectableByMouse);
        }
    }
    return card;
}

void StatisticsView::Set(Statistics const& values) {
    received_.value->setText(GetDataSizeStrFrom(values.inboundBytes));
    received_.detail->setText(packets(values.inboundPackets));
    sent_.value->setText(GetDataSizeStrFrom(values.outboundBytes));
    sent_.detail->setText(packets(values.outboundPackets));
    compressionReceived_.value->setText(ratio(values.inboundCompRatio));
    compressionSent_.value->setText(ratio(values.outboundCompRatio));
    show(true);
}

void StatisticsView::Clear() {
    for (auto const& card : {received_, sent_, compressionReceived_, compressionSent_}) {
        card.value->clear();
        if (card.detail != nullptr) {
            card.detail->clear();
        }
    }
    show(false);
}

}  // namespace zorvanelink::ui
