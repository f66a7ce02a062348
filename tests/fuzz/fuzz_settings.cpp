// Settings files of any content: loading ends within the limits, and what was loaded is saved and
// loaded again.
#include <QString>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "app/environment/paths.h"
#include "components/logger/logger.h"
#include "tests/support/test_environment.h"
#include "ui/config/config.h"

using namespace zorvanelink;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
    static test::TestEnvironment const environment;
    // A folder an input: QSettings remembers files by name.
    static int number = 0;
    auto const folder = test::TestEnvironment::Home() / std::to_string(number++);
    setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
    components::logger::Log().setLogLevel(components::logger::LOG_LEVEL::fatal);
    std::filesystem::path const file = ui::GetAppConfigFilePath().toStdString();
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary)
        .write(reinterpret_cast<char const*>(bytes), static_cast<std::streamsize>(size));
    ui::Config config;
    config.Load();
    if (config.profiles.size() > ui::Config::kMaxConfigNum) {
        std::abort();
    }
    config.Save();
    ui::Config again;
    again.Load();
    if (again.profiles.size() > ui::Config::kMaxConfigNum) {
        std::abort();
    }
    std::filesystem::remove_all(folder);
    return 0;
}
