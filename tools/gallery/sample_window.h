// A main window of sample data: the program's own widgets without anything behind them.
#pragma once

#include <QStackedWidget>
#include <QWidget>
#include <vector>

#include "ui/cards/start_list_widget.h"
#include "ui/cards/user_guide.h"
#include "ui/tunnel/tunnel_view.h"
#include "ui/widgets/dim_cover.h"
#include "ui/widgets/status_bar_widget.h"
#include "ui/widgets/title_bar.h"

namespace zorvanelink::gallery {

class SampleWindow : public QWidget {
    Q_OBJECT

  public:
    SampleWindow();

    void AddCard(char const* name, char const* server, char const* user, bool gm = false,
                 bool forgotPage = false);
    void ShowGuide();
    // Every card and view as with that state of the first connection.
    void SetStatus(ui::ConnectStatus status);
    void FillTunnel();

    ui::TunnelView& Tunnel() { return *tunnel_; }
    ui::StatusBarWidget& StatusBar() { return *status_; }
    std::vector<ui::ProfileTab*> const& Cards() const { return cards_; }

  protected:
    bool event(QEvent* event) override;

  private:
    QWidget* buildLeft();

    QStackedWidget* left_ = nullptr;
    ui::StartListWidget* list_ = nullptr;
    ui::TunnelView* tunnel_ = nullptr;
    ui::StatusBarWidget* status_ = nullptr;
    ui::DimCover* cover_ = nullptr;
    std::vector<ui::ProfileTab*> cards_;
};

}  // namespace zorvanelink::gallery
