#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QtTest/QTest>

#include "tests/support/qt_helpers.h"
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
    EXPECT_EQ(form.geometry(), QRect(0, 44, 400, 256));
    window.resize(500, 350);
    EXPECT_EQ(form.geometry(), QRect(0, 44, 500, 306));
    QTest::mouseClick(window.childAt(20, 120), Qt::LeftButton);
    QTest::keyClick(&form, Qt::Key_Return);
    EXPECT_EQ(clicks.count(), 0);
    EXPECT_EQ(form.Desc(), QStringLiteral("Connecting"));
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
