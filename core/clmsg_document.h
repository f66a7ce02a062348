// A message that has been parsed: the envelope and the record behind it are read from one parse.
#pragma once

#include <memory>
#include <string>

namespace zorvanelink::core {

// Any thread, one at a time. Lists behind what a record may hold are not kept, so that a message
// costs what its record does and not what its sender likes.
class CLMsgDocument {
  public:
    CLMsgDocument();
    ~CLMsgDocument();
    CLMsgDocument(CLMsgDocument&& other) noexcept;
    CLMsgDocument& operator=(CLMsgDocument&& other) noexcept;

    // False, logged and empty when the text is no JSON object, something follows the object, or
    // millions of values would have to be dropped.
    bool Parse(std::string const& json);

    struct Content;  // the JSON library's; known to core alone
    // Null when empty.
    Content const* Get() const { return content_.get(); }

  private:
    std::unique_ptr<Content> content_;
};

}  // namespace zorvanelink::core
