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
    ConnectionList(StartListWidget& list, Config& config, ConnectionState const& state);

    // What the menus of the cards offer; for the cards made from here on.
    void SetMenu(CardMenu menu) { menu_ = menu; }

    // Brings the cards in line with the settings: a card whose profile is still there stays, with
    // its focus. While a connection runs it is only remembered, and done when that has ended.
    void RefreshConnList();
    // Shows the state on every card.
    void Render();

    // What the running session offers for a new password.
    void SetPages(std::vector<SessionPage> const& pages);

    // Null, with a line in the log, when no card has the name.
    ProfileTab* GetProfileTab(std::string const& name) const;
    ProfileTab* GetSelectedProfileTab() const;
    bool Has(std::string const& name) const { return tabs_.contains(name); }
    std::string const& SelectedName() const { return selected_; }

    void SetCurrntProfileTabbyProfileName(QString const& name);

  Q_SIGNALS:
    // Queued: what they start may take the card away.
    void StartConnect(QString name);
    void StopConnect(QString name);
    void DeleteConnectionInfo(QString name);
    void ModifyConnectionInfo(QString name);
    void ForgotPassword(QString url);
    void PageWanted(zorvanelink::ui::SessionPage const& page);
    // The first-use page takes the place of the list, or gives it back.
    void EableUserGuide(bool enable);
    void Selected(QString name);

  private Q_SLOTS:
    void on_connection_listwidget__itemSelectionChanged();

  private:
    void addCard(std::shared_ptr<Profile> const& profile);
    void removeCardsOfOthers();
    void SetConnectionInfoSelected(ProfileTab* tab, bool selected);
    void logCards() const;

    StartListWidget& list_;
    Config& config_;
    ConnectionState const& state_;
    std::unordered_map<std::string, ProfileTab*> tabs_;
    std::string selected_;
    CardMenu menu_;
    bool refreshDue_ = false;
};

}  // namespace zorvanelink::ui
