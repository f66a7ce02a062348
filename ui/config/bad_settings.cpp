#include "ui/config/bad_settings.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

#include "components/logger/logger.h"
#include "components/utils/file.h"
#include "ui/config/config_keys.h"

namespace zorvanelink::ui {
namespace {

using components::logger::Log;
constexpr auto kNone = std::string_view::npos;

// Whether the text ahead of "=" ends in a key whose value is a secret.
bool isSecret(std::string_view key) {
    key.remove_prefix(key.find_last_of("\\/") + 1);  // an array's position
    key.remove_prefix(std::min(key.find_first_not_of(" \t"), key.size()));
    key.remove_suffix(key.size() - (key.find_last_not_of(" \t") + 1));
    return std::ranges::any_of(settings::kSecretKeys, [key](QLatin1String secret) {
        return QLatin1String(key.data(), static_cast<int>(key.size()))
                   .compare(secret, Qt::CaseInsensitive) == 0;
    });
}

// Where the value ends that begins there: at the line's end, or at a later one when a quotation or
// a backslash carries it on.
std::size_t valueEnd(std::string_view text, std::size_t at) {
    std::size_t const lineEnd = std::min(text.find('\n', at), text.size());
    bool quoted = false;
    for (; at < text.size() && (quoted || text[at] != '\n'); ++at) {
        if (text[at] == '\\') {
            ++at;
        } else if (text[at] == '"') {
            quoted = !quoted;
        }
    }
    // What is never closed holds no value of ours.
    return quoted ? lineEnd : std::min(at, text.size());
}

// Calls use with PATH.bad, PATH.bad.1 ... until it answers true for one of them.
template <class Use>
std::string firstBadName(std::string const& path, Use use) {
    std::string name = path + ".bad";
    for (int number = 1; !use(name); ++number) {
        name = path + ".bad." + std::to_string(number);
    }
    return name;
}

bool isFree(std::string const& path) {
    std::error_code error;
    return std::filesystem::symlink_status(path, error).type() ==
           std::filesystem::file_type::not_found;
}

}  // namespace

std::string BlankSecrets(std::string_view text) {
    std::string blanked;
    blanked.reserve(text.size());
    while (!text.empty()) {
        std::size_t const line = std::min(text.find('\n'), text.size());
        std::size_t const equals = text.substr(0, line).find('=');
        bool const secret = equals != kNone && isSecret(text.substr(0, equals));
        std::size_t const end = secret ? valueEnd(text, equals + 1) : line;
        blanked += text.substr(0, secret ? equals + 1 : line);
        if (end < text.size()) {
            blanked += '\n';
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return blanked;
}

bool KeepBadCopy(std::string const& path) {
    using namespace components::utils;
    std::string content;
    if (!ReadContentFromFile(path, content)) {
        return false;
    }
    content = BlankSecrets(content);
    bool kept = false;
    std::string const copy = firstBadName(path, [&](std::string const& name) {
        std::string there;
        kept = ReadContentFromFile(name, there) && there == content;
        return kept || isFree(name);
    });
    if (kept) {
        return true;
    }
    if (!WritePrivateFile(copy, content)) {
        Log().error("Config [{}] does not parse and can not be copied", path);
        return false;
    }
    Log().error("Config [{}] does not parse, copied to [{}]", path, copy);
    return true;
}

bool MoveAside(std::string const& path) {
    std::string const aside = firstBadName(path, isFree);
    bool const moved = std::rename(path.c_str(), aside.c_str()) == 0;
    Log().error("Config [{}] is no regular file, moved to [{}]: {}", path, aside, moved);
    return moved;
}

}  // namespace zorvanelink::ui
