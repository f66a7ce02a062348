#include "tools/simservice/recorder.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <nlohmann/json.hpp>

#include "core/message_log.h"

namespace zorvanelink::simservice {
namespace {

using Json = nlohmann::ordered_json;

constexpr char kMask[] = "****";
void mask(Json& value) {
    if (value.is_array()) {
        for (auto& element : value) {
            mask(element);
        }
    }
    if (!value.is_object()) {
        return;
    }
    for (auto const& [key, member] : value.items()) {
        if (!core::IsSecretKey(key)) {
            mask(member);
        } else if (member != "") {
            member = kMask;
        }
    }
}

std::string dump(Json const& value) {
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

Json masked(std::string const& json) {
    auto value = Json::parse(json, nullptr, false);
    if (!value.is_object()) {
        return {};
    }
    mask(value);
    return value;
}

}  // namespace

std::string MaskedMessage(std::string const& json) {
    auto const value = masked(json);
    return value.is_object() ? dump(value) : std::string();
}

Recorder::Recorder(Scheduler const& scheduler) : scheduler_(scheduler), start_(scheduler.Now()) {
}

bool Recorder::Open(std::string const& path) {
    int const descriptor =
        open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (descriptor < 0) {
        return false;
    }
    file_.reset(fdopen(descriptor, "w"));
    if (!file_) {
        close(descriptor);
    }
    return file_ != nullptr;
}

void Recorder::Message(std::string const& json) {
    auto const value = masked(json);
    if (!value.is_object()) {
        write(fmt::format("\"event\":\"unreadable\",\"length\":{}", json.size()));
        return;
    }
    auto const type = value.find("type");
    auto const text = type != value.end() && type->is_string() ? *type : Json("unknown");
    write(fmt::format("\"type\":{},\"message\":{}", dump(text), dump(value)));
}

void Recorder::Event(std::string const& name) {
    write(fmt::format("\"event\":{}", dump(Json(name))));
}

void Recorder::write(std::string const& rest) {
    if (!file_) {
        return;
    }
    auto const time =
        std::chrono::duration_cast<Scheduler::Milliseconds>(scheduler_.Now() - start_).count();
    auto const line = fmt::format("{{\"time\":{},{}}}\n", time, rest);
    std::fwrite(line.data(), 1, line.size(), file_.get());
    std::fflush(file_.get());
}

}  // namespace zorvanelink::simservice
