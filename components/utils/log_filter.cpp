#include "components/utils/log_filter.h"

#include <algorithm>
#include <string_view>

namespace zorvanelink::components::utils {
namespace {

constexpr auto kNone = std::string_view::npos;

// Finds a character from a position that only ever rises, so that each byte is looked at once.
class ForwardFinder {
  public:
    ForwardFinder(std::string_view text, char wanted) : text_(text), wanted_(wanted) {}

    // The first one at or behind the position.
    std::size_t AtOrAfter(std::size_t position) {
        if (!searched_ || (found_ != kNone && found_ < position)) {
            found_ = text_.find(wanted_, position);
            searched_ = true;
        }
        return found_;
    }

  private:
    std::string_view text_;
    char wanted_;
    std::size_t found_ = 0;
    bool searched_ = false;
};

// Masks the values of one key. What is done stands in the output, and what is still to come is
// read in the source: a masked value holds neither a hit nor a separator.
class Masker {
  public:
    Masker(std::string_view json, std::string_view word)
        : json_(json),
          word_(word),
          colons_(json, ':'),
          commas_(json, ','),
          last_brace_(json.rfind('}')) {}

    std::string Run() {
        std::size_t hit = json_.find(word_);
        while (hit != kNone) {
            look(hit);
            std::size_t next = hit + word_.size();
            if (inKey()) {
                if (colons_.AtOrAfter(hit) == kNone) {
                    return maskWithoutColons(hit);
                }
                next = std::max(next, mask(hit));
            }
            hit = next < json_.size() ? json_.find(word_, next) : kNone;
        }
        return out_.append(json_.substr(copied_));
    }

  private:
    // Notes the last separators ahead of the hit.
    void look(std::size_t hit) {
        for (; looked_ < hit; ++looked_) {
            if (json_[looked_] == ':') {
                last_colon_ = looked_;
            } else if (json_[looked_] == ',') {
                last_comma_ = looked_;
            }
        }
    }

    // A hit whose nearest separator is a colon lies in a value.
    bool inKey() const {
        return last_colon_ == kNone || (last_comma_ != kNone && last_comma_ > last_colon_);
    }

    // Masks the value behind the hit; answers where reading goes on.
    std::size_t mask(std::size_t hit) {
        std::size_t const colon = colons_.AtOrAfter(hit);
        std::size_t const comma = commas_.AtOrAfter(hit);
        std::size_t end = comma;
        if (comma == kNone && last_brace_ != kNone && last_brace_ >= copied_) {
            end = last_brace_;
        }
        std::size_t const start = colon + 1;
        if (end < start && comma != kNone) {
            return 0;  // an element of a list: no value of its own
        }
        end = end < start ? json_.size() : std::min(end, json_.size());
        out_.append(json_.substr(copied_, start - copied_));
        last_colon_ = colon;
        replace(start, end);
        return end;
    }

    // Behind the last colon a hit takes with it all that stands ahead of its end. No message of
    // ours comes here. Each round at least doubles the position.
    std::string maskWithoutColons(std::size_t hit) {
        std::size_t position = out_.size() + hit - copied_;
        std::string text = out_.append(json_.substr(copied_));
        while (position < text.size()) {
            std::size_t const comma = text.find(',', position);
            std::size_t const end = std::min(comma == kNone ? text.rfind('}') : comma, text.size());
            text.replace(0, end, maskFor(std::string_view(text).substr(0, end)));
            if (comma == kNone) {
                break;  // whatever else is found ends at the same place, which is masked
            }
            position = text.find(word_, position + word_.size());
        }
        return text;
    }

    static std::string_view maskFor(std::string_view value) {
        return value.find('"') != kNone ? "\"****\"" : "****";
    }

    void replace(std::size_t start, std::size_t end) {
        out_.append(maskFor(json_.substr(start, end - start)));
        copied_ = looked_ = end;
    }

    std::string_view json_;
    std::string_view word_;
    ForwardFinder colons_;
    ForwardFinder commas_;
    std::size_t last_brace_;
    std::string out_;
    std::size_t copied_ = 0;
    std::size_t looked_ = 0;
    std::size_t last_colon_ = kNone;
    std::size_t last_comma_ = kNone;
};

}  // namespace

std::vector<std::string> const g_filter_word{"password",          "pinCode",
                                             "newPassword",       "currentPassword",
                                             "encryptedPassword", "encryptedPinCode"};

std::string FilterJsonStr(std::vector<std::string> const& words, std::string const& json) {
    std::string text = json;
    for (std::string const& word : words) {
        if (!word.empty()) {
            text = Masker(text, word).Run();
        }
    }
    return text;
}

}  // namespace zorvanelink::components::utils
