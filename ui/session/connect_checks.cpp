// What a profile needs before its start message can be built: password, certificate, PIN.

#include "common/auth_type.h"
#include "components/logger/logger.h"
#include "components/utils/secret_string.h"
#include "components/utils/sensitive_value.h"
#include "ui/session/connect_flow.h"
#include "ui/session/start_message.h"
#include "ui/text/texts.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using components::logger::Log;
namespace utils = components::utils;

constexpr std::uint16_t kCertTypeNeedsPin = 2;

bool stored(std::string const& sensitive_value) {
    utils::SecretString const clear(utils::DecodeSensitiveValue(sensitive_value));
    return !clear.Get().empty();
}

}  // namespace

bool ConnectFlow::CheckProfile(std::shared_ptr<Profile> const& profile) {
    if (common::NeedsPassword(profile->authType) && !stored(profile->password)) {
        Log().info("Empty password, need input");
        if (!CheckPassword(profile)) {
            return false;
        }
    }
    return !common::NeedsCertificate(profile->authType) || CheckCert(profile);
}

std::optional<SecretAnswer> ConnectFlow::askFor(SecretTexts const& texts, Profile const& profile) {
    SecretRequest request;
    request.parent = core_.window;
    request.title = GetTrMsg(texts.title);
    request.subject = QString::fromStdString(profile.name);
    std::string const& whose = profile.userName;
    request.subjectDetail =
        QString::fromStdString(whose.empty() ? profile.server : whose + " · " + profile.server);
    request.label = GetTrMsg(texts.label);
    request.label2 = GetCaption(texts.name);
    request.placeholder = request.label;
    request.okButton = GetTrMsg(MsgCode::UI_INFO_OK);
    request.cancelButton = GetTrMsg(MsgCode::UI_INFO_CANCEL);
    request.rememberText = GetTrMsg(texts.remember);
    request.remember = texts.remembered;
    request.maxUtf8Length = texts.max_bytes;
    request.tooLongMessage = GetTrMsg(texts.too_long);
    request.emptyMessage = request.label;
    // Who has just clicked here need not be called; a login that began by itself finds nobody.
    QWidget const* const window = core_.window;
    if (window == nullptr || !window->isActiveWindow() || window->isMinimized()) {
        core_.Demand(request.title);
    }
    std::optional<SecretAnswer> answer = core_.prompts.InputSecret(request);
    return answer && !answer->value.empty() ? answer : std::nullopt;
}

bool ConnectFlow::CheckPassword(std::shared_ptr<Profile> const& profile) {
    auto const answer =
        askFor({MsgCode::UI_INFO_INPUT_PWD, MsgCode::UI_INFO_PLEASE_INPUT_THE_PWD,
                MsgCode::UI_INFO_PASSWORD, MsgCode::UI_INFO_REMEMBER_PWD,
                MsgCode::UI_TR_ERR_PWD_LENGTH, kMaxPasswordBytes, profile->rememberPassword},
               *profile);
    if (answer) {
        profile->password = answer->value;
        keepAnswer(answer->remember, profile->rememberPassword, *profile);
    }
    return answer.has_value();
}

bool ConnectFlow::CheckPincode(std::shared_ptr<Profile> const& profile) {
    bool const gm = profile->loginMode == kLoginModeGm;
    bool& remember = gm ? profile->rememberGmPin : profile->rememberTlsPin;
    auto const answer = askFor(
        {MsgCode::UI_INFO_INPUT_PINCODE, MsgCode::UI_INFO_INPUT_PIN_CODE, MsgCode::UI_INFO_PINCODE,
         MsgCode::UI_INFO_REMEMBER_PIN, MsgCode::UI_TR_ERR_PIN_CODE_LENGTH, kMaxPinBytes, remember},
        *profile);
    if (answer) {
        (gm ? profile->gmCert.pin : profile->systemCert.pin) = answer->value;
        keepAnswer(answer->remember, remember, *profile);
    }
    return answer.has_value();
}

// The box to remember holds both ways.
void ConnectFlow::keepAnswer(bool remember, bool& flag, Profile& profile) {
    bool const changed = std::exchange(flag, remember) != remember;
    if (remember) {
        profile.credentialPrompted = false;
    }
    if (remember || changed) {
        core_.config.Save();
    }
}

bool ConnectFlow::CheckCert(std::shared_ptr<Profile> const& profile) {
    Log().info("Check cert, [{}] of profile[{}]", profile->certIsFile ? "is file" : "not file",
               profile->name);
    bool const gm = profile->loginMode == kLoginModeGm;
    if (profile->certIsFile) {
        // Its PIN came with the import and is never asked for.
        Log().info("Check cert file name[{}]", profile->fileCert.commonName);
        if (!profile->fileCert.commonName.empty()) {
            return true;
        }
    }
    std::uint16_t const type = gm ? profile->gmCert.certType : profile->systemCert.certType;
    std::string const& name = gm ? profile->gmCert.certName : profile->systemCert.certName;
    std::string const& pin = gm ? profile->gmCert.pin : profile->systemCert.pin;
    if (!profile->certIsFile && (gm ? profile->rememberGmPin : profile->rememberTlsPin)) {
        profile->credentialPrompted = false;
    }
    if (profile->certIsFile || name.empty()) {
        criticalBox(GetTrMsg(MsgCode::UI_ERROR_NO_CERT));
        return false;
    }
    if (type != kCertTypeNeedsPin || stored(pin) || CheckPincode(profile)) {
        return true;
    }
    Log().warning("Failed to check cert[{}] pincode of profile[{}]", name, profile->name);
    return false;
}

QString ConnectFlow::Profile2JsonString(QString const& type,
                                        std::shared_ptr<Profile> const& profile) {
    bool const query = core_.context.needQueryAuthType;
    if (type != QLatin1String("start")) {
        return QString::fromStdString(BuildStopMessage(*profile, query));
    }
    std::optional<std::string> const json = BuildStartMessage(*profile, query, core_.config);
    if (!json) {
        return {};
    }
    state_.connectingProfileName = query ? profile->name : std::string();
    core_.config.hasPromotedUpdate = true;  // only the first start of a run tells that it is one
    return QString::fromStdString(*json);
}

}  // namespace zorvanelink::ui
