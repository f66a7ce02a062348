// Private to core: the writer behind every message. One buffer, compact or indented by four blanks.
// Texts that are not UTF-8 are repaired and numbers that JSON has no form for become 0, so that
// what comes out is always JSON.
#pragma once

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/json_text.h"

namespace zorvanelink::core::json {

enum class Style { kCompact, kIndented };

class Output {
  public:
    explicit Output(Style style) : indented_(style == Style::kIndented) {}
    Output(Output const&) = delete;
    Output& operator=(Output const&) = delete;

    void StartObject() {
        with([](auto& writer) { writer.StartObject(); });
    }
    void EndObject() {
        with([](auto& writer) { writer.EndObject(); });
    }
    void StartArray() {
        with([](auto& writer) { writer.StartArray(); });
    }
    void EndArray() {
        with([](auto& writer) { writer.EndArray(); });
    }
    void Key(std::string_view key) { Text(key); }
    void Text(std::string_view text) {
        if (IsUtf8(text)) {
            raw(text);
        } else {
            raw(RepairUtf8(text));
        }
    }
    void Bool(bool value) {
        with([value](auto& writer) { writer.Bool(value); });
    }
    void Int(std::int32_t value) {
        with([value](auto& writer) { writer.Int(value); });
    }
    void Uint64(std::uint64_t value) {
        with([value](auto& writer) { writer.Uint64(value); });
    }
    void Double(double value) {
        double const finite = std::isfinite(value) ? value : 0.0;
        with([finite](auto& writer) { writer.Double(finite); });
    }

    std::string Take() const { return {buffer_.GetString(), buffer_.GetSize()}; }

  private:
    template <class Call>
    void with(Call call) {
        if (indented_) {
            call(pretty_);
        } else {
            call(compact_);
        }
    }
    void raw(std::string_view text) {
        // A view without bytes may have no address either.
        char const* const bytes = text.empty() ? "" : text.data();
        auto const size = static_cast<rapidjson::SizeType>(text.size());
        with([bytes, size](auto& writer) { writer.String(bytes, size); });
    }

    bool indented_;
    rapidjson::StringBuffer buffer_;
    rapidjson::Writer<rapidjson::StringBuffer> compact_{buffer_};
    rapidjson::PrettyWriter<rapidjson::StringBuffer> pretty_{buffer_};
};

}  // namespace zorvanelink::core::json
