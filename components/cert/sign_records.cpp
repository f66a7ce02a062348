#include "components/cert/sign_records.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <tuple>

#include "components/utils/base64.h"
#include "components/utils/text.h"

namespace zorvanelink::components::cert {
namespace {

constexpr char kSeparator = '\r';

// The parts of each record in their order; an operation's number stands ahead of them.
template <class Record>
constexpr int kParts = 0;
template <>
constexpr auto kParts<RSAMethReqArgs> = std::tuple(&RSAMethReqArgs::dataLen,
                                                   &RSAMethReqArgs::satLen,
                                                   &RSAMethReqArgs::padding, &RSAMethReqArgs::hash,
                                                   &RSAMethReqArgs::data);
template <>
constexpr auto kParts<RSASignReqArgs> = std::tuple(&RSASignReqArgs::hash, &RSASignReqArgs::data,
                                                   &RSASignReqArgs::dataLen);
template <>
constexpr auto kParts<RSAVerfyReqArgs> = std::tuple(&RSAVerfyReqArgs::hash, &RSAVerfyReqArgs::data,
                                                    &RSAVerfyReqArgs::dataLen,
                                                    &RSAVerfyReqArgs::signature,
                                                    &RSAVerfyReqArgs::signatureLen);
template <>
constexpr auto kParts<RSARepData> = std::tuple(&RSARepData::ret, &RSARepData::data,
                                               &RSARepData::dataLen, &RSARepData::extra);
template <>
constexpr auto kParts<ECCReqArgs> = std::tuple(&ECCReqArgs::curve, &ECCReqArgs::data,
                                               &ECCReqArgs::dataLen);
template <>
constexpr auto kParts<ECCRepData> = std::tuple(&ECCRepData::ret, &ECCRepData::sigLen,
                                               &ECCRepData::data, &ECCRepData::dataLen);

std::string written(int number) {
    return std::to_string(number);
}
std::string written(std::string const& bytes) {
    return utils::Base64Encode(bytes, false);
}
void read(std::string const& part, int& number) {
    number = static_cast<int>(
        std::clamp<long>(std::strtol(part.c_str(), nullptr, 10), INT_MIN, INT_MAX));
}
void read(std::string const& part, std::string& bytes) {
    bytes = utils::Base64Decode(part, false);
}

template <class Record>
std::string serial(Record const& record) {
    std::string text;
    std::apply([&](auto... part) { ((text += written(record.*part) + kSeparator), ...); },
               kParts<Record>);
    text.pop_back();
    return text;
}

template <class Record>
std::string serial(RSAReqType type, Record const& record) {
    return written(type) + kSeparator + serial(record);
}

// `ahead`: parts that are none of the record's.
template <class Record>
bool deserial(std::string_view text, std::size_t ahead, Record& record) {
    record = {};
    auto const parts = utils::SplitStringByChar(text, kSeparator);
    if (parts.size() != ahead + std::tuple_size_v<decltype(kParts<Record>)>) {
        return false;
    }
    auto next = parts.begin() + static_cast<std::ptrdiff_t>(ahead);
    std::apply([&](auto... part) { (read(*next++, record.*part), ...); }, kParts<Record>);
    return true;
}

}  // namespace

RSAReqType GetRSAType(std::string_view text) {
    std::size_t const end = text.find(kSeparator);
    if (end == std::string_view::npos) {
        return kRSAUnknown;
    }
    int type = 0;
    read(std::string(text.substr(0, end)), type);
    return type >= kRSAPubEnc && type < kRSAUnknown ? static_cast<RSAReqType>(type) : kRSAUnknown;
}

std::string RSAMethReqArgs::Serial(RSAReqType type) const {
    return serial(type, *this);
}
bool RSAMethReqArgs::Deserial(std::string_view text) {
    return deserial(text, 1, *this);
}

std::string RSASignReqArgs::Serial() const {
    return serial(kRSASign, *this);
}
bool RSASignReqArgs::Deserial(std::string_view text) {
    return deserial(text, 1, *this);
}

std::string RSAVerfyReqArgs::Serial() const {
    return serial(kRSAVerify, *this);
}
bool RSAVerfyReqArgs::Deserial(std::string_view text) {
    return deserial(text, 1, *this);
}

std::string RSARepData::Serial(RSAReqType type) const {
    return serial(type, *this);
}
bool RSARepData::Deserial(std::string_view text) {
    return deserial(text, 1, *this);
}

std::string ECCReqArgs::Serial() const {
    return serial(*this);
}
bool ECCReqArgs::Deserial(std::string_view text) {
    return deserial(text, 0, *this);
}

std::string ECCRepData::Serial() const {
    return serial(*this);
}
bool ECCRepData::Deserial(std::string_view text) {
    return deserial(text, 0, *this);
}

}  // namespace zorvanelink::components::cert
