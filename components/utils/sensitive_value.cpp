#include "components/utils/sensitive_value.h"

#include "components/logger/logger.h"
#include "components/utils/base64.h"
#include "components/utils/file.h"
#include "components/utils/secret_string.h"
#include "components/utils/value_cipher.h"

namespace zorvanelink::components::utils {

using logger::Log;

std::string EncodeSensitiveValue(std::string const& value) {
    if (value.empty()) {
        return {};
    }
    std::string block = value;
    ZVLEncrypt(0, block);
    return Base64Encode(block, false);
}

std::string DecodeSensitiveValue(std::string const& value) {
    if (value.empty()) {
        return {};
    }
    std::string block = Base64Decode(value, false);
    if (!ZVLDecrypt(block)) {
        Log().warning("ZVL decrypt failure");
        return {};
    }
    return block;
}

bool SystemEncrypt(std::string& data) {
    static_cast<void>(data);
    return true;
}

bool SystemDecrypt(std::string& data) {
    static_cast<void>(data);
    return true;
}

bool SystemEncryptFile(std::string const& inputPath, std::string const& outputPath) {
    std::string content;
    if (!ReadContentFromFile(inputPath, content)) {
        Log().warning("Failed to open input file[{}] when trying to system encrypt", inputPath);
        return false;
    }
    if (!SystemEncrypt(content)) {
        Log().warning("Failed to system encrypt input file[{}]", inputPath);
        return false;
    }
    bool opened = false;
    if (WritePrivateFile(outputPath, content, &opened)) {
        return true;
    }
    if (opened) {
        Log().warning("Failed to write output file[{}] when trying to system encrypt", outputPath);
    } else {
        Log().warning("Failed to open output file[{}] when trying to system encrypt", outputPath);
    }
    return false;
}

bool SystemDecryptFile(std::string const& inputPath, std::string& outBytes) {
    if (!ReadContentFromFile(inputPath, outBytes)) {
        Log().warning("Failed to open input file[{}] when trying to system decrypt", inputPath);
        return false;
    }
    if (!SystemDecrypt(outBytes)) {
        Log().warning("Failed to system decrypt input file[{}]", inputPath);
        return false;
    }
    return true;
}

}  // namespace zorvanelink::components::utils
