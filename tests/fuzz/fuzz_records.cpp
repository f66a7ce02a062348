// Every record reader. What one takes must build to a message that it takes again, and that builds
// to the same bytes from then on.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "core/clmsg_json.h"
#include "core/clmsg_reply_json.h"

using namespace zorvanelink::core::sslvpn;

namespace {

template <class Json, class Record, class Build>
void check(std::string const& text, Build build) {
    Record first;
    if (!Json::Parse(text, &first)) {
        return;
    }
    std::string const built = build(first);
    Record second;
    if (!Json::Parse(built, &second) || build(second) != built) {
        std::abort();
    }
}

template <class... Records>
void checkReplies(std::string const& text) {
    (check<CLMsgReplyJson, Records>(
         text, [](Records const& record) { return CLMsgReplyJson::Build(record); }),
     ...);
}

template <class... Records>
void onlyRead(std::string const& text) {
    auto const read = [&text](auto record) { CLMsgJson::Parse(text, &record); };
    (read(Records()), ...);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string const text(reinterpret_cast<char const*>(data), size);
    checkReplies<
        CLMsgReplyNetConfigData, CLMsgReplyTunnelDisconnectData, CLMsgReplyTunnelStatisticsData,
        CLMsgSessionStatus, CLMsgGatewayListData, CLMsgClusterData, CLMsgGatewayDetectStopData,
        CLMsgZtnaAppResourceData, CLMsgOAuthServerInfoData, DomainRouteAddRouteData, CLMsgVINCState,
        CLMsgNotifyErrorMsgData, CLMsgUpdate, CLMsgChangePWDData, CLMsgAuthData,
        ALMsgCertRespondData, ALMsgGMCertRespondData, CLMsgReplyStatusData, CLMsgCommonReplyData>(
        text);
    onlyRead<CLMsgStopData, CLMsgSetData, CLMsgUpdateRequestData>(text);
    check<CLMsgJson, CLMsgGetData>(text, [](auto const& get) { return CLMsgJson::BuildGet(get); });
    // A type that the service does not know is written as "none".
    CLMsgStartData start;
    if (CLMsgJson::Parse(text, &start)) {
        CLMsgStartData again;
        if (!CLMsgJson::Parse(CLMsgJson::BuildStart(start), &again)) {
            std::abort();
        }
    }
    return 0;
}
