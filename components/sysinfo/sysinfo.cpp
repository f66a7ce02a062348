#include "components/sysinfo/sysinfo.h"

#include <sys/utsname.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <set>

namespace zorvanelink::components::sysinfo {
namespace {

constexpr char kNoAddress[] = "00:00:00:00:00:00";

std::string firstLineOf(std::filesystem::path const& file) {
    std::ifstream in(file);
    std::string line;
    std::getline(in, line);
    return line;
}

std::string prettyNameIn(std::string const& os_release_file) {
    constexpr std::string_view kKey = "PRETTY_NAME=";
    std::ifstream in(os_release_file);
    for (std::string line; std::getline(in, line);) {
        if (line.starts_with(kKey)) {
            std::erase_if(line, [](char c) { return c == '"' || c == '\''; });
            return line.substr(kKey.size());
        }
    }
    return {};
}

}  // namespace

std::string GetHostName() {
    std::array<char, 256> name{};
    return gethostname(name.data(), name.size() - 1) == 0 ? std::string(name.data()) : "";
}

std::string GetSysVersion(std::string const& os_release_file) {
    std::string name = prettyNameIn(os_release_file);
    utsname kernel{};
    if (name.empty() || uname(&kernel) != 0) {
        return name;
    }
    return name + ' ' + kernel.release;
}

std::string GetHostId(std::string const& machine_id_file) {
    return firstLineOf(machine_id_file);
}

std::string GetMacAddresses(std::string const& net_folder) {
    std::error_code ignored;
    std::set<std::filesystem::path> cards;
    for (auto const& entry : std::filesystem::directory_iterator(net_folder, ignored)) {
        cards.insert(entry.path());
    }
    std::string of_virtual_card;
    for (auto const& card : cards) {
        std::string address = firstLineOf(card / "address");
        if (card.filename() == "lo" || address.empty() || address == kNoAddress) {
            continue;
        }
        if (std::filesystem::exists(card / "device", ignored)) {
            return address;
        }
        if (of_virtual_card.empty()) {
            of_virtual_card = address;
        }
    }
    return of_virtual_card;
}

}  // namespace zorvanelink::components::sysinfo
