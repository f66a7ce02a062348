// A process that dies at any moment of a save leaves a whole settings file behind.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QSettings>
#include <chrono>
#include <random>

#include "tests/ui/config/config_fixture.h"

namespace zorvanelink::ui {
namespace {

constexpr int kProfiles = 8;
constexpr int kRounds = 300;

// Saves one generation after the other, tells each begin through the pipe, and never returns.
[[noreturn]] void saveForEver(int pipe, int generation) {
    components::logger::Log().setLogLevel(components::logger::LOG_LEVEL::error);
    Config config;
    for (int i = 0; i < kProfiles; ++i) {
        auto profile = std::make_shared<Profile>();
        profile->name = "p" + std::to_string(i);
        config.AddProfile(profile, true);
    }
    for (;; ++generation) {
        std::string const mark = std::to_string(generation);
        config.dnsServers = QString::fromStdString(mark);
        for (auto const& [name, profile] : config.profiles) {
            profile->server = mark + std::string(generation % 700, 'x');
        }
        if (generation % 3 == 0) {
            config.profiles["gone"] = config.profiles["p0"];
            config.DeleteProfile("gone");
        }
        if (write(pipe, "", 1) != 1) {
            _exit(1);
        }
        config.Save();
    }
}

// The generation that the file holds, -1 for none; fails on a mixture.
int generationOf(std::string const& text, std::string const& copy) {
    if (text.empty()) {
        return -1;
    }
    // A name of its own: QSettings remembers files.
    QSettings const file(QString::fromStdString(test::WriteFile(copy, text)), QSettings::IniFormat);
    EXPECT_TRUE(file.contains(QStringLiteral("ProfileList")));
    EXPECT_EQ(file.status(), QSettings::NoError);
    QString const mark = file.value(QStringLiteral("DnsServers")).toString();
    for (int i = 0; i < kProfiles; ++i) {
        EXPECT_EQ(file.value(QStringLiteral("p%1/Server").arg(i)).toString(),
                  mark + QString(mark.toInt() % 700, QLatin1Char('x')));
    }
    return mark.toInt();
}

using SaveKill = ConfigTest;

TEST_F(SaveKill, AlwaysLeavesAWholeFile) {
    std::mt19937 random(1);
    int generation = 0;
    int advanced = 0;
    for (int round = 0; round < kRounds && !HasFailure(); ++round) {
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        pid_t const child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            saveForEver(ends[1], generation + 1);
        }
        close(ends[1]);
        char byte = 0;
        for (unsigned saves = 1 + random() % 3; saves > 0; --saves) {
            ASSERT_EQ(read(ends[0], &byte, 1), 1);
        }
        // Somewhere inside the save that has just begun.
        auto const moment =
            std::chrono::steady_clock::now() + std::chrono::microseconds(random() % 4000);
        while (std::chrono::steady_clock::now() < moment) {
        }
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        close(ends[0]);
        ASSERT_TRUE(WIFSIGNALED(status)) << "the child ended by itself";
        int const found = generationOf(fileText(), home_ / ("copy" + std::to_string(round)));
        EXPECT_TRUE(found < 0 || modeOf(file_) == 0600U);
        EXPECT_TRUE(generation == 0 || found >= generation) << "what was saved before is there";
        advanced += found > generation ? 1 : 0;
        generation = std::max(generation, found);
    }
    EXPECT_GT(advanced, kRounds / 4);
}

}  // namespace
}  // namespace zorvanelink::ui
