// The certificate dialogs on a store of their own, with scripted prompts and certificates made at
// run time.
#pragma once

#include <QPushButton>
#include <QtTest/QTest>

#include "components/cert/pkcs12.h"
#include "components/utils/sensitive_value.h"
#include "tests/support/qt_helpers.h"
#include "tests/support/scripted_prompts.h"
#include "tests/ui/config/config_fixture.h"
#include "tools/support/pkcs12_maker.h"
#include "ui/cert/digital_cert_dialog.h"
#include "ui/text/texts.h"

namespace zorvanelink::ui {

class CertDialogTest : public ConfigTest {
  protected:
    using MsgCode = common::MsgCode;

    QString write(char const* name, std::string const& bytes) const {
        return QString::fromStdString(test::WriteFile(home_ / "files" / name, bytes));
    }
    static CertInfo recordOf(QString const& path, char const* password) {
        CertInfo cert;
        cert.filePath = path.toStdString();
        cert.pin = components::utils::EncodeSensitiveValue(password);
        EXPECT_EQ(components::utils::ParsePkcs12Cert(cert, false), 0);
        return cert;
    }
    // A certificate in the store, as an earlier import left it.
    CertInfo stored(char const* name, char const* keyType = "RSA",
                    EVP_MD const* digest = EVP_sha256()) {
        test::Pkcs12Recipe recipe{keyType, digest, {{"CN", name}}};
        QString const path = write("stored.p12", test::MakePkcs12(recipe));
        CertInfo const cert = recordOf(path, "open");
        EXPECT_TRUE(config.AddClientCert(cert));
        return *config.GetClientCert(cert.fingerprint);
    }
    std::filesystem::path fileOf(CertInfo const& cert) const {
        return std::filesystem::path(GetConfigClientCertPath().toStdString()) / cert.fingerprint;
    }
    static QString text(MsgCode code) { return GetTrMsg(code); }
    static CertViewBox& boxOf(DigitalCertDialog& dialog) {
        return test::Find<CertViewBox>(dialog, "cert_view_box_");
    }
    static void click(QWidget& dialog, char const* button) {
        test::Find<QPushButton>(dialog, button).click();
    }
    static void choose(DigitalCertDialog& dialog, std::size_t row) {
        boxOf(dialog).Pages().at(row)->SelectButton()->click();
    }
    void expectImport(QString const& path, char const* password) {
        prompts.ExpectFile(path);
        prompts.ExpectSecret(test::SecretOf(password));
    }

    Config config;
    test::ScriptedPrompts prompts;
};

}  // namespace zorvanelink::ui
