#include "tools/simservice/profile_writer.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include <filesystem>
#include <string_view>

#include "common/auth_type.h"
#include "components/utils/file.h"
#include "components/utils/sensitive_value.h"

namespace zorvanelink::simservice {
namespace {

// One character of UTF-8 text and the count of its bytes; a broken byte stands for itself.
char32_t nextCharacter(std::string_view text, std::size_t& size) {
    auto const lead = static_cast<unsigned char>(text[0]);
    size = lead >= 0xf0 ? 4 : lead >= 0xe0 ? 3 : lead >= 0xc0 ? 2 : 1;
    if (size == 1 || size > text.size()) {
        size = 1;
        return lead;
    }
    char32_t code = lead & (0xffU >> (size + 1));
    for (std::size_t at = 1; at < size; ++at) {
        code = (code << 6U) | (static_cast<unsigned char>(text[at]) & 0x3fU);
    }
    return code;
}

// Section names keep letters, digits and "_-."; the rest is written as %XX or, in units of UTF-16,
// as %UXXXX.
std::string escapedSection(std::string_view name) {
    if (name == "General" || name == "general") {
        return fmt::format("%{}", name);  // the bare word is the file's top level
    }
    std::string text;
    std::size_t size = 0;
    for (std::size_t at = 0; at < name.size(); at += size) {
        char32_t const code = nextCharacter(name.substr(at), size);
        bool const plain = (code >= 'a' && code <= 'z') || (code >= 'A' && code <= 'Z') ||
                           (code >= '0' && code <= '9') || code == '_' || code == '-' ||
                           code == '.';
        if (plain) {
            text += static_cast<char>(code);
        } else if (code <= 0xff) {
            text += fmt::format("%{:02X}", static_cast<std::uint32_t>(code));
        } else if (code <= 0xffff) {
            text += fmt::format("%U{:04X}", static_cast<std::uint32_t>(code));
        } else {
            auto const beyond = static_cast<std::uint32_t>(code) - 0x10000U;
            text += fmt::format("%U{:04X}%U{:04X}", 0xd800U + (beyond >> 10U),
                                0xdc00U + (beyond & 0x3ffU));
        }
    }
    return text;
}

// Always in quotes, which the reader takes for every value.
std::string quotedValue(std::string_view value) {
    std::string text = "\"";
    if (!value.empty() && value.front() == '@') {
        text += '@';
    }
    for (char const byte : value) {
        if (byte == '"' || byte == '\\') {
            text += '\\';
            text += byte;
        } else if (static_cast<unsigned char>(byte) < 0x20) {
            text += fmt::format("\\x{:x}", static_cast<unsigned>(static_cast<unsigned char>(byte)));
        } else {
            text += byte;
        }
    }
    return text + '"';
}

// A gateway with one type is never asked for its types.
std::string profileSection(User const& user, std::vector<common::SupportedAuthType> const& types) {
    bool const one = types.size() == 1;
    return fmt::format(
        "\n[{}]\n"
        "ConnectionName={}\n"
        "Server={}\n"
        "Port={}\n"
        "LoginMode=1\n"
        "SFMode=1\n"
        "KeepAuthType={}\n"
        "LastAuthType={}\n"
        "UserName={}\n"
        "Password={}\n"
        "RememberPwd=true\n"
        "SPAMode=0\n"
        "SPAPort=0\n"
        "CommOptimMode=2\n"
        "OptimalChannel=false\n"
        "GatewayDetect=true\n"
        "VerifyServerCert=false\n"
        "SupportedAuthType=\"{}\"\n",
        escapedSection(user.profile), quotedValue(user.profile), quotedValue(user.server),
        user.port, one, one ? static_cast<int>(types.front()) : 0, quotedValue(user.name),
        quotedValue(components::utils::EncodeSensitiveValue(user.password)),
        one ? fmt::format("{},", static_cast<int>(types.front())) : std::string());
}

}  // namespace

std::string SettingsText(Scenario const& scenario) {
    std::string names;
    std::string sections;
    for (auto const& user : scenario.users) {
        names += (names.empty() ? "" : ";") + user.profile;
        sections += profileSection(user, scenario.auth_types);
    }
    auto const first = scenario.users.empty() ? std::string() : scenario.users.front().profile;
    return fmt::format(
        "[General]\nDefaultProfile={}\nAutoLogin=false\nAutoMinimize=false\nProfileList={}\n{}",
        quotedValue(first), quotedValue(names), sections);
}

bool WriteProfile(Scenario const& scenario, std::string const& folder, bool force,
                  std::string& error) {
    namespace fs = std::filesystem;
    std::error_code problem;
    if (!fs::exists(folder, problem)) {
        fs::create_directories(folder, problem);
        if (problem || chmod(folder.c_str(), 0700) != 0) {
            error = fmt::format("{}: cannot be made", folder);
            return false;
        }
    }
    auto const path = (fs::path(folder) / "AppConfig.ini").string();
    if (!force && fs::exists(fs::symlink_status(path, problem))) {
        error = fmt::format("{}: exists already, --force replaces it", path);
        return false;
    }
    if (!components::utils::WritePrivateFile(path, SettingsText(scenario))) {
        error = fmt::format("{}: cannot be written", path);
        return false;
    }
    return true;
}

}  // namespace zorvanelink::simservice
