// The main window's widgets and where they stand; no behaviour. GUI thread.
#pragma once

#include <QStackedWidget>

#include "ui/cards/connection_page.h"
#include "ui/cards/user_guide.h"
#include "ui/tunnel/tunnel_view.h"
#include "ui/widgets/dim_cover.h"
#include "ui/widgets/status_bar_widget.h"
#include "ui/widgets/title_bar.h"
#include "ui/widgets/wait_form.h"

namespace zorvanelink::ui {

// Owned by the window, as its children.
struct MainWindowLayout {
    explicit MainWindowLayout(QWidget* window);

    // The cards beside their session, or the first-use page in the place of both: the page when it
    // was made by this call, else null. The focus goes to what is new.
    UserGuide* ShowGuide(bool show);
    // Where the keyboard begins: the list, or the button of the first-use page.
    QWidget* Begin() const;

    TitleBar* titleBar;
    QStackedWidget* pages;
    QPushButton* addButton;
    StartListWidget* connection_listwidget_;
    TunnelView* tunnel;
    StatusBarWidget* statusBar;
    WaitForm* waitForm;
    DimCover* cover;

  private:
    QWidget* buildBody();
};

}  // namespace zorvanelink::ui
