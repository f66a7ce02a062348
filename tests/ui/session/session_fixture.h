// The session without a window, on a link without a socket, with scripted prompts. What the service
// says goes through the link's queue, as in the program.
#pragma once

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "app/environment/globals.h"
#include "core/clmsg_reply_json.h"
#include "tests/support/scripted_prompts.h"
#include "tests/support/stored_login.h"
#include "tools/support/fake_ipc.h"
#include "tools/support/wait.h"
#include "ui/session/session.h"
#include "ui/session/view_state.h"
#include "ui/text/texts.h"

namespace zorvanelink::test {

class SessionFixture : public testing::Test {
  protected:
    SessionFixture() {
        ui::g_quit = false;
        link.Start();
        EXPECT_TRUE(WaitUntil([this] { return session.state.link == ui::LinkState::kLinked; }));
    }
    ~SessionFixture() override { ui::g_quit = false; }

    std::shared_ptr<ui::Profile> Add(std::string const& name) {
        auto profile = StoredLogin(name);
        config.AddProfile(profile, true);
        return profile;
    }

    // The service says it, and the GUI's thread comes to it.
    void Receive(common::MsgCode code, std::string const& name = "Head office") {
        Receive(Reply(code, name));
    }
    template <class Record>
    void Receive(Record const& record) {
        ReceiveText(core::sslvpn::CLMsgReplyJson::Build(record));
    }
    void ReceiveText(std::string const& json) {
        service->Deliver(json);
        QCoreApplication::processEvents();
    }
    static core::sslvpn::CLMsgCommonReplyData Reply(common::MsgCode code,
                                                    std::string const& name = "Head office") {
        core::sslvpn::CLMsgCommonReplyData data;
        data.profileName = name;
        data.statusCode = code;
        return data;
    }
    void Click(char const* name = "Head office") { session.Start(QString::fromUtf8(name)); }
    void ClickStop() { session.Stop(QStringLiteral("Head office")); }
    void Connect() {
        Click();
        Receive(common::MsgCode::CONNECTING);
    }
    void GoOnline() {
        Connect();
        Receive(common::MsgCode::ONLINE);
    }
    void LoseLink() {
        service_there = false;
        service->FailRead(2);
        ASSERT_TRUE(WaitUntil([this] { return !link.IsReady(); }));
    }
    void FindLink() {
        service = std::make_shared<FakeIpc>();  // its threads read it behind the flag
        service_there = true;
        ASSERT_TRUE(WaitUntil([this] { return session.state.link == ui::LinkState::kLinked; }));
    }

    // How many messages of a type have left.
    int Sent(char const* type) const { return service->Count(type); }
    static QString Text(common::MsgCode code) { return ui::GetTrMsg(code); }

    std::shared_ptr<FakeIpc> service = std::make_shared<FakeIpc>();
    std::atomic<bool> service_there{true};
    ScriptedPrompts prompts;
    QWidget window;
    ui::Config config;
    ui::ServiceLink link{[this]() -> ui::LinkCore::Link {
                             return service_there ? service : std::make_shared<FakeIpc>(false);
                         },
                         {std::chrono::milliseconds(1), std::chrono::milliseconds(1),
                          std::chrono::milliseconds(200)}};
    // The clock of deadlines stands still until a test moves it.
    std::chrono::milliseconds boot{1000};
    ui::Session session{
        {config, prompts, link, &window, {[this] { return boot; }, std::chrono::milliseconds(1)}}};
    ui::ConnectionState& state = session.state;
};

}  // namespace zorvanelink::test
