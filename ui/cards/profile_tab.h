// The card of one profile: start, stop, edit, delete, and the state of its connection. GUI thread.
#pragma once

#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>
#include <QWidget>
#include <chrono>
#include <memory>

#include "ui/cards/card_view.h"
#include "ui/config/connect_status.h"
#include "ui/config/profile.h"

namespace zorvanelink::ui {

inline constexpr int kCardWidth = 309;  // pixels, with the room of the soft ring
inline constexpr int kCardHeight = 138;

// The entries of a card's menu that somebody answers; the others are not shown.
struct CardMenu {
    bool modify = false;
    bool remove = false;
    bool forgotPassword = false;  // and the profile has a page for it
};

class ProfileTab : public QWidget {
    Q_OBJECT

  public:
    explicit ProfileTab(std::shared_ptr<Profile> profile, QWidget* parent = nullptr);

    void SetMenu(CardMenu menu);

    std::shared_ptr<Profile> GetProfile() const { return profile; }
    ConnectStatus Status() const { return status_; }
    bool IsSelected() const { return selected_; }

    void SetSelected(bool selected);
    void SetUserName(std::string const& name);
    // Reads name, server, port, user and login mode from the profile again.
    void RefreshProfile();

    void ConnectButtonEnable(bool enable);
    void ConnButtonDisableTimerStop();
    // How long a click greys the button when no status comes; 60 seconds unless set.
    void SetConnButtonDisableTime(std::chrono::milliseconds time);
    // A request of this card is on its way: its button is grey until a status comes.
    void AwaitStatus();
    // Another card has been pressed and no status has come yet.
    void SetOtherPending(bool pending);
    // Without a usable adapter no connection can be started; one that runs can be stopped.
    void SetAdapterUsable(bool usable);

  Q_SIGNALS:
    void StartConnect(QString name, bool queryAuthType);
    void StopConnect(QString name, bool);
    void DeleteConnectionInfo(QString name);
    void ModifyConnectionInfo(QString name);
    // The page for a forgotten password, for OpenUrlWithHint.
    void ForgotPassword(QString url);
    // The button was pressed (true), or the wait for a status has ended without one (false).
    void Pending(QString name, bool pending);

  public Q_SLOTS:
    void Start(bool retry);
    void Stop();
    void onConnButtonTriggered();
    void onStartConnect(QString const& name, bool queryAuthType);
    void onAutoLogin(QString const& name);
    void NotifyConnectStatusTriggered(QString const& name, ConnectStatus status);
    void MenuPanelBtnClicked();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void build();
    QToolButton* addMenuButton(char const* name, QString const& icon, common::MsgCode text);
    void buildMenu();
    void onConnButtonDisableTimerTimeout();
    void onOwnStatus(ConnectStatus status);
    void onOtherStatus(ConnectStatus status);
    void render();
    void placeTexts();
    void renderState(CardView const& view);
    void renderButton(CardView const& view);
    QLabel* addLabel(char const* name, char const* role);
    void hoverMenu(QPoint position);
    void updateMenu();
    void DrawBorder(QPainter* painter);

    std::shared_ptr<Profile> profile;
    QPushButton* conn_button_ = nullptr;
    QTimer* connButtonDisableTimer = nullptr;
    std::int32_t connButtonDisableMs = 60000;
    QWidget* menu_panel_ = nullptr;
    QToolButton* mod_config_button_ = nullptr;
    QToolButton* del_config_button_ = nullptr;
    QToolButton* forgot_pwd_button_ = nullptr;
    QLabel* name_ = nullptr;
    QLabel* serverName_ = nullptr;
    QLabel* server_ = nullptr;
    QLabel* port_ = nullptr;
    QLabel* userName_ = nullptr;
    QLabel* user_ = nullptr;
    QLabel* loginMode_ = nullptr;
    QLabel* stateLabel_ = nullptr;
    QLabel* stateLamp_ = nullptr;

    ConnectStatus status_ = ConnectStatus::Disconnected;
    CardAction action_ = CardAction::kConnect;
    QString userText_;
    CardMenu menu_;
    bool otherRuns_ = false;
    bool otherPending_ = false;
    bool adapterUsable_ = true;
    bool pending_ = false;
    bool selected_ = false;
    bool hovered_ = false;
};

}  // namespace zorvanelink::ui
