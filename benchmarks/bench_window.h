// The real window, online through a real link to a service's end in the same process, on a platform
// without a screen; and what a user would notice of it. GUI thread.
#pragma once

#include <QApplication>
#include <memory>

#include "benchmarks/bench_home.h"
#include "components/ipc/socket_ipc_server.h"
#include "tools/support/no_prompts.h"
#include "ui/shell/main_window.h"

namespace zorvanelink::bench {

using Milliseconds = std::chrono::duration<double, std::milli>;

// Knows the longest time that one event has held the GUI's thread.
class HeldApplication : public QApplication {
  public:
    using QApplication::QApplication;
    bool notify(QObject* receiver, QEvent* event) override;
    // The longest since the last call.
    Milliseconds TakeLongestHold() { return std::exchange(longest_, Milliseconds{}); }

  private:
    Milliseconds longest_{};
    int depth_ = 0;
};

// Sees the painting of one widget.
class PaintWatch : public QObject {
  public:
    explicit PaintWatch(QObject* widget) { widget->installEventFilter(this); }
    int Count() const { return count_; }

  protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        count_ += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

  private:
    int count_ = 0;
};

class BenchWindow {
  public:
    // Returns with the window online; ends the program when that fails.
    BenchWindow();
    ~BenchWindow();

    // Puts a message on the wire, without waiting.
    void Say(std::string const& json);
    // A status of the connection as it stands on the wire.
    static std::string Status(common::MsgCode code);
    static char const* ProfileName() { return "Head office"; }

    ui::MainWindow& Window() { return *window_; }
    template <class T>
    T& Find(char const* name) {
        return *window_->findChild<T*>(QLatin1String(name));
    }
    // Runs the event loop until the condition holds; ends the program when it never does.
    static void Until(std::function<bool()> const& condition, char const* what);

  private:
    void goOnline();

    BenchHome home_;
    std::shared_ptr<components::ipc::SocketIPCServer> service_;
    std::atomic<int> received_{0};
    ui::Config config_;
    test::NoPrompts prompts_;
    std::unique_ptr<ui::MainWindow> window_;
};

}  // namespace zorvanelink::bench
