// Private to core: what a parsed message is made of.
#pragma once

#include <rapidjson/document.h>

#include "core/clmsg_document.h"

namespace zorvanelink::core {

struct CLMsgDocument::Content {
    rapidjson::Document root;
};

}  // namespace zorvanelink::core
