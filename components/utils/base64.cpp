#include "components/utils/base64.h"

#include <openssl/bio.h>
#include <openssl/crypto.h>
#include <openssl/evp.h>

#include <climits>
#include <memory>

namespace zorvanelink::components::utils {
namespace {

struct BioChainDeleter {
    void operator()(BIO* bio) const { BIO_free_all(bio); }
};
using BioChain = std::unique_ptr<BIO, BioChainDeleter>;

// The Base64 filter in front of the memory, which it takes over; null when there is no memory.
BioChain filterBefore(BIO* memory, bool withNewlines) {
    if (memory == nullptr) {
        return nullptr;
    }
    BIO* const filter = BIO_new(BIO_f_base64());
    if (filter == nullptr) {
        BIO_free(memory);
        return nullptr;
    }
    if (!withNewlines) {
        BIO_set_flags(filter, BIO_FLAGS_BASE64_NO_NL);
    }
    return BioChain(BIO_push(filter, memory));
}

}  // namespace

std::string Base64Encode(char const* data, std::size_t length, bool withNewlines) {
    if (length == 0 || length > INT_MAX) {
        return {};
    }
    BioChain const chain = filterBefore(BIO_new(BIO_s_mem()), withNewlines);
    if (!chain || BIO_write(chain.get(), data, static_cast<int>(length)) <= 0 ||
        BIO_flush(chain.get()) != 1) {
        return {};
    }
    char* text = nullptr;
    long const size = BIO_get_mem_data(BIO_next(chain.get()), &text);
    return size > 0 ? std::string(text, static_cast<std::size_t>(size)) : std::string();
}

std::string Base64Encode(std::string const& data, bool withNewlines) {
    return Base64Encode(data.data(), data.size(), withNewlines);
}

std::string Base64Decode(char const* data, std::size_t length, std::size_t& outLength,
                         bool withNewlines) {
    outLength = 0;
    if (length == 0 || length > INT_MAX) {
        return {};
    }
    BioChain const chain =
        filterBefore(BIO_new_mem_buf(data, static_cast<int>(length)), withNewlines);
    if (!chain) {
        return {};
    }
    std::string bytes(length, '\0');
    int got = 0;
    while (outLength < bytes.size() &&
           (got = BIO_read(chain.get(), bytes.data() + outLength,
                           static_cast<int>(bytes.size() - outLength))) > 0) {
        outLength += static_cast<std::size_t>(got);
    }
    // What the end of a longer buffer held must not outlive the answer.
    OPENSSL_cleanse(bytes.data() + outLength, bytes.size() - outLength);
    bytes.resize(outLength);
    return bytes;
}

std::string Base64Decode(std::string const& text, bool withNewlines) {
    std::size_t length = 0;
    return Base64Decode(text.data(), text.size(), length, withNewlines);
}

}  // namespace zorvanelink::components::utils
