// Which ways of logging in the dialog offers, and what its buttons do.
#include <QSignalSpy>

#include "tests/ui/auth/auth_fixture.h"

namespace zorvanelink::ui {
namespace {

class AuthTypeDialogTest : public AuthTest {
  protected:
    // What can be seen and which button Enter means, in one line.
    static std::string pictureOf(AuthTypeDialog& dialog) {
        std::string picture;
        for (auto const& [name, mark] : {std::pair("radioButton_username_", "u"),
                                         {"radioButton_user_cert_", "b"},
                                         {"radioButton_cert_", "c"},
                                         {"password_group_", " pwd"},
                                         {"cert_group_", " cert"},
                                         {"btn_connect_", " login"},
                                         {"btn_third_party_", " third"}}) {
            auto const& widget = test::Find<QWidget>(dialog, name);
            if (widget.isVisible()) {
                picture += mark;
                auto const* button = qobject_cast<QPushButton const*>(&widget);
                picture += button != nullptr && button->isDefault() ? "*" : "";
            }
        }
        return picture;
    }
    static void click(AuthTypeDialog& dialog, char const* name) {
        test::Find<QAbstractButton>(dialog, name).click();
    }
};

TEST_F(AuthTypeDialogTest, OffersWhatTheServerTakes) {
    constexpr Type kNo = Type::kNone, kUser = Type::kPwd, kBoth = Type::kPwdWithCert;
    constexpr Type kCert = Type::kOnlyUkey, kThird = Type::kOauth, kCode = Type::kPiccQrcode;
    struct Case {
        std::vector<Type> reported;
        std::vector<Type> last;
        Type own;
        bool select;
        char const* picture;
        Type chosen;
    } const cases[] = {
        {{}, {}, kNo, true, "ubc pwd login*", kUser},
        {{}, {kCert}, kNo, false, " cert login*", kCert},
        {{kThird}, {kUser}, kNo, true, " third*", kNo},
        {{kThird, kUser}, {}, kUser, true, " pwd login* third", kUser},
        {{kCert, kBoth, kThird}, {}, kUser, true, "bc pwd cert login* third", kBoth},
        {{kUser, kCert}, {}, kCert, true, "uc cert login*", kCert},
        {{kUser, kCert}, {}, kBoth, false, " pwd cert login*", kBoth},
        {{kUser, kThird}, {}, kThird, false, " third*", kNo},
        // A kept type and a list that nobody can choose here.
        {{kUser, kCert}, {}, kCode, false, "uc pwd login*", kUser},
        {{kCode}, {}, kNo, true, "ubc pwd login*", kUser},
    };
    for (Case const& c : cases) {
        SCOPED_TRACE(c.picture);
        profile->supportedAuthTypes = c.reported;
        profile->lastSupportedAuthTypes = c.last;
        profile->authType = c.own;
        AuthTypeDialog dialog(profile, c.select, services());
        dialog.show();
        EXPECT_EQ(pictureOf(dialog), c.picture);
        QWidget const* const foot = test::Find<QWidget>(dialog, "btn_cancel_").parentWidget();
        EXPECT_LE(foot->height(), 150) << "of a low screen the form needs more";
        EXPECT_EQ(dialog.ChosenType(), c.chosen);
    }
}

TEST_F(AuthTypeDialogTest, LoginStoresChoiceAndCredentials) {
    profile->forgotPwdUrl = "https://x.example";
    AuthTypeDialog dialog(profile, true, services());
    dialog.show();
    QSignalSpy started(&dialog, &AuthTypeDialog::StartConnect);
    bool open_at_start = true;
    QObject::connect(&dialog, &AuthTypeDialog::StartConnect,
                     [&] { open_at_start = dialog.isVisible(); });
    auto& password = test::Find<SecretEdit>(dialog, "lineedit_password_");
    profile->fileCert.pin = "before";
    EXPECT_TRUE(test::Find<QWidget>(dialog, "btn_forgot_pwd_").isVisible());
    click(dialog, "checkbox_keep_auth_type_");
    int const low = dialog.height();
    click(dialog, "radioButton_user_cert_");
    EXPECT_EQ(pictureOf(dialog), "ubc pwd cert login*");
    QApplication::processEvents();
    EXPECT_GT(dialog.height(), low);
    prompts.ExpectBox(GetTrMsg(MsgCode::UI_INFO_PLEASE_INPUT_PWD), 0);
    click(dialog, "btn_connect_");
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(profile->authType, Type::kNone);
    EXPECT_EQ(profile->fileCert.pin, "before") << "nothing is kept before it is checked";
    type(password, QStringLiteral("open"));
    QTest::keyClick(&dialog, Qt::Key_Return);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(profile->authType, Type::kPwdWithCert);
    EXPECT_FALSE(profile->keepAuthType);
    EXPECT_EQ(clear(profile->password) + profile->fileCert.pin, "open");
    EXPECT_TRUE(password.text().isEmpty());
    ASSERT_EQ(started.count(), 1);
    EXPECT_EQ(started[0][0].toString(), QStringLiteral("Head office"));
    EXPECT_FALSE(started[0][1].toBool() || open_at_start);
}

TEST_F(AuthTypeDialogTest, ThirdPartyAsksBeforeItClosesAndForgetsThePassword) {
    profile->supportedAuthTypes = {Type::kPwd, Type::kOauth};
    profile->password = sensitive("open");
    AuthTypeDialog dialog(profile, true, services());
    dialog.show();
    bool open_at_start = false;
    QObject::connect(&dialog, &AuthTypeDialog::StartConnect,
                     [&] { open_at_start = dialog.isVisible(); });
    EXPECT_TRUE(test::Find<QWidget>(dialog, "btn_forgot_pwd_").isHidden());
    click(dialog, "btn_third_party_");
    EXPECT_TRUE(open_at_start);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(profile->authType, Type::kOauth);
    EXPECT_EQ(profile->lastSupportedAuthTypes, profile->supportedAuthTypes);
    EXPECT_TRUE(profile->password.empty());
}

}  // namespace
}  // namespace zorvanelink::ui
