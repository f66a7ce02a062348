// Sensitive values: the form in which every password and PIN is kept and sent. It is the Base64 of
// a cipher block on one line; the empty text is its own sensitive value.
#pragma once

#include <string>

namespace zorvanelink::components::utils {

// The one door into the encoded form. The caller wipes what it passed.
std::string EncodeSensitiveValue(std::string const& value);
// The clear text, for the point of use; the caller wipes it (SecretString does). Empty, with a
// warning in the log, for what is no sensitive value.
std::string DecodeSensitiveValue(std::string const& value);

// The hook of the operating system's own protection: Linux has none, so both leave the data as it
// is and answer true. Callers test the result all the same.
bool SystemEncrypt(std::string& data);
bool SystemDecrypt(std::string& data);

// Reads the input whole, then writes the output through a temporary file, 0600, and a rename: a
// failure leaves an old output as it was, and input and output may be one file.
bool SystemEncryptFile(std::string const& inputPath, std::string const& outputPath);
bool SystemDecryptFile(std::string const& inputPath, std::string& outBytes);

}  // namespace zorvanelink::components::utils
