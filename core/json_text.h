// Private to core: what has to be done to texts on their way in and out of JSON and the log.
#pragma once

#include "components/utils/text.h"
#include "core/message_log.h"

namespace zorvanelink::core::json {

using components::utils::IsUtf8;
using components::utils::RepairUtf8;
using core::MaskSecrets;

}  // namespace zorvanelink::core::json
