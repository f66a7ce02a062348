// Private to core: a record described as a list of fields, and the one reader and the one writer
// that such lists drive.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/json_values.h"

namespace zorvanelink::core::json {

enum class Need : std::uint8_t { kRequired, kOptional, kNotRead };

template <class Record>
struct Field {
    using When = bool (*)(Record const&);

    std::string_view key;
    Need need = Need::kNotRead;
    Outcome (*read)(Value const&, Record&) = nullptr;
    void (*write)(Output&, Record const&) = nullptr;
    When when = nullptr;          // null: always written
    std::string_view constant{};  // what is written when `write` is null
    bool secret = false;          // no log and no record shows its value

    constexpr Field Secret() const {
        Field flagged = *this;
        flagged.secret = true;
        return flagged;
    }
};

// Rows of a list, all for one record: `using Row = Rows<CLMsgReplyStatusData>`.
template <class Record>
struct Rows {
    using Row = Field<Record>;
    using When = typename Row::When;

    template <auto Member, class Codec = Plain>
    static constexpr Row Required(std::string_view key, When when = whenOf<Member>()) {
        return {key, Need::kRequired, &read<Member, Codec>, &write<Member, Codec>, when};
    }
    template <auto Member, class Codec = Plain>
    static constexpr Row Optional(std::string_view key, When when = whenOf<Member>()) {
        return {key, Need::kOptional, &read<Member, Codec>, &write<Member, Codec>, when};
    }
    template <auto Member, class Codec = Plain>
    static constexpr Row Written(std::string_view key, When when = whenOf<Member>()) {
        return {key, Need::kNotRead, nullptr, &write<Member, Codec>, when};
    }
    // Written only when it is not empty, not false.
    template <auto Member, class Codec = Plain>
    static constexpr Row WrittenIfSet(std::string_view key) {
        return Written<Member, Codec>(key, &isSet<Member>);
    }
    static constexpr Row Constant(std::string_view key, std::string_view text,
                                  When when = nullptr) {
        return {key, Need::kNotRead, nullptr, nullptr, when, text};
    }
    static constexpr Row Computed(std::string_view key, void (*write)(Output&, Record const&),
                                  When when = nullptr) {
        return {key, Need::kNotRead, nullptr, write, when};
    }

    template <auto Member>
    static bool isSet(Record const& record) {
        if constexpr (requires { (record.*Member).empty(); }) {
            return !(record.*Member).empty();
        } else {
            return static_cast<bool>(record.*Member);
        }
    }

  private:
    template <auto Member, class Codec>
    static Outcome read(Value const& value, Record& record) {
        return Codec::Read(value, record.*Member);
    }
    template <auto Member, class Codec>
    static void write(Output& out, Record const& record) {
        Codec::Write(out, record.*Member);
    }
    template <auto Member>
    static constexpr When whenOf() {
        if constexpr (requires(Record const& record) { (record.*Member).has_value(); }) {
            return &isSet<Member>;
        } else {
            return nullptr;
        }
    }
};

template <class Record, std::size_t... N>
constexpr auto Join(std::array<Field<Record>, N> const&... lists) {
    std::array<Field<Record>, (N + ...)> all{};
    auto next = all.begin();
    ((next = std::copy(lists.begin(), lists.end(), next)), ...);
    return all;
}

// The texts of a failure, logged and kept for the thread. The note of an optional key is turned
// into text once a message, by PublishNotes.
void NoteMissing(std::string_view key, Need need);
void NoteWrongType(std::string_view key, int type, Need need);
void PublishNotes();

// Parses the text; false, and logged, when it is no JSON object or something follows the object.
bool ParseObject(std::string const& json, rapidjson::Document* document);
Value const* FindKey(Value const& object, std::string_view key);

template <class Record>
bool ReadFields(Value const& object, std::span<Field<Record> const> fields, Record& record) {
    for (Field<Record> const& field : fields) {
        if (field.need == Need::kNotRead) {
            continue;
        }
        Value const* const value = FindKey(object, field.key);
        if (value == nullptr) {
            NoteMissing(field.key, field.need);
            if (field.need == Need::kRequired) {
                return false;
            }
            continue;
        }
        Outcome const outcome = field.read(*value, record);
        if (outcome.kind == Outcome::kWrongType) {
            NoteWrongType(field.key, outcome.type, field.need);
        }
        if (outcome.kind == Outcome::kFailed ||
            (!outcome.Stored() && field.need == Need::kRequired)) {
            return false;
        }
    }
    return true;
}

template <class Record, std::size_t N>
bool ReadFields(Value const& object, std::array<Field<Record>, N> const& fields, Record& record) {
    return ReadFields(object, std::span<Field<Record> const>(fields), record);
}

template <class Record>
void WriteFields(Output& out, std::span<Field<Record> const> fields, Record const& record) {
    for (Field<Record> const& field : fields) {
        if (field.when != nullptr && !field.when(record)) {
            continue;
        }
        out.Key(field.key);
        if (field.write != nullptr) {
            field.write(out, record);
        } else {
            out.Text(field.constant);
        }
    }
}

template <class Record, std::size_t N>
void WriteObject(Output& out, std::array<Field<Record>, N> const& fields, Record const& record) {
    out.StartObject();
    WriteFields(out, std::span<Field<Record> const>(fields), record);
    out.EndObject();
}

template <class Record, std::size_t N>
bool ParseMessage(std::string const& json, std::array<Field<Record>, N> const& fields,
                  Record* record) {
    rapidjson::Document document;
    if (!ParseObject(json, &document)) {
        return false;
    }
    bool const complete = ReadFields(document, fields, *record);
    PublishNotes();
    return complete;
}

template <class Record, std::size_t N>
std::string BuildMessage(Style style, std::array<Field<Record>, N> const& fields,
                         Record const& record) {
    Output out(style);
    WriteObject(out, fields, record);
    return out.Take();
}

// Codec: a vector of records, as an array of objects with the fields of a list.
template <auto const& kFields>
struct Records {
    template <class Element>
    static Outcome Read(Value const& value, std::vector<Element>& out) {
        return ReadObjects(value, out, [](Value const& object, std::vector<Element>& read) {
            bool const complete = ReadFields(object, kFields, read.emplace_back());
            return complete ? kStored : Outcome{Outcome::kFailed};
        });
    }
    template <class Element>
    static void Write(Output& out, std::vector<Element> const& value) {
        out.StartArray();
        for (Element const& element : value) {
            WriteObject(out, kFields, element);
        }
        out.EndArray();
    }
};

// Codec: a vector of plain values, as an array of objects with one key each. An element without
// the key fails the message when it is required there, and is left out otherwise.
template <Literal kKey, Need kNeed>
struct KeyedValues {
    template <class Element>
    static Outcome Read(Value const& value, std::vector<Element>& out) {
        return ReadObjects(value, out, [](Value const& object, std::vector<Element>& read) {
            std::pair<bool, Element> entry{};
            if (!ReadFields(object, kFields<Element>, entry)) {
                return Outcome{Outcome::kFailed};
            }
            if (entry.first) {
                read.push_back(std::move(entry.second));
            }
            return kStored;
        });
    }
    template <class Element>
    static void Write(Output& out, std::vector<Element> const& value) {
        out.StartArray();
        for (Element const& element : value) {
            out.StartObject();
            out.Key(kKey.View());
            json::Write(out, element);
            out.EndObject();
        }
        out.EndArray();
    }

  private:
    template <class Element>
    static Outcome readEntry(Value const& value, std::pair<bool, Element>& entry) {
        Outcome const outcome = json::Read(value, entry.second);
        entry.first = outcome.Stored();
        return outcome;
    }
    template <class Element>
    static constexpr std::array<Field<std::pair<bool, Element>>, 1> kFields{
        {{kKey.View(), kNeed, &readEntry<Element>}}};
};

}  // namespace zorvanelink::core::json
