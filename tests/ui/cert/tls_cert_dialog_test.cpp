// The choice among the kinds of TLS certificate, and the list that the service sends for it.
#include "ui/cert/tls_cert_dialog.h"

#include <QSignalSpy>

#include "components/cert/pkcs12.h"
#include "components/utils/base64.h"
#include "core/clmsg_reply_json.h"
#include "tests/ui/cert/cert_fixture.h"
#include "ui/cert/client_certs.h"

namespace zorvanelink::ui {
namespace {

using test::Find;

CertInfo named(char const* name) {
    CertInfo cert;
    cert.certName = name;
    cert.fingerprint = std::string("fingerprint of ") + name;
    return cert;
}

TEST_F(CertDialogTest, KindsFedByTheServiceAskForTheListOnOpening) {
    struct Case {
        std::uint16_t kind;
        char const* button;
        int requests;
    } const cases[] = {{0, "sys_cert_radioButton", 1},
                       {kCertTypeSystem, "sys_cert_radioButton", 1},
                       {kCertTypeUsbKey, "usb_cert_radioButton", 1},
                       {kCertTypeFile, "soft_cert_radioButton", 0}};
    for (Case const& c : cases) {
        CertInfo target = named("kept");
        target.certType = c.kind;
        TLSCertDialog dialog(target, config, prompts);
        QSignalSpy const requests(&dialog, &TLSCertDialog::SendCertRequest);
        dialog.show();
        EXPECT_TRUE(Find<QRadioButton>(dialog, c.button).isChecked()) << c.kind;
        EXPECT_EQ(requests.size(), c.requests) << c.kind;
        // An empty list has nothing to take.
        prompts.ExpectBox(text(MsgCode::UI_INFO_PLEASE_SELECT_CERTIFICATE), 0);
        click(dialog, "ok_button_");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(target.certName, "kept");
    }
}

TEST_F(CertDialogTest, OkTakesTheRecordAndItsKind) {
    CertInfo const file = stored("Anna");
    stored("Gerda", "SM2", EVP_sm3());
    CertInfo target;
    TLSCertDialog service(target, config, prompts);
    service.show();
    Find<QRadioButton>(service, "usb_cert_radioButton").click();
    service.onRecvCertInfo({named("one"), named("two")});
    auto& list = Find<QListView>(service, "service_cert_list_");
    list.setCurrentIndex(list.model()->index(1, 0));
    click(service, "ok_button_");
    EXPECT_EQ(target.certName, "two");
    EXPECT_EQ(target.certType, kCertTypeUsbKey);

    target.certType = kCertTypeFile;
    TLSCertDialog store(target, config, prompts);
    store.show();
    auto& files = Find<QListView>(store, "file_cert_list_");
    ASSERT_EQ(files.model()->rowCount(), 1) << "a GM certificate is none for TLS";
    files.setCurrentIndex(files.model()->index(0, 0));
    click(store, "ok_button_");
    EXPECT_EQ(target.fingerprint, file.fingerprint);
    EXPECT_EQ(target.certType, kCertTypeFile);
}

TEST_F(CertDialogTest, WhatWasImportedFromHereIsChosen) {
    stored("Anna");
    CertInfo target;
    target.certType = kCertTypeFile;
    TLSCertDialog dialog(target, config, prompts);
    dialog.show();
    expectImport(write("file.p12", test::MakePkcs12({"RSA", EVP_sha256(), {{"CN", "New"}}})),
                 "open");
    test::WhenModal<DigitalCertDialog>([](DigitalCertDialog& manager) {
        click(manager, "btn_import_");
        click(manager, "btn_ok_");
    });
    click(dialog, "manage_button_");
    click(dialog, "ok_button_");
    EXPECT_EQ(target.commonName, "New");
}

TEST_F(CertDialogTest, AutomationTakesAMatchOrTellsThatThereIsNone) {
    CertInfo target;
    TLSCertDialog dialog(target, config, prompts);
    QSignalSpy const failed(&dialog, &TLSCertDialog::AutoCertErrorExitSignal);
    dialog.show();
    dialog.onRecvCertInfo({named("one")});
    CertInfo wanted = named("two");
    wanted.certType = kCertTypeSystem;
    dialog.AutoSetTLSCertInfo(wanted);
    EXPECT_EQ(failed.size(), 1);
    wanted.certName = "one";
    dialog.AutoSetTLSCertInfo(wanted);
    EXPECT_EQ(failed.size(), 1);
    EXPECT_EQ(target.certName, "one");
}

TEST(CertRespond, ReadsWhatCanBeRead) {
    test::Pkey const key = test::MakeKey("EC");
    std::string const der = test::DerOf<X509>(&i2d_X509, test::MakeCert({}, key.get()).get());
    core::sslvpn::ALMsgCertRespondData reply;
    reply.certList = {components::utils::Base64Encode(std::string("no certificate"), false),
                      components::utils::Base64Encode(der, false)};
    core::CLMsgDocument message;
    ASSERT_TRUE(message.Parse(core::sslvpn::CLMsgReplyJson::Build(reply)));
    auto const certs = ReadCertRespond(message);
    ASSERT_TRUE(certs.has_value());
    ASSERT_EQ(certs->size(), 1U);
    EXPECT_EQ(certs->front().certName, "Anna");
    EXPECT_EQ(certs->front().certData, der);
    EXPECT_EQ(certs->front().fingerprint.size(), 40U);

    test::LogCapture const log;
    ASSERT_TRUE(message.Parse("{}"));
    EXPECT_FALSE(ReadCertRespond(message).has_value());
    EXPECT_TRUE(log.Has("Failed to handle certificate respond"));
}

}  // namespace
}  // namespace zorvanelink::ui
