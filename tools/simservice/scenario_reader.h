// Reads one JSON object after the other with the line of every key at hand, so that a mistake in a
// scenario is reported where it stands.
#pragma once

#include <map>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace zorvanelink::simservice {

using Json = nlohmann::ordered_json;

// Thrown inside the reading of a scenario, caught where it ends. The text is whole.
struct ScenarioError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The text as JSON, with the line on which each value's key (or the value, in a list) stands. A
// path is written "users[0].name".
class ScenarioText {
  public:
    // Throws ScenarioError for what is no JSON object and for a key that is given twice.
    ScenarioText(std::string const& text, std::string file);

    Json const& Root() const { return root_; }
    [[noreturn]] void Fail(std::string const& path, std::string const& complaint) const;

  private:
    std::string file_;
    Json root_;
    std::map<std::string, int> lines_;
};

// One object. Each Read takes a key if it is there; Finish complains about what nobody took.
class ObjectReader {
  public:
    ObjectReader(ScenarioText const& text, Json const& object, std::string path);

    // False when the key is not there: the value stays as it is.
    bool Read(char const* key, std::string& value);
    bool Read(char const* key, bool& value);
    bool Read(char const* key, int& value, int lowest = 0, int highest = 1'000'000'000);
    bool Read(char const* key, double& value);
    bool Read(char const* key, std::vector<std::string>& value);
    // Calls `each` with the element and its path.
    bool ReadList(char const* key, std::function<void(Json const&, std::string const&)> each);
    bool ReadObject(char const* key, std::function<void(ObjectReader&)> read);

    void Require(bool found, char const* key) const;
    [[noreturn]] void Fail(char const* key, std::string const& complaint) const;
    void Finish() const;
    ScenarioText const& Text() const { return text_; }

  private:
    Json const* find(char const* key);
    std::string pathOf(std::string_view key) const;

    ScenarioText const& text_;
    Json const& object_;
    std::string path_;
    std::vector<std::string> known_;
};

}  // namespace zorvanelink::simservice
