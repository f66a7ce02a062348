// Private to core: how values of each C++ type are read from and written to JSON. A codec is a type
// with a static Read and Write; Plain serves by the member's type, the others serve lists.
#pragma once

#include <rapidjson/document.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

#include "common/auth_type.h"
#include "core/json_output.h"

namespace zorvanelink::core::json {

using Value = rapidjson::Value;

// How reading one value ended. On kWrongType `type` is the JSON type number found; kFailed has
// been logged where it was noticed.
struct Outcome {
    enum Kind { kStored, kWrongType, kFailed };
    Kind kind = kStored;
    int type = 0;

    bool Stored() const { return kind == kStored; }
};

inline constexpr Outcome kStored{};

inline Outcome WrongType(Value const& value) {
    return {Outcome::kWrongType, static_cast<int>(value.GetType())};
}

void NoteTooLong(std::size_t length, std::size_t most);

Outcome Read(Value const& value, std::string& out);
Outcome Read(Value const& value, bool& out);
Outcome Read(Value const& value, std::int32_t& out);
Outcome Read(Value const& value, std::uint64_t& out);
// A number without fraction is refused, and so is one outside the range of a float.
Outcome Read(Value const& value, float& out);
// Of addresses.
Outcome Read(Value const& value, std::vector<std::string>& out);
// By its text; kUnknown for one outside the table.
Outcome Read(Value const& value, common::SupportedAuthType& out);

// Codes travel as their numbers.
template <class Enum>
requires std::is_enum_v<Enum> Outcome Read(Value const& value, Enum& out) {
    std::int32_t number = 0;
    Outcome const outcome = Read(value, number);
    if (outcome.Stored()) {
        out = static_cast<Enum>(number);
    }
    return outcome;
}

template <class T>
Outcome Read(Value const& value, std::optional<T>& out) {
    T content{};
    Outcome const outcome = Read(value, content);
    if (outcome.Stored()) {
        out = std::move(content);
    }
    return outcome;
}

inline void Write(Output& out, std::string const& value) {
    out.Text(value);
}
inline void Write(Output& out, bool value) {
    out.Bool(value);
}
inline void Write(Output& out, std::int32_t value) {
    out.Int(value);
}
inline void Write(Output& out, std::uint64_t value) {
    out.Uint64(value);
}
inline void Write(Output& out, float value) {
    out.Double(value);
}
inline void Write(Output& out, common::SupportedAuthType value) {
    out.Text(common::AuthTypeToString(value));
}
void Write(Output& out, std::vector<std::string> const& value);

template <class Enum>
requires std::is_enum_v<Enum>
void Write(Output& out, Enum value) {
    out.Int(static_cast<std::int32_t>(value));
}
// Only called when there is a value.
template <class T>
void Write(Output& out, std::optional<T> const& value) {
    Write(out, *value);
}

struct Plain {
    template <class T>
    static Outcome Read(Value const& value, T& out) {
        return json::Read(value, out);
    }
    template <class T>
    static void Write(Output& out, T const& value) {
        json::Write(out, value);
    }
};

// Codec: a text of at most that many bytes; a longer one reads as empty, with a warning.
template <std::size_t kMost>
struct AtMost {
    static Outcome Read(Value const& value, std::string& out) {
        Outcome const outcome = json::Read(value, out);
        if (out.size() > kMost) {
            NoteTooLong(out.size(), kMost);
            out.clear();
        }
        return outcome;
    }
    static void Write(Output& out, std::string const& value) { out.Text(value); }
};
// Of hosts, pages and files.
using Address = AtMost<2048>;
// Base64.
using Certificate = AtMost<std::size_t{64} * 1024>;

// Reads each element of an array with `read`, which is given the object and the container to add
// to and answers an Outcome. `out` changes only when all of them were read.
template <class Container, class ReadElement>
Outcome ReadObjects(Value const& value, Container& out, ReadElement read) {
    if (!value.IsArray()) {
        return WrongType(value);
    }
    Container content;
    for (Value const& element : value.GetArray()) {
        Outcome const outcome = element.IsObject() ? read(element, content) : WrongType(element);
        if (!outcome.Stored()) {
            return outcome;
        }
    }
    out = std::move(content);
    return kStored;
}

// A string literal as a template argument.
template <std::size_t N>
struct Literal {
    char text[N];
    consteval Literal(char const (&literal)[N]) { std::copy_n(literal, N, text); }
    constexpr std::string_view View() const { return {text, N - 1}; }
};

}  // namespace zorvanelink::core::json
