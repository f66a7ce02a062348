// Messages on their way into a log or a record. Any thread.
#pragma once

#include <string>
#include <string_view>

namespace zorvanelink::core {

// Whether a field of that name is flagged as secret where its record is described, or is one of the
// words that no log holds.
bool IsSecretKey(std::string_view key);

// A copy with the values of secret keys replaced by "****". Works on texts that are no JSON, since
// those are the ones that are logged whole.
std::string MaskSecrets(std::string_view json);

// What a log shows of a message that is refused: masked, at most a kilobyte, on one line.
std::string RefusedMessage(std::string_view json);

}  // namespace zorvanelink::core
