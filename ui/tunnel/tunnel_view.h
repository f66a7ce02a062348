// The right-hand side of the main window: what the connection is and what its tunnel looks like.
// Takes plain values; who asks the service for them stands elsewhere. GUI thread.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QWidget>

#include "ui/tunnel/browser_login.h"
#include "ui/tunnel/interface_view.h"
#include "ui/tunnel/route_view.h"
#include "ui/tunnel/state_header.h"
#include "ui/tunnel/statistics_view.h"
#include "ui/tunnel/tab_widget_plus.h"
#include "ui/tunnel/warning_strip.h"

namespace zorvanelink::ui {

class TunnelView : public QWidget {
    Q_OBJECT

  public:
    explicit TunnelView(QWidget* parent = nullptr);

    // `stateText` is the state's label. Without a profile the large shield stands alone, otherwise
    // the header row, above the tabs when there is a tunnel.
    void SetState(Look look, QString const& stateText, QString const& profileName, bool hasTunnel);
    // What stands below the large shield; empty for nothing.
    struct Hero {
        QString hint;
        QString action;  // a button
        bool operator==(Hero const&) const = default;
    };
    void SetHero(Hero const& hero);
    // Buttons for the pages that the session offers, by their titles.
    void SetPages(QStringList const& titles);
    // A login in the browser, with the time left; empty for none.
    void SetBrowserLogin(QString const& timeLeft) { browserLogin_->SetTimeLeft(timeLeft); }
    void SetDuration(QString const& text);
    void SetProgress(QString const& text);
    void SetWarning(QString const& text);  // empty hides the strip
    void SetStatistics(Statistics const& values);
    void SetInterface(InterfaceRows const& rows);
    void SetRoutes(RouteTable ipv4, RouteTable ipv6);
    void AddRoutes(std::vector<RouteRow> const& ipv4, std::vector<RouteRow> const& ipv6);

    void ClearStaticsInfo();
    void ClearInterfaceInfo();
    void ClearRouteInfo();

    enum Tab { kStatistics, kInterface, kRoute };
    void ShowTab(Tab tab);
    Tab CurrentTab() const;

    RouteView& Routes() { return *routes_; }

  Q_SIGNALS:
    void PageWanted(int index);
    void LoginPageWanted();
    void HeroActed();

  private:
    QWidget* buildHero();
    QWidget* buildDetails();

    QStackedWidget* pages_;
    QLabel* heroShield_ = nullptr;
    QLabel* heroTitle_ = nullptr;
    QLabel* heroHint_ = nullptr;
    QPushButton* heroButton_ = nullptr;
    Hero hero_;
    StateHeader* header_ = nullptr;
    QWidget* pageRow_ = nullptr;
    QStringList pageTitles_;
    BrowserLogin* browserLogin_ = nullptr;
    WarningStrip* warning_ = nullptr;
    TabWidgetPlus* tabs_ = nullptr;
    StatisticsView* statistics_ = nullptr;
    InterfaceView* interface_ = nullptr;
    RouteView* routes_ = nullptr;
};

}  // namespace zorvanelink::ui
