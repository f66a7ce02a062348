// The value cipher: turns a secret into a block that the client and its service both understand.
// Key, vector and format are a contract between the two programs. Reentrant; data changes in
// place.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zorvanelink::components::utils {

inline constexpr std::string_view kZVLCryID = "ZVLA";
// By format version; the bytes are used as they stand.
inline constexpr std::array<std::string_view, 1> kAes256Key{"4871@qmwtzv@4871kfd@906@!!#5@TWB"};
inline constexpr std::array<std::string_view, 1> kAes256IV{"PX57316K94860173"};

inline constexpr std::size_t kAesBlockSize = 16;
inline constexpr std::size_t kAes256KeySize = 32;

// State of one CBC run: the vector moves on with each call. Wiped at the end.
struct AES_ctx {
    std::array<std::uint8_t, kAes256KeySize> key{};
    std::array<std::uint8_t, kAesBlockSize> iv{};

    AES_ctx() = default;
    AES_ctx(AES_ctx const&) = delete;
    AES_ctx& operator=(AES_ctx const&) = delete;
    ~AES_ctx();
};

// key: 32 bytes, iv: 16 bytes.
void AES_init_ctx_iv(AES_ctx& context, std::uint8_t const* key, std::uint8_t const* iv);
// Without padding, in place. False, with the buffer in an unknown state, unless the length is a
// multiple of the block.
bool AES_CBC_encrypt_buffer(AES_ctx& context, std::uint8_t* buffer, std::size_t length);
bool AES_CBC_decrypt_buffer(AES_ctx& context, std::uint8_t* buffer, std::size_t length);

void PKCS7Padding(std::size_t blockSize, std::string& data);
// False, with data unchanged, when the padding is not whole or would be all of the data. A last
// byte of 0 passes and cuts nothing.
bool PKCS7UnPadding(std::string& data);

// False for a key or vector of the wrong size.
bool AES256Encrypt(std::string_view key, std::string_view iv, std::string& data);
// False, with data unchanged, when it is empty or no whole number of blocks; false, with the plain
// text and its tail in data, when the padding is bad.
bool AES256Decrypt(std::string_view key, std::string_view iv, std::string& data);

// Both empty the data on failure.
bool ZVLEncrypt(std::int32_t version, std::string& data);
bool ZVLDecrypt(std::string& data);

// Whether the data begins as a cipher block, plain or in Base64.
bool IsZVLCrypt(std::string_view data);
bool IsZVLEncodeData(std::string const& data);

}  // namespace zorvanelink::components::utils
