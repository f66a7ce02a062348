// The card of one profile: start, stop, edit, delete, and the state of its connection. It never
// takes the focus itself: its list does, and tells which card the keyboard is on. GUI thread.
#pragma once

#include <QLabel>
#include <QPainter>
#include <QWidget>
#include <memory>

#include "ui/cards/card_view.h"
#include "ui/config/profile.h"
#include "ui/session/session_pages.h"
#include "ui/widgets/push_button_ext.h"

namespace zorvanelink::ui {

// Pixels, with the room that the focus ring takes around the border.
inline constexpr int kCardRing = 5;
inline constexpr int kCardWidth = 303 + 2 * kCardRing;
inline constexpr int kCardHeight = 136 + 2 * kCardRing;
inline constexpr int kCompactCardHeight = 88 + 2 * kCardRing;

// The entries of a card's menu that somebody answers; the others are not shown.
struct CardMenu {
    bool modify = false;
    bool remove = false;
    bool forgotPassword = false;  // and the profile has a page for it
};

class ProfileTab : public QWidget {
    Q_OBJECT
    // Set by the stylesheet: "qproperty-border: ...".
    Q_PROPERTY(QColor border MEMBER border_)
    Q_PROPERTY(QColor accent MEMBER accent_)
    Q_PROPERTY(QColor ring MEMBER ring_)

  public:
    explicit ProfileTab(std::shared_ptr<Profile> profile, QWidget* parent = nullptr);

    void SetMenu(CardMenu menu);
    // Low, for long lists: without port and login mode.
    void SetCompact(bool compact);

    std::shared_ptr<Profile> GetProfile() const { return profile; }
    bool IsSelected() const { return selected_; }
    bool IsFocused() const { return focused_; }
    // Whether the user finds it by this text.
    bool Matches(QString const& text) const;

    // The buttons of the selected card follow `before` in the tab order; those of others are none
    // of its stops.
    void SetSelected(bool selected, QWidget* before = nullptr);
    // The keyboard is on the card.
    void SetFocused(bool focused);
    // The state of its connection, and what of the profile is shown. A card on which nothing has
    // changed is left alone.
    void Render(CardView const& view);
    // What the session offers for a new password, as buttons beside the one to disconnect.
    void SetPages(std::vector<SessionPage> const& pages);

    // What a click would do: a grey button does nothing.
    void Press();
    void PressModify();
    void PressDelete();

  Q_SIGNALS:
    // One of its buttons was used; comes before what the button does.
    void Chosen();
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

  private:
    void build();
    QPushButtonExt* addIconButton(QWidget* parent, char const* name, char const* icon,
                                  QString const& text);
    QPushButtonExt* addMenuButton(char const* name, char const* icon, common::MsgCode text);
    void buildMenu();
    QPushButtonExt* addPageButton(SessionPage const& page);
    void orderTabs();
    void nameButtons();
    void ConnectButtonEnable(bool enable);
    void placeTexts();
    void placeRows();
    void placeButtons();
    void renderProfile();
    void renderState();
    void renderButton();
    QLabel* addLabel(char const* name, char const* role);
    void hoverMenu(QPoint position);
    void updateMenu();
    void DrawBorder(QPainter* painter);

    std::shared_ptr<Profile> profile;
    QPushButtonExt* conn_button_ = nullptr;
    QWidget* menu_panel_ = nullptr;
    QPushButtonExt* mod_config_button_ = nullptr;
    QPushButtonExt* del_config_button_ = nullptr;
    QPushButtonExt* forgot_pwd_button_ = nullptr;
    QLabel* name_ = nullptr;
    QLabel* serverName_ = nullptr;
    QLabel* server_ = nullptr;
    QLabel* portName_ = nullptr;
    QLabel* port_ = nullptr;
    QLabel* userName_ = nullptr;
    QLabel* user_ = nullptr;
    QLabel* loginMode_ = nullptr;
    QLabel* stateLabel_ = nullptr;
    QLabel* stateLamp_ = nullptr;
    std::vector<SessionPage> pages_;
    std::vector<QPushButtonExt*> pageButtons_;
    QWidget* before_ = nullptr;  // in the tab order

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
    QColor border_;
    QColor accent_;
    QColor ring_;
    bool compact_ = false;
    bool selected_ = false;
    bool focused_ = false;
    bool hovered_ = false;
};

}  // namespace zorvanelink::ui
