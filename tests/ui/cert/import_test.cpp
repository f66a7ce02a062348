// Import into the store: what is refused, in which order, and what an import leaves behind.
#include "components/cert/pkcs12.h"
#include "tests/ui/cert/cert_fixture.h"

namespace zorvanelink::ui {
namespace {

using test::MakePkcs12;
using test::Pkcs12Recipe;

TEST_F(CertDialogTest, ImportRefusals) {
    enum Target { kNone, kTls, kGm };
    Pkcs12Recipe const rsa;
    Pkcs12Recipe const gm{"SM2", EVP_sm3()};
    Pkcs12Recipe const elliptic{"EC"};
    Pkcs12Recipe keyOnly;
    keyOnly.withCertificate = false;
    Pkcs12Recipe open;
    open.password = "";
    struct Case {
        char const* name;
        std::string bytes;
        char const* password;
        Target target;
        MsgCode refusal;  // UI_INFO_NONE: imported
    } const cases[] = {
        {"wrong password", MakePkcs12(rsa), "shut", kTls, MsgCode::UI_TR_WRONG_CERT_PWD},
        {"wrong password of a wrong kind", MakePkcs12(gm), "shut", kTls,
         MsgCode::UI_TR_WRONG_CERT_PWD},
        {"no PKCS#12", "junk", "open", kTls, MsgCode::UI_TR_IMPORT_CERT_FAILED},
        {"no certificate", MakePkcs12(keyOnly), "open", kNone, MsgCode::UI_TR_IMPORT_CERT_FAILED},
        {"elliptic curve", MakePkcs12(elliptic), "open", kTls,
         MsgCode::UI_TR_UNSUPPORTED_CERT_TYPE},
        {"the key's kind comes before the mismatch", MakePkcs12(elliptic), "open", kGm,
         MsgCode::UI_TR_UNSUPPORTED_CERT_TYPE},
        {"GM for TLS", MakePkcs12(gm), "open", kTls, MsgCode::UI_TR_WRONG_CERT_SSL_TYPE},
        {"TLS for GM", MakePkcs12(rsa), "open", kGm, MsgCode::UI_TR_WRONG_CERT_SSL_TYPE},
        {"GM without a target", MakePkcs12(gm), "open", kNone, MsgCode::UI_INFO_NONE},
        {"GM for GM", MakePkcs12(gm), "open", kGm, MsgCode::UI_INFO_NONE},
        {"TLS for TLS", MakePkcs12(rsa), "open", kTls, MsgCode::UI_INFO_NONE},
        {"empty password", MakePkcs12(open), "", kTls, MsgCode::UI_INFO_NONE},
    };
    for (Case const& c : cases) {
        SCOPED_TRACE(c.name);
        Config fresh;
        CertInfo target;
        target.isTls = c.target != kGm;
        DigitalCertDialog dialog(c.target == kNone ? nullptr : &target, fresh, prompts);
        expectImport(write("file.p12", c.bytes), c.password);
        bool const refused = c.refusal != MsgCode::UI_INFO_NONE;
        if (refused) {
            prompts.ExpectBox(text(c.refusal), 0);
        }
        click(dialog, "btn_import_");
        EXPECT_EQ(fresh.clientCerts.empty(), refused);
        EXPECT_EQ(boxOf(dialog).Pages().empty(), refused);
        EXPECT_EQ(prompts.Finished(), true);
    }
}

TEST_F(CertDialogTest, SeventeenthImportIsRefusedBeforeTheFileIsChosen) {
    for (std::size_t i = 0; i < Config::kMaxClientCertNum; ++i) {
        CertInfo cert;
        cert.fingerprint = std::to_string(i);
        config.clientCerts[cert.fingerprint] = cert;
    }
    DigitalCertDialog dialog(nullptr, config, prompts);
    prompts.ExpectBox(text(MsgCode::UI_TR_CERT_FILE_NUM_LIMIT), 0);
    click(dialog, "btn_import_");
}

TEST_F(CertDialogTest, SameCertificateUnderAnotherNameIsRefused) {
    std::string const bytes = MakePkcs12({});
    DigitalCertDialog dialog(nullptr, config, prompts);
    expectImport(write("first.p12", bytes), "open");
    click(dialog, "btn_import_");
    QString const second = write("second.pfx", bytes);
    expectImport(second, "open");
    prompts.ExpectBox(text(MsgCode::UI_TR_CERT_ALREADY_IMPORT).arg(second), 0);
    click(dialog, "btn_import_");
    EXPECT_EQ(config.clientCerts.size(), 1U);
}

TEST_F(CertDialogTest, StoreThatCannotBeWrittenIsToldAndChangesNothing) {
    test::WriteFile(GetConfigClientCertPath().toStdString(), "a file where the folder should be");
    DigitalCertDialog dialog(nullptr, config, prompts);
    expectImport(write("file.p12", MakePkcs12({})), "open");
    prompts.ExpectBox(text(MsgCode::UI_TR_FILE_NOT_WRITABLE), 0);
    click(dialog, "btn_import_");
    EXPECT_TRUE(config.clientCerts.empty());
    EXPECT_TRUE(boxOf(dialog).Pages().empty());
}

TEST_F(CertDialogTest, CancelledPromptsImportNothing) {
    test::LogCapture const log;
    DigitalCertDialog dialog(nullptr, config, prompts);
    prompts.ExpectFile(std::nullopt);
    click(dialog, "btn_import_");
    EXPECT_FALSE(log.Has("Input pincode error"));
    prompts.ExpectFile(write("file.p12", MakePkcs12({})));
    prompts.ExpectSecret(std::nullopt);
    click(dialog, "btn_import_");
    EXPECT_TRUE(log.Has("Input pincode error"));
    EXPECT_TRUE(config.clientCerts.empty());
    EXPECT_EQ(prompts.Secrets().back().maxUtf8Length, 127);
    EXPECT_TRUE(prompts.Secrets().back().emptyMessage.isEmpty()) << "an empty password is legal";
}

TEST_F(CertDialogTest, ImportIsSavedPrivatelyAndKeepsNoPasswordInClear) {
    char const* const password = "t0p-5ecret-PIN";
    Pkcs12Recipe recipe;
    recipe.password = password;
    std::string const bytes = MakePkcs12(recipe);
    test::LogCapture const log;
    DigitalCertDialog dialog(nullptr, config, prompts);
    expectImport(write("file.p12", bytes), password);
    click(dialog, "btn_import_");
    ASSERT_EQ(config.clientCerts.size(), 1U);
    CertInfo const cert = config.clientCerts.begin()->second;
    EXPECT_EQ(test::ReadFile(fileOf(cert)), bytes);
    EXPECT_EQ(modeOf(fileOf(cert)), 0600U);
    EXPECT_EQ(modeOf(fileOf(cert).parent_path()), 0700U);
    EXPECT_FALSE(fileHas(password));
    EXPECT_FALSE(log.Has(password));

    Config next;
    next.Load();
    ASSERT_TRUE(next.IsClientCertExist(cert)) << "the import saved the configuration";
    EXPECT_EQ(components::utils::DecodeSensitiveValue(next.GetClientCert(cert.fingerprint)->pin),
              password);
}

}  // namespace
}  // namespace zorvanelink::ui
