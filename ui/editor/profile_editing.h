// Adding, modifying and deleting connections: the checks around the editor and what follows from
// its answer. GUI thread; dialogs and questions are modal, so the state is looked at again after
// each of them.
#pragma once

#include <QObject>
#include <QString>
#include <string>

#include "ui/cert/client_certs.h"
#include "ui/config/config.h"
#include "ui/session/connection_state.h"
#include "ui/widgets/prompts.h"

namespace zorvanelink::ui {

class ProfileEditing : public QObject {
    Q_OBJECT

  public:
    // What it needs of the program, as narrow things.
    struct Services {
        ConnectionState const& state;
        Config& config;
        CertListRoad& certs;
        Prompts& prompts;
        QWidget* dialog_parent;  // what dialogs and boxes stand over
    };

    explicit ProfileEditing(Services services, QObject* parent = nullptr);

  public Q_SLOTS:
    void onButtonAddConnectionClicked();
    void onModifyConnectionInfo(QString const& name);
    void onDeleteConnectionInfo(QString const& name);

  Q_SIGNALS:
    void ListChanged();                // the settings are saved; cards are to be made anew
    void ProfileStored(QString name);  // comes after ListChanged: its card is the one to show
    void ConnectWanted(QString name);  // "Next Step", with nothing running

  private:
    void add();
    void modify(QString const& name);
    void remove(std::string const& name);
    bool reachedLimit();
    bool exists(std::string const& name, char const* action);
    bool runs(std::string const& name) const;
    bool sure(std::string const& name);
    void critical(QString const& text);

    Services const services_;
    bool open_ = false;  // one of the three stands: what a second click asks for is dropped
};

}  // namespace zorvanelink::ui
