// Private to core: stands between the JSON parser and the document, lets through what a record can
// hold, and drops the rest as it is read.
#pragma once

#include <rapidjson/document.h>

#include <array>
#include <utility>

namespace zorvanelink::core::json {

class Sieve {
  public:
    using Size = rapidjson::SizeType;

    explicit Sieve(rapidjson::Document& kept) : kept_(kept) {}

    // The parser's events.
    bool Null() { return admit() ? kept_.Null() : drop(); }
    bool Bool(bool value) { return admit() ? kept_.Bool(value) : drop(); }
    bool Int(int value) { return admit() ? kept_.Int(value) : drop(); }
    bool Uint(unsigned value) { return admit() ? kept_.Uint(value) : drop(); }
    bool Int64(std::int64_t value) { return admit() ? kept_.Int64(value) : drop(); }
    bool Uint64(std::uint64_t value) { return admit() ? kept_.Uint64(value) : drop(); }
    bool Double(double value) { return admit() ? kept_.Double(value) : drop(); }
    bool RawNumber(char const* text, Size length, bool copy) {
        return admit() ? kept_.RawNumber(text, length, copy) : drop();
    }
    bool String(char const* text, Size length, bool copy) {
        return admit() ? kept_.String(text, length, copy) : drop();
    }
    bool Key(char const* text, Size length, bool copy);
    bool StartObject();
    bool EndObject(Size /*members*/) { return !close() || kept_.EndObject(levels_[depth_].kept); }
    bool StartArray();
    bool EndArray(Size /*elements*/) { return !close() || kept_.EndArray(levels_[depth_].kept); }

  private:
    // Of the tree of USB keys, the deepest record, with one to spare.
    static constexpr std::size_t kDeepest = 8;
    static constexpr std::size_t kMostDropped = 2'000'000;  // values; some 50 ms

    // An open container that is kept.
    struct Level {
        bool array = false;
        Size most = 0;
        Size kept = 0;
    };

    // Whether the value that begins here is kept.
    bool admit();
    // False once so much was dropped that reading on would hold up the reader.
    bool drop() { return ++dropped_ <= kMostDropped; }
    bool open(bool array, Size most);
    // Whether the container that ends here was kept.
    bool close();

    rapidjson::Document& kept_;
    std::array<Level, kDeepest> levels_{};
    std::size_t depth_ = 0;     // open levels
    std::size_t dropped_ = 0;   // values
    std::size_t dropping_ = 0;  // open containers that are not kept
    bool drop_value_ = false;   // of a member that was one too many
    Size most_elements_ = 0;    // of a list that is the value of the key read last
};

}  // namespace zorvanelink::core::json
