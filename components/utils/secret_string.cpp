#include "components/utils/secret_string.h"

#include <openssl/crypto.h>

namespace zorvanelink::components::utils {

void Wipe(std::string& text) {
    // The spare room may hold the end of an earlier, longer secret.
    text.resize(text.capacity());
    OPENSSL_cleanse(text.data(), text.size());
    text.clear();
}

}  // namespace zorvanelink::components::utils
