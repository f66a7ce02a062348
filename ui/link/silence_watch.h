// Notices that a service which says something all the time has said nothing for a while.
//
// GUI thread. While nobody watches it does nothing; while the service speaks it looks about once in
// the limit.
#pragma once

#include <QDateTime>
#include <QObject>
#include <QTimer>
#include <chrono>
#include <optional>

#include "ui/link/link_core.h"

namespace zorvanelink::ui {

class SilenceWatch : public QObject {
    Q_OBJECT

  public:
    SilenceWatch(LinkCore& core, std::chrono::milliseconds limit);

    void Watch(bool on);
    // Puts off the next look; a service whose texts arrive costs none.
    void Heard();
    // The silence is over, by a byte or because the link has gone.
    void End();
    std::optional<QDateTime> Since() const { return since_; }

  Q_SIGNALS:
    void Changed(std::optional<QDateTime> const& since);

  private:
    void look();

    LinkCore& core_;
    std::chrono::milliseconds const limit_;
    std::optional<QDateTime> since_;
    bool watching_ = false;
    QTimer timer_;
};

}  // namespace zorvanelink::ui
