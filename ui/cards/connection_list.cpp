#include "ui/cards/connection_list.h"

#include <QSignalBlocker>

#include "components/logger/logger.h"

namespace zorvanelink::ui {
namespace {

using components::logger::Log;

}  // namespace

ConnectionList::ConnectionList(StartListWidget& list, Config& config, ConnectionState const& state)
    : list_(list), config_(config), state_(state) {
    connect(&list_, &QListWidget::itemSelectionChanged, this,
            &ConnectionList::on_connection_listwidget__itemSelectionChanged);
}

void ConnectionList::RefreshConnList() {
    if (!state_.Idle()) {
        Log().info("Not refresh connection list now");
        refreshDue_ = true;
        return;
    }
    refreshDue_ = false;
    Log().info("Refresh connection list");
    Config::ProfileMap const& profiles = config_.GetProfile();
    Q_EMIT EableUserGuide(profiles.empty());
    logCards();
    {
        // Selections on the way are nobody's choice.
        QSignalBlocker const blocker(&list_);
        removeCardsOfOthers();
        for (auto const& [name, profile] : profiles) {
            if (!Has(name)) {
                addCard(profile);
            }
        }
        list_.sortItems(Qt::AscendingOrder);
        SetCurrntProfileTabbyProfileName(QString::fromStdString(config_.GetDefaultProfileName()));
        if (list_.currentItem() == nullptr && list_.count() > 0) {
            list_.setCurrentRow(0);
        }
    }
    Render();
    on_connection_listwidget__itemSelectionChanged();
}

void ConnectionList::Render() {
    if (refreshDue_ && state_.Idle()) {
        RefreshConnList();  // renders them
        return;
    }
    for (auto const& [name, tab] : tabs_) {
        tab->Render(cardViewFor(state_, name));
    }
}

void ConnectionList::removeCardsOfOthers() {
    for (int row = list_.count() - 1; row >= 0; --row) {
        ProfileTab* const tab = list_.CardAt(row);
        std::string const name = tab->GetProfile()->name;
        if (config_.GetProfile(name) == tab->GetProfile()) {
            continue;
        }
        tabs_.erase(name);
        if (selected_ == name) {
            selected_.clear();
        }
        tab->disconnect(this);
        delete list_.takeItem(row);
    }
}

void ConnectionList::addCard(std::shared_ptr<Profile> const& profile) {
    auto* const tab = new ProfileTab(profile, &list_);
    tab->SetMenu(menu_);
    QListWidgetItem* const item = list_.AddCard(tab);
    connect(tab, &ProfileTab::Chosen, this, [this, item] { list_.setCurrentItem(item); });
    connect(tab, &ProfileTab::StartConnect, this, &ConnectionList::StartConnect,
            Qt::QueuedConnection);
    connect(tab, &ProfileTab::StopConnect, this, &ConnectionList::StopConnect,
            Qt::QueuedConnection);
    connect(tab, &ProfileTab::DeleteConnectionInfo, this, &ConnectionList::DeleteConnectionInfo,
            Qt::QueuedConnection);
    connect(tab, &ProfileTab::ModifyConnectionInfo, this, &ConnectionList::ModifyConnectionInfo,
            Qt::QueuedConnection);
    connect(tab, &ProfileTab::ForgotPassword, this, &ConnectionList::ForgotPassword,
            Qt::QueuedConnection);
    connect(tab, &ProfileTab::PageWanted, this, &ConnectionList::PageWanted, Qt::QueuedConnection);
    tabs_[profile->name] = tab;
}

void ConnectionList::SetPages(std::vector<SessionPage> const& pages) {
    for (auto const& [name, tab] : tabs_) {
        tab->SetPages(name == state_.currentProfileName ? pages : std::vector<SessionPage>());
    }
}

void ConnectionList::logCards() const {
    Log().info("client count: {}", list_.count());
    for (int row = 0; row < list_.count(); ++row) {
        if (ProfileTab const* const tab = list_.CardAt(row)) {
            std::string const& name = tab->GetProfile()->name;
            bool const runs = name == state_.currentProfileName;
            Log().info("profile name: {}, status: {}", name,
                       runs ? static_cast<int>(state_.status) : 0);
        }
    }
}

ProfileTab* ConnectionList::GetProfileTab(std::string const& name) const {
    auto const found = tabs_.find(name);
    if (found == tabs_.end()) {
        Log().error("Can not find profile tab by name [{}]", name);
        return nullptr;
    }
    return found->second;
}

ProfileTab* ConnectionList::GetSelectedProfileTab() const {
    auto const found = tabs_.find(selected_);
    if (found == tabs_.end()) {
        Log().error("Can not find selected profile tab by name [{}]", selected_);
        return nullptr;
    }
    return found->second;
}

void ConnectionList::SetCurrntProfileTabbyProfileName(QString const& name) {
    std::string const key = name.toStdString();
    for (int row = 0; row < list_.count(); ++row) {
        ProfileTab const* const tab = list_.CardAt(row);
        if (tab != nullptr && tab->GetProfile()->name == key) {
            list_.setCurrentRow(row);
            return;
        }
    }
}

void ConnectionList::on_connection_listwidget__itemSelectionChanged() {
    // The current one may be another: the keyboard stands on it, and nobody has chosen it.
    QList<QListWidgetItem*> const chosen = list_.selectedItems();
    ProfileTab* const tab = chosen.isEmpty() ? nullptr : list_.CardAt(list_.row(chosen.front()));
    if (tab != nullptr) {
        SetConnectionInfoSelected(tab, true);
    }
}

void ConnectionList::SetConnectionInfoSelected(ProfileTab* tab, bool selected) {
    Log().info("currnt profile name: {}", tab->GetProfile()->name);
    for (auto const& [name, other] : tabs_) {
        other->SetSelected(other == tab && selected, &list_);
    }
    selected_ = tab->GetProfile()->name;
    config_.SetDefaultProfile(selected_);
    Q_EMIT Selected(QString::fromStdString(selected_));
}

}  // namespace zorvanelink::ui
