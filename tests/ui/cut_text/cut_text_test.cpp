// No text is cut in either language; run a second time at twice the scale.
#include "tests/ui/cut_text/cut_text.h"

#include <gmock/gmock.h>

#include <QLabel>
#include <QPushButton>
#include <QTranslator>
#include <set>

#include "app/environment/app_ctrl.h"
#include "tests/support/scripted_prompts.h"
#include "tests/ui/windows/all_windows.h"
#include "ui/auth/auth_type_dialog.h"
#include "ui/cards/profile_tab.h"
#include "ui/cert/digital_cert_dialog.h"
#include "ui/cert/tls_cert_dialog.h"
#include "ui/text/texts.h"
#include "ui/widgets/fonts.h"
#include "ui/widgets/input_dialog.h"
#include "ui/widgets/status_bar_widget.h"
#include "ui/widgets/style.h"
#include "ui/widgets/wait_form.h"
#include "ui/widgets/zvl_message_box.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using testing::IsEmpty;

class CutText : public testing::TestWithParam<SysLang> {
  protected:
    CutText() {
        AppCtrl::Instance().language = GetParam();
        InitAssets();
        SetApplicationFont();
        SetApplicationStyle();
        if (GetParam() == SysLang::kSimplifiedChinese) {
            EXPECT_TRUE(translator_.load(QStringLiteral(":/translations/zh_Hans.qm")));
            QCoreApplication::installTranslator(&translator_);
        }
    }
    ~CutText() override { AppCtrl::Instance() = AppCtrl(); }

    static void expectWhole(QWidget& shown) {
        shown.show();
        for (int i = 0; i < 3; ++i) {
            QApplication::sendPostedEvents();
            QApplication::processEvents();
        }
        EXPECT_THAT(test::CutTexts(shown), IsEmpty());
    }

    // The texts that need most room on one line, and those with the longest words.
    static std::set<QString> longestTexts() {
        std::vector<QString> texts;
        for (auto const& [number, row] : common::g_IPCMessageMap.All()) {
            texts.push_back(GetTrMsg(static_cast<MsgCode>(number)));
        }
        auto const width = [](QString const& text) {
            return QFontMetrics(QApplication::font()).horizontalAdvance(text);
        };
        auto const widestWord = [&](QString const& text) {
            int widest = 0;
            for (QString const& word : text.split(QLatin1Char(' '))) {
                widest = qMax(widest, width(word));
            }
            return widest;
        };
        std::set<QString> chosen;
        auto const keep = [&](auto const& measure) {
            std::sort(texts.begin(), texts.end(),
                      [&](QString const& a, QString const& b) { return measure(a) > measure(b); });
            chosen.insert(texts.begin(), texts.begin() + 5);
        };
        keep(width);
        keep(widestWord);
        return chosen;
    }

    QTranslator translator_;
    test::ScriptedPrompts prompts_;
};

TEST_P(CutText, MeasureFindsACutText) {
    QWidget window;
    auto* label = new QLabel(QStringLiteral("a text that is cut"), &window);
    label->setGeometry(0, 0, 30, 30);
    auto* button = new QPushButton(QStringLiteral("a text that is cut"), &window);
    button->setGeometry(0, 40, 40, 30);
    auto* edit = new QLineEdit(&window);
    edit->setPlaceholderText(QStringLiteral("a text that is cut"));
    edit->setGeometry(0, 80, 40, 30);
    window.show();
    EXPECT_EQ(test::CutTexts(window).size(), 3U);
}

TEST_P(CutText, Boxes) {
    QString const yes = GetTrMsg(MsgCode::UI_INFO_YES);
    std::vector<ZVLMessageBox::Buttons> const sets{
        {GetTrMsg(MsgCode::UI_INFO_OK)},
        {yes, GetTrMsg(MsgCode::UI_INFO_NO)},
        {GetTrMsg(MsgCode::UI_TR_UPDATE_NOW), GetTrMsg(MsgCode::UI_TR_UPDATE_NEXT),
         GetTrMsg(MsgCode::UI_TR_UPDATE_NEVER)}};
    struct Kind {
        ZVLMsgBoxType type;
        MsgCode title;
    } const kinds[] = {{ZVLMsgBoxType::kInformation, MsgCode::UI_INFO},
                       {ZVLMsgBoxType::kWarning, MsgCode::UI_WARNING},
                       {ZVLMsgBoxType::kCritical, MsgCode::UI_ERROR}};
    for (QString const& text : longestTexts()) {
        SCOPED_TRACE(text.toStdString());
        for (Kind const& kind : kinds) {
            for (auto const& buttons : sets) {
                ZVLMessageBox box(nullptr, kind.type, GetTrMsg(kind.title), text, buttons);
                expectWhole(box);
            }
        }
    }
}

TEST_P(CutText, InputDialogs) {
    struct Case {
        MsgCode title;
        MsgCode label;
        MsgCode label2;
        MsgCode remember;
    } const cases[] = {
        {MsgCode::UI_INFO_INPUT_PWD, MsgCode::UI_INFO_PLEASE_INPUT_THE_PWD,
         MsgCode::UI_INFO_PASSWORD, MsgCode::UI_INFO_REMEMBER_PWD},
        {MsgCode::UI_INFO_INPUT_PINCODE, MsgCode::UI_INFO_INPUT_PIN_CODE, MsgCode::UI_INFO_PINCODE,
         MsgCode::UI_INFO_REMEMBER_PIN},
        {MsgCode::UI_TR_IMPORT, MsgCode::UI_TR_PLEASE_INPUT_CERT_PWD, MsgCode::UI_INFO_NONE,
         MsgCode::UI_INFO_NONE},
        {MsgCode::UI_INFO_INPUT_PWD, MsgCode::UI_TR_IMPORT_CERT_FAILED,
         MsgCode::UI_TR_VERITY_SERVER_CERTIFICATE_FAILED, MsgCode::UI_INFO_REMEMBER_PWD}};
    for (Case const& c : cases) {
        InputDialog dialog;
        dialog.setWindowTitle(GetTrMsg(c.title));
        dialog.setLabelText(GetTrMsg(c.label));
        dialog.setLabel2Text(GetTrMsg(c.label2));
        dialog.setPlaceholderText(GetTrMsg(MsgCode::UI_INFO_PLEASE_INPUT_THE_PWD));
        dialog.setCheckBoxText(GetTrMsg(c.remember));
        dialog.SetRememberCheckHide(GetTrMsg(c.remember).isEmpty());
        expectWhole(dialog);
    }
}

TEST_P(CutText, EveryWindow) {
    for (test::WindowRow const& row : test::AllWindows()) {
        SCOPED_TRACE(row.name);
        test::WindowWorld world;
        auto const window = row.make(world);
        test::Settle(*window);
        EXPECT_THAT(test::CutTexts(*window), IsEmpty());
    }
}

TEST_P(CutText, CertificateDialogsWithoutCertificates) {
    Config config;
    CertInfo target;
    DigitalCertDialog manage(nullptr, config, prompts_);
    expectWhole(manage);
    DigitalCertDialog select(&target, config, prompts_);
    expectWhole(select);
    for (auto const kind : {kCertTypeUsbKey, kCertTypeFile}) {
        target.certType = kind;
        TLSCertDialog kinds(target, config, prompts_);
        expectWhole(kinds);
    }
}

TEST_P(CutText, AuthTypeDialogs) {
    Config config;
    CertListRoad road;
    auto profile = std::make_shared<Profile>();
    profile->certIsFile = false;
    for (std::uint16_t const kind : {kCertTypeSystem, kCertTypeUsbKey, kCertTypeFile}) {
        profile->systemCert.certType = kind;
        for (auto const type : {SupportedAuthType::kPwdWithCert, SupportedAuthType::kOauth}) {
            profile->authType = type;
            profile->supportedAuthTypes = {SupportedAuthType::kPwd, SupportedAuthType::kOnlyUkey,
                                           SupportedAuthType::kPwdWithCert,
                                           SupportedAuthType::kOauth};
            for (bool const select : {true, false}) {
                AuthTypeDialog dialog(profile, select, {config, prompts_, road});
                expectWhole(dialog);
                EXPECT_EQ(dialog.width(), 480);
            }
        }
    }
}

TEST_P(CutText, WaitForms) {
    for (MsgCode const code : {MsgCode::UI_INFO_CONNECTING_SERVICE, MsgCode::UI_TR_CHECK_AUTH_TYPE,
                               MsgCode::UI_INFO_WAIT_RECONNECTING}) {
        QWidget window;
        window.resize(960, 640);
        window.setStyleSheet(LoadStyle(QStringLiteral("controls")) +
                             LoadStyle(QStringLiteral("mainwindow")));
        WaitForm wait(&window, 44);
        wait.SetDesc(GetTrMsg(code));
        wait.show();
        expectWhole(window);
    }
}

TEST_P(CutText, CardsInEveryState) {
    for (bool const gm : {false, true}) {
        auto profile = std::make_shared<Profile>();
        profile->name = "Emergency access with a very long name of a connection";
        profile->server = "a-very-long-gateway-name.region-7.example.com";
        profile->userName = "a.user.name.that.is.much.longer.than.its.place@example.com";
        profile->loginMode = gm ? kLoginModeGm : kLoginModeTls;
        for (ConnectStatus const status : {ConnectStatus::Disconnected, ConnectStatus::Connecting,
                                           ConnectStatus::PrepareReconnecting,
                                           ConnectStatus::Reconnecting, ConnectStatus::Connected}) {
            QWidget window;
            window.setStyleSheet(LoadStyle(QStringLiteral("controls")) +
                                 LoadStyle(QStringLiteral("mainwindow")));
            ProfileTab card(profile, &window);
            card.setFixedSize(kCardWidth, kCardHeight);
            ConnectionState state;
            state.currentProfileName = profile->name;
            state.status = status;
            card.Render(cardViewFor(state, profile->name));
            expectWhole(window);
        }
    }
}

TEST_P(CutText, StatusBarInTheSmallestWindow) {
    for (MsgCode const code :
         {MsgCode::UI_TR_STATE_NORMAL, MsgCode::UI_TR_STATE_CONNECTTED,
          MsgCode::UI_TR_STATE_DISCONNECT, MsgCode::UI_TR_STATE_VNIC_ERROR,
          MsgCode::UI_INFO_CONNECTING_SERVICE, MsgCode::UI_INFO_WAIT_RECONNECTING,
          MsgCode::UI_INFO_LOWER_RECONNECTING, MsgCode::UI_TR_CHECK_AUTH_TYPE,
          MsgCode::CONNECTING}) {
        QWidget window;
        window.setStyleSheet(LoadStyle(QStringLiteral("controls")) +
                             LoadStyle(QStringLiteral("mainwindow")));
        StatusBarWidget bar(&window);
        bar.setFixedSize(880, 32);
        bar.SetStatus(GetTrMsg(code), QStringLiteral(":/assets/images/normal.png"));
        bar.SetCountText(GetTrMsg(MsgCode::UI_TR_STATUS_CONNECTED)
                             .arg(QStringLiteral("Head office"), QStringLiteral("32")));
        expectWhole(window);
    }
}

INSTANTIATE_TEST_SUITE_P(Languages, CutText,
                         testing::Values(SysLang::kEnglish, SysLang::kSimplifiedChinese),
                         [](auto const& info) {
                             return std::string(info.param == SysLang::kEnglish ? "English"
                                                                                : "Chinese");
                         });

}  // namespace
}  // namespace zorvanelink::ui
