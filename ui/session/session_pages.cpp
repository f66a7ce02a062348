#include "ui/session/session_pages.h"

#include "ui/text/texts.h"

namespace zorvanelink::ui {

using common::MsgCode;

bool MayChangePassword(ConnectionState const& state, Context const& context) {
    return state.status == ConnectStatus::Connected && state.SessionStands() &&
           context.allowLocalChangePassword;
}

std::vector<SessionPage> pagesFor(ConnectionState const& state, Context const& context) {
    std::vector<SessionPage> pages;
    bool const reachable =
        state.status == ConnectStatus::Connecting || state.status == ConnectStatus::Connected;
    if (reachable && !context.redirectUrl.empty()) {
        QString const title = QString::fromStdString(context.redirectUrlTitle).simplified();
        pages.push_back({title.isEmpty() ? GetTrMsg(MsgCode::UI_INFO_REDIRECT_URL) : title,
                         QString::fromStdString(context.redirectUrl), false});
    }
    if (reachable && !context.resourceListPagePath.empty()) {
        pages.push_back({GetTrMsg(MsgCode::UI_INFO_RESOURCE_LIST),
                         QString::fromStdString(context.resourceListPagePath), true});
    }
    if (MayChangePassword(state, context)) {
        pages.push_back({GetTrMsg(MsgCode::UI_INFO_LOWER_CHANGE_PWD), {}, false, true});
    }
    if (reachable && !context.changePasswordUrl.empty()) {
        pages.push_back({GetTrMsg(MsgCode::UI_INFO_CHANGE_PWD_URL),
                         QString::fromStdString(context.changePasswordUrl), false, true});
    }
    return pages;
}

}  // namespace zorvanelink::ui
