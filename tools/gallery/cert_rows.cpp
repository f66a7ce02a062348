// The certificate dialogs.
#include "tools/gallery/stage.h"
#include "tools/support/pkcs12_maker.h"
#include "ui/cert/digital_cert_dialog.h"
#include "ui/cert/import_trusted_cert_dialog.h"
#include "ui/cert/tls_cert_dialog.h"
#include "ui/cert/trust_question.h"

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

ui::DigitalCertDialog& choice(Stage& stage) {
    fill(stage.config);
    return stage.Show<ui::DigitalCertDialog>(&stage.target, stage.config, stage.prompts);
}

template <std::uint16_t kKind>
void kinds(Stage& stage) {
    fill(stage.config);
    stage.target = stage.config.clientCerts.begin()->second;
    stage.target.certType = kKind;
    stage.Show<ui::TLSCertDialog>(stage.target, stage.config, stage.prompts)
        .onRecvCertInfo(
            {cert("Alice Chen", ""), cert("vpn-laptop-0042 whose name is longer than the list",
                                          "CN=Example Issuing Authority G2")});
}

ui::TrustedCerts::Held held(char const* file, char const* name) {
    test::Pkey const key = test::MakeKey("EC");
    test::Cert const made = test::MakeCert(
        {"EC", EVP_sha256(), {{"C", "DE"}, {"O", "Example Inc"}, {"CN", name}}}, key.get());
    ui::TrustedCerts::Held one{QLatin1String(file), {}};
    components::utils::ParseServerCert(test::DerOf<X509>(&i2d_X509, made.get()), file, one.cert);
    return one;
}

std::vector<ui::TrustedCerts::Held> offered() {
    return {held("example-root.pem", "Example Root CA"),
            held("gateway.crt", "The gateway of an office whose name is longer than a line of it")};
}

ui::ImportTrustedCertDialog& trusted(Stage& stage) {
    auto const certs = offered();
    std::for_each(certs.begin(), certs.end(), &ui::TrustedCerts::Store);
    auto& dialog = stage.Show<ui::ImportTrustedCertDialog>(stage.prompts);
    for (ui::TrustedCerts::Held const& one : certs) {
        ui::TrustedCerts::Remove(one.cert);
    }
    return dialog;
}

}  // namespace

std::vector<Row> CertRows() {
    return {
        {"cert-empty",
         [](Stage& stage) {
             stage.Show<ui::DigitalCertDialog>(nullptr, stage.config, stage.prompts);
         }},
        {"cert-folded", [](Stage& stage) { choice(stage); }},
        {"cert-unfolded",
         [](Stage& stage) {
             auto const& pages = choice(stage).findChild<ui::CertViewBox*>()->Pages();
             pages[1]->SelectButton()->click();
             pages[0]->expand();
             pages[1]->expand();
         }},
        {"cert-delete",
         [](Stage& stage) {
             auto& dialog = choice(stage);
             dialog.findChild<ui::CertViewBox*>()->Pages()[0]->SelectButton()->click();
             dialog.OnBtnDeleteClicked();
             stage.ShowBox(stage.prompts.last);
         }},
        {"cert-import",
         [](Stage& stage) {
             stage.prompts.files = {QStringLiteral("alice-chen.p12")};
             choice(stage).OnBtnImportClicked();
             stage.ShowSecret(stage.prompts.lastSecret);
         }},
        {"cert-kinds-waiting",
         [](Stage& stage) {
             stage.Show<ui::TLSCertDialog>(stage.target, stage.config, stage.prompts);
         }},
        {"cert-kinds-system", kinds<ui::kCertTypeSystem>},
        {"cert-kinds-empty",
         [](Stage& stage) {
             stage.Show<ui::TLSCertDialog>(stage.target, stage.config, stage.prompts)
                 .onRecvCertInfo({});
         }},
        {"cert-kinds-usb-key", kinds<ui::kCertTypeUsbKey>},
        {"cert-kinds-file", kinds<ui::kCertTypeFile>},
        {"trusted-empty",
         [](Stage& stage) { stage.Show<ui::ImportTrustedCertDialog>(stage.prompts); }},
        {"trusted-list", [](Stage& stage) { trusted(stage); }},
        {"trusted-question", [](Stage& stage) { stage.Show<ui::TrustQuestion>(offered()); }},
        {"trusted-delete",
         [](Stage& stage) {
             auto& dialog = trusted(stage);
             auto& list = *dialog.findChild<QListView*>();
             list.setCurrentIndex(list.model()->index(0, 0));
             dialog.on_delete_button__clicked();
             stage.ShowBox(stage.prompts.last);
         }},
    };
}

}  // namespace zorvanelink::gallery
