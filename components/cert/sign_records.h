// What crosses the link when the service needs a private key that only the user's session can
// reach: the arguments of an operation and its answer, each as decimal numbers and Base64 texts
// joined by CR. Plain values, any thread.
//
// Deserial sets the record to its defaults and answers false when the text has another number of
// parts than the record; a part that is no number or no Base64 reads as 0 or as nothing. Nothing is
// compared here: what a length says and what is there may differ.
#pragma once

#include <string>
#include <string_view>

namespace zorvanelink::components::cert {

enum RSAReqType : int {
    kRSAPubEnc,
    kRSAPubDec,
    kRSAPrivEnc,
    kRSAPrivDec,
    kRSAInit,
    kRSAFinish,
    kRSASign,
    kRSAVerify,
    kRSAUnknown,
};

// kRSAUnknown for a text without CR, or with a number of no operation before it.
RSAReqType GetRSAType(std::string_view text);

// Encryption and decryption, whose text begins with the operation's number.
struct RSAMethReqArgs {
    int dataLen = 0;
    std::string data;
    int satLen = 0;
    int padding = 0;  // as OpenSSL numbers it: 1 PKCS#1, 3 none
    int hash = 0;

    std::string Serial(RSAReqType type) const;
    bool Deserial(std::string_view text);
};

struct RSASignReqArgs {
    int hash = 0;  // NID of the digest that `data` is
    std::string data;
    int dataLen = 0;

    std::string Serial() const;
    bool Deserial(std::string_view text);
};

struct RSAVerfyReqArgs {
    int hash = 0;
    std::string data;
    int dataLen = 0;
    std::string signature;
    int signatureLen = 0;

    std::string Serial() const;
    bool Deserial(std::string_view text);
};

struct RSARepData {
    int ret = 0;
    std::string data;
    int dataLen = 0;
    int extra = 0;

    std::string Serial(RSAReqType type) const;
    bool Deserial(std::string_view text);
};

struct ECCReqArgs {
    int curve = 0;  // NID
    std::string data;
    int dataLen = 0;

    std::string Serial() const;
    bool Deserial(std::string_view text);
};

struct ECCRepData {
    int ret = 0;
    int sigLen = 0;
    std::string data;
    int dataLen = 0;

    std::string Serial() const;
    bool Deserial(std::string_view text);
};

}  // namespace zorvanelink::components::cert
