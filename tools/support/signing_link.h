// Both ends of signing on request with a real link between them: the service's, which has a
// certificate alone, and the front-end's, which has a key or whatever else answers.
#pragma once

#include <openssl/evp.h>
#include <openssl/rsa.h>

#include <memory>
#include <optional>
#include <string>

#include "components/cert/remote_key.h"
#include "components/cert/sign_job.h"
#include "components/ipc/socket_ipc_client.h"
#include "components/ipc/socket_ipc_server.h"
#include "core/clmsg_json.h"
#include "core/clmsg_reply_json.h"

namespace zorvanelink::test {

// As a token signs: PKCS#1 pads, 3 takes the block as it stands.
inline std::string SignWith(EVP_PKEY* key, components::cert::SignJob const& job) {
    std::string const data = components::cert::BytesToPad(job);
    std::unique_ptr<EVP_PKEY_CTX, decltype(&EVP_PKEY_CTX_free)> const context(
        EVP_PKEY_CTX_new(key, nullptr), &EVP_PKEY_CTX_free);
    bool const pads = job.type == components::cert::kRSASign;
    std::string signature(static_cast<std::size_t>(EVP_PKEY_get_size(key)), '\0');
    std::size_t size = signature.size();
    bool const done =
        EVP_PKEY_sign_init(context.get()) == 1 &&
        (EVP_PKEY_get_base_id(key) != EVP_PKEY_RSA ||
         EVP_PKEY_CTX_set_rsa_padding(context.get(), pads ? RSA_PKCS1_PADDING : job.padding) ==
             1) &&
        EVP_PKEY_sign(context.get(), reinterpret_cast<unsigned char*>(signature.data()), &size,
                      reinterpret_cast<unsigned char const*>(data.data()), data.size()) == 1;
    signature.resize(done ? size : 0);
    return signature;
}

// What a front-end with that key answers.
inline std::optional<std::string> AnswerWith(EVP_PKEY* key, std::string const& request) {
    auto const job = components::cert::ReadSignJob(request);
    if (!job) {
        return std::nullopt;
    }
    return components::cert::SignAnswer(*job, job->data.empty() ? "" : SignWith(key, *job));
}

class SigningLink {
  public:
    // Of a request; none is no answer. On the front-end's worker.
    using Answerer = std::function<std::optional<std::string>(std::string const& request)>;

    SigningLink(components::ipc::PortPlace const& place, Answerer answer,
                std::chrono::milliseconds wait = components::cert::RemoteKey::kWait)
        : server_(std::make_shared<components::ipc::SocketIPCServer>(nullptr, place)),
          client_(std::make_shared<components::ipc::SocketIPCClient>("test", nullptr, place)),
          key(
              [server = std::weak_ptr(server_)](std::string const& request) {
                  core::sslvpn::CLMsgCommonReplyData message;
                  message.profileName = kProfile;
                  message.statusCode = common::MsgCode::CERT_REQUEST;
                  message.certRequestStr = request;
                  auto const link = server.lock();
                  return link && send(*link, core::sslvpn::CLMsgReplyJson::Build(message));
              },
              wait),
          answer_(std::move(answer)) {
        using components::ipc::kIPCCommon;
        server_->RegisterIPCMsgCallback(kIPCCommon, [this](char const* text, int length) {
            core::sslvpn::CLMsgSetData message;
            if (core::sslvpn::CLMsgJson::Parse({text, static_cast<std::size_t>(length)},
                                               &message)) {
                key.Answer(message.certSignData);
            }
        });
        server_->SetHeartbeatErrorHandler([this](int) { key.LinkLost(); });
        client_->RegisterIPCMsgCallback(kIPCCommon, [this](char const* text, int length) {
            core::sslvpn::CLMsgCommonReplyData message;
            core::sslvpn::CLMsgReplyJson::Parse({text, static_cast<std::size_t>(length)}, &message);
            if (auto const signed_data = answer_(message.certRequestStr)) {
                send(*client_, core::sslvpn::CLMsgJson::BuildCertSignData(kProfile, *signed_data));
            }
        });
        stands_ = server_->Run() && client_->Run();
    }
    ~SigningLink() {
        LoseFrontEnd();
        server_->Stop();
    }
    SigningLink(SigningLink const&) = delete;
    SigningLink& operator=(SigningLink const&) = delete;

    bool Stands() const { return stands_; }
    void LoseFrontEnd() { client_->Stop(); }

  private:
    static constexpr char kProfile[] = "office";

    // Without a wait: a link that is waited for looks every millisecond.
    static bool send(components::ipc::SocketIPC& link, std::string const& text) {
        auto const header = components::ipc::MakeIPCMsgHeader(
            components::ipc::kIPCCommon, static_cast<std::int32_t>(text.size()));
        std::string const frame =
            std::string(reinterpret_cast<char const*>(&header), sizeof header) + text;
        return link.AsyncSend(frame.data(), frame.size());
    }

    std::shared_ptr<components::ipc::SocketIPCServer> const server_;
    std::shared_ptr<components::ipc::SocketIPCClient> const client_;

  public:
    components::cert::RemoteKey key;

  private:
    Answerer const answer_;
    bool stands_ = false;
};

}  // namespace zorvanelink::test
