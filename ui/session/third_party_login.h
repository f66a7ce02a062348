// A login through a page in the user's browser: opens the page and watches the deadline; the
// service receives the result. GUI thread.
#pragma once

#include <chrono>
#include <string>

#include "ui/session/failure_presenter.h"

namespace zorvanelink::ui {

class ThirdPartyLogin : public QObject, public Conversation {
    Q_OBJECT

  public:
    static constexpr std::chrono::milliseconds kDeadline{540000};

    ThirdPartyLogin(SessionCore& core, FailurePresenter& failures, BoxQueue& boxes);
    ~ThirdPartyLogin() override { core_.conversation.Close(*this); }  // a box may still hold it

    // `path` is the page's file. Asked again it opens the page again and keeps the first deadline.
    void Open(std::string const& path);
    void OpenAgain() {
        if (Waits()) {
            open();
        }
    }
    bool Waits() const { return deadline_.Runs(); }
    // For people; empty while no login waits for its page.
    QString TimeLeft() const { return Waits() ? deadline_.TimeLeft() : QString(); }

    void OnLost() override { end(); }
    void OnEnded() override { end(); }
    void StopDeadline() override;

  Q_SIGNALS:
    void Ticked();

  public Q_SLOTS:
    void OnThirdPartyExpire();

  private:
    void open();
    void end();

    SessionCore& core_;
    FailurePresenter& failures_;
    BoxQueue& boxes_;
    std::string page_;
    Deadline deadline_;
};

}  // namespace zorvanelink::ui
