// The limits, masks and certificates that every dialog with credentials shares.
#include <QMenu>

#include "tests/ui/auth/auth_fixture.h"
#include "ui/cert/digital_cert_dialog.h"

namespace zorvanelink::ui {
namespace {

// A dialog of nothing but the credentials.
class CredentialDialog : public AuthConfigBase {
  public:
    CredentialDialog(std::shared_ptr<Profile> profile, bool required, Services services)
        : AuthConfigBase(std::move(profile), required, services, nullptr),
          form(new CredentialForm(Body())),
          w(form->Widgets()) {
        SetCredentialWidgets(w);
        InitAuthConfig();
        show();
    }
    using AuthConfigBase::SaveAuthConfig;
    using AuthConfigBase::SaveSSLConfig;

    CredentialForm* const form;
    CredentialWidgets const& w;
};

class CredentialsTest : public AuthTest {
  protected:
    void useUsbKey() {
        profile->certIsFile = false;
        profile->authType = Type::kOnlyUkey;
        profile->systemCert.certType = kCertTypeUsbKey;
        profile->systemCert.certName = "Key";
    }
    void chooseKind(CredentialDialog& dialog, MsgCode kind) {
        dialog.w.selectCert->click();
        for (QAction* action : test::Find<QMenu>(dialog, "cert_kind_menu_").actions()) {
            if (action->text() == GetTrMsg(kind)) {
                action->trigger();
            }
        }
        delete &test::Find<QMenu>(dialog, "cert_kind_menu_");
        QApplication::processEvents();
    }
};

TEST_F(CredentialsTest, LimitsCountBytes) {
    constexpr MsgCode kFine = MsgCode::UI_INFO_NONE;
    constexpr MsgCode kNoPassword = MsgCode::UI_INFO_PLEASE_INPUT_PWD;
    QString const hanzi(QChar(0x5BC6));  // three bytes
    QString const a(QLatin1Char('a'));
    struct Case {
        QString name;
        QString password;
        bool required;
        bool remember;
        MsgCode complaint;
    } const cases[] = {
        {{}, a, true, false, MsgCode::UI_INFO_INPUT_USER},
        {a.repeated(95), a, true, false, kFine},
        {hanzi.repeated(32), a, true, false, MsgCode::UI_TR_ERR_USER_NAME_LENGTH},
        {a, {}, true, false, kNoPassword},
        {a, {}, false, true, kNoPassword},
        {a, {}, false, false, kFine},
        {a, a.repeated(31), true, false, kFine},
        {a, hanzi.repeated(10) + a, true, false, kFine},
        {a, hanzi.repeated(10) + a + a, true, false, MsgCode::UI_TR_ERR_PWD_LENGTH},
    };
    for (Case const& c : cases) {
        CredentialDialog dialog(profile, c.required, services());
        dialog.w.userName->setText(c.name);
        dialog.w.password->setText(c.password);
        dialog.w.rememberPassword->setChecked(c.remember);
        bool const about_password =
            c.complaint == kNoPassword || c.complaint == MsgCode::UI_TR_ERR_PWD_LENGTH;
        if (c.complaint != kFine) {
            prompts.ExpectBox(GetTrMsg(c.complaint), 0);
        }
        EXPECT_EQ(dialog.CheckUserPwdInput(), c.complaint == kFine);
        EXPECT_EQ(dialog.focusWidget() == dialog.w.password, about_password);
    }
}

TEST_F(CredentialsTest, PinIsAskedOnlyForAKey) {
    CredentialDialog file(profile, true, services());
    EXPECT_FALSE(file.w.pin->isVisible());
    EXPECT_TRUE(file.CheckPinCode());
    useUsbKey();
    CredentialDialog key(profile, true, services());
    ASSERT_TRUE(key.w.pin->isVisible());
    prompts.ExpectBox(GetTrMsg(MsgCode::UI_INFO_INPUT_PIN_CODE), 0);
    EXPECT_FALSE(key.CheckPinCode());
    EXPECT_EQ(key.focusWidget(), key.w.pin);
    key.w.pin->setText(QString(43, QChar(0x5BC6)));  // 129 bytes
    prompts.ExpectBox(GetTrMsg(MsgCode::UI_TR_ERR_PIN_CODE_LENGTH), 0);
    EXPECT_FALSE(key.CheckPinCode());
    key.w.pin->setText(QStringLiteral("4711"));
    EXPECT_TRUE(key.CheckPinCode());
    key.w.rememberPin->setChecked(true);
    key.SaveAuthConfig();
    EXPECT_EQ(clear(profile->systemCert.pin), "4711");
    EXPECT_TRUE(profile->rememberTlsPin);

    CredentialDialog again(profile, true, services());
    EXPECT_TRUE(again.IsUIInputPinCodeForShow());
    EXPECT_EQ(again.w.pin->text(), QString(127, QLatin1Char('*')));
    EXPECT_TRUE(again.CheckPinCode());
    again.SetLoginMode(kLoginModeGm);  // another record, without a PIN
    EXPECT_FALSE(again.w.pin->isVisible());
    EXPECT_TRUE(again.w.pin->text().isEmpty());
}

TEST_F(CredentialsTest, MaskStandsForWhatIsStored) {
    for (bool const remember : {true, false}) {
        for (std::string const& stored : {sensitive("open"), std::string()}) {
            profile->rememberPassword = remember;
            profile->password = stored;
            // During a login what was typed for it alone stands as well.
            for (bool const login : {true, false}) {
                CredentialDialog dialog(profile, login, services());
                bool const masked = (remember || login) && !stored.empty();
                EXPECT_EQ(dialog.IsUIInputPwdForShow(), masked);
                EXPECT_EQ(dialog.w.password->text(), QString(masked ? 31 : 0, QLatin1Char('*')));
            }
        }
    }
}

TEST_F(CredentialsTest, MaskLeavesTheStoredValueAndTheFirstEditReplacesIt) {
    profile->authType = Type::kPwd;
    profile->rememberPassword = true;
    profile->password = sensitive("open");
    CredentialDialog kept(profile, true, services());
    kept.w.rememberPassword->setChecked(false);
    kept.w.userName->setText(QStringLiteral("bob"));
    EXPECT_TRUE(kept.CheckUserPwdInput());
    kept.SaveAuthConfig();
    EXPECT_EQ(clear(profile->password), "open");
    EXPECT_FALSE(profile->rememberPassword);
    EXPECT_EQ(profile->userName, "bob");

    profile->rememberPassword = true;
    CredentialDialog typed(profile, true, services());
    EXPECT_FALSE(typed.w.password->Eye()->isVisible());
    type(*typed.w.password, QStringLiteral("n"));
    EXPECT_EQ(typed.w.password->text(), QStringLiteral("n"));
    type(*typed.w.password, QStringLiteral("ew"));
    EXPECT_TRUE(typed.w.password->Eye()->isVisible());
    typed.w.password->Eye()->click();
    EXPECT_EQ(typed.w.password->echoMode(), QLineEdit::Normal);
    for (int i = 0; i < 3; ++i) {
        typed.w.password->undo();
    }
    EXPECT_FALSE(typed.w.password->text().contains(QLatin1Char('*')))
        << "the mask would become the password";
    typed.w.password->setText(QStringLiteral("new"));
    typed.SaveAuthConfig();
    EXPECT_EQ(clear(profile->password), "new");

    CredentialDialog erased(profile, true, services());
    QApplication::setActiveWindow(&erased);
    erased.w.password->setFocus();
    QTest::mouseClick(erased.w.password, Qt::LeftButton);
    QTest::keyClick(erased.w.password, Qt::Key_Backspace);
    EXPECT_TRUE(erased.w.password->text().isEmpty());
    // Asterisks that the user typed are a password.
    type(*erased.w.password, QString(31, QLatin1Char('*')));
    EXPECT_FALSE(erased.IsUIInputPwdForShow());
}

TEST_F(CredentialsTest, CertificateMustExistAndFitTheConnection) {
    CertInfo const gm = stored("Alice GM", false);
    CertInfo gone;
    gone.fingerprint = "gone";
    CertInfo named;
    named.certName = "Alice";
    constexpr MsgCode kFine = MsgCode::UI_INFO_NONE;
    struct Case {
        std::uint16_t mode;
        bool is_file;
        CertInfo file;
        CertInfo system;
        MsgCode complaint;
    } const cases[] = {
        {kLoginModeTls, true, profile->fileCert, {}, kFine},
        {kLoginModeGm, true, profile->fileCert, {}, MsgCode::UI_TR_WRONG_CERT_SSL_TYPE},
        {kLoginModeTls, true, gm, {}, MsgCode::UI_TR_WRONG_CERT_SSL_TYPE},
        {kLoginModeGm, true, gm, {}, kFine},
        {kLoginModeTls, true, gone, named, MsgCode::UI_ERROR_NO_CERT},
        {kLoginModeTls, false, gone, named, kFine},
        {kLoginModeTls, false, gm, {}, MsgCode::UI_ERROR_NO_CERT},
        {kLoginModeGm, false, gm, named, MsgCode::UI_ERROR_NO_CERT},
    };
    for (Case const& c : cases) {
        profile->loginMode = c.mode;
        profile->certIsFile = c.is_file;
        profile->fileCert = c.file;
        profile->systemCert = c.system;
        CredentialDialog dialog(profile, true, services());
        if (c.complaint != kFine) {
            prompts.ExpectBox(GetTrMsg(c.complaint), 0);
        }
        EXPECT_EQ(dialog.CheckCert(), c.complaint == kFine);
    }
}

TEST_F(CredentialsTest, ChosenKindIsSavedAndCancellingChangesNothing) {
    stored("Bob", true);
    CredentialDialog dialog(profile, true, services());
    EXPECT_TRUE(dialog.w.certName->text().startsWith(QStringLiteral("Alice Chen")));
    QObject::connect(&road, &CertListRoad::SendCertRequest, [this](bool gm) {
        CertInfo key;
        key.certName = key.fingerprint = "Key of Alice";
        EXPECT_FALSE(gm);
        CertInfo other = key;
        other.fingerprint = "of another key";
        Q_EMIT road.RecvCertInfo({key, other});
    });
    test::WhenModal<TLSCertDialog>([](TLSCertDialog& chooser) { chooser.reject(); });
    chooseKind(dialog, MsgCode::UI_INFO_USE_USB_KEY_CERTIFICATE);
    dialog.SaveSSLConfig();
    EXPECT_TRUE(profile->certIsFile);

    // The PIN stays with its key.
    struct Choice {
        int row;
        char const* pinBefore;
        char const* pinAfter;
    };
    for (Choice const c : {Choice{1, "", ""}, Choice{1, "4711", "4711"}, Choice{0, "4711", ""}}) {
        dialog.w.pin->setText(QLatin1String(c.pinBefore));
        test::WhenModal<TLSCertDialog>([&c](TLSCertDialog& chooser) {
            QListView& list = test::Find<QListView>(chooser, "service_cert_list_");
            list.setCurrentIndex(list.model()->index(c.row, 0));
            test::Find<QPushButton>(chooser, "ok_button_").click();
        });
        chooseKind(dialog, MsgCode::UI_INFO_USE_USB_KEY_CERTIFICATE);
        EXPECT_EQ(dialog.w.pin->text().toStdString(), c.pinAfter);
    }
    EXPECT_EQ(dialog.w.certName->text(), GetTrMsg(MsgCode::UI_INFO_USE_USB_KEY_CERTIFICATE));
    EXPECT_TRUE(dialog.w.pin->isVisible());
    dialog.SaveSSLConfig();
    EXPECT_FALSE(profile->certIsFile);
    EXPECT_EQ(profile->systemCert.certName, "Key of Alice");

    test::WhenModal<DigitalCertDialog>([](DigitalCertDialog& chooser) {
        chooser.findChild<CertViewBox*>()->Pages().at(1)->SelectButton()->click();
        test::Find<QPushButton>(chooser, "btn_ok_").click();
    });
    chooseKind(dialog, MsgCode::UI_INFO_USE_SOFTWARE_CERTIFICATE);
    EXPECT_FALSE(dialog.w.pin->isVisible());
    dialog.SaveSSLConfig();
    EXPECT_TRUE(profile->certIsFile);
    EXPECT_EQ(profile->fileCert.commonName, "Bob");
}

}  // namespace
}  // namespace zorvanelink::ui
