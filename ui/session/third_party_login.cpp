#include "ui/session/third_party_login.h"

#include "components/logger/logger.h"
#include "ui/text/texts.h"
#include "ui/widgets/open_url.h"

namespace zorvanelink::ui {

using common::MsgCode;

ThirdPartyLogin::ThirdPartyLogin(SessionCore& core, FailurePresenter& failures, BoxQueue& boxes)
    : core_(core), failures_(failures), boxes_(boxes), deadline_(core.clock) {
    connect(&deadline_, &Deadline::Passed, this, &ThirdPartyLogin::OnThirdPartyExpire);
    connect(&deadline_, &Deadline::Ticked, this, &ThirdPartyLogin::Ticked);
}

void ThirdPartyLogin::Open(std::string const& path) {
    core_.conversation.Open(*this);
    page_ = path;
    // Before the page: what ends the login behind a hint must find the timer.
    if (!Waits()) {
        deadline_.Start(kDeadline);
        core_.Announce();
        core_.Demand(Translate(QT_TRANSLATE_NOOP("ui", "Continue in the browser")));
    }
    if (core_.MayOpenUnasked()) {
        open();
    } else {
        components::logger::Log().info("The login's page waits to be opened by the user");
    }
}

void ThirdPartyLogin::open() {
    if (auto const failure = TryOpenUrl(core_.prompts, QString::fromStdString(page_), true)) {
        boxes_.Hint(*failure);
    }
}

void ThirdPartyLogin::StopDeadline() {
    deadline_.Stop();
    Q_EMIT Ticked();  // nothing is left to show
}

void ThirdPartyLogin::end() {
    StopDeadline();
    core_.conversation.Close(*this);
}

void ThirdPartyLogin::OnThirdPartyExpire() {
    end();
    failures_.EndWith(BoxKind::kCritical, GetTrMsg(MsgCode::SECOND_AUTH_TIMEOUT));
}

}  // namespace zorvanelink::ui
