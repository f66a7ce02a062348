// A login through a page in the user's browser: opens the page and watches the deadline; the
// service receives the result. GUI thread.
#pragma once

#include <QObject>
#include <QTimer>
#include <chrono>
#include <string>

#include "ui/session/connect_flow.h"
#include "ui/session/failure_presenter.h"
#include "ui/widgets/prompts.h"

namespace zorvanelink::ui {

class ThirdPartyLogin : public QObject {
    Q_OBJECT

  public:
    static constexpr std::chrono::milliseconds kDeadline{540000};

    ThirdPartyLogin(ConnectFlow& flow, FailurePresenter& failures, Prompts& prompts,
                    QWidget* window, QObject* parent = nullptr);

    // `path` is the page's file. Asked again it opens the page again and keeps the first deadline.
    void Open(std::string const& path);
    void Stop() { timer_.stop(); }
    bool Waits() const { return timer_.isActive(); }

  public Q_SLOTS:
    void OnThirdPartyExpire();

  private:
    ConnectFlow& flow_;
    FailurePresenter& failures_;
    Prompts& prompts_;
    QWidget* const window_;
    QTimer timer_;
};

}  // namespace zorvanelink::ui
