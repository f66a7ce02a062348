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
    using Types = std::vector<Type>;
    struct Case {
        Types reported;
        Types last;
        Type own;
        bool select;
        char const* picture;
        Type chosen;
    } const cases[] = {
        {{}, {}, Type::kNone, true, "ubc pwd login*", Type::kPwd},
        {{}, {Type::kOnlyUkey}, Type::kNone, false, " cert login*", Type::kOnlyUkey},
        {{Type::kOauth}, {Type::kPwd}, Type::kNone, true, " third*", Type::kNone},
        {{Type::kOauth, Type::kPwd}, {}, Type::kPwd, true, " pwd login* third", Type::kPwd},
        {{Type::kOnlyUkey, Type::kPwdWithCert, Type::kOauth},
         {},
         Type::kPwd,
         true,
         "bc pwd cert login* third",
         Type::kPwdWithCert},
        {{Type::kPwd, Type::kOnlyUkey},
         {},
         Type::kOnlyUkey,
         true,
         "uc cert login*",
         Type::kOnlyUkey},
        {{Type::kPwd, Type::kOnlyUkey},
         {},
         Type::kPwdWithCert,
         false,
         " pwd cert login*",
         Type::kPwdWithCert},
        {{Type::kPwd, Type::kOauth}, {}, Type::kOauth, false, " third*", Type::kNone},
        // Kept types and lists that nobody can choose here.
        {{Type::kPwd, Type::kOnlyUkey}, {}, Type::kCookie, false, "uc pwd login*", Type::kPwd},
        {{Type::kPiccQrcode}, {}, Type::kNone, true, "ubc pwd login*", Type::kPwd},
    };
    for (Case const& c : cases) {
        SCOPED_TRACE(c.picture);
        profile->supportedAuthTypes = c.reported;
        profile->lastSupportedAuthTypes = c.last;
        profile->authType = c.own;
        AuthTypeDialog dialog(profile, c.select, services());
        dialog.show();
        EXPECT_EQ(pictureOf(dialog), c.picture);
        EXPECT_EQ(dialog.ChosenType(), c.chosen);
    }
}

TEST_F(AuthTypeDialogTest, RadioButtonsSwitchTheGroups) {
    AuthTypeDialog dialog(profile, true, services());
    dialog.show();
    int const low = dialog.height();
    click(dialog, "radioButton_user_cert_");
    EXPECT_EQ(pictureOf(dialog), "ubc pwd cert login*");
    QApplication::processEvents();
    EXPECT_GT(dialog.height(), low);
    click(dialog, "radioButton_cert_");
    EXPECT_EQ(pictureOf(dialog), "ubc cert login*");
    EXPECT_EQ(dialog.ChosenType(), Type::kOnlyUkey);
}

TEST_F(AuthTypeDialogTest, LoginStoresChoiceAndCredentials) {
    AuthTypeDialog dialog(profile, true, services());
    dialog.show();
    QSignalSpy started(&dialog, &AuthTypeDialog::StartConnect);
    bool open_at_start = true;
    QObject::connect(&dialog, &AuthTypeDialog::StartConnect,
                     [&] { open_at_start = dialog.isVisible(); });
    auto& password = test::Find<SecretEdit>(dialog, "lineedit_password_");
    click(dialog, "checkbox_keep_auth_type_");
    click(dialog, "radioButton_user_cert_");
    prompts.ExpectBox(GetTrMsg(MsgCode::UI_INFO_PLEASE_INPUT_PWD), 0);
    click(dialog, "btn_connect_");
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(profile->authType, Type::kNone);
    type(password, QStringLiteral("open"));
    QTest::keyClick(&dialog, Qt::Key_Return);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(profile->authType, Type::kPwdWithCert);
    EXPECT_FALSE(profile->keepAuthType);
    EXPECT_EQ(clear(profile->password), "open");
    EXPECT_TRUE(password.text().isEmpty());
    ASSERT_EQ(started.count(), 1);
    EXPECT_EQ(started[0][0].toString(), QStringLiteral("Head office"));
    EXPECT_FALSE(started[0][1].toBool() || open_at_start);
    EXPECT_EQ(test::Find<QWidget>(dialog, "btn_connect_").styleSheet(),
              QStringLiteral("background-color: #E8E8E8; color: #CCCCCC; border-radius:4;border: "
                             "#CCCCCC"));
}

TEST_F(AuthTypeDialogTest, ThirdPartyAsksBeforeItClosesAndForgetsThePassword) {
    profile->supportedAuthTypes = {Type::kPwd, Type::kOauth};
    profile->password = sensitive("open");
    AuthTypeDialog dialog(profile, true, services());
    dialog.show();
    bool open_at_start = false;
    QObject::connect(&dialog, &AuthTypeDialog::StartConnect,
                     [&] { open_at_start = dialog.isVisible(); });
    click(dialog, "btn_third_party_");
    EXPECT_TRUE(open_at_start);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(profile->authType, Type::kOauth);
    EXPECT_EQ(profile->lastSupportedAuthTypes, profile->supportedAuthTypes);
    EXPECT_TRUE(profile->password.empty());
}

TEST_F(AuthTypeDialogTest, EveryControlHasANameAndItsPlaceInTheTabOrder) {
    profile->supportedAuthTypes = {Type::kPwd, Type::kPwdWithCert, Type::kOnlyUkey, Type::kOauth};
    profile->authType = Type::kPwdWithCert;
    profile->certIsFile = false;
    profile->systemCert.certType = kCertTypeUsbKey;
    AuthTypeDialog dialog(profile, true, services());
    dialog.show();
    QStringList order;
    QWidget* const first = &test::Find<QWidget>(dialog, "radioButton_username_");
    for (QWidget* at = first; at != first || order.isEmpty(); at = at->nextInFocusChain()) {
        if (at->isVisible() && (at->focusPolicy() & Qt::TabFocus) != 0 && at->window() == &dialog) {
            order << at->objectName();
            EXPECT_FALSE(at->accessibleName().isEmpty()) << at->objectName().toStdString();
        }
    }
    order.removeAll(QStringLiteral("btn_close_"));
    EXPECT_EQ(order.join(QLatin1Char(' ')).toStdString(),
              "radioButton_username_ radioButton_user_cert_ radioButton_cert_ lineedit_username_ "
              "lineedit_password_ checkBox_remember_pwd_ lineEdit_select_cert select_cert_button_ "
              "lineedit_pin_ checkBox_remember_pin_ btn_connect_ btn_third_party_ "
              "checkbox_keep_auth_type_ btn_cancel_");
}

}  // namespace
}  // namespace zorvanelink::ui
