// The road of a connect and every way down: checks, prompts, the start and the stop message.
// GUI thread; the prompts are modal, so the state is looked at again after each of them.
#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "ui/session/box_queue.h"

namespace zorvanelink::ui {

class ConnectFlow : public QObject {
    Q_OBJECT

  public:
    // How long a request may wait for a status before it may be repeated.
    static constexpr std::chrono::milliseconds kRequestTime{60000};

    ConnectFlow(SessionCore& core, BoxQueue& boxes);

    // What the user asks for, by a card, the tray or the automatic login. Nothing when that
    // connection is on its way or up already.
    void Start(std::string const& name);
    // The login goes on with the type that the user has chosen for it.
    void StartChosen(std::string const& name);
    void StartOrStopConnect(bool start, QString const& name, bool queryAuthType);
    // The way down, from the user, a lost link, a fatal status or the end of the program. Twice
    // is as good as once.
    void StopConnect();
    // No stop is awaited on a link that is gone; what it carried goes down.
    void OnLinkLost();
    // Instead of kRequestTime, for tests.
    void SetRequestTime(std::chrono::milliseconds time) { requestTimer_.setInterval(time); }

  public Q_SLOTS:
    void onStartConnect(QString const& name, bool queryAuthType);
    void onStopConnect(QString const& name);

  private:
    void start(std::shared_ptr<Profile> const& profile, bool queryAuthType);
    void stop(std::shared_ptr<Profile> const& profile);
    void beginAttempt(Profile& profile, bool queryAuthType);
    bool mayStart(std::string const& name);
    void refuseLinkDown(std::string const& name);
    void refuse(std::string const& name);
    void selectAnew();
    void endSession();
    void PopDisconnectErrorForDialog();
    void ClearWebCache();
    void onRequestTimeout();
    // For what the user has clicked.
    void criticalBox(QString const& text);

    // What differs between the two secrets that are asked for.
    struct SecretTexts {
        common::MsgCode title;
        common::MsgCode label;
        common::MsgCode name;
        common::MsgCode remember;
        common::MsgCode too_long;
        int max_bytes;  // UTF-8
        bool remembered;
    };
    std::optional<SecretAnswer> askFor(SecretTexts const& texts, Profile const& profile);

    bool CheckProfile(std::shared_ptr<Profile> const& profile);
    bool CheckPassword(std::shared_ptr<Profile> const& profile);
    bool CheckPincode(std::shared_ptr<Profile> const& profile);
    void keepAnswer(bool remember, bool& flag, Profile& profile);
    bool CheckCert(std::shared_ptr<Profile> const& profile);
    // Empty when the chosen certificate is gone.
    QString Profile2JsonString(QString const& type, std::shared_ptr<Profile> const& profile);

    SessionCore& core_;
    BoxQueue& boxes_;
    ConnectionState& state_;
    QTimer requestTimer_;
    bool stopping_ = false;  // StopConnect runs
    bool telling_link_down_ = false;
};

}  // namespace zorvanelink::ui
