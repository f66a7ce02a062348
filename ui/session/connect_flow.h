// The road of a connect and every way down: checks, prompts, the start and the stop message.
// GUI thread; the prompts are modal, so the state is looked at again after each of them.
#pragma once

#include <QObject>
#include <QString>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "ui/config/config.h"
#include "ui/link/service_link.h"
#include "ui/session/connection_state.h"
#include "ui/session/status_updater.h"
#include "ui/widgets/prompts.h"

namespace zorvanelink::ui {

class ConnectFlow : public QObject {
    Q_OBJECT

  public:
    // What the flow needs of the program, as narrow things.
    struct Services {
        ConnectionState& state;
        StatusUpdater& updater;
        Config& config;
        ServiceLink& link;
        Prompts& prompts;
        QWidget* dialog_parent;  // what boxes stand over
        std::function<bool(std::string const& name)> has_tab;
    };

    explicit ConnectFlow(Services services, QObject* parent = nullptr);

    void StartOrStopConnect(bool start, QString const& name, bool queryAuthType);
    // The way down, from the user, a lost link, a fatal status or the end of the program. Twice
    // is as good as once.
    void StopConnect();
    // The card gave up waiting for a status: the attempt may be repeated.
    void ForgetPendingRequest(QString const& name);
    // Whether an OFFLINE that comes now still answers the stop before the present start.
    bool BelongsToOldAttempt() const;
    // Any message of a profile's conversation with the service; logged without its secrets. False
    // when it has not left.
    bool Send(std::string const& json);
    // The profile of the current connection, or null when no card carries it.
    std::shared_ptr<Profile> RunningProfile() const;
    // The attempt goes no further: what the user does not want kept goes.
    void ForgetCredentials(Profile& profile);

  public Q_SLOTS:
    void onStartConnect(QString const& name, bool queryAuthType);
    void onStopConnect(QString const& name);

  Q_SIGNALS:
    void RequestBegun();   // a start or stop has passed its first checks
    void SessionEnding();  // the way down begins: texts of the moment go, open dialogs are told
    void SessionEnded();   // the way down has run
    // The chosen certificate is gone: the user chooses anew. Queued.
    void NeedSelectAuthType(bool select);

  private:
    void start(std::shared_ptr<Profile> const& profile, bool queryAuthType);
    void stop(std::shared_ptr<Profile> const& profile);
    void beginAttempt(Profile& profile, bool queryAuthType);
    bool mayStart(std::string const& name);
    void refuseLinkDown(std::string const& name);
    void refuse(std::string const& name);
    void selectAnew();
    void endSession(Profile& profile);
    void ClearWebCache();
    void forgetCredentials(Profile& profile, bool queryAuthType);
    void criticalBox(QString const& text);

    // What differs between the two secrets that are asked for.
    struct SecretTexts {
        common::MsgCode title;
        common::MsgCode label;
        common::MsgCode name;
        common::MsgCode remember;
        common::MsgCode too_long;
        int max_bytes;  // UTF-8
    };
    std::optional<SecretAnswer> askFor(SecretTexts const& texts);

    bool CheckProfile(std::shared_ptr<Profile> const& profile);
    bool CheckPassword(std::shared_ptr<Profile> const& profile);
    bool CheckPincode(std::shared_ptr<Profile> const& profile);
    bool CheckCert(std::shared_ptr<Profile> const& profile);
    // Empty when the chosen certificate is gone.
    QString Profile2JsonString(QString const& type, std::shared_ptr<Profile> const& profile);

    ConnectionState& state_;
    StatusUpdater& updater_;
    Config& config_;
    ServiceLink& link_;
    Prompts& prompts_;
    QWidget* const dialog_parent_;
    std::function<bool(std::string const&)> const has_tab_;
    std::chrono::steady_clock::time_point stop_time_{};
    bool prompting_ = false;  // a prompt of an attempt stands
    bool stopping_ = false;   // StopConnect runs
    bool telling_link_down_ = false;
};

}  // namespace zorvanelink::ui
