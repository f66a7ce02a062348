#include "ui/session/signing_statuses.h"

#include <QWidget>

#include "components/logger/logger.h"
#include "core/clmsg_json.h"
#include "ui/session/cert_material.h"
#include "ui/text/texts.h"

namespace zorvanelink::ui {

using common::MsgCode;
using components::logger::Log;
namespace cert = components::cert;

namespace {

constexpr char kTokenScheme[] = "pkcs11:";

QString triesLeft(cert::PinTries tries) {
    switch (tries) {
        case cert::PinTries::kFew:
            return Translate(
                QT_TRANSLATE_NOOP("ui", "The token takes only a few more wrong PINs."));
        case cert::PinTries::kLast:
            return Translate(
                QT_TRANSLATE_NOOP("ui", "The token takes one more PIN; a wrong one locks it."));
        case cert::PinTries::kNone:
            return Translate(QT_TRANSLATE_NOOP("ui", "The token is locked."));
        default:
            return {};
    }
}

QString reason(cert::TokenSignature::Outcome outcome) {
    using Outcome = cert::TokenSignature::Outcome;
    switch (outcome) {
        case Outcome::kWrongPin:
            return Translate(QT_TRANSLATE_NOOP("ui", "The PIN is wrong"));
        case Outcome::kPinLocked:
            return Translate(
                QT_TRANSLATE_NOOP("ui", "The token is locked after too many wrong PINs"));
        case Outcome::kNoToken:
            return Translate(QT_TRANSLATE_NOOP("ui", "The token of the certificate is not there"));
        case Outcome::kRefused:
            return Translate(
                QT_TRANSLATE_NOOP("ui", "The token does not make the signature that is needed"));
        default:
            return Translate(QT_TRANSLATE_NOOP("ui", "The token did not sign"));
    }
}

}  // namespace

SigningStatuses::SigningStatuses(SessionCore& core, ConnectFlow& flow, BoxQueue& boxes)
    : core_(core), flow_(flow), boxes_(boxes) {
    QObject::connect(&core_, &SessionCore::Stopping, &boxes_, [this] { overtake(); });
    QObject::connect(&core_, &SessionCore::Changed, &boxes_, [this] { onChanged(); });
}

void SigningStatuses::HandleSignRequest(Data const& data, Profile& profile) {
    overtake();
    if (profile.loginMode == kLoginModeGm) {
        HandleGmSignData(data, profile);
    } else {
        HandleSignData(data, profile);
    }
}

void SigningStatuses::HandleSignData(Data const& data, Profile const& profile) {
    if (InitCert(profile, core_.config).empty()) {
        flow_.StopConnect();
        return;
    }
    auto const job = cert::ReadSignJob(data.certRequestStr);
    if (!job) {
        Log().error("A signing request for profile [{}] cannot be read", profile.name);
    } else if (!job->data.empty() && !profile.certIsFile &&
               profile.systemCert.certAlias.starts_with(kTokenScheme)) {
        askToken(*job, profile);
    } else {
        answer(profile.name, cert::NothingSigned());
    }
}

void SigningStatuses::HandleGmSignData(Data const& data, Profile const& profile) {
    if (InitCert(profile, core_.config).empty()) {
        flow_.StopConnect();
        return;
    }
    cert::ECCReqArgs request;
    if (request.Deserial(data.certRequestStr) && request.dataLen > 0) {
        answer(profile.name, cert::ECCRepData{}.Serial());
    } else {
        Log().error("A signing request for profile [{}] cannot be read", profile.name);
    }
}

void SigningStatuses::askToken(cert::SignJob const& job, Profile const& profile) {
    asking_ = profile.name;
    tokens_.Sign(
        profile.systemCert.certAlias, job,
        [this](auto const& question) { return askPin(question); },
        [this, job](cert::TokenSignature const& made) {
            if (auto const name = std::exchange(asking_, std::nullopt)) {
                answer(*name, cert::SignAnswer(job, made.signature));
                tell(made);
            }
        });
}

std::optional<std::string> SigningStatuses::askPin(cert::PinQuestion const& question) {
    SecretRequest request;
    request.parent = core_.window;
    request.title = GetTrMsg(MsgCode::UI_INFO_INPUT_PINCODE);
    request.subject = QString::fromStdString(question.tokenLabel);
    request.subjectDetail = triesLeft(question.triesLeft);
    request.label = GetTrMsg(MsgCode::UI_INFO_INPUT_PIN_CODE);
    request.label2 = GetTrMsg(MsgCode::UI_INFO_PINCODE);
    request.placeholder = request.label;
    request.okButton = GetTrMsg(MsgCode::UI_INFO_OK);
    request.cancelButton = GetTrMsg(MsgCode::UI_INFO_CANCEL);
    request.maxUtf8Length = kMaxPinBytes;
    request.tooLongMessage = GetTrMsg(MsgCode::UI_TR_ERR_PIN_CODE_LENGTH);
    request.emptyMessage = request.label;
    QWidget const* const window = core_.window;
    if (window == nullptr || !window->isActiveWindow() || window->isMinimized()) {
        core_.Demand(request.title);
    }
    auto const typed = core_.prompts.InputSecret(request);
    return typed && !typed->value.empty() ? std::optional(typed->value) : std::nullopt;
}

// Why nothing was signed; who has cancelled knows.
void SigningStatuses::tell(cert::TokenSignature const& signature) {
    using Outcome = cert::TokenSignature::Outcome;
    if (signature.outcome == Outcome::kSigned || signature.outcome == Outcome::kCancelled) {
        return;
    }
    QString const tries = triesLeft(signature.triesLeft);
    boxes_.SayWhile([here = core_.Now()] { return here.NotBegunAnew(); },
                    OkBox(BoxKind::kWarning, tries.isEmpty() ? reason(signature.outcome)
                                                             : reason(signature.outcome) +
                                                                   QStringLiteral("#@@#") + tries));
}

void SigningStatuses::answer(std::string const& profileName, std::string const& text) {
    core_.Send(core::sslvpn::CLMsgJson::BuildCertSignData(profileName, text));
}

void SigningStatuses::overtake() {
    tokens_.Drop();
    if (auto const name = std::exchange(asking_, std::nullopt)) {
        answer(*name, cert::NothingSigned());
    }
}

void SigningStatuses::onChanged() {
    if (!core_.state.SessionStands()) {
        overtake();
        tokens_.CloseSessions();
    }
}

}  // namespace zorvanelink::ui
