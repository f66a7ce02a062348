// A dialog or page of the login that stands while the service goes on speaking. At most one is
// open; it alone decides how it ends. GUI thread.
#pragma once

#include <memory>
#include <utility>

#include "common/message_catalogue.h"

namespace zorvanelink::ui {

class Conversation {
  public:
    // Whether it may go on when the session below has ended, because it begins an attempt of its
    // own. Until it has ended the state stays what it was.
    virtual bool OutlivesSession() const { return false; }
    // Whether it may go on when the login has succeeded, because it is no step of it.
    virtual bool OutlivesLogin() const { return false; }
    // True when the code concerns this conversation alone: shown here, if at all.
    virtual bool OnAnswer(common::MsgCode /*code*/) { return false; }
    // The connection behind it goes down.
    virtual void OnLost() = 0;
    // Its step is over: it ends without a stop, a box or a message.
    virtual void OnEnded() = 0;
    // The same, for another demand of the service.
    virtual void OnSuperseded() { OnEnded(); }
    // The service has reported, or a failure was shown: nothing of it times out any more.
    virtual void StopDeadline() {}

  protected:
    ~Conversation() = default;
};

// The place of the one that is open.
class OpenConversation {
  public:
    // Another one that is open ends by that.
    void Open(Conversation& conversation) {
        Conversation* const before = std::exchange(now_, &conversation);
        if (before != nullptr && before != &conversation) {
            before->OnSuperseded();
        }
    }
    // By the conversation itself, once its dialog is gone.
    void Close(Conversation const& conversation) {
        for (Conversation** const place : {&now_, &leaving_}) {
            if (*place == &conversation) {
                *place = nullptr;
            }
        }
    }
    void End() {
        if (Conversation* const ended = std::exchange(now_, nullptr)) {
            ended->OnEnded();
        }
    }

    bool Stands() const { return now_ != nullptr; }
    void EndLogin() {
        if (now_ != nullptr && !now_->OutlivesLogin()) {
            End();
        }
    }
    // A text comes first that says why: nothing reaches the conversation any more, and it ends with
    // the last copy of what is returned, whatever becomes of the text. Null when nothing ends.
    std::shared_ptr<void> EndBehind() {
        if (now_ == nullptr || now_->OutlivesSession()) {
            return nullptr;
        }
        now_->StopDeadline();
        if (Conversation* const before = std::exchange(leaving_, std::exchange(now_, nullptr))) {
            before->OnEnded();  // its text is no longer the last one
        }
        return {leaving_, [this](Conversation const* ended) {
                    if (leaving_ == ended) {
                        std::exchange(leaving_, nullptr)->OnEnded();
                    }
                }};
    }

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
    Conversation* leaving_ = nullptr;  // behind its text
};

}  // namespace zorvanelink::ui
