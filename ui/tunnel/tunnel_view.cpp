#include "ui/tunnel/tunnel_view.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "ui/text/texts.h"
#include "ui/widgets/elide.h"
#include "ui/widgets/push_button_ext.h"
#include "ui/widgets/style.h"

namespace zorvanelink::ui {

using common::MsgCode;

namespace {

// Pixels. The buttons of the pages share the smallest window's width.
constexpr int kPageRow = 496;
constexpr int kPageGap = 8;
constexpr int kPageSides = 30;   // of a button, beside its title
constexpr int kPageWidth = 220;  // of a title at most

}  // namespace

TunnelView::TunnelView(QWidget* parent) : QWidget(parent), pages_(new QStackedWidget(this)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(pages_);
    pages_->addWidget(buildHero());
    pages_->addWidget(buildDetails());
    SetState(Look::kDisconnected, GetTrMsg(MsgCode::UI_INFO_DISCONNECT), {}, false);
}

QWidget* TunnelView::buildHero() {
    auto* page = new QWidget(pages_);
    heroShield_ = new QLabel(page);
    heroShield_->setObjectName(QStringLiteral("hero_shield_"));
    heroTitle_ = new QLabel(page);
    heroTitle_->setObjectName(QStringLiteral("hero_title_"));
    heroHint_ = new QLabel(page);
    heroHint_->setObjectName(QStringLiteral("hero_hint_"));
    heroHint_->setAlignment(Qt::AlignCenter);
    heroHint_->setWordWrap(true);
    heroHint_->setTextFormat(Qt::PlainText);
    heroHint_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    heroButton_ = new QPushButtonExt({}, page);
    heroButton_->setObjectName(QStringLiteral("hero_button_"));
    heroButton_->setProperty("outline", true);
    heroButton_->hide();
    // Queued: what it does may run a dialog.
    connect(heroButton_, &QPushButton::clicked, this, &TunnelView::HeroActed, Qt::QueuedConnection);
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(24, 0, 24, 0);
    column->setSpacing(12);
    column->addStretch();
    column->addWidget(heroShield_, 0, Qt::AlignHCenter);
    column->addWidget(heroTitle_, 0, Qt::AlignHCenter);
    column->addWidget(heroHint_);
    column->addWidget(heroButton_, 0, Qt::AlignHCenter);
    column->addStretch();
    return page;
}

QWidget* TunnelView::buildDetails() {
    auto* page = new QWidget(pages_);
    header_ = new StateHeader(page);
    pageRow_ = new QWidget(page);
    auto* const row = new QHBoxLayout(pageRow_);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(kPageGap);
    row->addStretch();
    pageRow_->hide();
    browserLogin_ = new BrowserLogin(page);
    connect(browserLogin_, &BrowserLogin::PageWanted, this, &TunnelView::LoginPageWanted);
    warning_ = new WarningStrip(page);
    tabs_ = new TabWidgetPlus(page);
    statistics_ = new StatisticsView(tabs_);
    interface_ = new InterfaceView(tabs_);
    routes_ = new RouteView(tabs_);
    tabs_->addTab(statistics_, GetTrMsg(MsgCode::UI_TR_STATISTICS), "tab_statistics_");
    tabs_->addTab(interface_, GetTrMsg(MsgCode::UI_TR_INTERFACE), "tab_interface_");
    tabs_->addTab(routes_, GetTrMsg(MsgCode::UI_TR_ROUTE), "tab_route_");
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(24, 20, 24, 16);
    column->setSpacing(16);
    column->addWidget(header_);
    column->addWidget(browserLogin_);
    column->addWidget(pageRow_);
    column->addWidget(warning_);
    // The tabs take the room; while they are hidden it stays empty and the header where it is.
    column->addWidget(tabs_, 1000);
    column->addStretch(1);
    return page;
}

void TunnelView::SetState(Look look, QString const& stateText, QString const& profileName,
                          bool hasTunnel) {
    heroShield_->setPixmap(LoadImage(ShieldImage(look, true)));
    heroShield_->setAccessibleName(stateText);
    heroTitle_->setText(stateText);
    header_->SetState(look, stateText, profileName);
    // Before the first ONLINE of a session there is nothing to show below the header.
    tabs_->setVisible(hasTunnel);
    pages_->setCurrentIndex(profileName.isEmpty() ? 0 : 1);
}

void TunnelView::SetHero(Hero const& hero) {
    if (hero == hero_) {
        return;
    }
    hero_ = hero;
    heroHint_->setText(hero.hint);
    heroHint_->setVisible(!hero.hint.isEmpty());
    heroButton_->setText(hero.action);
    heroButton_->setVisible(!hero.action.isEmpty());
}

void TunnelView::SetPages(QStringList const& titles) {
    if (titles == pageTitles_) {
        return;
    }
    pageTitles_ = titles;
    qDeleteAll(pageRow_->findChildren<QPushButton*>());
    auto* const row = static_cast<QHBoxLayout*>(pageRow_->layout());
    int const share = (kPageRow + kPageGap) / qMax(1, titles.size()) - kPageGap - kPageSides;
    for (int i = 0; i < titles.size(); ++i) {
        QString const cut =
            fontMetrics().elidedText(titles[i], Qt::ElideRight, qMin(share, kPageWidth));
        auto* const button =
            new QPushButtonExt(QString(cut).replace(QLatin1Char('&'), QStringLiteral("&&")));
        button->setObjectName(QStringLiteral("page_button_"));
        button->setProperty("outline", true);
        button->setAccessibleName(titles[i]);
        button->setToolTip(cut == titles[i] ? QString() : PlainToolTip(titles[i]));
        // Queued: what opens may change the pages.
        connect(
            button, &QPushButton::clicked, this, [this, i] { Q_EMIT PageWanted(i); },
            Qt::QueuedConnection);
        row->insertWidget(i, button);
    }
    pageRow_->setVisible(!titles.isEmpty());
}

void TunnelView::SetDuration(QString const& text) {
    header_->SetDuration(text);
}

void TunnelView::SetProgress(QString const& text) {
    header_->SetProgress(text);
}

void TunnelView::SetWarning(QString const& text) {
    warning_->SetText(text);
}

void TunnelView::SetStatistics(Statistics const& values) {
    statistics_->Set(values);
}

void TunnelView::SetInterface(InterfaceRows const& rows) {
    interface_->Set(rows);
}

void TunnelView::SetRoutes(RouteTable ipv4, RouteTable ipv6) {
    routes_->Set(std::move(ipv4), std::move(ipv6));
}

void TunnelView::AddRoutes(std::vector<RouteRow> const& ipv4, std::vector<RouteRow> const& ipv6) {
    routes_->Append(ipv4, ipv6);
}

void TunnelView::ClearStaticsInfo() {
    statistics_->Clear();
    header_->SetDuration({});
}

void TunnelView::ClearInterfaceInfo() {
    interface_->Clear();
}

void TunnelView::ClearRouteInfo() {
    routes_->Clear();
}

void TunnelView::ShowTab(Tab tab) {
    tabs_->setCurrentIndex(tab);
}

TunnelView::Tab TunnelView::CurrentTab() const {
    return static_cast<Tab>(tabs_->currentIndex());
}

}  // namespace zorvanelink::ui
