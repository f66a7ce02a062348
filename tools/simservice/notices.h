// What the gateway says of its own accord: each answers the message for the link.
#pragma once

#include <string>

#include "core/reply_records.h"

namespace zorvanelink::simservice {

// The number, and the symbol when it has one: for people.
std::string ReadableCode(common::MsgCode code);
// `fields`: further keys as a JSON object, which replace those of the same name; may be empty.
std::string StatusNotice(std::string const& profile, common::MsgCode code,
                         std::string const& fields);
// `text`: "English", or "English | Chinese".
std::string ServerMessage(std::string const& profile, std::string const& text);
std::string DetectStop(std::string const& profile, std::string const& reason);
// `text`: "DEST/PREFIX [GATEWAY]".
std::string DomainRoute(core::sslvpn::CLMsgReplyNetConfigData const& config,
                        std::string const& profile, std::string const& text);

}  // namespace zorvanelink::simservice
