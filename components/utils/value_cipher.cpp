#include "components/utils/value_cipher.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>

#include <climits>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "components/utils/base64.h"
#include "components/utils/secret_string.h"

namespace zorvanelink::components::utils {
namespace {

struct CipherDeleter {
    void operator()(EVP_CIPHER_CTX* context) const { EVP_CIPHER_CTX_free(context); }
};

std::uint8_t* bytesOf(std::string& data) {
    return reinterpret_cast<std::uint8_t*>(data.data());
}

bool runCbc(AES_ctx const& context, std::uint8_t* buffer, std::size_t length, bool encrypt) {
    if (length % kAesBlockSize != 0 || length > INT_MAX) {
        return false;
    }
    std::unique_ptr<EVP_CIPHER_CTX, CipherDeleter> const cipher(EVP_CIPHER_CTX_new());
    int written = 0;
    return cipher &&
           EVP_CipherInit_ex(cipher.get(), EVP_aes_256_cbc(), nullptr, context.key.data(),
                             context.iv.data(), encrypt ? 1 : 0) == 1 &&
           EVP_CIPHER_CTX_set_padding(cipher.get(), 0) == 1 &&
           EVP_CipherUpdate(cipher.get(), buffer, &written, buffer, static_cast<int>(length)) ==
               1 &&
           static_cast<std::size_t>(written) == length;
}

bool initContext(AES_ctx& context, std::string_view key, std::string_view iv) {
    if (key.size() != kAes256KeySize || iv.size() != kAesBlockSize) {
        return false;
    }
    AES_init_ctx_iv(context, reinterpret_cast<std::uint8_t const*>(key.data()),
                    reinterpret_cast<std::uint8_t const*>(iv.data()));
    return true;
}

bool fail(std::string& data) {
    Wipe(data);
    return false;
}

}  // namespace

AES_ctx::~AES_ctx() {
    OPENSSL_cleanse(key.data(), key.size());
    OPENSSL_cleanse(iv.data(), iv.size());
}

void AES_init_ctx_iv(AES_ctx& context, std::uint8_t const* key, std::uint8_t const* iv) {
    std::memcpy(context.key.data(), key, context.key.size());
    std::memcpy(context.iv.data(), iv, context.iv.size());
}

bool AES_CBC_encrypt_buffer(AES_ctx& context, std::uint8_t* buffer, std::size_t length) {
    if (!runCbc(context, buffer, length, true)) {
        return false;
    }
    if (length != 0) {
        std::memcpy(context.iv.data(), buffer + length - kAesBlockSize, kAesBlockSize);
    }
    return true;
}

bool AES_CBC_decrypt_buffer(AES_ctx& context, std::uint8_t* buffer, std::size_t length) {
    std::array<std::uint8_t, kAesBlockSize> next_iv = context.iv;
    if (length >= kAesBlockSize) {
        std::memcpy(next_iv.data(), buffer + length - kAesBlockSize, kAesBlockSize);
    }
    if (!runCbc(context, buffer, length, false)) {
        return false;
    }
    context.iv = next_iv;
    return true;
}

void PKCS7Padding(std::size_t blockSize, std::string& data) {
    std::size_t const count = blockSize - data.size() % blockSize;
    data.append(count, static_cast<char>(count));
}

bool PKCS7UnPadding(std::string& data) {
    if (data.empty()) {
        return false;
    }
    auto const count = static_cast<unsigned char>(data.back());
    if (count >= data.size()) {
        return false;
    }
    std::string_view const padding = std::string_view(data).substr(data.size() - count);
    if (padding.find_first_not_of(data.back()) != std::string_view::npos) {
        return false;
    }
    data.erase(data.size() - count);
    return true;
}

bool AES256Encrypt(std::string_view key, std::string_view iv, std::string& data) {
    AES_ctx context;
    if (!initContext(context, key, iv)) {
        return false;
    }
    PKCS7Padding(kAesBlockSize, data);
    return AES_CBC_encrypt_buffer(context, bytesOf(data), data.size());
}

bool AES256Decrypt(std::string_view key, std::string_view iv, std::string& data) {
    AES_ctx context;
    if (data.empty() || data.size() % kAesBlockSize != 0 || !initContext(context, key, iv)) {
        return false;
    }
    return AES_CBC_decrypt_buffer(context, bytesOf(data), data.size()) && PKCS7UnPadding(data);
}

bool ZVLEncrypt(std::int32_t version, std::string& data) {
    if (version < 0 || static_cast<std::size_t>(version) >= kAes256Key.size() || data.empty()) {
        return fail(data);
    }
    auto const index = static_cast<std::size_t>(version);
    SecretString secret(std::string{});
    // Room for the padding at once: growing would leave a clear copy in freed memory.
    secret.Get().reserve(data.size() + kAesBlockSize);
    secret.Get() = data;
    Wipe(data);
    if (!AES256Encrypt(kAes256Key[index], kAes256IV[index], secret.Get())) {
        return false;
    }
    data.append(kZVLCryID).append(std::to_string(version)).append(1, '\0').append(secret.Get());
    return true;
}

bool ZVLDecrypt(std::string& data) {
    // The first digit of the version is not looked at: there is one version so far.
    constexpr std::size_t kHeadSize = kZVLCryID.size() + 1;
    constexpr std::size_t kVersionRoom = 16;
    if (data.size() > INT_MAX || data.size() < kZVLCryID.size() + kAesBlockSize ||
        !IsZVLCrypt(data)) {
        return fail(data);
    }
    data.erase(0, kHeadSize);
    std::size_t const end = data.find('\0');
    if (end >= kVersionRoom) {
        return fail(data);
    }
    long const version = std::strtol(data.c_str(), nullptr, 10);
    data.erase(0, end + 1);
    if (version != 0 || !AES256Decrypt(kAes256Key[0], kAes256IV[0], data)) {
        return fail(data);
    }
    return true;
}

bool IsZVLCrypt(std::string_view data) {
    return data.starts_with(kZVLCryID);
}

bool IsZVLEncodeData(std::string const& data) {
    return IsZVLCrypt(Base64Decode(data, false));
}

}  // namespace zorvanelink::components::utils
