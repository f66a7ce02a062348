#include "ui/editor/profile_editing.h"

#include <QScopedValueRollback>

#include "app/environment/globals.h"
#include "components/logger/logger.h"
#include "ui/editor/create_connect_dialog.h"
#include "ui/text/texts.h"
#include "ui/widgets/zvl_message_box.h"

namespace zorvanelink::ui {

using common::MsgCode;
using components::logger::Log;

ProfileEditing::ProfileEditing(Services services, QObject* parent)
    : QObject(parent), services_(services) {
}

void ProfileEditing::onButtonAddConnectionClicked() {
    if (!open_) {
        QScopedValueRollback<bool> const guard(open_, true);
        add();
    }
}

void ProfileEditing::onModifyConnectionInfo(QString const& name) {
    if (!open_) {
        QScopedValueRollback<bool> const guard(open_, true);
        modify(name);
    }
}

void ProfileEditing::onDeleteConnectionInfo(QString const& name) {
    if (!open_) {
        QScopedValueRollback<bool> const guard(open_, true);
        remove(name.toStdString());
    }
}

void ProfileEditing::add() {
    if (reachedLimit()) {
        return;
    }
    Log().info("AddConnection...");
    CreateConnectDialog dialog(nullptr, {services_.config, services_.prompts, services_.certs},
                               services_.dialog_parent);
    if (dialog.exec() != QDialog::Accepted || g_quit) {
        return;
    }
    QString const name = dialog.StoredName();
    services_.config.Save();
    Q_EMIT ListChanged();
    Q_EMIT ProfileStored(name);
    if (!dialog.ConnectWanted()) {
        return;
    }
    if (!services_.state.Idle()) {
        Log().info("Runing client num is {}", g_running_client);
        critical(GetTrMsg(MsgCode::UI_TR_STOP_CONNECTION_FIRST));
    } else if (services_.state.adapterUsable) {
        Q_EMIT ConnectWanted(name);
    }
}

void ProfileEditing::modify(QString const& name) {
    std::string const key = name.toStdString();
    Log().info("Modify connect: {}", key);
    if (!exists(key, "modify")) {
        return;
    }
    if (runs(key)) {
        critical(GetTrMsg(MsgCode::UI_TR_STOP_CONNECTION_FIRST));
        return;
    }
    CreateConnectDialog dialog(services_.config.GetProfile(key),
                               {services_.config, services_.prompts, services_.certs},
                               services_.dialog_parent);
    if (dialog.exec() != QDialog::Accepted || g_quit) {
        return;
    }
    services_.config.Save();
    Q_EMIT ListChanged();
    Q_EMIT ProfileStored(name);
}

void ProfileEditing::remove(std::string const& name) {
    Log().info("Delete connect: {}", name);
    if (!exists(name, "delete")) {
        return;
    }
    if (!runs(name) && !sure(name)) {
        return;
    }
    if (runs(name)) {  // it may have been started behind the question
        critical(GetTrMsg(MsgCode::UI_ERROR_PROFILE_IS_RUNNING));
        return;
    }
    Log().info("Delete profile: [{}]", name);
    services_.config.DeleteProfile(name);
    services_.config.Save();
    Q_EMIT ListChanged();
}

// The lock follows from the count, so a deletion lifts it.
bool ProfileEditing::reachedLimit() {
    std::size_t const count = services_.config.GetProfile().size();
    if (count < Config::kMaxConfigNum) {
        return false;
    }
    Log().warning("Config num over limit, will lock operation");
    critical(GetTrMsg(count > Config::kMaxConfigNum ? MsgCode::UI_ERROR_CONFIG_OVERLIMIT
                                                    : MsgCode::UI_ERROR_CONFIG_REACH_LIMIT)
                 .arg(Config::kMaxConfigNum));
    return true;
}

bool ProfileEditing::exists(std::string const& name, char const* action) {
    // An empty name would stand for the selected profile.
    if (!name.empty() && services_.config.GetProfile(name)) {
        return true;
    }
    Log().error("Can not find profile tab by name [{}] when try to {}", name, action);
    critical(GetTrMsg(MsgCode::UI_ERROR_PROFILE_NOT_EXIST));
    return false;
}

bool ProfileEditing::runs(std::string const& name) const {
    return !services_.state.Idle() && services_.state.currentProfileName == name;
}

bool ProfileEditing::sure(std::string const& name) {
    std::string const server = services_.config.GetProfile(name)->server;
    QString const question = GetTrMsg(MsgCode::UI_INFO_SURE_TO_DELETE_CONNECTION) +
                             QLatin1String(kMessageSeparator) +
                             QString::fromStdString(name + '\n' + server);
    return services_.prompts.Question(services_.dialog_parent, GetTrMsg(MsgCode::UI_WARNING),
                                      question, GetTrMsg(MsgCode::UI_INFO_YES),
                                      GetTrMsg(MsgCode::UI_INFO_NO), Prompts::Default::kNo);
}

void ProfileEditing::critical(QString const& text) {
    services_.prompts.Error(services_.dialog_parent, text);
}

}  // namespace zorvanelink::ui
