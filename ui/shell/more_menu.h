// The "more" menu of the title bar and what its entries do. GUI thread.
#pragma once

#include <QAction>
#include <QActionGroup>
#include <QMenu>
#include <QToolButton>
#include <functional>

#include "ui/config/config.h"
#include "ui/widgets/prompts.h"

namespace zorvanelink::ui {

class MoreMenu : public QObject {
    Q_OBJECT

  public:
    struct Services {
        QToolButton& button;  // opens the menu; F10 and Alt+M do as well
        Config& config;
        Prompts& prompts;
        std::function<bool(QString const& message)> send;  // to the service; false without a link
    };

    explicit MoreMenu(Services services);

    QMenu& Menu() { return menu_; }

  public Q_SLOTS:
    void onButtonMoreClicked();
    void onActionSettingsTriggered();
    void onActionAboutTriggered();
    void onActionHelpTriggered();
    // An inquiry has begun: the next one can be asked for in five seconds.
    void onUpdateCheckTimer();
    void onUpdateCheckItemTimerOut();

  Q_SIGNALS:
    void Quit();

  private:
    void InitMoreMenu();
    void addLogLevels();
    void markLogLevel();
    void onLogLevelChosen(QAction const* action);
    void onUpdateCheckItem();
    void SendLogLevelToService(std::string const& level);
    QAction* addAction(char const* name, QString const& text, void (MoreMenu::*slot)());

    QToolButton& button_;
    Config& config_;
    Prompts& prompts_;
    std::function<bool(QString const&)> const send_;
    QMenu menu_;
    QMenu levelMenu_;
    QActionGroup levels_;
    QAction* updateCheck_ = nullptr;
};

}  // namespace zorvanelink::ui
