// The GUI's messages to the service: the compact writers that the GUI uses and the readers of the
// service. Any thread; nothing throws and nothing here logs a message that it wrote.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "core/clmsg_document.h"
#include "core/request_records.h"

namespace zorvanelink::core::sslvpn {

class CLMsgJson {
  public:
    // Texts of SetType, in its order.
    static constexpr std::array<std::string_view, 13> type_str{
        "vnicStatus",  "smsCode",         "tokenCode",       "emailCode",      "hostcheckData",
        "ztnarawdata", "ztnaappresource", "loglevel",        "requestSmsCode", "requestEmailCode",
        "newPassword", "certSignData",    "acceptServerCert"};

    // kUnknown for a text outside the table.
    static GetType GetGetType(std::string_view text);

    // False when a required key is missing or of the wrong JSON type: logged, and what was read
    // before it stays in the record.
    static bool Parse(CLMsgDocument const& message, CLMsgStartData* data);
    static bool Parse(CLMsgDocument const& message, CLMsgStopData* data);
    static bool Parse(CLMsgDocument const& message, CLMsgGetData* data);
    static bool Parse(CLMsgDocument const& message, CLMsgSetData* data);
    static bool Parse(CLMsgDocument const& message, CLMsgUpdateRequestData* data);
    template <class Record>
    static bool Parse(std::string const& json, Record* data) {
        CLMsgDocument message;
        return message.Parse(json) && Parse(message, data);
    }

    static std::string BuildStart(CLMsgStartData const& data);
    // Of the record only the fields that "stop" carries.
    static std::string BuildStop(CLMsgStartData const& data);
    // The same fields and `subtype`, when it is not empty; such as "ztnaappresource".
    static std::string BuildProfileSet(CLMsgStartData const& data, std::string const& subtype);

    // "get" of the certificates, without a profile; of the USB keys when `gm`.
    static std::string BuildCertRequest(bool gm);

    // Writes the further keys of kVnicStatus to kHostcheckData only; the others have the senders
    // below.
    static std::string Build(CLMsgSetData const& data);
    static std::string BuildLogLevel(std::string const& logLevel);
    static std::string BuildAcceptServerCert(std::string const& profileName, bool result);
    // `kind`: kSmsCode, kTokenCode or kEmailCode; the code goes as typed.
    static std::string BuildAuthCode(std::string const& profileName, SetType kind,
                                     std::string const& secondAuthCode);
    // `kind`: kRequestSmsCode or kRequestEmailCode.
    static std::string BuildRequestAuthCode(std::string const& profileName, SetType kind);
    // Both passwords as sensitive values.
    static std::string BuildNewPassword(std::string const& profileName,
                                        std::string const& currentPassword,
                                        std::string const& newPassword);
    static std::string BuildCertSignData(std::string const& profileName,
                                         std::string const& certSignData);

    static std::string BuildUpdate(CLMsgUpdateRequestData const& data);
};

}  // namespace zorvanelink::core::sslvpn
