// The session without a window: real controllers on a link without a socket, with scripted
// prompts.
#pragma once

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "app/environment/globals.h"
#include "core/clmsg_reply_json.h"
#include "tests/support/scripted_prompts.h"
#include "tests/support/stored_login.h"
#include "tools/support/fake_ipc.h"
#include "tools/support/wait.h"
#include "ui/session/connect_flow.h"
#include "ui/session/message_dispatcher.h"
#include "ui/session/view_state.h"
#include "ui/text/texts.h"

namespace zorvanelink::test {

class SessionFixture : public testing::Test {
  protected:
    SessionFixture() {
        ui::g_running_client = 0;
        common::ShowCriticalMsgBox = [this](common::CodeType type, std::string const& text) {
            failures.ProcessCriticalMsg(type, text);
        };
        common::ShowErrorMsgBox = [this](common::CodeType type, std::string const& text) {
            failures.ProcessErrorMsg(type, text);
        };
        link.Start();
        EXPECT_TRUE(WaitUntil([this] { return link.IsReady(); }));
        QObject::connect(&link, &ui::ServiceLink::Lost, &flow, &ui::ConnectFlow::StopConnect);
    }
    ~SessionFixture() override {
        common::ShowCriticalMsgBox = nullptr;
        common::ShowErrorMsgBox = nullptr;
    }

    std::shared_ptr<ui::Profile> Add(std::string const& name) {
        auto profile = StoredLogin(name);
        config.AddProfile(profile, true);
        return profile;
    }

    // What the service would send; true when it was handled.
    bool Receive(common::MsgCode code, std::string const& name = "Head office") {
        return Receive(Reply(code, name));
    }
    template <class Record>
    bool Receive(Record const& record) {
        return dispatcher.ProcessServiceMsg(core::sslvpn::CLMsgReplyJson::Build(record));
    }
    static core::sslvpn::CLMsgCommonReplyData Reply(common::MsgCode code,
                                                    std::string const& name = "Head office") {
        core::sslvpn::CLMsgCommonReplyData data;
        data.profileName = name;
        data.statusCode = code;
        return data;
    }
    void Click(char const* name = "Head office", bool query = false) {
        flow.onStartConnect(QString::fromUtf8(name), query);
    }
    void GoOnline() {
        Click();
        Receive(common::MsgCode::CONNECTING);
        Receive(common::MsgCode::ONLINE);
    }

    // How many messages of a type have left.
    int Sent(char const* type) const { return service->Count(type); }
    static QString Text(common::MsgCode code) { return ui::GetErrMsg(code); }

    std::shared_ptr<FakeIpc> service = std::make_shared<FakeIpc>();
    std::atomic<bool> service_there{true};
    ScriptedPrompts prompts;
    QWidget window;
    ui::Config config;
    ui::ConnectionState state;
    ui::StatusUpdater updater{state};
    ui::ServiceLink link{[this]() -> ui::LinkCore::Link {
                             return service_there ? service : std::make_shared<FakeIpc>(false);
                         },
                         {std::chrono::milliseconds(1), std::chrono::milliseconds(1)}};
    ui::ConnectFlow flow{
        {state, updater, config, link, prompts, &window,
         [this](std::string const& name) { return config.GetProfile().contains(name); }}};
    ui::SessionDialogs dialogs;
    ui::FailurePresenter failures{state, flow, prompts, dialogs, &window};
    ui::StatusHandler statuses{{state, updater, flow, failures, config, prompts, dialogs, &window}};
    ui::MessageDispatcher dispatcher{state, statuses, failures, config};
    QSignalSpy notified{&updater, &ui::StatusUpdater::NotifyConnectStatus};
};

}  // namespace zorvanelink::test
