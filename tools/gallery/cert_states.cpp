#include "tools/gallery/cert_states.h"

#include "tools/support/no_prompts.h"
#include "ui/cert/digital_cert_dialog.h"
#include "ui/cert/tls_cert_dialog.h"

namespace zorvanelink::gallery {
namespace {

CertInfo cert(char const* name, char const* issuer, bool tls = true) {
    CertInfo made;
    made.commonName = name;
    made.certName = name;
    made.issuer = issuer;
    made.validFrom = "2026-01-02 03:04:05";
    made.validTo = "2036-01-02 03:04:05";
    made.isTls = tls;
    return made;
}

void fill(ui::Config& config) {
    CertInfo const certs[] = {
        cert("Alice Chen", "CN=Example Issuing Authority G2,OU=Certification,O=Example Inc,C=DE"),
        cert("\xE5\xBC\xA0\xE4\xBC\x9F",
             "CN=\\E7\\A4\\BA\\E4\\BE\\8B\\E8\\AF\\81\\E4\\B9\\A6\\E9\\A2\\81\\E5\\8F\\91 CA",
             false),
        cert("A certificate whose common name is far longer than any row of the list is wide",
             "CN=Root"),
    };
    char key = '1';
    for (CertInfo const& made : certs) {
        CertInfo kept = made;
        kept.fingerprint = std::string(40, key++);
        config.clientCerts[kept.fingerprint] = kept;
    }
}

}  // namespace

void CertStates(std::function<void(QString const& name, QWidget& dialog)> const& save,
                QWidget* parent) {
    test::NoPrompts prompts;
    ui::Config empty;
    ui::DigitalCertDialog none(nullptr, empty, prompts, parent);
    none.show();
    save(QStringLiteral("cert-empty"), none);
    none.hide();

    ui::Config config;
    fill(config);
    CertInfo target;
    ui::DigitalCertDialog dialog(&target, config, prompts, parent);
    dialog.show();
    save(QStringLiteral("cert-folded"), dialog);
    auto const& pages = dialog.findChild<ui::CertViewBox*>()->Pages();
    pages[1]->SelectButton()->click();
    pages[0]->expand();
    pages[1]->expand();
    save(QStringLiteral("cert-unfolded"), dialog);
    dialog.hide();

    for (std::uint16_t const kind : {ui::kCertTypeUsbKey, ui::kCertTypeFile}) {
        target = config.clientCerts.begin()->second;
        target.certType = kind;
        ui::TLSCertDialog tls(target, config, prompts, parent);
        tls.show();
        tls.onRecvCertInfo({cert("Alice Chen", ""), cert("vpn-laptop-0042", "")});
        save(QStringLiteral("cert-kinds-%1").arg(kind), tls);
    }
}

}  // namespace zorvanelink::gallery
