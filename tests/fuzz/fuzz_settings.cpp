// Settings files of any content: loading ends within the limits, and what was loaded is saved and
// loaded again.
#include <QString>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "app/environment/paths.h"
#include "components/logger/logger.h"
#include "ui/config/config.h"

using namespace zorvanelink;

namespace {

// Removed at the end, with every folder variable pointing below it.
class Home {
  public:
    Home() {
        std::string pattern = (std::filesystem::temp_directory_path() / "zvl-fuzz-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) {
            std::abort();
        }
        path = pattern;
        setenv("HOME", path.c_str(), 1);
        setenv("XDG_DATA_HOME", (path / "data").c_str(), 1);
    }
    ~Home() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    Home(Home const&) = delete;
    Home& operator=(Home const&) = delete;

    std::filesystem::path path;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
    static Home const home;
    // A folder an input: QSettings remembers files by name.
    static int number = 0;
    auto const folder = home.path / std::to_string(number++);
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
