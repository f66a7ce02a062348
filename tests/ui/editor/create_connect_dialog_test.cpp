#include "ui/editor/create_connect_dialog.h"

#include <QtTest/QTest>

#include "tests/support/qt_helpers.h"
#include "tests/support/scripted_prompts.h"
#include "tests/ui/config/config_fixture.h"
#include "ui/text/texts.h"
#include "ui/widgets/automation_hooks.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using test::Find;

class CreateConnectDialogTest : public ConfigTest {
  protected:
    ~CreateConnectDialogTest() override { automationHooks() = {}; }

    std::unique_ptr<CreateConnectDialog> open(std::shared_ptr<Profile> const& profile = nullptr,
                                              QWidget* owner = nullptr) {
        auto dialog = std::make_unique<CreateConnectDialog>(
            profile, AuthConfigBase::Services{config_, prompts_, certs_}, owner);
        dialog->show();
        return dialog;
    }
    static QLineEdit& edit(QWidget const& dialog, char const* name) {
        return Find<QLineEdit>(dialog, name);
    }
    static void press(QWidget const& dialog, char const* button) {
        Find<QPushButton>(dialog, button).click();
    }

    Config config_;
    CertListRoad certs_;
    test::ScriptedPrompts prompts_;
};

QString repeated(int count, ushort letter = 'n') {
    return QString(count, QChar(letter));
}

QString text(char const* latin) {
    return QLatin1String(latin);
}

struct InputCase {
    QString name;
    QString server;
    QString port;
    int spaMode;
    char const* spaPort;
    MsgCode fault;  // UI_INFO_NONE: accepted
    char const* focus;
    char const* detail = "";
};

std::vector<InputCase> inputCases() {
    QString const ok = QStringLiteral("gw");
    QString const port = QStringLiteral("443");
    auto const none = MsgCode::UI_INFO_NONE;
    auto const long_name = MsgCode::UI_TR_ERR_CONNECTION_NAME_LENGTH;
    auto const invalid = MsgCode::UI_TR_ERR_INVALID_INPUT;
    char const* const name = "profile_name_";
    char const* const spa = "lineEdit_spa_port_";
    constexpr ushort kHan = 0x4E2D;
    return {
        {text(""), ok, port, 0, "", MsgCode::UI_INFO_INPUT_CONNECTION_NAME, name},
        {repeated(64, kHan), ok, port, 0, "", long_name, name},
        {repeated(125) + QChar(kHan), ok, port, 0, "", long_name, name},
        {repeated(127), text(""), port, 0, "", MsgCode::UI_INFO_INPUT_SERVER_ADDR, "server_"},
        {text("a;b"), ok, port, 0, "", invalid, name, "#@@#A name cannot contain \";\"."},
        {text("a/b"), ok, port, 0, "", invalid, name, "#@@#A name cannot contain \"/\"."},
        {text("GENERAL"), ok, port, 0, "", invalid, name, "#@@#\"GENERAL\" is reserved."},
        {text("taken"), ok, port, 0, "", MsgCode::UI_INFO_CONNECTION_ALREADY_EXIST, name},
        {ok, repeated(512), port, 0, "", MsgCode::UI_TR_ERR_SERVER_ADDR_LENGTH, "server_"},
        {ok, repeated(511), text(""), 0, "", MsgCode::UI_INFO_INPUT_PORT, "port_"},
        {ok, ok, port, 1, "", MsgCode::UI_INFO_INPUT_SPA_PORT, spa},
        {ok, ok, port, 1, "1024", MsgCode::UI_TR_ERR_INVALID_SPA_PORT, spa},
        {ok, ok, port, 1, "1025", none, ""},
        {ok, ok, port, 1, "65535", none, ""},
        {ok, ok, port, 0, "80", none, ""},
        {ok, ok, port, 2, "", none, ""},
    };
}

TEST_F(CreateConnectDialogTest, InputAtItsBorders) {
    config_.AddProfile(profileOf("taken"), false);
    for (InputCase const& c : inputCases()) {
        SCOPED_TRACE(c.name.toStdString() + ", SPA port " + c.spaPort);
        auto const dialog = open();
        edit(*dialog, "profile_name_").setText(c.name);
        edit(*dialog, "server_").setText(c.server);
        edit(*dialog, "port_").setText(c.port);
        dialog->SetSPAMode(static_cast<SPAMode>(c.spaMode));
        edit(*dialog, "lineEdit_spa_port_").setText(text(c.spaPort));
        if (c.fault != MsgCode::UI_INFO_NONE) {
            prompts_.ExpectBox(GetTrMsg(c.fault) + text(c.detail), 0);
        }
        press(*dialog, "add_connect_button_");
        EXPECT_TRUE(prompts_.Finished());
        EXPECT_EQ(dialog->result() == QDialog::Accepted, c.fault == MsgCode::UI_INFO_NONE);
        if (c.fault == MsgCode::UI_INFO_NONE) {
            auto const stored = config_.GetProfile(c.name.toStdString());
            ASSERT_TRUE(stored);
            EXPECT_EQ(stored->spaMode, c.spaMode);
            EXPECT_EQ(stored->spaPort, text(c.spaPort).toInt());
            config_.DeleteProfile(stored->name);
        } else {
            EXPECT_EQ(dialog->focusWidget()->objectName(), QLatin1String(c.focus));
            EXPECT_TRUE(dialog->focusWidget()->isVisible());
            EXPECT_TRUE(dialog->focusWidget()->property("refused").toBool());
        }
    }
}

TEST_F(CreateConnectDialogTest, WhatCanBeTyped) {
    struct Case {
        char const* field;
        char const* typed;
        char const* stands;
    } const cases[] = {
        {"port_", "0", ""},
        {"port_", "65536", "6553"},
        {"port_", "65535", "65535"},
        {"port_", "a1b", "1"},
        {"server_", "a b~", "ab~"},
        {"lineEdit_spa_port_", "0", ""},
        {"lineEdit_spa_port_", "70000", "7000"},
    };
    auto const dialog = open();
    for (Case const& c : cases) {
        QLineEdit& field = edit(*dialog, c.field);
        field.clear();
        QTest::keyClicks(&field, QLatin1String(c.typed));
        EXPECT_EQ(field.text(), QLatin1String(c.stands)) << c.field << ' ' << c.typed;
    }
    // Pasted with what stood around it.
    QLineEdit& server = edit(*dialog, "server_");
    server.clear();
    server.insert(QStringLiteral(" vpn.example.com\n"));
    EXPECT_EQ(server.text(), QStringLiteral("vpn.example.com"));
}

TEST_F(CreateConnectDialogTest, AnUntouchedProfileIsStoredAsItWas) {
    for (int const type : {0, 1, 3, 5, 6}) {
        for (std::uint16_t const mode : {kLoginModeTls, kLoginModeGm}) {
            auto const profile = profileOf("a");
            CertInfo cert;
            cert.fingerprint = cert.commonName = "F00";
            cert.isTls = mode == kLoginModeTls;
            cert.pin = components::utils::EncodeSensitiveValue("pin");
            config_.clientCerts["F00"] = cert;
            profile->fileCert = cert;
            profile->authType = static_cast<SupportedAuthType>(type);
            profile->loginMode = mode;
            profile->port = 8443;
            profile->userName = "alice";
            profile->password = components::utils::EncodeSensitiveValue("secret");
            profile->rememberPassword = true;
            profile->keepAuthType = type % 2 == 0;
            profile->optimalChannel = true;
            profile->gatewayList["Oslo"] = {"o.example", 1, 2};
            profile->perferredGatewayName = type == 1 ? "gone" : "Oslo";
            profile->spaMode = 1;
            profile->spaPort = 30443;
            profile->commOptimMode = 2;
            profile->verifyServerCert = true;
            profile->forgotPwdUrl = "https://x.example";
            profile->systemCert.certName = profile->gmCert.certName = "kept";
            profile->rememberTlsPin = true;
            config_.SetProfile("a", profile);
            config_.Save();
            std::string const before = fileText();
            std::string const password = profile->password;

            auto const dialog = open(profile);
            EXPECT_FALSE(edit(*dialog, "profile_name_").isEnabled());
            press(*dialog, "add_connect_button_");
            EXPECT_EQ(dialog->result(), QDialog::Accepted);
            config_.Save();
            EXPECT_EQ(fileText(), before) << type;
            EXPECT_EQ(config_.GetProfile("a"), profile);
            EXPECT_EQ(profile->password, password);
            EXPECT_EQ(profile->systemCert.certName + profile->gmCert.certName, "keptkept");
            EXPECT_TRUE(profile->rememberTlsPin);
        }
    }
}

TEST_F(CreateConnectDialogTest, OnlySavingChangesTheProfile) {
    auto const profile = profileOf("a");
    profile->gatewayDetect = true;
    profile->gatewayList["Oslo"] = {"o.example", 1, 2};
    profile->perferredGatewayName = "Oslo";
    config_.SetProfile("a", profile);
    for (char const* const button : {"cannel_connect_button_", "add_connect_button_"}) {
        auto const dialog = open(profile);
        edit(*dialog, "server_").setText(QStringLiteral("new.example"));
        press(*dialog, "pushButton_gmssl");
        Find<QCheckBox>(*dialog, "gateway_detect_checkbox_").click();
        EXPECT_FALSE(Find<QComboBox>(*dialog, "perfer_gateway_combobox_").isVisibleTo(&*dialog));
        EXPECT_EQ(profile->server, "a.example");
        // What the connection learns meanwhile stays.
        profile->forgotPwdUrl = "https://x.example";
        press(*dialog, button);
    }
    EXPECT_EQ(profile->server, "new.example");
    EXPECT_EQ(profile->loginMode, kLoginModeGm);
    EXPECT_FALSE(profile->gatewayDetect);
    EXPECT_EQ(profile->perferredGatewayName, "");
    EXPECT_EQ(profile->forgotPwdUrl, "https://x.example");
}

TEST_F(CreateConnectDialogTest, CredentialsFollowTheType) {
    for (int const type : {0, 1, 3, 5, 6}) {
        auto const profile = profileOf("a");
        profile->authType = static_cast<SupportedAuthType>(type);
        auto const dialog = open(profile);
        auto const shown = [&dialog](char const* name) {
            return Find<QWidget>(*dialog, name).isVisible();
        };
        EXPECT_EQ(shown("lineedit_username_"), type == 1 || type == 5) << type;
        EXPECT_EQ(shown("lineEdit_select_cert"), type == 3 || type == 5) << type;
        EXPECT_TRUE(shown("checkbox_keep_auth_type_"));
        if (type != 0 && type != 6) {
            prompts_.ExpectBox(
                GetTrMsg(type == 3 ? MsgCode::UI_ERROR_NO_CERT : MsgCode::UI_INFO_INPUT_USER), 0);
        }
        EXPECT_EQ(dialog->CheckInput(), type == 0 || type == 6);
    }
    QWidget window;
    window.resize(960, 400);
    window.show();
    auto const adding = open(nullptr, &window);
    auto& verify = Find<QCheckBox>(*adding, "verfy_server_cert_checkbox_");
    for (int const check : {1, 2}) {
        verify.click();
        EXPECT_EQ(Find<QWidget>(*adding, "trust_warning_").isHidden(), check == 2);
    }
    EXPECT_FALSE(Find<QWidget>(*adding, "advanced_widget_").isVisible());
    adding->on_btn_icon_advanced_config__clicked();
    EXPECT_EQ(adding->height(), window.height()) << "never higher than its window";
    EXPECT_FALSE(Find<QWidget>(*adding, "lineedit_username_").isVisible());
    EXPECT_FALSE(Find<QWidget>(*adding, "checkbox_keep_auth_type_").isVisible());
}

TEST_F(CreateConnectDialogTest, AProgramsInputIsCheckedOnlyWithTheBridge) {
    auto const dialog = open();
    auto given = std::make_shared<AutoProfile>();
    given->name = "a\tb";
    given->server = "a b";
    dialog->AutoSetProfile(given);
    EXPECT_TRUE(dialog->AutoCheckProfile());
    QString refusal;
    automationHooks().setResult = [&refusal](int, QString const& text) { refusal = text; };
    prompts_.ExpectBox(GetTrMsg(MsgCode::UI_TR_ERR_INVALID_INPUT), 0);
    EXPECT_FALSE(dialog->AutoCheckProfile());
    edit(*dialog, "server_").setText(QStringLiteral("ab"));
    prompts_.ExpectBox(GetTrMsg(MsgCode::UI_TR_ERR_INVALID_INPUT), 0);
    EXPECT_FALSE(dialog->AutoCheckProfile());
    QTest::keyClick(&*dialog, Qt::Key_Escape);
    EXPECT_EQ(refusal, QStringLiteral("REFUSED CREATE CONNECT"));
}

}  // namespace
}  // namespace zorvanelink::ui
