#include "ui/config/cert_decode.h"

#include <cstddef>

namespace zorvanelink::ui {
namespace {

// -1 for anything but a hexadecimal digit.
int digit(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

// The byte of the escape at that place, -1 when there is none.
int escapedByte(std::string_view text, std::size_t position) {
    if (text[position] != '\\' || text.size() - position < 3) {
        return -1;
    }
    int const high = digit(text[position + 1]);
    int const low = digit(text[position + 2]);
    return high < 0 || low < 0 ? -1 : high * 16 + low;
}

}  // namespace

bool IsCertEncoded(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (escapedByte(text, i) >= 0) {
            return true;
        }
    }
    return false;
}

std::string CertDecode(std::string_view text) {
    std::string decoded;
    decoded.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text.substr(i, 2) == "\\\\") {
            decoded += '\\';
            i += 1;
        } else if (int const byte = escapedByte(text, i); byte >= 0) {
            decoded += static_cast<char>(byte);
            i += 2;
        } else {
            decoded += text[i];
        }
    }
    return decoded;
}

}  // namespace zorvanelink::ui
