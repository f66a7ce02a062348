// The card of one profile: start, stop, edit, delete, and the state of its connection. GUI thread.
#pragma once

#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QToolButton>
#include <QWidget>
#include <memory>

#include "ui/cards/card_view.h"
#include "ui/config/profile.h"
#include "ui/session/session_pages.h"

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
    bool IsSelected() const { return selected_; }

    void SetSelected(bool selected);
    // The state of its connection, and what of the profile is shown. A card on which nothing has
    // changed is left alone.
    void Render(CardView const& view);
    // What the session offers for a new password, as buttons beside the one to disconnect.
    void SetPages(std::vector<SessionPage> const& pages);
    // Presses the button; a grey one does nothing.
    void Press();

  Q_SIGNALS:
    void StartConnect(QString name);
    void StopConnect(QString name);
    void DeleteConnectionInfo(QString name);
    void ModifyConnectionInfo(QString name);
    // The page for a forgotten password, for OpenUrlWithHint.
    void ForgotPassword(QString url);
    void PageWanted(zorvanelink::ui::SessionPage const& page);

  public Q_SLOTS:
    void onConnButtonTriggered();
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
    QToolButton* addPageButton(SessionPage const& page);
    void ConnectButtonEnable(bool enable);
    void placeTexts();
    void renderProfile();
    void renderState();
    void renderButton();
    QLabel* addLabel(char const* name, char const* role);
    void hoverMenu(QPoint position);
    void updateMenu();
    void DrawBorder(QPainter* painter);

    std::shared_ptr<Profile> profile;
    QPushButton* conn_button_ = nullptr;
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
    std::vector<SessionPage> pages_;
    std::vector<QToolButton*> pageButtons_;

    // What of the profile stands on the card.
    struct Shown {
        std::string name;
        std::string server;
        std::uint16_t port = 0;
        std::string userName;
        std::uint16_t loginMode = 0;
        bool forgotPassword = false;
        bool operator==(Shown const&) const = default;
    };
    Shown shown_;
    CardView view_;
    CardMenu menu_;
    bool selected_ = false;
    bool hovered_ = false;
};

}  // namespace zorvanelink::ui
