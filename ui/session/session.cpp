#include "ui/session/session.h"

#include "app/environment/globals.h"
#include "components/logger/logger.h"
#include "core/clmsg_json.h"

namespace zorvanelink::ui {

using components::logger::Log;

Session::Session(Environment const& environment)
    : SessionCore(environment),
      boxes_(*this),
      flow_(*this, boxes_),
      failures_(*this, flow_, boxes_),
      handlers_{PageStatuses(*this, boxes_),
                {*this, flow_, failures_, handlers_.pages},
                {*this, flow_, failures_, boxes_},
                {*this, flow_, boxes_}},
      statuses_(*this, failures_, handlers_),
      dispatcher_(*this, failures_, handlers_, statuses_, certificates_) {
    state.link = link.State();
    connect(&link, &ServiceLink::MessageArrived, this, &Session::Receive);
    connect(&link, &ServiceLink::StateChanged, this, &Session::onLinkState);
    connect(&link, &ServiceLink::SilenceChanged, this,
            [this](std::optional<QDateTime> const& since) {
                state.silentSince = since;
                Announce();
            });
    connect(&link, &ServiceLink::Lost, this, [this] { flow_.OnLinkLost(); });
    connect(&certificates_, &CertListRoad::SendCertRequest, this, [this](bool gm) {
        link.SendToService(QString::fromStdString(core::sslvpn::CLMsgJson::BuildCertRequest(gm)));
    });
}

void Session::onLinkState() {
    state.link = link.State();
    if (state.link == LinkState::kLinked) {
        state.sessionEnded = false;  // what ended belonged to the link before
    }
    Announce();
    if (state.link == LinkState::kReconnecting) {
        // A link that ended at once is not announced as lost, but it may have swallowed a start.
        auto const give_up = [this] {
            if (!state.startingProfileName.empty() && !link.IsReady()) {
                flow_.OnLinkLost();
            }
        };
        QMetaObject::invokeMethod(this, give_up, Qt::QueuedConnection);
    }
}

void Session::Stop(QString const& name) {
    boxes_.Overtake();
    flow_.onStopConnect(name);
}

void Session::AutoLogin() {
    Log().info("Auto login is {}", config.autoLogin ? "on" : "off");
    if (config.autoLogin && !dueLogin_) {
        dueLogin_ = connect(this, &SessionCore::Changed, this, &Session::startDueLogin);
        startDueLogin();
    }
}

void Session::startDueLogin() {
    if (state.Idle() && (!link.IsReady() || !state.adapterUsable)) {
        return;
    }
    disconnect(std::exchange(dueLogin_, {}));
    if (state.Idle()) {  // who has started one meanwhile has chosen
        startDefault();
    }
}

void Session::startDefault() {
    std::string const name = config.GetDefaultProfileName();
    Log().info("Enable {} auto login", name);
    if (!name.empty() && config.GetProfile(name) != nullptr) {
        state.currentProfileName = name;
        Log().info("auto login profile_name: {}", name);
        // Queued: it may ask for a password, and who announces a change does not wait for that.
        QMetaObject::invokeMethod(
            this, [this, name] { link.IsReady() ? flow_.Start(name) : AutoLogin(); },
            Qt::QueuedConnection);
    }
}

void Session::Leave() {
    if (!g_quit) {
        link.IgnoreLoss();
        state.errorShown = true;  // who leaves needs no word about an open dialog
        flow_.StopConnect();
        g_quit = true;  // what stands behind a box does not go on
    }
}

}  // namespace zorvanelink::ui
