// Signatures of the user's own tokens, made on a thread of their own, so that a slow card or a PIN
// that is being typed holds up nobody. The thread and the tokens' module come with the first one.
// GUI thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "components/cert/pkcs11_provider.h"

class QObject;
class QThread;

namespace zorvanelink::ui {

class TokenSigner {
  public:
    // Asks the user; may run a nested event loop. A sensitive value, or none.
    using AskPin =
        std::function<std::optional<std::string>(components::cert::PinQuestion const& question)>;
    using Done = std::function<void(components::cert::TokenSignature const& signature)>;

    TokenSigner() = default;
    ~TokenSigner();
    TokenSigner(TokenSigner const&) = delete;
    TokenSigner& operator=(TokenSigner const&) = delete;

    // One at a time: `done` comes later, once, unless it is dropped.
    void Sign(std::string const& uri, components::cert::SignJob const& job, AskPin ask, Done done);
    // What runs ends without a word; a PIN that is still being typed goes nowhere.
    void Drop();
    // Logs every token out, once what runs has ended.
    void CloseSessions();

  private:
    class Talk;

    void run(std::function<void()> work);

    std::shared_ptr<components::cert::Pkcs11Provider> const provider_ =
        std::make_shared<components::cert::Pkcs11Provider>();
    std::shared_ptr<Talk> talk_;  // with the thread, about the signature that runs
    QThread* thread_ = nullptr;
    QObject* worker_ = nullptr;
    bool open_ = false;  // a token may be logged in
};

}  // namespace zorvanelink::ui
