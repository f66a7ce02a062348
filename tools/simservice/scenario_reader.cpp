#include "tools/simservice/scenario_reader.h"

#include <fmt/format.h>

#include <algorithm>

#include "tools/simservice/action.h"

namespace zorvanelink::simservice {
namespace {

int lineAt(std::string_view text, std::size_t offset) {
    auto const part = text.substr(0, offset);
    return 1 + static_cast<int>(std::count(part.begin(), part.end(), '\n'));
}

// Tells the parser's callback how far the parser has read.
class CountingIterator {
  public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = char const*;
    using reference = char const&;

    CountingIterator(char const* at, char const** reached) : at_(at), reached_(reached) {}
    reference operator*() const { return *at_; }
    CountingIterator& operator++() {
        *reached_ = ++at_;
        return *this;
    }
    CountingIterator operator++(int) {
        auto const before = *this;
        ++*this;
        return before;
    }
    bool operator==(CountingIterator const& other) const { return at_ == other.at_; }

  private:
    char const* at_;
    char const** reached_;
};

// Follows the parser through the text and notes where each key stands.
class LineKeeper {
  public:
    LineKeeper(std::string_view text, std::map<std::string, int>& lines)
        : text_(text), lines_(lines) {}

    bool OnEvent(Json::parse_event_t event, Json const& parsed, std::size_t offset) {
        int const line = lineAt(text_, offset);
        switch (event) {
            case Json::parse_event_t::key:
                levels_.back().key = parsed.get<std::string>();
                if (!lines_.emplace(path(), line).second && duplicate_.empty()) {
                    duplicate_ = path();
                    lines_[duplicate_] = line;
                }
                break;
            case Json::parse_event_t::object_start:
            case Json::parse_event_t::array_start:
                lines_.emplace(path(), line);
                levels_.push_back({event == Json::parse_event_t::array_start, 0, {}});
                break;
            case Json::parse_event_t::object_end:
            case Json::parse_event_t::array_end:
                levels_.pop_back();
                next();
                break;
            case Json::parse_event_t::value:
                lines_.emplace(path(), line);
                next();
                break;
        }
        return true;
    }
    std::string const& Duplicate() const { return duplicate_; }

  private:
    struct Level {
        bool list;
        std::size_t index;
        std::string key;
    };

    void next() {
        if (!levels_.empty()) {
            ++levels_.back().index;
        }
    }
    std::string path() const {
        std::string text;
        for (auto const& level : levels_) {
            if (level.list) {
                text += fmt::format("[{}]", level.index);
            } else {
                text += (text.empty() ? "" : ".") + level.key;
            }
        }
        return text;
    }

    std::string_view text_;
    std::map<std::string, int>& lines_;
    std::vector<Level> levels_;
    std::string duplicate_;
};

// The library's own sentence without its number and its count of columns.
std::string syntaxComplaint(std::string const& what) {
    auto const at = what.find("syntax error");
    return at == std::string::npos ? what : what.substr(at);
}

}  // namespace

ScenarioText::ScenarioText(std::string const& text, std::string file) : file_(std::move(file)) {
    char const* reached = text.data();
    LineKeeper keeper(text, lines_);
    try {
        root_ = Json::parse(CountingIterator(text.data(), &reached),
                            CountingIterator(text.data() + text.size(), &reached),
                            [&](int, Json::parse_event_t event, Json& parsed) {
                                auto const offset = static_cast<std::size_t>(reached - text.data());
                                return keeper.OnEvent(event, parsed, offset);
                            });
    } catch (Json::parse_error const& error) {
        auto const offset = std::min(text.size(), error.byte > 0 ? error.byte - 1 : 0);
        throw ScenarioError(
            fmt::format("{}:{}: {}", file_, lineAt(text, offset), syntaxComplaint(error.what())));
    }
    if (!keeper.Duplicate().empty()) {
        Fail(keeper.Duplicate(), "given twice");
    }
    if (!root_.is_object()) {
        throw ScenarioError(fmt::format("{}:1: a scenario is one JSON object", file_));
    }
}

void ScenarioText::Fail(std::string const& path, std::string const& complaint) const {
    auto const line = lines_.find(path);
    throw ScenarioError(fmt::format("{}:{}: key \"{}\": {}", file_,
                                    line == lines_.end() ? 1 : line->second, path, complaint));
}

ObjectReader::ObjectReader(ScenarioText const& text, Json const& object, std::string path)
    : text_(text), object_(object), path_(std::move(path)) {
    if (!object_.is_object()) {
        text_.Fail(path_, "must be an object");
    }
}

Json const* ObjectReader::find(char const* key) {
    known_.emplace_back(key);
    auto const found = object_.find(key);
    return found == object_.end() ? nullptr : &*found;
}

std::string ObjectReader::pathOf(std::string_view key) const {
    return path_.empty() ? std::string(key) : fmt::format("{}.{}", path_, key);
}

void ObjectReader::Fail(char const* key, std::string const& complaint) const {
    text_.Fail(pathOf(key), complaint);
}

bool ObjectReader::Read(char const* key, std::string& value) {
    auto const* const found = find(key);
    if (found == nullptr) {
        return false;
    }
    if (!found->is_string()) {
        Fail(key, "must be a text");
    }
    value = found->get<std::string>();
    return true;
}

bool ObjectReader::Read(char const* key, bool& value) {
    auto const* const found = find(key);
    if (found == nullptr) {
        return false;
    }
    if (!found->is_boolean()) {
        Fail(key, "must be true or false");
    }
    value = found->get<bool>();
    return true;
}

bool ObjectReader::Read(char const* key, int& value, int lowest, int highest) {
    auto const* const found = find(key);
    if (found == nullptr) {
        return false;
    }
    bool const fits = found->is_number_integer() &&
                      (!found->is_number_unsigned() || found->get<std::uint64_t>() <= INT32_MAX);
    if (!fits || found->get<std::int64_t>() < lowest || found->get<std::int64_t>() > highest) {
        Fail(key, fmt::format("must be a whole number from {} to {}", lowest, highest));
    }
    value = found->get<int>();
    return true;
}

bool ObjectReader::Read(char const* key, double& value) {
    auto const* const found = find(key);
    if (found == nullptr) {
        return false;
    }
    if (!found->is_number() || found->get<double>() < 0 || found->get<double>() > 1e12) {
        Fail(key, "must be a number, not below 0");
    }
    value = found->get<double>();
    return true;
}

bool ObjectReader::Read(char const* key, std::vector<std::string>& value) {
    std::vector<std::string> list;
    bool const found = ReadList(key, [&](Json const& element, std::string const& path) {
        if (!element.is_string()) {
            text_.Fail(path, "must be a text");
        }
        list.push_back(element.get<std::string>());
    });
    if (found) {
        value = std::move(list);
    }
    return found;
}

bool ObjectReader::ReadList(char const* key,
                            std::function<void(Json const&, std::string const&)> each) {
    auto const* const found = find(key);
    if (found == nullptr) {
        return false;
    }
    if (!found->is_array()) {
        Fail(key, "must be a list");
    }
    for (std::size_t index = 0; index < found->size(); ++index) {
        each((*found)[index], fmt::format("{}[{}]", pathOf(key), index));
    }
    return true;
}

bool ObjectReader::ReadObject(char const* key, std::function<void(ObjectReader&)> read) {
    auto const* const found = find(key);
    if (found == nullptr) {
        return false;
    }
    ObjectReader reader(text_, *found, pathOf(key));
    read(reader);
    reader.Finish();
    return true;
}

void ObjectReader::Require(bool found, char const* key) const {
    if (!found) {
        text_.Fail(path_, fmt::format("\"{}\" is missing", key));
    }
}

void ObjectReader::Finish() const {
    for (auto const& [key, value] : object_.items()) {
        if (std::find(known_.begin(), known_.end(), key) != known_.end()) {
            continue;
        }
        auto const nearest = NearestWord(key, known_);
        text_.Fail(pathOf(key), nearest.empty()
                                    ? "unknown key"
                                    : fmt::format("unknown key, did you mean \"{}\"?", nearest));
    }
}

}  // namespace zorvanelink::simservice
