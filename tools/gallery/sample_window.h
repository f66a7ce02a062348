// The program's main window with sample connections, and a service that says what it is told to.
#pragma once

#include <atomic>
#include <memory>
#include <string>

#include "tools/support/fake_ipc.h"
#include "tools/support/no_prompts.h"
#include "ui/shell/main_window.h"

namespace zorvanelink::gallery {

class SampleWindow {
  public:
    enum class Content { kCards, kMany, kFirstUse };

    // `linked` false: the service is never found, so the wait form stands.
    explicit SampleWindow(Content content = Content::kCards, bool linked = true);

    // The first connection is started and reaches that state.
    void GoTo(ui::ConnectStatus status, bool warning = false);
    // What happens to it then.
    void LoseService();  // until the log is offered
    void FailAdapter();
    void EndSession();
    // The connection that is started, instead of the first.
    void Use(std::string const& name) { name_ = name; }

    // A login that goes on in the browser, or asks about the server's certificate.
    void GoToBrowserLogin();
    void AskAboutCertificate();

    ui::MainWindow& Window() { return *window_; }
    ui::TunnelView& Tunnel();
    test::NoPrompts& Prompts() { return prompts_; }

  private:
    void start();
    void say(common::MsgCode code, bool warning = false);
    void sendTunnel();
    void awaitButton(char const* name);
    template <class Record>
    void deliver(Record record);

    ui::Config config_;
    test::NoPrompts prompts_;
    std::string name_;
    std::shared_ptr<test::FakeIpc> service_;
    std::atomic<bool> there_;
    std::unique_ptr<ui::MainWindow> window_;
};

}  // namespace zorvanelink::gallery
