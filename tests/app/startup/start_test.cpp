#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <future>

#include "app/environment/app_ctrl.h"
#include "app/startup/activation.h"
#include "app/startup/end_signals.h"
#include "app/startup/single_instance.h"
#include "tests/support/test_environment.h"
#include "tools/support/wait.h"
#include "ui/widgets/fonts.h"

namespace zorvanelink::ui {
namespace {

namespace fs = std::filesystem;
using Place = SingleInstance::Place;
using namespace std::chrono_literals;

class OneClient : public testing::Test {
  protected:
    // Longer than a socket's address can be.
    std::string const folder_ = (test::TestEnvironment::Home() / std::string(100, 'f') /
                                 testing::UnitTest::GetInstance()->current_test_info()->name())
                                    .string();
    OneClient() { fs::create_directories(folder_); }

    // What somebody does on a thread, while this one runs the event loop, as that user if it may.
    template <class Call>
    static auto later(Call call, uid_t user = geteuid()) {
        auto result = std::async(std::launch::async, call);
        uid_t const own = geteuid();
        syscall(SYS_setresuid, -1, user, -1);
        EXPECT_TRUE(
            test::WaitUntil([&] { return result.wait_for(0s) == std::future_status::ready; }));
        syscall(SYS_setresuid, -1, own, -1);
        return result.get();
    }
    Place startLater(std::string const& request) {
        return later([&] { return SingleInstance(folder_).Enter(request, 10s); });
    }
    std::optional<std::string> ask(std::string const& request, uid_t as = geteuid()) {
        return later([&] { return SingleInstance::Ask(folder_, request, 10s); }, as);
    }
};

TEST_F(OneClient, ALaterStartHandsOverAndANewOneFollowsTheFirst) {
    {
        SingleInstance first(folder_);
        EXPECT_EQ(first.Enter("show", 0s), Place::kFirst);
        for (char const* const file : {"zorvanelink.lock", "zorvanelink.sock"}) {
            struct stat status {};
            EXPECT_EQ(stat((folder_ + "/" + file).c_str(), &status), 0);
            EXPECT_EQ(status.st_mode & 0777U, 0600U) << file;
        }
        EXPECT_EQ(SingleInstance(folder_).Enter("show", 60ms), Place::kSilent);
        // The first one is still starting, and then ready.
        QObject owner;
        QTimer::singleShot(50, &owner, [&] {
            first.Serve(owner, [](std::string const& request) { return "got " + request; });
        });
        EXPECT_EQ(startLater("one"), Place::kAnswered);
        EXPECT_EQ(ask("two"), "got two");
    }
    EXPECT_FALSE(fs::exists(folder_ + "/zorvanelink.sock"));
    EXPECT_EQ(SingleInstance(folder_).Enter("show", 0s), Place::kFirst);
}

TEST_F(OneClient, WhatIsNoRequestGetsNoAnswer) {
    SingleInstance first(folder_);
    ASSERT_EQ(first.Enter("", 0s), Place::kFirst);
    QObject owner;
    int requests = 0;
    first.Serve(owner, [&requests](std::string const& request) {
        ++requests;
        return request == "known" ? std::string("ok") : std::string();
    });
    EXPECT_EQ(ask("unknown"), std::nullopt);
    EXPECT_EQ(ask(std::string(5000, 'x')), std::nullopt);
    if (geteuid() == 0) {
        EXPECT_EQ(ask("of another user than us", 1), std::nullopt);
    }
    EXPECT_EQ(requests, 1);
    EXPECT_EQ(startLater("known"), Place::kAnswered);
}

// A client that hangs, or of a version without the socket.
TEST_F(OneClient, AHeldLockWithoutAnAnswer) {
    int const lock = open((folder_ + "/zorvanelink.lock").c_str(), O_CREAT | O_RDWR, 0600);
    ASSERT_EQ(flock(lock, LOCK_EX), 0);
    EXPECT_EQ(SingleInstance(folder_).Enter("show", 60ms), Place::kSilent);
    // It ends while the later one waits.
    std::promise<void> waiting;
    auto place = std::async(std::launch::async, [&] {
        waiting.set_value();
        return SingleInstance(folder_).Enter("show", 10s);
    });
    waiting.get_future().wait();
    close(lock);
    EXPECT_EQ(place.get(), Place::kFirst);
}

// The kernel gives the lock back; the socket's name stays behind.
TEST_F(OneClient, AfterAKill) {
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    pid_t const child = fork();
    if (child == 0) {
        SingleInstance killed(folder_);
        char const place = killed.Enter("show", 0s) == Place::kFirst ? 'y' : 'n';
        static_cast<void>(!write(ready[1], &place, 1));
        pause();
        _exit(0);
    }
    char place = 0;
    EXPECT_EQ(read(ready[0], &place, 1), 1);
    EXPECT_EQ(place, 'y');
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    EXPECT_TRUE(fs::exists(folder_ + "/zorvanelink.sock"));
    SingleInstance next(folder_);
    EXPECT_EQ(next.Enter("show", 0s), Place::kFirst);
    QObject owner;
    next.Serve(owner, [](std::string const&) { return std::string("ok"); });
    EXPECT_EQ(startLater("show"), Place::kAnswered);
}

TEST_F(OneClient, WhereNoLockCanBeMade) {
    EXPECT_EQ(SingleInstance(folder_ + "/none").Enter("show", 10s), Place::kNoLock);
    fs::create_symlink("elsewhere", folder_ + "/zorvanelink.lock");
    EXPECT_EQ(SingleInstance(folder_).Enter("show", 10s), Place::kNoLock);
    EXPECT_FALSE(fs::exists(folder_ + "/elsewhere"));
}

TEST(Activation, TheMarkReachesTheWindow) {
    setenv("DESKTOP_STARTUP_ID", "shell/1_TIME42", 1);
    setenv("XDG_ACTIVATION_TOKEN", "token", 1);
    std::string const request = ShowRequest();
    EXPECT_EQ(request, "show\nshell/1_TIME42\ntoken");
    unsetenv("XDG_ACTIVATION_TOKEN");
    QByteArray seen;
    auto const show = [&seen] { seen = qgetenv("XDG_ACTIVATION_TOKEN"); };
    QWidget const window;
    EXPECT_EQ(AnswerShow("hide", window, show), "");
    EXPECT_TRUE(seen.isNull());
    EXPECT_EQ(AnswerShow(request, window, show), "ok");
    EXPECT_EQ(seen, "token");
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
    setenv("DESKTOP_STARTUP_ID", std::string(5000, 'x').c_str(), 1);
    EXPECT_EQ(ShowRequest(), "show\n\n");
}

TEST(EndSignals, EachLeavesInOrderAndAnIgnoredOneStaysIgnored) {
    for (int const number : {SIGTERM, SIGHUP}) {
        std::signal(number, SIG_DFL);  // whatever our own starter says
    }
    std::signal(SIGINT, SIG_IGN);
    int left = 0;
    {
        QObject owner;
        LeaveOnSignals(owner, [&left] { ++left; });
        for (int const number : {SIGTERM, SIGHUP, SIGTERM}) {
            int const before = left;
            std::raise(number);
            EXPECT_TRUE(test::WaitUntil([&] { return left == before + 1; })) << number;
        }
    }
    EXPECT_EQ(std::signal(SIGINT, SIG_DFL), SIG_IGN);
    for (int const number : {SIGTERM, SIGHUP}) {
        std::signal(number, SIG_DFL);
    }
}

TEST(Font, TheLanguagesOwnFamilyComesFirst) {
    struct Case {
        SysLang language;
        QString family;
        QString behind;
    } const cases[] = {
        {SysLang::kEnglish, QStringLiteral("Noto Sans"), QStringLiteral("Noto Sans CJK SC")},
        {SysLang::kSimplifiedChinese, QStringLiteral("Noto Sans CJK SC"),
         QStringLiteral("Noto Sans")},
    };
    for (Case const& c : cases) {
        AppCtrl::Instance().language = c.language;
        SetApplicationFont();
        EXPECT_EQ(QApplication::font().family(), c.family);
        EXPECT_EQ(QApplication::font().families(), QStringList({c.family, c.behind}));
    }
    AppCtrl::Instance() = AppCtrl();
}

}  // namespace
}  // namespace zorvanelink::ui
