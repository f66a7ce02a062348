#include "ui/session/cert_material.h"

#include "components/logger/logger.h"
#include "components/utils/base64.h"
#include "components/utils/file.h"
#include "components/utils/sensitive_value.h"

namespace zorvanelink::ui {
namespace {

using components::logger::Log;
namespace utils = components::utils;

constexpr char kGmPairSeparator = '\r';

std::string fileMaterial(CertInfo const& cert, Config const& config) {
    if (!config.IsClientCertExist(cert)) {
        Log().warning("Failed to find client cert:{}", cert.fingerprint);
        return {};
    }
    std::string bytes;
    if (!utils::ReadContentFromFile(cert.filePath, bytes)) {
        Log().warning("Failed to read system encoded cert:{}", cert.filePath);
        return {};
    }
    Log().debug("Sus to read system encoded cert:{}", cert.filePath);
    if (!utils::SystemDecrypt(bytes)) {
        Log().warning("Failed to system decode cert data:{}", cert.filePath);
        return {};
    }
    return bytes;
}

}  // namespace

std::string InitCert(Profile const& profile, Config const& config) {
    if (profile.certIsFile) {
        return fileMaterial(profile.fileCert, config);
    }
    if (profile.loginMode != kLoginModeGm) {
        return utils::Base64Encode(profile.systemCert.certData, false);
    }
    if (profile.gmCert.signCert.empty() && profile.gmCert.encCert.empty()) {
        return {};  // a container may be empty
    }
    std::string const pair = utils::Base64Encode(profile.gmCert.signCert, false) +
                             kGmPairSeparator + utils::Base64Encode(profile.gmCert.encCert, false);
    Log().info("encode cert:{}", pair);
    return pair;
}

}  // namespace zorvanelink::ui
