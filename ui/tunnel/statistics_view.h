// Counters of the tunnel, as four cards.
#pragma once

#include <QFrame>
#include <QLabel>
#include <QString>
#include <QWidget>

namespace zorvanelink::ui {

struct Statistics {
    unsigned long long inboundBytes = 0;
    unsigned long long outboundBytes = 0;
    unsigned long long inboundPackets = 0;
    unsigned long long outboundPackets = 0;
    double inboundCompRatio = 0;  // percent
    double outboundCompRatio = 0;
};

class StatisticsView : public QWidget {
    Q_OBJECT

  public:
    explicit StatisticsView(QWidget* parent = nullptr);

    void Set(Statistics const& values);
    void Clear();  // the cards hide

  private:
    struct Card {
        QFrame* frame;
        QLabel* value;
        QLabel* detail;  // null for a card without one
    };
    void show(bool filled);
    Card addCard(QString const& name, char const* objectName, bool withDetail);

    QWidget* const body_;
    Card received_;
    Card sent_;
    Card compressionReceived_;
    Card compressionSent_;
    QLabel* note_;  // in the place of the cards
};

}  // namespace zorvanelink::ui
