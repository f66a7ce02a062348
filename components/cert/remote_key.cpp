#include "components/cert/remote_key.h"

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>

#include "components/logger/logger.h"

namespace zorvanelink::components::cert {

using logger::Log;

struct RemoteKey::State {
    State(std::function<bool(std::string const&)> send_request, std::chrono::milliseconds wait_time)
        : send(std::move(send_request)), wait(wait_time) {}

    std::optional<std::string> Ask(std::string const& request);
    RSARepData AskRsa(RSAReqType type, std::string const& request);
    void Close(bool answersStillCome);

    std::function<bool(std::string const&)> const send;
    std::chrono::milliseconds const wait;

    std::mutex mutex;
    std::condition_variable changed;
    bool open = true;
    std::uint64_t turn = 0;             // rises with what ends an operation that waits
    std::size_t owed = 0;               // requests that have not been answered
    std::optional<std::string> answer;  // to the last request
};

std::optional<std::string> RemoteKey::State::Ask(std::string const& request) {
    std::unique_lock lock(mutex);
    if (!open) {
        Log().warning("Nothing is signed for a session that has stopped");
        return std::nullopt;
    }
    auto const deadline = std::chrono::steady_clock::now() + wait;
    std::uint64_t const mine = ++turn;
    answer.reset();
    // Whether it goes or not: what does not go in time may still go later, and is answered then.
    ++owed;
    changed.notify_all();
    lock.unlock();
    bool const sent = send(request);
    lock.lock();
    if (!sent) {
        Log().error("Failed to send a signing request");
        return std::nullopt;
    }
    if (!changed.wait_until(lock, deadline, [&] { return answer || turn != mine; })) {
        Log().error("No answer to a signing request within {} ms", wait.count());
        return std::nullopt;
    }
    if (turn != mine) {
        Log().warning("A signing request ended before its answer: link lost, stop or a new one");
        return std::nullopt;
    }
    return std::move(answer);
}

RSARepData RemoteKey::State::AskRsa(RSAReqType type, std::string const& request) {
    RSARepData reply;
    auto const text = Ask(request);
    if (text && !reply.Deserial(*text)) {
        Log().error("The answer to a signing request cannot be read");
    } else if (text && reply.data.empty()) {
        Log().error("Nothing was signed, the answer is {}", reply.ret);
    } else if (text && GetRSAType(*text) != type) {
        Log().error("The answer to operation {} is one to {}", static_cast<int>(type),
                    static_cast<int>(GetRSAType(*text)));
        reply = {};
    }
    return reply;
}

void RemoteKey::State::Close(bool answersStillCome) {
    std::lock_guard const lock(mutex);
    open = false;
    ++turn;
    if (!answersStillCome) {
        owed = 0;
    }
    changed.notify_all();
}

RemoteKey::RemoteKey(std::function<bool(std::string const&)> send, std::chrono::milliseconds wait)
    : state_(std::make_shared<State>(std::move(send), wait)) {
}

RemoteKey::~RemoteKey() {
    Stop();
}

CertRsaMethFuns RemoteKey::RsaFuns() const {
    auto const crossing = [state = state_](RSAReqType type) {
        return [state, type](RSAMethReqArgs const& args) {
            return state->AskRsa(type, args.Serial(type));
        };
    };
    CertRsaMethFuns funs;
    funs.pub_enc = crossing(kRSAPubEnc);
    funs.pub_dec = crossing(kRSAPubDec);
    funs.priv_enc = crossing(kRSAPrivEnc);
    funs.priv_dec = crossing(kRSAPrivDec);
    funs.sign = [state = state_](RSASignReqArgs const& args) {
        return state->AskRsa(kRSASign, args.Serial());
    };
    funs.verify = [state = state_](RSAVerfyReqArgs const& args) {
        return state->AskRsa(kRSAVerify, args.Serial());
    };
    return funs;
}

CertECCMethFuns RemoteKey::EccFuns() const {
    return {[state = state_](ECCReqArgs const& args) {
        ECCRepData reply;
        auto const text = state->Ask(args.Serial());
        if (text && !reply.Deserial(*text)) {
            Log().error("The answer to a signing request cannot be read");
        }
        return reply;
    }};
}

void RemoteKey::Answer(std::string text) {
    std::lock_guard const lock(state_->mutex);
    if (state_->owed == 0 || --state_->owed > 0) {
        Log().info("An answer to no present signing request is dropped");
        return;
    }
    state_->answer = std::move(text);
    state_->changed.notify_all();
}

void RemoteKey::Stop() {
    state_->Close(true);
}

void RemoteKey::LinkLost() {
    state_->Close(false);
}

void RemoteKey::Begin() {
    std::lock_guard const lock(state_->mutex);
    state_->open = true;
}

}  // namespace zorvanelink::components::cert
