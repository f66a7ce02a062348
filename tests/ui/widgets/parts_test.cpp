#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QtTest/QTest>

#include "tests/support/qt_helpers.h"
#include "ui/widgets/resize_edges.h"
#include "ui/widgets/spinner.h"
#include "ui/widgets/status_bar_widget.h"
#include "ui/widgets/title_bar.h"
#include "ui/widgets/wait_form.h"

using namespace zorvanelink;
using test::Find;

TEST(Spinner, TurnsOnlyWhileItIsSeen) {
    QWidget window;
    ui::Spinner spinner(16, 2, &window);
    EXPECT_FALSE(spinner.IsRunning());
    window.show();
    EXPECT_TRUE(spinner.IsRunning());
    window.hide();
    EXPECT_FALSE(spinner.IsRunning());
}

TEST(StatusBar, ShowsAnIconOrTheSpinner) {
    ui::StatusBarWidget bar;
    bar.show();
    auto& image = Find<QLabel>(bar, "status_icon_");
    auto& spinner = *bar.findChild<ui::Spinner*>();
    struct Row {
        char const* text;
        char const* icon;
        bool imageShown;
        bool spinnerShown;
    };
    for (auto const& row :
         {Row{"Ready", ":/assets/images/normal.png", true, false},
          Row{"Busy", ":/assets/images/loading_small.gif", false, true},
          Row{"Online", ":/assets/images/connectted.png", true, false}, Row{"", "", false, false},
          Row{"", ":/assets/images/loading_small.gif", false, false}}) {
        bar.SetStatus(QLatin1String(row.text), QLatin1String(row.icon));
        EXPECT_EQ(image.isVisible(), row.imageShown) << row.text;
        EXPECT_EQ(spinner.isVisible(), row.spinnerShown) << row.text;
        EXPECT_EQ(bar.StatusText(), QLatin1String(row.text));
        if (row.imageShown) {
            EXPECT_FALSE(image.pixmap(Qt::ReturnByValue).isNull());
        }
    }
    auto& place = Find<QLabel>(bar, "status_place_");
    bar.SetCountText(QStringLiteral("Connected to A 丨 2 Connections"));
    EXPECT_EQ(place.text() + QLatin1Char('/') + Find<QLabel>(bar, "status_count_").text(),
              QLatin1String("Connected to A/2 Connections"));
    EXPECT_TRUE(place.isVisible());
    EXPECT_EQ(bar.accessibleName(), QStringLiteral("Connected to A 丨 2 Connections"));
    bar.SetCountText(bar.CountText(), true);
    EXPECT_EQ(bar.accessibleName(), QStringLiteral("2 Connections"));
    bar.SetCountText(QStringLiteral("2 Connections"));
    EXPECT_FALSE(place.isVisible());
    EXPECT_EQ(Find<QLabel>(bar, "status_count_").text(), QLatin1String("2 Connections"));
}

TEST(WaitForm, CoversAllButTheTitleBarAndKeepsClicksOut) {
    QWidget window;
    window.resize(400, 300);
    QPushButton button(&window);
    button.setGeometry(0, 100, 100, 40);
    ui::WaitForm form(&window, 44);
    form.SetDesc(QStringLiteral("Connecting"));
    QSignalSpy clicks(&button, &QPushButton::clicked);
    window.show();
    form.show();
    EXPECT_EQ(form.geometry(), QRect(1, 44, 398, 255)) << "the border stays in sight";
    window.resize(500, 350);
    EXPECT_EQ(form.geometry(), QRect(1, 44, 498, 305));
    QTest::mouseClick(window.childAt(20, 120), Qt::LeftButton);
    QTest::keyClick(&form, Qt::Key_Return);
    EXPECT_EQ(clicks.count(), 0);
    EXPECT_EQ(form.Desc(), QStringLiteral("Connecting"));
}

TEST(ResizeEdges, EnlargeAWindowThatTheWindowSystemDoesNotResize) {
    QWidget window;
    window.setMinimumSize(200, 100);
    window.setContentsMargins(8, 8, 8, 8);  // a shadow's place is no edge
    ui::ResizeEdges const edges(window);
    window.show();
    struct Row {
        QPoint at;
        QPoint way;
        QRect then;
    };
    for (auto const& row :
         {Row{{291, 100}, {40, 7}, {50, 50, 340, 200}}, Row{{8, 100}, {-10, 0}, {40, 50, 310, 200}},
          Row{{150, 8}, {0, 500}, {50, 150, 300, 100}},
          Row{{291, 191}, {5, 6}, {50, 50, 305, 206}}}) {
        window.setGeometry(50, 50, 300, 200);
        QWidget* const edge = window.childAt(row.at);
        ASSERT_NE(edge, nullptr);
        QPoint const inside = row.at - edge->pos();
        QTest::mousePress(edge, Qt::LeftButton, {}, inside);
        QPoint const global = window.mapToGlobal(row.at) + row.way;
        QMouseEvent move(QEvent::MouseMove, inside, global, Qt::LeftButton, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(edge, &move);
        QTest::mouseRelease(edge, Qt::LeftButton, {}, inside);
        EXPECT_EQ(window.geometry(), row.then) << row.at.x() << " " << row.at.y();
    }
    EXPECT_EQ(window.childAt(100, 100), nullptr);
    window.showMaximized();
    EXPECT_EQ(window.childAt(0, 100), nullptr);
}

TEST(TitleBar, ADoubleClickAsksForTheWholeScreen) {
    for (auto const kind : {ui::TitleBar::Kind::kWindow, ui::TitleBar::Kind::kDialog}) {
        ui::TitleBar bar(kind);
        QSignalSpy wanted(&bar, &ui::TitleBar::MaximiseWanted);
        QTest::mouseDClick(&bar, Qt::LeftButton);
        EXPECT_EQ(wanted.count(), kind == ui::TitleBar::Kind::kWindow ? 1 : 0);
    }
}

TEST(TitleBar, DragsAWindowThatTheWindowSystemDoesNotMove) {
    QWidget window;
    window.setGeometry(50, 50, 300, 200);
    ui::TitleBar bar(ui::TitleBar::Kind::kDialog, &window);
    bar.setGeometry(0, 0, 300, 44);
    window.show();
    QPoint const start = window.pos();
    auto const send = [&bar](QEvent::Type type, QPoint global, Qt::MouseButtons held) {
        QMouseEvent event(type, bar.mapFromGlobal(global), global, Qt::LeftButton, held,
                          Qt::NoModifier);
        QApplication::sendEvent(&bar, &event);
    };
    send(QEvent::MouseButtonPress, start + QPoint(10, 10), Qt::LeftButton);
    send(QEvent::MouseMove, start + QPoint(11, 10), Qt::LeftButton);
    EXPECT_EQ(window.pos(), start);
    send(QEvent::MouseMove, start + QPoint(60, 40), Qt::LeftButton);
    EXPECT_EQ(window.pos(), start + QPoint(50, 30));
    send(QEvent::MouseButtonRelease, start + QPoint(60, 40), Qt::NoButton);
    send(QEvent::MouseMove, start + QPoint(90, 90), Qt::NoButton);
    EXPECT_EQ(window.pos(), start + QPoint(50, 30));
}
