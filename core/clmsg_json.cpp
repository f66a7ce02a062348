#include "core/clmsg_json.h"

#include <algorithm>

#include "components/logger/logger.h"
#include "core/secret_fields.h"

namespace zorvanelink::core::sslvpn {
namespace {

using common::MsgCode;
using components::logger::Log;
using json::BuildMessage;
using json::Field;
using json::Join;
using json::Outcome;
using json::Output;
using json::ParseMessage;
using json::Rows;
using json::Style;

constexpr std::array<std::string_view, 17> kGetTypeString{
    "state",           "statistics",      "config",         "update",           "vnicStatus",
    "smsCode",         "tokenCode",       "emailCode",      "hostcheckData",    "ztnarawdata",
    "ztnaappresource", "loglevel",        "requestSmsCode", "requestEmailCode", "newPassword",
    "certSignData",    "acceptServerCert"};

template <std::size_t N>
std::string_view textOf(std::array<std::string_view, N> const& table, std::size_t index) {
    return index < N ? table[index] : std::string_view();
}

// Codec: a row of kGetTypeString; another text fails the message.
struct GetTypeText {
    static Outcome Read(json::Value const& value, GetType& out) {
        std::string text;
        Outcome const outcome = json::Read(value, text);
        if (!outcome.Stored()) {
            return outcome;
        }
        GetType const type = CLMsgJson::GetGetType(text);
        if (type == GetType::kUnknown) {
            Log().error("Unknown getType [{}] in clmsgjson parse", text);
            return {Outcome::kFailed};
        }
        out = type;
        return json::kStored;
    }
    static void Write(Output& out, GetType value) {
        out.Text(textOf(kGetTypeString, static_cast<std::size_t>(value)));
    }
};

// Codec: a row of CLMsgJson::type_str; another text is kUnknown.
struct SetTypeText {
    static Outcome Read(json::Value const& value, SetType& out) {
        std::string text;
        Outcome const outcome = json::Read(value, text);
        if (outcome.Stored()) {
            out = CLMsgJson::GetSetType(text);
        }
        return outcome;
    }
    static void Write(Output& out, SetType value) {
        out.Text(textOf(CLMsgJson::type_str, static_cast<std::size_t>(value)));
    }
};

constexpr std::array kStop{
    Rows<CLMsgStopData>::Required<&CLMsgStopData::profileName>("profileName"),
};

constexpr std::array kGet{
    Rows<CLMsgGetData>::Required<&CLMsgGetData::profileName>("profileName"),
    Rows<CLMsgGetData>::Constant("type", "get"),
    Rows<CLMsgGetData>::Required<&CLMsgGetData::getType, GetTypeText>("getType"),
};

using Set = CLMsgSetData;
using SetRow = Rows<Set>;

constexpr auto kSetType = SetRow::Constant("type", "set");
constexpr auto kSetProfile = SetRow::Required<&Set::profileName>("profileName");
constexpr auto kSetSubType = SetRow::Optional<&Set::subtype, SetTypeText>(
    "subtype", [](Set const& set) { return set.subtype != SetType::kUnknown; });
constexpr auto kAuthCode = SetRow::Required<&Set::secondAuthCode>("secondAuthCode").Secret();

constexpr std::array kSetHead{kSetProfile, kSetType, kSetSubType};
constexpr std::array kVnic{
    SetRow::Required<&Set::vnicError>("vnicError"),
    SetRow::Required<&Set::sysType>("sysType"),
    SetRow::Required<&Set::vnicFd>("vnicFd"),
};
constexpr std::array kCode{kAuthCode};
constexpr std::array kHostcheck{SetRow::Required<&Set::hostcheckData>("hostcheckData")};
constexpr std::array kRawData{SetRow::Required<&Set::rawdata>("rawdata")};
constexpr std::array kLogLevel{SetRow::Required<&Set::logLevel>("logLevel")};
constexpr std::array kPassword{
    SetRow::Required<&Set::currentPassword>("currentPassword").Secret(),
    SetRow::Required<&Set::newPassword>("newPassword").Secret(),
};
constexpr std::array kSignData{SetRow::Required<&Set::certSignData>("certSignData").Secret()};
constexpr std::array kResult{SetRow::Required<&Set::result>("result")};

// The further keys by subtype, and whether the shared builder writes them.
struct SetKeys {
    std::span<Field<Set> const> fields;
    bool built = false;
};
constexpr std::array<SetKeys, 13> kSetKeys{{
    {kVnic, true},       // vnicStatus
    {kCode, true},       // smsCode
    {kCode, true},       // tokenCode
    {kCode, true},       // emailCode
    {kHostcheck, true},  // hostcheckData
    {kRawData},          // ztnarawdata
    {},                  // ztnaappresource
    {kLogLevel},         // loglevel
    {},                  // requestSmsCode
    {},                  // requestEmailCode
    {kPassword},         // newPassword
    {kSignData},         // certSignData
    {kResult},           // acceptServerCert
}};

SetKeys keysOf(SetType subtype) {
    auto const index = static_cast<std::size_t>(subtype);
    return index < kSetKeys.size() ? kSetKeys[index] : SetKeys();
}

// What each sender writes, in its own order.
constexpr auto kSendLogLevel = Join(std::array{kSetType, kSetSubType}, kLogLevel);
constexpr auto kSendAccept =
    Join(std::array{kSetType, kSetSubType}, kResult, std::array{kSetProfile});
constexpr auto kSendCode = Join(kSetHead, kCode);
constexpr auto kSendPassword = Join(kSetHead, kPassword);
constexpr auto kSendSignData =
    Join(std::array{kSetType, kSetSubType}, kSignData,
         std::array{SetRow::Computed("statusCode",
                                     [](Output& out, Set const&) {
                                         out.Int(static_cast<std::int32_t>(MsgCode::CERT_REQUEST));
                                     }),
                    kSetProfile});

Set setOf(SetType subtype, std::string const& profileName) {
    Set set;
    set.subtype = subtype;
    set.profileName = profileName;
    return set;
}

using Update = CLMsgUpdateRequestData;
using UpdateRow = Rows<Update>;

template <UpdateCommand... kCommands>
bool isOneOf(Update const& update) {
    return ((update.command == kCommands) || ...);
}

using enum UpdateCommand;
constexpr auto kNamesProfile = &isOneOf<kReportClientInfo, kInquire, kCancelDownload, kInstall>;
constexpr auto kInquires = &isOneOf<kInquire>;

constexpr std::array kUpdate{
    UpdateRow::Constant("type", "update"),
    UpdateRow::Constant("clientType", "zlvpn"),
    UpdateRow::Constant("subtype", "update"),
    UpdateRow::Required<&Update::command>("command"),
    UpdateRow::Optional<&Update::profileName>("profileName", kNamesProfile),
    UpdateRow::Optional<&Update::userDataPath>("userDataPath", kInquires),
    UpdateRow::Optional<&Update::server>("server", kInquires),
    UpdateRow::Optional<&Update::port>("port", kInquires),
    UpdateRow::Optional<&Update::enableSPA>("enableSPA", kInquires),
    UpdateRow::Optional<&Update::spaPort>(
        "spaPort", [](Update const& update) { return kInquires(update) && update.spaPort; }),
    UpdateRow::Optional<&Update::enableGMSSL>("enableGMSSL", kInquires),
    UpdateRow::Optional<&Update::UIAdmin>("UIAdmin", &isOneOf<kReportClientInfo, kInquire>),
    UpdateRow::Optional<&Update::policy>("policy", &isOneOf<kAnswer, kInstall>),
    UpdateRow::Optional<&Update::path>("path", &isOneOf<kInstall>),
};

}  // namespace

void AddSetSecrets(std::vector<std::string_view>& keys) {
    for (SetKeys const& rows : kSetKeys) {
        json::AddSecrets<Set>(rows.fields, keys);
    }
}

GetType CLMsgJson::GetGetType(std::string_view text) {
    return static_cast<GetType>(std::ranges::find(kGetTypeString, text) - kGetTypeString.begin());
}

SetType CLMsgJson::GetSetType(std::string_view text) {
    return static_cast<SetType>(std::ranges::find(type_str, text) - type_str.begin());
}

bool CLMsgJson::Parse(std::string const& json, CLMsgStopData* data) {
    return ParseMessage(json, kStop, data);
}

bool CLMsgJson::Parse(std::string const& json, CLMsgGetData* data) {
    return ParseMessage(json, kGet, data);
}

bool CLMsgJson::Parse(std::string const& json, CLMsgSetData* data) {
    rapidjson::Document document;
    if (!json::ParseObject(json, &document)) {
        return false;
    }
    data->subtype = SetType::kUnknown;
    bool const complete = json::ReadFields(document, kSetHead, *data) &&
                          json::ReadFields(document, keysOf(data->subtype).fields, *data);
    json::PublishNotes();
    return complete;
}

bool CLMsgJson::Parse(std::string const& json, CLMsgUpdateRequestData* data) {
    return ParseMessage(json, kUpdate, data);
}

std::string CLMsgJson::BuildGet(CLMsgGetData const& data) {
    return BuildMessage(Style::kCompact, kGet, data);
}

std::string CLMsgJson::BuildCertRequest(bool gm) {
    return gm ? R"({"type":"get","subtype":"gmCertRequest"})"
              : R"({"type":"get","subtype":"certRequest"})";
}

std::string CLMsgJson::Build(CLMsgSetData const& data) {
    Output out(Style::kCompact);
    out.StartObject();
    json::WriteFields(out, std::span<Field<Set> const>(kSetHead), data);
    if (SetKeys const keys = keysOf(data.subtype); keys.built) {
        json::WriteFields(out, keys.fields, data);
    }
    out.EndObject();
    return out.Take();
}

std::string CLMsgJson::BuildLogLevel(std::string const& logLevel) {
    Set set = setOf(SetType::kLogLevel, {});
    set.logLevel = logLevel;
    return BuildMessage(Style::kCompact, kSendLogLevel, set);
}

std::string CLMsgJson::BuildAcceptServerCert(std::string const& profileName, bool result) {
    Set set = setOf(SetType::kAcceptServerCert, profileName);
    set.result = result;
    return BuildMessage(Style::kCompact, kSendAccept, set);
}

std::string CLMsgJson::BuildAuthCode(std::string const& profileName, SetType kind,
                                     std::string const& secondAuthCode) {
    Set set = setOf(kind, profileName);
    set.secondAuthCode = secondAuthCode;
    return BuildMessage(Style::kCompact, kSendCode, set);
}

std::string CLMsgJson::BuildRequestAuthCode(std::string const& profileName, SetType kind) {
    return BuildAuthCode(profileName, kind, "0000");
}

std::string CLMsgJson::BuildNewPassword(std::string const& profileName,
                                        std::string const& currentPassword,
                                        std::string const& newPassword) {
    Set set = setOf(SetType::kNewPassword, profileName);
    set.currentPassword = currentPassword;
    set.newPassword = newPassword;
    return BuildMessage(Style::kCompact, kSendPassword, set);
}

std::string CLMsgJson::BuildCertSignData(std::string const& profileName,
                                         std::string const& certSignData) {
    Set set = setOf(SetType::kCertSignData, profileName);
    set.certSignData = certSignData;
    return BuildMessage(Style::kCompact, kSendSignData, set);
}

std::string CLMsgJson::BuildUpdate(CLMsgUpdateRequestData const& data) {
    return BuildMessage(Style::kCompact, kUpdate, data);
}

}  // namespace zorvanelink::core::sslvpn
