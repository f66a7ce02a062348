// The service's end of signing on request: makes each operation of a key a text for the link, and
// waits for the text that answers it. One a link; the tables that it gives out stay usable when it
// is gone, and sign nothing then.
//
// Requests carry no number: they are answered once each and in their order. An answer to a request
// that nobody waits for any more is dropped; an operation that is asked for while another one waits
// takes its place, and that one fails. Any thread; an operation blocks the thread that asks for it.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "components/cert/cert_interface.h"

namespace zorvanelink::components::cert {

class RemoteKey {
  public:
    static constexpr std::chrono::seconds kWait{120};  // the user may be typing a PIN

    // `send` puts a request on the link, best without a wait of its own, and answers whether that
    // went.
    explicit RemoteKey(std::function<bool(std::string const&)> send,
                       std::chrono::milliseconds wait = kWait);
    ~RemoteKey();
    RemoteKey(RemoteKey const&) = delete;
    RemoteKey& operator=(RemoteKey const&) = delete;

    CertRsaMethFuns RsaFuns() const;
    CertECCMethFuns EccFuns() const;

    void Answer(std::string text);

    // What waits ends at once without an answer, and nothing is asked until Begin: of a session
    // that is stopped, and of a link that is lost, from which no answer comes any more.
    void Stop();
    void LinkLost();
    void Begin();

  private:
    struct State;
    std::shared_ptr<State> const state_;
};

}  // namespace zorvanelink::components::cert
