#include <gtest/gtest.h>

#include "components/utils/base64.h"
#include "components/utils/secret_string.h"
#include "components/utils/sensitive_value.h"
#include "components/utils/value_cipher.h"
#include "tests/support/log_capture.h"
#include "tests/support/test_environment.h"
#include "tools/support/files.h"

namespace zorvanelink::components::utils {
namespace {

using test::LogCapture;
using test::TestEnvironment;

std::string encrypted(std::string plain) {
    AES_ctx context;
    AES_init_ctx_iv(context, reinterpret_cast<std::uint8_t const*>(kAes256Key[0].data()),
                    reinterpret_cast<std::uint8_t const*>(kAes256IV[0].data()));
    EXPECT_TRUE(AES_CBC_encrypt_buffer(context, reinterpret_cast<std::uint8_t*>(plain.data()),
                                       plain.size()));
    return plain;
}

std::string block(std::string const& version, std::string const& cipherText) {
    return "ZVLA" + version + std::string(1, '\0') + cipherText;
}

TEST(ValueCipher, BlocksAreInterchangeableWithTheOtherEnd) {
    // Made with: printf secret | openssl enc -aes-256-cbc -K <key> -iv <iv>
    EXPECT_EQ(EncodeSensitiveValue("secret"), "WlZMQTAAl+aHqgZmDKU0g30CEN4g6w==");
    for (std::size_t const length : {1U, 15U, 16U, 32U, 300U}) {
        std::string const secret(length, 'x');
        std::string data = secret;
        ASSERT_TRUE(ZVLEncrypt(0, data));
        EXPECT_EQ(data.size(), 6 + 16 * (length / 16 + 1));
        EXPECT_TRUE(IsZVLCrypt(data));
        ASSERT_TRUE(ZVLDecrypt(data));
        EXPECT_EQ(data, secret);
    }
    for (std::int32_t const version : {1, -1}) {
        std::string data = "secret";
        EXPECT_FALSE(ZVLEncrypt(version, data));
        EXPECT_EQ(data, "");
    }
}

TEST(ValueCipher, ReaderKeepsItsShape) {
    std::string padded = "secret";
    PKCS7Padding(16, padded);
    std::string const good = encrypted(padded);
    struct Case {
        char const* what;
        std::string data;
        bool ok;
        std::string plain;
    } const cases[] = {
        {"plain", block("0", good), true, "secret"},
        {"the first digit is not read", block("1", good), true, "secret"},
        {"a second digit is", block("01", good), false, ""},
        {"a zero behind it passes", block("00", good), true, "secret"},
        {"a negative version", block("0-1", good), false, ""},
        {"a sign far away", block("0               0", good), false, ""},
        {"no NUL", "ZVLA" + std::string(40, '0'), false, ""},
        {"too short", std::string("ZVLA0\0", 6) + std::string(13, 'x'), false, ""},
        {"twenty bytes", "ZVLA" + std::string(16, '\0'), false, ""},
        {"another head", "ZVLB" + block("0", good).substr(4), false, ""},
        {"no block at all", block("0", "") + std::string(14, '\0'), false, ""},
        {"padding byte 0 keeps the tail", block("0", encrypted(std::string(16, '\0'))), true,
         std::string(16, '\0')},
        {"padding above a block is accepted",
         block("0", encrypted(std::string(12, 'a') + std::string(20, '\x14'))), true,
         std::string(12, 'a')},
        {"padding that is everything", block("0", encrypted(std::string(16, '\x10'))), false, ""},
        {"padding that is not whole", block("0", encrypted("0123456789abc\x01\x03\x03")), false,
         ""},
    };
    for (Case const& c : cases) {
        std::string data = c.data;
        EXPECT_EQ(ZVLDecrypt(data), c.ok) << c.what;
        EXPECT_EQ(data, c.plain) << c.what;
    }
}

TEST(Base64, ReadsWhatItWrites) {
    std::string bytes;
    for (std::size_t size = 0; size < 3000; size += 1 + size / 7) {
        while (bytes.size() < size) {
            bytes += static_cast<char>(bytes.size() * 37 + 11);
        }
        for (bool const newlines : {false, true}) {
            std::string const text = Base64Encode(bytes, newlines);
            EXPECT_EQ(Base64Decode(text, newlines), bytes) << size;
            EXPECT_EQ(text.find('\n') != std::string::npos, newlines && size > 0);
        }
    }
    EXPECT_EQ(Base64Decode("!!!!", false), "");
}

TEST(SensitiveValue, FailureIsEmptyAndTold) {
    EXPECT_TRUE(IsZVLEncodeData(EncodeSensitiveValue("p")));
    LogCapture const log;
    EXPECT_EQ(EncodeSensitiveValue("") + DecodeSensitiveValue(""), "");
    EXPECT_FALSE(log.Has("ZVL decrypt failure"));
    EXPECT_EQ(DecodeSensitiveValue("no Base64!") + DecodeSensitiveValue("Zm9v"), "");
    EXPECT_EQ(log.Count("ZVL decrypt failure"), 2);
    EXPECT_FALSE(IsZVLEncodeData(""));
}

TEST(SensitiveValue, WipeLeavesNothingBehind) {
    std::string text = "0123456789abcdef0123456789abcdef";
    char const* const memory = text.data();
    std::size_t const size = text.size();
    Wipe(text);
    EXPECT_TRUE(text.empty());
    EXPECT_EQ(std::string(memory, size), std::string(size, '\0'));
}

TEST(SystemFile, CopiesWholePrivateAndOntoItself) {
    auto const folder = TestEnvironment::Home() / "system_file";
    std::string const content = std::string(5000, 'x') + std::string("\0\xFF\r\n", 4);
    std::string const in = test::WriteFile(folder / "in.p12", content);
    std::string const out = (folder / "out").string();
    std::string const none = (folder / "none").string();
    ASSERT_TRUE(SystemEncryptFile(in, out) && SystemEncryptFile(out, out));
    EXPECT_EQ(std::filesystem::status(out).permissions(), std::filesystem::perms(0600));
    std::string read;
    ASSERT_TRUE(SystemDecryptFile(out, read));
    EXPECT_EQ(read, content);

    LogCapture const log;
    EXPECT_FALSE(SystemEncryptFile(none, out));
    EXPECT_TRUE(log.Has("Failed to open input file["));
    EXPECT_FALSE(SystemEncryptFile(folder.string(), out)) << "a folder is no file";
    EXPECT_FALSE(SystemEncryptFile(in, none + "/out"));
    EXPECT_TRUE(log.Has("Failed to open output file["));
    EXPECT_FALSE(SystemDecryptFile(none, read));
    EXPECT_TRUE(log.Has("when trying to system decrypt"));
    EXPECT_EQ(test::ReadFile(out), content) << "failures leave the old file";
    std::filesystem::create_directory(folder / "taken");
    EXPECT_FALSE(SystemEncryptFile(in, folder / "taken"));
    auto const entries = std::filesystem::directory_iterator(folder);
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 3) << "no secret is left beside it";
}

}  // namespace
}  // namespace zorvanelink::components::utils
