// A settings folder of its own for each test.
#pragma once

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "app/environment/app_ctrl.h"
#include "app/environment/paths.h"
#include "tests/support/log_capture.h"
#include "tests/support/test_environment.h"
#include "tools/support/files.h"
#include "ui/config/config.h"

namespace zorvanelink::ui {

class ConfigTest : public testing::Test {
  protected:
    void SetUp() override {
        home_ = test::TestEnvironment::Home() /
                testing::UnitTest::GetInstance()->current_test_info()->name();
        setenv("XDG_CONFIG_HOME", (home_ / "config").c_str(), 1);
        setenv("XDG_DATA_HOME", (home_ / "data").c_str(), 1);
        file_ = GetAppConfigFilePath().toStdString();
    }
    void TearDown() override { AppCtrl::Instance() = AppCtrl(); }

    static std::string sample(std::string const& name) {
        return test::ReadFile(std::filesystem::path(ZVL_TEST_DATA) / "settings" / (name + ".ini"));
    }
    // As a roll-out may leave it: readable by all.
    void useSample(std::string const& name) const {
        std::filesystem::permissions(test::WriteFile(file_, sample(name)),
                                     std::filesystem::perms(0644));
    }
    std::string fileText() const { return test::ReadFile(file_); }
    bool fileHas(std::string const& text) const {
        return fileText().find(text) != std::string::npos;
    }
    static unsigned modeOf(std::filesystem::path const& path) {
        struct stat status {};
        return stat(path.c_str(), &status) == 0 ? status.st_mode & 0777U : 0;
    }
    static std::shared_ptr<Profile> profileOf(std::string const& name) {
        auto profile = std::make_shared<Profile>();
        profile->name = name;
        profile->server = name + ".example";
        return profile;
    }

    std::filesystem::path home_;
    std::filesystem::path file_;
};

}  // namespace zorvanelink::ui
