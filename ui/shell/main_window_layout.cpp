#include "ui/shell/main_window_layout.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "ui/text/texts.h"
#include "ui/widgets/style.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;

// Pixels, before scaling.
constexpr int kLeftPanelWidth = 336;
constexpr int kMargin = 16;
constexpr int kListSpacing = 13;
constexpr int kRing = 3;  // of a card, drawn inside its own rectangle

QVBoxLayout* column(QWidget* widget, int spacing = 0) {
    auto* const layout = new QVBoxLayout(widget);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
    return layout;
}

}  // namespace

MainWindowLayout::MainWindowLayout(QWidget* window) {
    auto* const frame = new QFrame(window);
    frame->setObjectName(QStringLiteral("window_frame_"));
    column(window)->addWidget(frame);

    titleBar = new TitleBar(TitleBar::Kind::kWindow, frame);
    titleBar->SetTitle(GetTrMsg(MsgCode::UI_INFO_ZORVANE_LINK));
    statusBar = new StatusBarWidget(frame);
    tunnel = new TunnelView(frame);
    tunnel->setObjectName(QStringLiteral("right_panel_"));
    tunnel->setAttribute(Qt::WA_StyledBackground);

    auto* const body = new QHBoxLayout;
    body->setSpacing(0);
    body->addWidget(buildLeftPanel(frame));
    body->addWidget(tunnel, 1);

    QVBoxLayout* const rows = column(frame);
    rows->addWidget(titleBar);
    rows->addLayout(body, 1);
    rows->addWidget(statusBar);

    waitForm = new WaitForm(frame, TitleBar::kHeight);
    cover = new DimCover(window,
                         QStringLiteral("background-color:rgba(0,0,0,50%);border-radius: 8px;"));
}

QWidget* MainWindowLayout::buildLeftPanel(QWidget* parent) {
    auto* const panel = new QFrame(parent);
    panel->setObjectName(QStringLiteral("left_panel_"));
    panel->setFixedWidth(kLeftPanelWidth);
    leftPages = new QStackedWidget(panel);
    column(panel)->addWidget(leftPages);
    leftPages->addWidget(buildListPage(leftPages));
    return panel;
}

QWidget* MainWindowLayout::buildListPage(QWidget* parent) {
    auto* const page = new QWidget(parent);
    auto* const heading = new QLabel(GetTrMsg(MsgCode::UI_INFO_CONNECTION), page);
    heading->setObjectName(QStringLiteral("list_heading_"));
    addButton = new QPushButton(GetTrMsg(MsgCode::UI_TR_ADD_CONNECTION), page);
    addButton->setObjectName(QStringLiteral("add_button_"));
    addButton->setProperty("outline", true);
    addButton->setAutoDefault(false);
    addButton->setAccessibleName(GetTrMsg(MsgCode::UI_INFO_ADD_CONNECTION));
    connection_listwidget_ = new StartListWidget(page);
    connection_listwidget_->setObjectName(QStringLiteral("connection_listwidget_"));
    connection_listwidget_->setAccessibleName(heading->text());

    auto* const header = new QHBoxLayout;
    header->setContentsMargins(kMargin, kMargin, kMargin, 0);
    header->addWidget(heading);
    header->addStretch();
    header->addWidget(addButton);
    QVBoxLayout* const rows = column(page, kListSpacing);
    rows->addLayout(header);
    auto* const indented = new QHBoxLayout;
    indented->setContentsMargins(kMargin - kRing, 0, 0, 0);
    indented->addWidget(connection_listwidget_);
    rows->addLayout(indented, 1);
    return page;
}

QWidget* MainWindowLayout::Begin() const {
    auto* const button =
        leftPages->currentWidget()->findChild<QPushButton*>(QStringLiteral("guide_button_"));
    return button != nullptr ? static_cast<QWidget*>(button) : connection_listwidget_;
}

// The page is made when it is first needed: most starts never show it.
UserGuide* MainWindowLayout::ShowGuide(bool show) {
    constexpr int kListPage = 0;
    constexpr int kGuidePage = 1;
    UserGuide* made = nullptr;
    if (show && leftPages->count() == kGuidePage) {
        made = new UserGuide(leftPages);
        leftPages->addWidget(made);
    }
    leftPages->setCurrentIndex(show ? kGuidePage : kListPage);
    return made;
}

}  // namespace zorvanelink::ui
