// Settings files of any content: loading ends within the limits, and what was loaded is saved and
// loaded again.
#include <fstream>

#include "app/environment/paths.h"
#include "components/logger/logger.h"
#include "tests/fuzz/fuzz_target.h"
#include "tests/support/test_environment.h"
#include "ui/config/config.h"

void zorvanelink::test::Fuzz(std::string const& input) {
    static TestEnvironment const environment;
    // A folder an input: QSettings remembers files by name.
    static int number = 0;
    auto const folder = TestEnvironment::Home() / std::to_string(number++);
    setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
    components::logger::Log().setLogLevel(components::logger::LOG_LEVEL::fatal);
    std::filesystem::path const file = ui::GetAppConfigFilePath().toStdString();
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << input;
    ui::Config config;
    config.Load();
    Require(config.profiles.size() <= ui::Config::kMaxConfigNum);
    config.Save();
    ui::Config again;
    again.Load();
    Require(again.profiles.size() == config.profiles.size());
    std::filesystem::remove_all(folder);
}
