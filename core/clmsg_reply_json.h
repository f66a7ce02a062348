// The service's replies: writers of the service, readers of the GUI, one pair a record. Any thread.
//
// Build answers indented JSON and logs it at verbose level. Parse answers false when the text is no
// JSON object, or a required key is missing or of the wrong JSON type: that is logged, and what was
// read before it stays in the record. Optional keys keep what the record holds, further keys are
// ignored.
#pragma once

#include <string>

#include "core/clmsg_document.h"
#include "core/reply_records.h"

namespace zorvanelink::core::sslvpn {

// Of one record; there is one for every message in reply_records.h.
template <class Record>
struct Reply {
    static std::string Build(Record const& data);
    static bool Parse(CLMsgDocument const& message, Record* data);
};

class CLMsgReplyJson {
  public:
    template <class Record>
    static std::string Build(Record const& data) {
        return Reply<Record>::Build(data);
    }
    template <class Record>
    static bool Parse(CLMsgDocument const& message, Record* data) {
        return Reply<Record>::Parse(message, data);
    }
    template <class Record>
    static bool Parse(std::string const& json, Record* data) {
        CLMsgDocument message;
        return message.Parse(json) && Parse(message, data);
    }
};

}  // namespace zorvanelink::core::sslvpn
