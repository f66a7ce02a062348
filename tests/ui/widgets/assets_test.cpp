#include <gtest/gtest.h>

#include <QDirIterator>
#include <QImageReader>
#include <QRegularExpression>
#include <QTranslator>

#include "ui/widgets/style.h"

using namespace zorvanelink;

TEST(Assets, EveryImageIsReadableAndHasItsSharpTwin) {
    ui::InitAssets();
    int seen = 0;
    QDirIterator files(QStringLiteral(":/assets/images"));
    while (files.hasNext()) {
        QString const path = files.next();
        QImageReader reader(path);
        QImage const image = reader.read();
        ASSERT_FALSE(image.isNull()) << path.toStdString() << reader.errorString().toStdString();
        ++seen;
        if (path.endsWith(QLatin1String(".png")) && !path.contains(QLatin1String("@2x"))) {
            QString twin = path;
            twin.replace(QLatin1String(".png"), QLatin1String("@2x.png"));
            EXPECT_EQ(QImage(twin).size(), image.size() * 2) << path.toStdString();
        }
    }
    EXPECT_GT(seen, 60);
}

TEST(Assets, ImagesThatStylesheetsNameExist) {
    QRegularExpression const url(QStringLiteral("url\\(([^)]+)\\)"));
    for (auto const* name : {"authtypedialog.css", "controls", "dialog", "mainwindow", "menu"}) {
        QString const style = ui::LoadStyle(QLatin1String(name));
        ASSERT_FALSE(style.isEmpty()) << name;
        for (auto found = url.globalMatch(style); found.hasNext();) {
            QString const path = found.next().captured(1);
            EXPECT_TRUE(QFile::exists(path)) << name << " " << path.toStdString();
        }
    }
    EXPECT_TRUE(ui::LoadStyle(QStringLiteral("no-such-style")).isEmpty());
}

TEST(Assets, BothTranslationsLoadAndSpeakChinese) {
    ui::InitAssets();
    QTranslator own;
    QTranslator toolkit;
    ASSERT_TRUE(own.load(QStringLiteral(":/translations/zh_Hans.qm")));
    ASSERT_TRUE(toolkit.load(QStringLiteral(":/translations/qt_zh_CN.qm")));
    EXPECT_EQ(own.translate("ui", "Received"), QStringLiteral("接收"));
    EXPECT_EQ(toolkit.translate("QLineEdit", "&Copy"), QStringLiteral("复制(&C)"));
    EXPECT_EQ(toolkit.translate("QPlatformTheme", "Cancel"), QStringLiteral("取消"));
    EXPECT_EQ(toolkit.translate("QScrollBar", "Top"), QStringLiteral("顶部"));
}
