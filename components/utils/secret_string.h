// Wiping of what held a secret in clear.
#pragma once

#include <string>
#include <utility>

namespace zorvanelink::components::utils {

// Overwrites the text with zeros and empties it.
void Wipe(std::string& text);

// The pages that hold the text are left out of a core file, whoever else's are on them.
void KeepOutOfDumps(std::string const& text);

// Owns a clear text for the length of a scope, out of core files, and wipes it at the end.
class SecretString {
  public:
    // Wipes what it was given, too: a short text is moved by copying it.
    explicit SecretString(std::string text) : text_(std::move(text)) {
        KeepOutOfDumps(text_);
        Wipe(text);
    }
    ~SecretString() { Wipe(text_); }
    SecretString(SecretString const&) = delete;
    SecretString& operator=(SecretString const&) = delete;

    std::string& Get() { return text_; }
    std::string const& Get() const { return text_; }

  private:
    std::string text_;
};

}  // namespace zorvanelink::components::utils
