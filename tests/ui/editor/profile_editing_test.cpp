#include "ui/editor/profile_editing.h"

#include <QSignalSpy>

#include "tests/support/qt_helpers.h"
#include "tests/support/scripted_prompts.h"
#include "tests/ui/config/config_fixture.h"
#include "ui/editor/create_connect_dialog.h"
#include "ui/text/texts.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using test::Find;

class ProfileEditingTest : public ConfigTest {
  protected:
    ProfileEditingTest() {
        for (char const* const name : {"a", "b"}) {
            config_.AddProfile(profileOf(name), false);
        }
    }
    void run(char const* name) {
        state_.status = ConnectStatus::Connected;
        state_.currentProfileName = name;
    }
    // Answers the next editor: types a server, and a name where one can be typed.
    static void answerEditor(char const* name, char const* button = "add_connect_button_") {
        test::WhenModal<CreateConnectDialog>([=](CreateConnectDialog& dialog) {
            Find<QLineEdit>(dialog, "server_").setText(QStringLiteral("new.example"));
            Find<QLineEdit>(dialog, "profile_name_").setText(QLatin1String(name));
            Find<QPushButton>(dialog, button).click();
        });
    }
    void expectCritical(MsgCode text) { prompts_.ExpectBox(GetTrMsg(text), 0); }

    Config config_;
    ConnectionState state_;
    CertListRoad certs_;
    test::ScriptedPrompts prompts_;
    ProfileEditing editing_{{state_, config_, certs_, prompts_, nullptr}};
    QSignalSpy changed_{&editing_, &ProfileEditing::ListChanged};
    QSignalSpy wanted_{&editing_, &ProfileEditing::ConnectWanted};
};

TEST_F(ProfileEditingTest, Refusals) {
    run("a");
    expectCritical(MsgCode::UI_TR_STOP_CONNECTION_FIRST);
    editing_.onModifyConnectionInfo(QStringLiteral("a"));
    expectCritical(MsgCode::UI_ERROR_PROFILE_IS_RUNNING);
    editing_.onDeleteConnectionInfo(QStringLiteral("a"));
    for (char const* const name : {"unknown", ""}) {
        expectCritical(MsgCode::UI_ERROR_PROFILE_NOT_EXIST);
        editing_.onModifyConnectionInfo(QLatin1String(name));
        expectCritical(MsgCode::UI_ERROR_PROFILE_NOT_EXIST);
        editing_.onDeleteConnectionInfo(QLatin1String(name));
    }
    for (int i = 2; i <= 32; ++i) {
        config_.AddProfile(profileOf("p" + std::to_string(i)), false);
        if (i >= 31) {
            prompts_.ExpectBox(GetTrMsg(i == 31 ? MsgCode::UI_ERROR_CONFIG_REACH_LIMIT
                                                : MsgCode::UI_ERROR_CONFIG_OVERLIMIT)
                                   .arg(32),
                               0);
            editing_.onButtonAddConnectionClicked();
        }
    }
    EXPECT_EQ(changed_.count() + wanted_.count(), 0);
    EXPECT_EQ(config_.GetProfile().size(), 33U);
}

TEST_F(ProfileEditingTest, AddingSavesAndConnectsOnlyWhenNothingRuns) {
    answerEditor("cancelled", "cannel_connect_button_");
    editing_.onButtonAddConnectionClicked();
    EXPECT_EQ(changed_.count(), 0);
    answerEditor("saved", "save_button_");
    editing_.onButtonAddConnectionClicked();
    EXPECT_EQ(changed_.count(), 1);
    EXPECT_TRUE(wanted_.isEmpty() && fileHas("[saved]"));
    answerEditor("first");
    QObject::connect(&editing_, &ProfileEditing::ConnectWanted,
                     [this] { EXPECT_EQ(changed_.count(), 2); });
    editing_.onButtonAddConnectionClicked();
    ASSERT_EQ(wanted_.count(), 1);
    EXPECT_EQ(wanted_[0][0].toString(), QStringLiteral("first"));
    run("a");
    answerEditor("second");
    expectCritical(MsgCode::UI_TR_STOP_CONNECTION_FIRST);
    editing_.onButtonAddConnectionClicked();
    EXPECT_EQ(wanted_.count(), 1);
    EXPECT_EQ(changed_.count(), 3);
    EXPECT_TRUE(fileHas("[first]"));
    EXPECT_TRUE(fileHas("[second]"));
    EXPECT_FALSE(config_.GetProfile("cancelled"));
}

TEST_F(ProfileEditingTest, ModifyingChangesTheSharedProfileAndConnectsNothing) {
    auto const shared = config_.GetProfile("b");
    run("a");
    answerEditor("ignored");
    editing_.onModifyConnectionInfo(QStringLiteral("b"));
    EXPECT_EQ(config_.GetProfile("b"), shared);
    EXPECT_EQ(shared->server, "new.example");
    EXPECT_EQ(shared->name, "b");
    EXPECT_EQ(changed_.count(), 1);
    EXPECT_EQ(wanted_.count(), 0);
    EXPECT_TRUE(fileHas("new.example"));
}

TEST_F(ProfileEditingTest, DeletingAsksAndLooksAgain) {
    auto const question = [](char const* detail) {
        return GetTrMsg(MsgCode::UI_INFO_SURE_TO_DELETE_CONNECTION) + QLatin1String(detail);
    };
    prompts_.ExpectBox(question("#@@#a\na.example"), -1);
    editing_.onDeleteConnectionInfo(QStringLiteral("a"));
    prompts_.ExpectBox(question("#@@#a\na.example"), 0, [this] {
        editing_.onDeleteConnectionInfo(QStringLiteral("a"));  // a second click is dropped
        run("a");
    });
    expectCritical(MsgCode::UI_ERROR_PROFILE_IS_RUNNING);
    editing_.onDeleteConnectionInfo(QStringLiteral("a"));
    EXPECT_TRUE(config_.GetProfile("a"));
    prompts_.ExpectBox(question("#@@#b\nb.example"), 0);
    editing_.onDeleteConnectionInfo(QStringLiteral("b"));
    EXPECT_FALSE(config_.GetProfile("b"));
    EXPECT_EQ(changed_.count(), 1);
    EXPECT_FALSE(fileHas("[b]"));
}

}  // namespace
}  // namespace zorvanelink::ui
