// What the present connection has been told, besides its state: never stored, replaced by a fresh
// one at each start. Plain values, GUI thread.
#pragma once

#include <QDateTime>
#include <QString>
#include <cstdint>
#include <set>
#include <string>

#include "core/reply_records.h"

namespace zorvanelink::ui {

struct Context {
    bool needQueryAuthType = true;  // ask the server for its types before the login
    std::string cipherAlg;
    std::string ipCompAlg;
    std::string sslVersion;
    std::string hostCheckDownloadUrl;
    std::string redirectUrl;
    std::string redirectUrlTitle;
    std::set<std::string> openedPages;  // unasked, in this session
    std::string resourceListPagePath;
    bool needClearWebCacheWhenOffline = false;
    std::string receivedUserName;   // the session's cookie text
    std::int32_t authCodeType = 1;  // 0 token, 1 SMS, 2 e-mail
    std::string tokenPromptMsg;
    std::string emailAuthAccount;
    bool allowLocalChangePassword = false;
    core::sslvpn::UserPasswordComplexity passwordPolicy;
    bool expiryTold = false;  // in this session
    std::string changePasswordUrl;
    std::string forgotPasswordUrl;
    QDateTime connectTime;  // invalid until the tunnel is up
    core::sslvpn::CLMsgReplyNetConfigData netConfig;
    core::sslvpn::CLMsgReplyTunnelStatisticsData statistics;
};

}  // namespace zorvanelink::ui
