#include "ui/cert/client_certs.h"

#include "components/cert/pkcs12.h"
#include "components/logger/logger.h"
#include "components/utils/base64.h"
#include "core/clmsg_reply_json.h"
#include "ui/cert/digital_cert_dialog.h"
#include "ui/cert/import_trusted_cert_dialog.h"
#include "ui/cert/tls_cert_dialog.h"

namespace zorvanelink::ui {

using components::logger::Log;
namespace utils = components::utils;

bool SelectClientCert(CertInfo& target, Config& config, Prompts& prompts, QWidget* parent) {
    return DigitalCertDialog(&target, config, prompts, parent).exec() == QDialog::Accepted;
}

void ManageClientCerts(Config& config, Prompts& prompts, QWidget* parent) {
    DigitalCertDialog(nullptr, config, prompts, parent).exec();
}

void ManageTrustedCerts(Prompts& prompts, QWidget* parent) {
    ImportTrustedCertDialog(prompts, parent).exec();
}

bool HasTrustedCerts() {
    return TrustedCerts::Count() > 0;
}

bool SelectTlsCert(CertInfo& target, CertListRoad& road, Config& config, Prompts& prompts,
                   QWidget* parent) {
    TLSCertDialog dialog(target, config, prompts, parent);
    QObject::connect(&dialog, &TLSCertDialog::SendCertRequest, &road,
                     &CertListRoad::SendCertRequest);
    QObject::connect(&road, &CertListRoad::RecvCertInfo, &dialog, &TLSCertDialog::onRecvCertInfo);
    return dialog.exec() == QDialog::Accepted;
}

std::optional<std::vector<CertInfo>> ReadCertRespond(core::CLMsgDocument const& message) {
    Log().info("Handle certificate respond");
    core::sslvpn::ALMsgCertRespondData reply;
    if (!core::sslvpn::CLMsgReplyJson::Parse(message, &reply)) {
        Log().error("Failed to handle certificate respond");
        return std::nullopt;
    }
    std::vector<CertInfo> certs;
    for (std::string const& encoded : reply.certList) {
        CertInfo cert;
        if (utils::ParseX509Cert(cert, utils::Base64Decode(encoded, false))) {
            certs.push_back(std::move(cert));
        }
    }
    return certs;
}

}  // namespace zorvanelink::ui
