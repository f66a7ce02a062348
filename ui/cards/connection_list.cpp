#include "ui/cards/connection_list.h"

#include <QSignalBlocker>

#include "app/environment/globals.h"
#include "components/logger/logger.h"

namespace zorvanelink::ui {
namespace {

using components::logger::Log;

}  // namespace

ConnectionList::ConnectionList(StartListWidget& list, Config& config, QObject* parent)
    : QObject(parent), list_(list), config_(config) {
    connect(&list_, &QListWidget::itemSelectionChanged, this,
            &ConnectionList::on_connection_listwidget__itemSelectionChanged);
}

void ConnectionList::RefreshConnList() {
    if (g_running_client != 0 || status_ != ConnectStatus::Disconnected) {
        Log().info("Not refresh connection list now");
        refreshDue_ = true;
        if (!selected_.empty()) {
            Q_EMIT Selected(QString::fromStdString(selected_));
        }
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
        for (auto const& [name, tab] : tabs_) {
            tab->disconnect(this);
            disconnect(this, nullptr, tab, nullptr);
        }
        tabs_.clear();
        selected_.clear();
        list_.clear();
        for (auto const& [name, profile] : profiles) {
            addCard(profile);
        }
        list_.sortItems(Qt::AscendingOrder);
        SetCurrntProfileTabbyProfileName(QString::fromStdString(config_.GetDefaultProfileName()));
        if (list_.currentItem() == nullptr && list_.count() > 0) {
            list_.setCurrentRow(0);
        }
    }
    Q_EMIT NotifyConnectStatus(QString::fromStdString(running_), status_);
    on_connection_listwidget__itemSelectionChanged();
}

void ConnectionList::RefreshCard(QString const& name) {
    if (ProfileTab* const tab = GetProfileTab(name.toStdString())) {
        tab->RefreshProfile();
    }
}

void ConnectionList::addCard(std::shared_ptr<Profile> const& profile) {
    auto* const tab = new ProfileTab(profile, &list_);
    tab->SetMenu(menu_);
    list_.AddCard(tab);
    tab->SetAdapterUsable(adapterUsable_);
    // Queued: what a click starts may delete the card.
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
    connect(tab, &ProfileTab::Pending, this, [this](QString const& name, bool pending) {
        SetPending(pending ? name.toStdString() : std::string());
        if (pending) {
            SetCurrntProfileTabbyProfileName(name);
        } else {
            Q_EMIT PendingEnded(name);
        }
    });
    connect(this, &ConnectionList::NotifyConnectStatus, tab,
            &ProfileTab::NotifyConnectStatusTriggered);
    tabs_[profile->name] = tab;
}

void ConnectionList::logCards() const {
    Log().info("client count: {}", list_.count());
    for (int row = 0; row < list_.count(); ++row) {
        if (ProfileTab const* const tab = list_.CardAt(row)) {
            Log().info("profile name: {}, status: {}", tab->GetProfile()->name,
                       static_cast<int>(tab->Status()));
        }
    }
}

void ConnectionList::RefreshIfDue() {
    if (refreshDue_) {
        RefreshConnList();
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

void ConnectionList::SetRunning(std::string const& name, ConnectStatus status) {
    bool const refusal =
        status == ConnectStatus::Disconnected && !running_.empty() && running_ != name;
    SetPending({});
    Q_EMIT NotifyConnectStatus(QString::fromStdString(name), status);
    if (refusal) {
        Q_EMIT NotifyConnectStatus(QString::fromStdString(running_), status_);
        return;
    }
    running_ = status == ConnectStatus::Disconnected ? std::string() : name;
    status_ = status;
}

void ConnectionList::SetPending(std::string const& name) {
    for (auto const& [other, tab] : tabs_) {
        tab->SetOtherPending(!name.empty() && other != name);
        if (other == name) {
            tab->AwaitStatus();
        }
    }
}

void ConnectionList::SetAdapterUsable(bool usable) {
    adapterUsable_ = usable;
    for (auto const& [name, tab] : tabs_) {
        tab->SetAdapterUsable(usable);
    }
}

void ConnectionList::on_connection_listwidget__itemSelectionChanged() {
    QListWidgetItem const* const item = list_.currentItem();
    ProfileTab* const tab = item != nullptr ? list_.CardAt(list_.row(item)) : nullptr;
    if (tab != nullptr) {
        SetConnectionInfoSelected(tab, true);
    }
}

void ConnectionList::SetConnectionInfoSelected(ProfileTab* tab, bool selected) {
    Log().info("currnt profile name: {}", tab->GetProfile()->name);
    for (auto const& [name, other] : tabs_) {
        other->SetSelected(other == tab && selected);
    }
    selected_ = tab->GetProfile()->name;
    config_.SetDefaultProfile(selected_);
    Q_EMIT Selected(QString::fromStdString(selected_));
}

}  // namespace zorvanelink::ui
