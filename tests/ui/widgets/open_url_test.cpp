#include "ui/widgets/open_url.h"

#include <QDir>
#include <QFile>

#include "app/environment/app_ctrl.h"
#include "app/environment/paths.h"
#include "tests/support/scripted_prompts.h"
#include "ui/text/texts.h"

using namespace zorvanelink;

namespace {

QString makeFile(QString const& path) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    return path;
}

}  // namespace

TEST(OpenUrl, OpensWebPagesAndFilesOfTheDataFolderOnly) {
    QString const data = ui::GetAppDataDirPath();
    QString const page = makeFile(data + QStringLiteral("/oauth/a b#c.html"));
    QString const outside = makeFile(data + QStringLiteral("2/x.html"));
    QString const link = data + QStringLiteral("/link.html");
    QFile::link(outside, link);
    struct Case {
        QString text;
        bool local;
        bool opens;
    };
    auto const s = [](char const* text) { return QString::fromUtf8(text); };
    for (Case const& c : {
             Case{s("https://vpn.example.com/x?y=1"), false, true},
             Case{s("HTTP://vpn.example.com"), true, true},
             Case{page, true, true},
             Case{QUrl::fromLocalFile(page).toString(QUrl::FullyEncoded), true, true},
             Case{s("oauth/a b#c.html"), true, true},
             Case{page, false, false},
             Case{QUrl::fromLocalFile(page).toString(QUrl::FullyEncoded), false, false},
             Case{outside, true, false},
             Case{link, true, false},
             Case{data + s("/oauth/../../x.html"), true, false},
             Case{data, true, false},
             Case{makeFile(data + s("/oauth/run.sh")), true, false},
             Case{makeFile(data + s("/oauth/A.HTM")), true, true},
             Case{s("https://a.example/") + QString(2030, u'x'), false, true},
             Case{s("https://a.example/") + QString(2031, u'x'), false, false},
             Case{data + s("/none.html"), true, false},
             Case{s("https://"), false, false},
             Case{s("javascript:alert(1)"), true, false},
             Case{s("smb://host/share"), false, false},
             Case{s("file://host/etc/passwd"), true, false},
             Case{s("vpn.example.com"), false, false},
             Case{s(""), true, false},
         }) {
        test::ScriptedPrompts prompts;
        if (!c.opens) {
            prompts.ExpectBox(ui::GetTrMsg(common::MsgCode::UI_INFO_INVALID_URL), 0);
        }
        EXPECT_EQ(ui::OpenUrlWithHint(prompts, nullptr, c.text, c.local), c.opens)
            << c.text.toStdString();
        EXPECT_EQ(prompts.Opened().size(), c.opens ? 1U : 0U) << c.text.toStdString();
    }
}

TEST(OpenUrl, NoFileIsLocalWithoutADataFolder) {
    QString const page = makeFile(ui::GetAppDataDirPath() + QStringLiteral("/x.html"));
    ui::AppCtrl::Instance().dataPath = QStringLiteral("/nonexistent");
    EXPECT_TRUE(ui::PageUrl(page, true).isEmpty());
    ui::AppCtrl::Instance() = ui::AppCtrl();
}
