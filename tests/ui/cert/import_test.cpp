// Import into the store: what is refused, in which order, and what an import leaves behind.
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
    Pkcs12Recipe costly{"EC"};
    costly.iterations = 0x10000;
    std::string tooCostly = MakePkcs12(costly);
    tooCostly.replace(tooCostly.rfind(std::string("\x02\x03\x01\x00\x00", 5)) + 2, 1, "\x7F");
    QString const notCostly = Translate(
        QT_TRANSLATE_NOOP("ui",
                          "This file would take too long to open. Export the certificate again "
                          "with fewer than 2,000,000 iterations."));
    struct Case {
        char const* name;
        std::string bytes;
        std::vector<char const*> passwords;  // all but the last are wrong
        Target target;
        QString refusal;  // empty: imported
    } const cases[] = {
        {"wrong passwords", MakePkcs12(rsa), {"shut", "", "open"}, kTls, {}},
        {"wrong password of a wrong kind",
         MakePkcs12(gm),
         {"shut", "open"},
         kTls,
         text(MsgCode::UI_TR_WRONG_CERT_SSL_TYPE)},
        {"no PKCS#12", "junk", {"open"}, kTls, text(MsgCode::UI_TR_IMPORT_CERT_FAILED)},
        {"no certificate",
         MakePkcs12(keyOnly),
         {"open"},
         kNone,
         text(MsgCode::UI_TR_IMPORT_CERT_FAILED)},
        {"too costly", tooCostly, {"open"}, kTls, notCostly},
        {"the key's kind comes before the mismatch",
         MakePkcs12(elliptic),
         {"open"},
         kGm,
         text(MsgCode::UI_TR_UNSUPPORTED_CERT_TYPE)},
        {"TLS for GM", MakePkcs12(rsa), {"open"}, kGm, text(MsgCode::UI_TR_WRONG_CERT_SSL_TYPE)},
        {"GM without a target", MakePkcs12(gm), {"open"}, kNone, {}},
        {"GM for GM", MakePkcs12(gm), {"open"}, kGm, {}},
        {"empty password", MakePkcs12(open), {""}, kTls, {}},
    };
    for (Case const& c : cases) {
        SCOPED_TRACE(c.name);
        Config fresh;
        CertInfo target;
        target.isTls = c.target != kGm;
        DigitalCertDialog dialog(c.target == kNone ? nullptr : &target, fresh, prompts);
        prompts.ExpectFile(write("file.p12", c.bytes));
        for (char const* const password : c.passwords) {
            prompts.ExpectSecret(test::SecretOf(password));
            if (password != c.passwords.back()) {
                prompts.ExpectBox(text(MsgCode::UI_TR_WRONG_CERT_PWD), 0);
            }
        }
        if (!c.refusal.isEmpty()) {
            prompts.ExpectBox(c.refusal, 0);
        }
        click(dialog, "btn_import_");
        EXPECT_EQ(fresh.clientCerts.empty(), !c.refusal.isEmpty());
        EXPECT_EQ(boxOf(dialog).Pages().empty(), !c.refusal.isEmpty());
        EXPECT_TRUE(prompts.Finished());
        click(dialog, "btn_ok_");
        EXPECT_EQ(target.fingerprint.empty(), !c.refusal.isEmpty() || c.target == kNone)
            << "what has just been imported is chosen";
    }
}

TEST_F(CertDialogTest, WhatIsNotImported) {
    std::string const bytes = MakePkcs12({});
    CertInfo const before = stored("Before");
    CertInfo target = before;
    test::LogCapture const log;
    DigitalCertDialog dialog(&target, config, prompts);
    prompts.ExpectFile(std::nullopt);
    click(dialog, "btn_import_");
    EXPECT_FALSE(log.Has("Input pincode error"));
    prompts.ExpectFile(write("file.p12", bytes));
    prompts.ExpectSecret(std::nullopt);
    click(dialog, "btn_import_");
    EXPECT_TRUE(log.Has("Input pincode error"));
    EXPECT_EQ(prompts.Secrets().back().maxUtf8Length, 127);
    EXPECT_TRUE(prompts.Secrets().back().emptyMessage.isEmpty()) << "an empty password is legal";
    EXPECT_EQ(config.clientCerts.size(), 1U);

    expectImport(write("first.p12", bytes), "open");
    click(dialog, "btn_import_");
    QString const second = write("second.pfx", bytes);
    expectImport(second, "open");
    prompts.ExpectBox(text(MsgCode::UI_TR_CERT_ALREADY_IMPORT).arg(second), 0);
    click(dialog, "btn_import_");
    EXPECT_EQ(config.clientCerts.size(), 2U);
    click(dialog, "btn_ok_");
    EXPECT_EQ(target.fingerprint, before.fingerprint) << "an earlier choice outlives an import";

    for (int i = 0; config.clientCerts.size() < Config::kMaxClientCertNum; ++i) {
        config.clientCerts[std::to_string(i)].fingerprint = std::to_string(i);
    }
    prompts.ExpectBox(text(MsgCode::UI_TR_CERT_FILE_NUM_LIMIT), 0);
    click(dialog, "btn_import_");
}

// While a container opens the dialog says so and lives; closing it then imports nothing.
TEST_F(CertDialogTest, ClosingWhileAContainerOpensImportsNothing) {
    Pkcs12Recipe slow{"RSA"};
    slow.iterations = 0x10000;
    DigitalCertDialog dialog(nullptr, config, prompts);
    dialog.show();
    expectImport(write("file.p12", MakePkcs12(slow)), "open");
    bool said = false;
    QTimer::singleShot(0, &dialog, [&] {
        said = test::Find<QLabel>(dialog, "busy_label_").isVisible() &&
               !test::Find<QPushButton>(dialog, "btn_import_").isEnabled();
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    click(dialog, "btn_import_");
    EXPECT_TRUE(said);
    EXPECT_TRUE(test::Find<QPushButton>(dialog, "btn_import_").isEnabled());
    EXPECT_TRUE(config.clientCerts.empty());
}

TEST_F(CertDialogTest, ImportIsSavedAndKeepsNoPasswordInClear) {
    Pkcs12Recipe recipe;
    recipe.password = "t0p-5ecret-PIN";
    std::string const bytes = MakePkcs12(recipe);
    std::filesystem::path const folder = GetConfigClientCertPath().toStdString();
    test::WriteFile(folder, "a file where the folder should be");
    test::LogCapture const log;
    DigitalCertDialog dialog(nullptr, config, prompts);
    QString const file = write("file.p12", bytes);
    expectImport(file, "t0p-5ecret-PIN");
    prompts.ExpectBox(text(MsgCode::UI_TR_FILE_NOT_WRITABLE), 0);
    click(dialog, "btn_import_");
    EXPECT_TRUE(config.clientCerts.empty() && boxOf(dialog).Pages().empty());
    std::filesystem::remove(folder);
    expectImport(file, "t0p-5ecret-PIN");
    click(dialog, "btn_import_");
    ASSERT_EQ(config.clientCerts.size(), 1U);
    CertInfo const cert = config.clientCerts.begin()->second;
    EXPECT_EQ(test::ReadFile(fileOf(cert)), bytes);
    EXPECT_FALSE(fileHas("t0p-5ecret-PIN") || log.Has("t0p-5ecret-PIN"));

    Config next;
    next.Load();
    ASSERT_TRUE(next.IsClientCertExist(cert)) << "the import saved the configuration";
    EXPECT_EQ(components::utils::DecodeSensitiveValue(next.GetClientCert(cert.fingerprint)->pin),
              "t0p-5ecret-PIN");
}

}  // namespace
}  // namespace zorvanelink::ui
