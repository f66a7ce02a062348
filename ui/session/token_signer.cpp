#include "ui/session/token_signer.h"

#include <QCoreApplication>
#include <QThread>
#include <condition_variable>
#include <mutex>

#include "components/utils/sensitive_value.h"

namespace zorvanelink::ui {
namespace {

using components::cert::PinQuestion;
using components::cert::TokenSignature;

constexpr unsigned long kLastWait = 2000;  // ms; a card that takes longer is left to its thread

void onGuiThread(std::function<void()> call) {
    QMetaObject::invokeMethod(qApp, std::move(call), Qt::QueuedConnection);
}

}  // namespace

// Between the two threads; outlives whichever ends first.
class TokenSigner::Talk {
  public:
    Talk(AskPin ask, Done done) : ask_(std::move(ask)), done_(std::move(done)) {}

    // GUI thread.
    void Ask(PinQuestion const& question) {
        if (AskPin const ask = ask_) {  // it may be dropped while the prompt stands
            give(ask(question));
        }
    }
    void Finish(TokenSignature const& signature) {
        if (Done const done = std::exchange(done_, nullptr)) {
            done(signature);
        }
    }
    void Drop() {
        ask_ = nullptr;
        done_ = nullptr;
        give(std::nullopt);
    }

    // The signer's thread.
    bool WaitForPin(std::string& pin) {
        std::unique_lock lock(mutex_);
        given_.wait(lock, [this] { return given; });
        if (value_) {
            pin = components::utils::DecodeSensitiveValue(*value_);
        }
        return value_.has_value();
    }

  private:
    void give(std::optional<std::string> value) {
        std::lock_guard const lock(mutex_);
        if (!given) {
            given = true;
            value_ = std::move(value);
            given_.notify_all();
        }
    }

    AskPin ask_;
    Done done_;
    std::mutex mutex_;
    std::condition_variable given_;
    bool given = false;
    std::optional<std::string> value_;
};

TokenSigner::~TokenSigner() {
    Drop();
    if (thread_ != nullptr) {
        worker_->deleteLater();
        thread_->quit();
        if (thread_->wait(kLastWait)) {
            delete thread_;
        }
    }
}

void TokenSigner::run(std::function<void()> work) {
    if (thread_ == nullptr) {
        thread_ = new QThread;
        worker_ = new QObject;
        worker_->moveToThread(thread_);
        thread_->start();
    }
    QMetaObject::invokeMethod(worker_, std::move(work), Qt::QueuedConnection);
}

void TokenSigner::Sign(std::string const& uri, components::cert::SignJob const& job, AskPin ask,
                       Done done) {
    Drop();
    open_ = true;
    talk_ = std::make_shared<Talk>(std::move(ask), std::move(done));
    run([provider = provider_, talk = talk_, uri, job] {
        auto const signature =
            provider->Sign(uri, job, [&talk](PinQuestion const& question, std::string& pin) {
                onGuiThread([talk, question] { talk->Ask(question); });
                return talk->WaitForPin(pin);
            });
        onGuiThread([talk, signature] { talk->Finish(signature); });
    });
}

void TokenSigner::Drop() {
    if (auto const talk = std::exchange(talk_, nullptr)) {
        talk->Drop();
    }
}

void TokenSigner::CloseSessions() {
    if (std::exchange(open_, false)) {
        run([provider = provider_] { provider->CloseSessions(); });
    }
}

}  // namespace zorvanelink::ui
