// What the GUI asks: one plain record a message. Texts are UTF-8; passwords, PINs and codes travel
// as the caller encoded them, nothing here decodes or logs them. A std::optional is a key that is
// sent only when it has a value.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "common/auth_type.h"
#include "core/reply_records.h"

namespace zorvanelink::core::sslvpn {

// Stands in every update message as its profile.
inline constexpr char kUpdateProfileName[] = "updater_built";

// "start", both ends. "stop" and the "set" of a profile use the fields up to
// `lastTimeSupportedAuthType`. Fields behind "not sent" are known to the reader only.
struct CLMsgStartData {
    std::string userDataPath;
    std::string systemTextCode = "utf-8";
    std::string profileName;
    bool needQueryAuthType = false;
    bool keepAuthType = false;
    std::vector<std::string> lastTimeSupportedAuthType;  // texts of the types
    std::string uiUUID;
    bool UIAdmin = false;
    std::string server;
    std::int32_t port = 0;
    bool enableGMSSL = false;
    common::SupportedAuthType authType = common::SupportedAuthType::kNone;
    std::string user;
    std::string encryptedPassword;
    // Of a file certificate.
    std::optional<std::string> pkcs12CertFileData;  // Base64
    std::optional<std::string> encryptedPinCode;
    // Of a system certificate.
    std::optional<std::string> certData;
    std::optional<bool> isSupportCNG;
    std::optional<std::string> certName;
    std::optional<std::string> certFingerprint;  // Base64
    bool enableSPA = false;
    std::optional<std::int32_t> spaPort;  // in mode 1
    std::int32_t commOptimMode = 0;
    std::string logLevel;
    std::int32_t concurrentTestNum = 0;
    std::int32_t heartbeatTimeout = 180;  // seconds
    bool optimalChannel = false;
    bool gatewayDetect = false;
    std::string perferredGatewayName;
    bool enableVerifyServerCert = false;
    bool enableAutoReconnect = false;
    bool enableAutoUpdate = false;
    bool hasPromotedUpdate = false;
    std::map<std::string, Gateway> gatewayList;  // by name
    std::map<std::string, Server> clusterList;   // by address (key `addr` of an element)

    // Not sent.
    std::uint64_t processID = 0;
    std::string desc;
    std::int32_t certType = 0;
    std::string certInfo;
    std::string certPath;
    std::string certAlias;
    std::string gmDeviceName;
    std::string gmAppName;
    std::string gmContainerName;
    std::string gmSignCert;
    std::string gmEncCert;
    bool enableLinkSelect = false;
    std::int32_t concurrentTestNumBeg = 0;
    std::int32_t concurrentTestNumBase = 0;
    bool enableConcurrentTestSameUser = false;
    std::string deviceType;
    std::string hostName;
    std::string hostID;
    std::string sysVersion;
    std::string clientVersion;
    std::string devMac;
};

// "stop"
struct CLMsgStopData {
    std::string profileName;
};

// Rows of the table behind CLMsgJson::GetGetType.
enum class GetType : std::int32_t {
    kState,
    kStatistics,
    kConfig,
    kUpdate,
    kVnicStatus,
    kSmsCode,
    kTokenCode,
    kEmailCode,
    kHostcheckData,
    kZtnaRawData,
    kZtnaAppResource,
    kLogLevel,
    kRequestSmsCode,
    kRequestEmailCode,
    kNewPassword,
    kCertSignData,
    kAcceptServerCert,
    kUnknown,
};

// "get"
struct CLMsgGetData {
    std::string profileName;
    GetType getType = GetType::kUnknown;
};

// Rows of CLMsgJson::type_str.
enum class SetType : std::int32_t {
    kVnicStatus,
    kSmsCode,
    kTokenCode,
    kEmailCode,
    kHostcheckData,
    kZtnaRawData,
    kZtnaAppResource,
    kLogLevel,
    kRequestSmsCode,
    kRequestEmailCode,
    kNewPassword,
    kCertSignData,
    kAcceptServerCert,
    kUnknown,
};

// "set": which of the fields count follows from `subtype`.
struct CLMsgSetData {
    std::string profileName;
    SetType subtype = SetType::kUnknown;
    std::int32_t vnicError = 0;
    std::int32_t sysType = 0;
    std::int32_t vnicFd = 0;
    std::string secondAuthCode;
    std::string hostcheckData;
    std::string rawdata;
    std::string logLevel;
    std::string currentPassword;
    std::string newPassword;
    std::string certSignData;
    bool result = false;
};

enum class UpdateCommand : std::int32_t {
    kReportClientInfo,  // profileName, UIAdmin
    kInquire,           // profileName, userDataPath ... enableGMSSL, UIAdmin
    kAnswer,            // policy
    kCancelDownload,    // profileName
    kInstall,           // profileName, policy, path
};

// "update" from the GUI; which of the fields are sent follows from `command`.
struct CLMsgUpdateRequestData {
    UpdateCommand command = UpdateCommand::kReportClientInfo;
    std::string profileName = kUpdateProfileName;
    std::string userDataPath;
    std::string server;
    std::int32_t port = 0;
    bool enableSPA = false;
    std::optional<std::int32_t> spaPort;  // in mode 1
    bool enableGMSSL = false;
    bool UIAdmin = false;
    std::int32_t policy = 0;  // 0 now, 1 later, 2 never
    std::string path;
};

}  // namespace zorvanelink::core::sslvpn
