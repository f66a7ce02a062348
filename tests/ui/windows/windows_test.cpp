// What holds for every window and dialog of the gallery's list, in both languages: no text is cut
// or faint, also at twice the scale, no button lies outside a small screen, and who cannot see or
// cannot point reaches every control.
#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScreen>
#include <QTextEdit>
#include <QTranslator>
#include <QtTest/QTest>
#include <set>

#include "app/environment/app_ctrl.h"
#include "tools/gallery/contrast.h"
#include "tools/gallery/cut_text.h"
#include "tools/gallery/stage.h"
#include "ui/text/texts.h"
#include "ui/widgets/fonts.h"
#include "ui/widgets/style.h"
#include "ui/widgets/wait_form.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using testing::IsEmpty;

class Windows : public testing::TestWithParam<SysLang> {
  protected:
    Windows() {
        AppCtrl::Instance().language = GetParam();
        InitAssets();
        SetApplicationFont();
        SetApplicationStyle();
        if (GetParam() == SysLang::kSimplifiedChinese) {
            EXPECT_TRUE(translator_.load(QStringLiteral(":/translations/zh_Hans.qm")));
            QCoreApplication::installTranslator(&translator_);
        }
    }
    ~Windows() override { AppCtrl::Instance() = AppCtrl(); }

    QTranslator translator_;
};

std::string describe(QWidget const& widget) {
    return std::string(widget.metaObject()->className()) + " " + widget.objectName().toStdString();
}

// Texts that can be selected are no controls.
bool isControl(QWidget const& widget) {
    auto const* const text = qobject_cast<QTextEdit const*>(&widget);
    return widget.focusPolicy() != Qt::NoFocus && widget.isVisible() && widget.isEnabled() &&
           qobject_cast<QLabel const*>(&widget) == nullptr &&
           (text == nullptr || !text->isReadOnly());
}

std::set<QWidget const*> reachedByTab(QWidget& window) {
    std::set<QWidget const*> reached;
    for (int presses = 0; presses < 200; ++presses) {
        QWidget* const focus = window.focusWidget() != nullptr ? window.focusWidget() : &window;
        if (focus != &window && !reached.insert(focus).second && presses > 100) {
            break;
        }
        QTest::keyClick(focus, Qt::Key_Tab);
    }
    return reached;
}

// Of a row of equals one takes Tab, and the arrow keys lead to the others.
bool isReachedByArrows(QWidget const& widget, std::set<QWidget const*> const& reached) {
    auto const* const button = qobject_cast<QAbstractButton const*>(&widget);
    bool const one_of_many = button != nullptr && button->isCheckable() &&
                             (button->autoExclusive() || button->group() != nullptr);
    return std::any_of(reached.begin(), reached.end(), [&](QWidget const* other) {
        bool const same_name =
            other->objectName() == widget.objectName() && !widget.objectName().isEmpty();
        return other->metaObject() == widget.metaObject() && (one_of_many || same_name);
    });
}

// The texts that need most room on one line, and those with the longest words.
std::set<QString> longestTexts() {
    std::vector<QString> texts;
    for (auto const& row : common::g_IPCMessageMap.All()) {
        texts.push_back(GetTrMsg(row.code));
    }
    QFontMetrics const metrics(QApplication::font());
    auto const width = [&](QString const& text) { return metrics.horizontalAdvance(text); };
    auto const widestWord = [&](QString const& text) {
        int widest = 0;
        for (QString const& word : text.split(QLatin1Char(' '))) {
            widest = qMax(widest, width(word));
        }
        return widest;
    };
    std::set<QString> chosen;
    auto const keep = [&](auto const& measure) {
        std::sort(texts.begin(), texts.end(),
                  [&](QString const& a, QString const& b) { return measure(a) > measure(b); });
        chosen.insert(texts.begin(), texts.begin() + 5);
    };
    keep(width);
    keep(widestWord);
    return chosen;
}

TEST_P(Windows, MeasureFindsWhatIsCutOrFaint) {
    QWidget window;
    QString const text = QStringLiteral("a text that is cut");
    (new QLabel(text, &window))->setGeometry(0, 0, 30, 30);
    (new QPushButton(text, &window))->setGeometry(0, 40, 40, 30);
    auto* edit = new QLineEdit(&window);
    edit->setPlaceholderText(text);
    edit->setGeometry(0, 80, 40, 30);
    edit->setFocusPolicy(Qt::NoFocus);
    window.setStyleSheet(
        QStringLiteral("* { background: #FFFFFF; color: #868686; }"
                       "QLineEdit { border: 1px solid #AAAAAA; }"));
    window.show();
    EXPECT_EQ(gallery::CutTexts(window).size(), 3U);
    EXPECT_THAT(gallery::FaintThings(window), testing::SizeIs(4)) << "three texts and a border";
}

TEST_P(Windows, NothingIsCutOrFaint) {
    for (gallery::Row const& row : gallery::AllRows()) {
        SCOPED_TRACE(row.name);
        gallery::Stage stage(false);
        row.set(stage);
        stage.Settle();
        EXPECT_THAT(gallery::CutTexts(*stage.Shown().back()), IsEmpty());
        EXPECT_THAT(gallery::FaintThings(*stage.Shown().back()), IsEmpty());
    }
}

// The platform's screen is run at a scale that makes it as low as one of 1366 x 768 at 150 %;
// at 200 % it is lower than any.
TEST_P(Windows, NoButtonOfADialogLiesOutsideTheScreen) {
    int dialogs = 0;
    for (gallery::Row const& row : gallery::AllRows()) {
        gallery::Stage stage(false);
        row.set(stage);
        stage.Settle();
        auto const* const dialog = qobject_cast<ZVLDialog*>(stage.Shown().back());
        if (dialog == nullptr) {
            continue;
        }
        SCOPED_TRACE(row.name);
        ++dialogs;
        EXPECT_LE(dialog->height(), dialog->screen()->availableGeometry().height() - 20);
        int fixed = 0;
        for (auto const* button : dialog->findChildren<QPushButton*>()) {
            bool const scrolls = dialog->Body()->isAncestorOf(button);
            if (button->isVisible() && !scrolls) {
                ++fixed;
                EXPECT_EQ(button->visibleRegion().boundingRect(), button->rect())
                    << button->text().toStdString();
            }
        }
        EXPECT_GT(fixed, 0);
    }
    EXPECT_GT(dialogs, 30);
}

TEST_P(Windows, NoTextIsCutInABox) {
    std::vector<std::vector<MsgCode>> const sets{
        {MsgCode::UI_INFO_OK},
        {MsgCode::UI_INFO_YES, MsgCode::UI_INFO_NO},
        {MsgCode::UI_TR_UPDATE_NOW, MsgCode::UI_TR_UPDATE_NEXT, MsgCode::UI_TR_UPDATE_NEVER}};
    for (QString const& text : longestTexts()) {
        for (auto const& set : sets) {
            SCOPED_TRACE(text.toStdString());
            BoxRequest request;
            request.title = GetTrMsg(MsgCode::UI_WARNING);
            request.text = text;
            for (MsgCode const button : set) {
                request.buttons.push_back(GetTrMsg(button));
            }
            gallery::Stage stage(false);
            stage.ShowBox(request);
            EXPECT_THAT(gallery::CutTexts(*stage.Shown().back()), IsEmpty());
        }
    }
}

TEST_P(Windows, EveryControlHasANameAndAPlaceInTheTabOrder) {
    int controls = 0;
    for (gallery::Row const& row : gallery::AllRows()) {
        SCOPED_TRACE(row.name);
        gallery::Stage stage(false);
        row.set(stage);
        stage.Settle();
        QWidget& window = *stage.Shown().back();
        auto const* const wait = window.findChild<WaitForm*>();
        bool const waits = wait != nullptr && wait->isVisible();  // nothing is reached behind it
        if (waits || qobject_cast<QMenu*>(&window) != nullptr) {
            continue;
        }
        auto const reached = reachedByTab(window);
        std::vector<std::string> nameless;
        std::vector<std::string> unreached;
        for (QWidget* const widget : window.findChildren<QWidget*>()) {
            if (!isControl(*widget)) {
                continue;
            }
            ++controls;
            QAccessibleInterface* const read = QAccessible::queryAccessibleInterface(widget);
            if (read == nullptr || read->text(QAccessible::Name).isEmpty()) {
                nameless.push_back(describe(*widget));
            }
            if (!reached.contains(widget) && !isReachedByArrows(*widget, reached)) {
                unreached.push_back(describe(*widget));
            }
        }
        EXPECT_THAT(nameless, IsEmpty());
        EXPECT_THAT(unreached, IsEmpty());
    }
    EXPECT_GT(controls, 300);
}

INSTANTIATE_TEST_SUITE_P(Languages, Windows,
                         testing::Values(SysLang::kEnglish, SysLang::kSimplifiedChinese),
                         [](auto const& info) {
                             return std::string(info.param == SysLang::kEnglish ? "English"
                                                                                : "Chinese");
                         });

}  // namespace
}  // namespace zorvanelink::ui
