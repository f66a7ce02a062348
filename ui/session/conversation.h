// A dialog or page of the login that stands while the service goes on speaking. At most one is
// open; it alone decides how it ends. GUI thread.
#pragma once

#include <utility>

#include "common/message_catalogue.h"

namespace zorvanelink::ui {

class Conversation {
  public:
    // Whether it may go on when the session below has ended, because it begins an attempt of its
    // own. Until it has ended the state stays what it was.
    virtual bool OutlivesSession() const { return false; }
    // True when the code answers what the user has sent from here: shown here and nowhere else.
    virtual bool OnAnswer(common::MsgCode /*code*/) { return false; }
    // The connection behind it goes down.
    virtual void OnLost() = 0;
    // Its step is over: it ends without a stop, a box or a message.
    virtual void OnEnded() = 0;
    // The service has reported, or a failure was shown: nothing of it times out any more.
    virtual void StopDeadline() {}

  protected:
    ~Conversation() = default;
};

// The place of the one that is open.
class OpenConversation {
  public:
    // Another one that is open has ended by that.
    void Open(Conversation& conversation) {
        if (now_ != &conversation) {
            End();
        }
        now_ = &conversation;
    }
    // By the conversation itself, once its dialog is gone.
    void Close(Conversation const& conversation) {
        if (now_ == &conversation) {
            now_ = nullptr;
        }
    }
    void End() {
        if (Conversation* const ended = std::exchange(now_, nullptr)) {
            ended->OnEnded();
        }
    }

    bool Stands() const { return now_ != nullptr; }
    bool Is(Conversation const& conversation) const { return now_ == &conversation; }
    bool OutlivesSession() const { return now_ != nullptr && now_->OutlivesSession(); }
    bool OnAnswer(common::MsgCode code) { return now_ != nullptr && now_->OnAnswer(code); }
    void OnLost() {
        if (now_ != nullptr) {
            now_->OnLost();
        }
    }
    void StopDeadline() {
        if (now_ != nullptr) {
            now_->StopDeadline();
        }
    }

  private:
    Conversation* now_ = nullptr;
};

}  // namespace zorvanelink::ui
