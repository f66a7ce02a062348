#include "ui/session/start_message.h"

#include <array>
#include <string_view>

#include "app/environment/app_ctrl.h"
#include "app/environment/globals.h"
#include "app/environment/paths.h"
#include "common/auth_type_list.h"
#include "components/utils/base64.h"
#include "core/clmsg_json.h"
#include "ui/session/cert_material.h"

namespace zorvanelink::ui {
namespace {

using core::sslvpn::CLMsgJson;
using core::sslvpn::CLMsgStartData;
namespace utils = components::utils;

constexpr std::uint16_t kSpaWithoutPort = 0;
constexpr std::uint16_t kSpaWithPort = 1;

// What every message of a profile carries.
CLMsgStartData commonFields(Profile const& profile, bool query) {
    CLMsgStartData data;
    data.userDataPath = GetAppDataDirPath().toStdString();
    data.profileName = profile.name;
    data.needQueryAuthType = query;
    data.keepAuthType = !query && profile.keepAuthType;
    data.lastTimeSupportedAuthType =
        utils::ConvertSupportedAuthTypeToStrList(profile.lastSupportedAuthTypes);
    return data;
}

// False when the chosen certificate is gone.
bool addCertificate(CLMsgStartData& data, Profile const& profile, Config const& config) {
    std::string const material = InitCert(profile, config);
    if (material.empty()) {
        return false;
    }
    if (profile.certIsFile) {
        CertInfo const* const imported = config.GetClientCert(profile.fileCert.fingerprint);
        data.pkcs12CertFileData = utils::Base64Encode(material, false);
        // A container that was replaced since brought the PIN that opens it.
        data.encryptedPinCode =
            imported != nullptr && !imported->pin.empty() ? imported->pin : profile.fileCert.pin;
        return true;
    }
    data.certData = material;
    bool const gm = profile.loginMode == kLoginModeGm;
    if (std::string const& pin = gm ? profile.gmCert.pin : profile.systemCert.pin; !pin.empty()) {
        data.encryptedPinCode = pin;
    }
    if (gm) {
        data.certName = profile.gmCert.certName;
        return true;
    }
    data.isSupportCNG = profile.systemCert.isSupportCNG;
    data.certName = profile.systemCert.certName;
    data.certFingerprint = utils::Base64Encode(profile.systemCert.fingerprint, false);
    return true;
}

void addLists(CLMsgStartData& data, Profile const& profile) {
    for (auto const& [name, gateway] : profile.gatewayList) {
        if (!gateway.addr.empty()) {
            data.gatewayList[name] = {gateway.addr, std::to_string(gateway.detectPort),
                                      std::to_string(gateway.sslPort)};
        }
    }
    for (auto const& [addr, server] : profile.clusterList) {
        if (!addr.empty()) {
            data.clusterList[addr] = {addr, server.port};
        }
    }
}

}  // namespace

std::optional<std::string> BuildStartMessage(Profile const& profile, bool query,
                                             Config const& config) {
    CLMsgStartData data = commonFields(profile, query);
    data.uiUUID = config.uuid.toStdString();
    data.UIAdmin = AppCtrl::Instance().requireAdmin;
    data.server = profile.server;
    data.port = profile.port;
    data.enableGMSSL = profile.loginMode == kLoginModeGm;
    data.authType = profile.authType;
    data.user = profile.userName;
    data.encryptedPassword = profile.password;
    if (common::NeedsCertificate(profile.authType) && !addCertificate(data, profile, config)) {
        return std::nullopt;
    }
    data.enableSPA = profile.spaMode == kSpaWithoutPort || profile.spaMode == kSpaWithPort;
    if (profile.spaMode == kSpaWithPort) {
        data.spaPort = profile.spaPort;
    }
    data.commOptimMode = profile.commOptimMode;
    data.logLevel = Int2LogString(g_log_level);
    data.optimalChannel = profile.optimalChannel;
    data.gatewayDetect = profile.gatewayDetect;
    data.perferredGatewayName = profile.perferredGatewayName;
    data.enableVerifyServerCert = profile.verifyServerCert;
    data.enableAutoReconnect = config.autoReconnect;
    data.enableAutoUpdate = config.autoUpdate;
    data.hasPromotedUpdate = config.hasPromotedUpdate;
    addLists(data, profile);
    return CLMsgJson::BuildStart(data);
}

std::string BuildStopMessage(Profile const& profile, bool query) {
    return CLMsgJson::BuildStop(commonFields(profile, query));
}

std::string Int2LogString(int level) {
    constexpr std::array<std::string_view, 5> kLevels{"verbose", "debug", "info", "warning",
                                                      "error"};
    auto const index = static_cast<std::size_t>(level);
    return std::string(index < kLevels.size() ? kLevels[index] : kLevels[2]);
}

}  // namespace zorvanelink::ui
