// Every record reader. What one takes must build to a message that it takes again, and that builds
// to the same bytes from then on.
#include "core/clmsg_json.h"
#include "core/clmsg_reply_json.h"
#include "tests/fuzz/fuzz_target.h"

using namespace zorvanelink::core::sslvpn;
using zorvanelink::test::Require;

namespace {

template <class Json, class Record, class Build>
void check(std::string const& text, Build build) {
    Record first;
    if (!Json::Parse(text, &first)) {
        return;
    }
    std::string const built = build(first);
    Record second;
    Require(Json::Parse(built, &second) && build(second) == built);
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

void zorvanelink::test::Fuzz(std::string const& text) {
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
        Require(CLMsgJson::Parse(CLMsgJson::BuildStart(start), &start));
    }
}
