// The list of cards and the table from profile name to card. GUI thread; nobody outside holds a
// card across a modal call.
#pragma once

#include <QObject>
#include <string>
#include <unordered_map>

#include "ui/cards/profile_tab.h"
#include "ui/cards/start_list_widget.h"
#include "ui/config/config.h"

namespace zorvanelink::ui {

class ConnectionList : public QObject {
    Q_OBJECT

  public:
    ConnectionList(StartListWidget& list, Config& config, QObject* parent = nullptr);

    // What the menus of the cards offer; for the cards made from here on.
    void SetMenu(CardMenu menu) { menu_ = menu; }

    // Rebuilds the cards from the settings. While a connection runs it is only remembered, and
    // done when the connection has ended.
    void RefreshConnList();

    // A value of the profile has changed that its card shows.
    void RefreshCard(QString const& name);

    // Null, with a line in the log, when no card has the name.
    ProfileTab* GetProfileTab(std::string const& name) const;
    ProfileTab* GetSelectedProfileTab() const;
    bool Has(std::string const& name) const { return tabs_.contains(name); }
    std::string const& SelectedName() const { return selected_; }

    void SetCurrntProfileTabbyProfileName(QString const& name);
    // Runs a refresh that was refused while a connection ran.
    void RefreshIfDue();

    // The state of every card follows from these three. Disconnected for a card whose start was
    // refused leaves the running one as it is.
    void SetRunning(std::string const& name, ConnectStatus status);
    void SetPending(std::string const& name);  // empty: none
    void SetAdapterUsable(bool usable);

  Q_SIGNALS:
    // Every card listens.
    void NotifyConnectStatus(QString name, ConnectStatus status);
    void StartConnect(QString name, bool queryAuthType);
    void StopConnect(QString name, bool);
    void DeleteConnectionInfo(QString name);
    void ModifyConnectionInfo(QString name);
    void ForgotPassword(QString url);
    // The card's button came back without a status.
    void PendingEnded(QString name);
    // The first-use page takes the place of the list, or gives it back.
    void EableUserGuide(bool enable);
    void Selected(QString name);

  private Q_SLOTS:
    void on_connection_listwidget__itemSelectionChanged();

  private:
    void addCard(std::shared_ptr<Profile> const& profile);
    void SetConnectionInfoSelected(ProfileTab* tab, bool selected);
    void logCards() const;

    StartListWidget& list_;
    Config& config_;
    std::unordered_map<std::string, ProfileTab*> tabs_;
    std::string selected_;
    CardMenu menu_;
    std::string running_;
    ConnectStatus status_ = ConnectStatus::Disconnected;
    bool adapterUsable_ = true;
    bool refreshDue_ = false;
};

}  // namespace zorvanelink::ui
