#include "ui/session/third_party_login.h"

#include "ui/text/texts.h"
#include "ui/widgets/open_url.h"

namespace zorvanelink::ui {

using common::MsgCode;

ThirdPartyLogin::ThirdPartyLogin(ConnectFlow& flow, FailurePresenter& failures, Prompts& prompts,
                                 QWidget* window, QObject* parent)
    : QObject(parent), flow_(flow), failures_(failures), prompts_(prompts), window_(window) {
    timer_.setInterval(kDeadline);
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &ThirdPartyLogin::OnThirdPartyExpire);
    connect(&flow_, &ConnectFlow::RequestBegun, this, &ThirdPartyLogin::Stop);
    connect(&flow_, &ConnectFlow::SessionEnded, this, &ThirdPartyLogin::Stop);
    connect(&failures_, &FailurePresenter::CriticalBoxShown, this, &ThirdPartyLogin::Stop);
}

void ThirdPartyLogin::Open(std::string const& path) {
    // Before the page: what ends the login behind a hint must find the timer.
    if (!timer_.isActive()) {
        timer_.start();
    }
    OpenUrlWithHint(prompts_, window_, QString::fromStdString(path), true);
}

void ThirdPartyLogin::OnThirdPartyExpire() {
    timer_.stop();
    flow_.StopConnect();
    failures_.ShowCriticalBox(GetErrMsg(MsgCode::UI_ERROR), GetErrMsg(MsgCode::SECOND_AUTH_TIMEOUT),
                              GetErrMsg(MsgCode::UI_INFO_OK));
}

}  // namespace zorvanelink::ui
