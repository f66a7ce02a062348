#include "ui/shell/main_window_layout.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "ui/text/texts.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;

constexpr int kLeftPanelWidth = 336;  // pixels, before scaling
constexpr int kGuidePage = 1;         // of the pages; the cards come first

template <class Layout>
Layout* dense(QWidget* widget) {
    auto* const layout = new Layout(widget);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    return layout;
}

}  // namespace

MainWindowLayout::MainWindowLayout(QWidget* window) {
    auto* const frame = new QFrame(window);
    frame->setObjectName(QStringLiteral("window_frame_"));
    dense<QVBoxLayout>(window)->addWidget(frame);

    titleBar = new TitleBar(TitleBar::Kind::kWindow, frame);
    titleBar->SetTitle(GetTrMsg(MsgCode::UI_INFO_ZORVANE_LINK));
    pages = new QStackedWidget(frame);
    pages->addWidget(buildBody());
    statusBar = new StatusBarWidget(frame);

    auto* const rows = dense<QVBoxLayout>(frame);
    rows->addWidget(titleBar);
    rows->addWidget(pages, 1);
    rows->addWidget(statusBar);

    waitForm = new WaitForm(frame, TitleBar::kHeight);
    cover = new DimCover(window,
                         QStringLiteral("background-color:rgba(0,0,0,50%);border-radius: 8px;"));
}

QWidget* MainWindowLayout::buildBody() {
    auto* const body = new QWidget(pages);
    auto* const panel = new QFrame(body);
    panel->setObjectName(QStringLiteral("left_panel_"));
    panel->setFixedWidth(kLeftPanelWidth);
    auto* const page = new ConnectionPage(panel);
    dense<QVBoxLayout>(panel)->addWidget(page);
    addButton = page->AddButton();
    connection_listwidget_ = page->List();
    tunnel = new TunnelView(body);
    tunnel->setObjectName(QStringLiteral("right_panel_"));
    tunnel->setAttribute(Qt::WA_StyledBackground);

    auto* const columns = dense<QHBoxLayout>(body);
    columns->addWidget(panel);
    columns->addWidget(tunnel, 1);
    return body;
}

QWidget* MainWindowLayout::Begin() const {
    auto const* const guide = qobject_cast<UserGuide*>(pages->currentWidget());
    return guide != nullptr ? guide->Button() : connection_listwidget_;
}

// The page is made when it is first needed: most starts never show it.
UserGuide* MainWindowLayout::ShowGuide(bool show) {
    UserGuide* made = nullptr;
    if (show && pages->count() == kGuidePage) {
        made = new UserGuide(pages);
        pages->addWidget(made);
    }
    int const wanted = show ? kGuidePage : 0;
    if (pages->currentIndex() != wanted) {
        pages->setCurrentIndex(wanted);
        Begin()->setFocus();
    }
    return made;
}

}  // namespace zorvanelink::ui
