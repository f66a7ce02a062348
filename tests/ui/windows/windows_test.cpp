// What holds for every window and dialog of the gallery's list, in both languages: no text is cut
// or faint, no button lies outside a small screen, and who cannot see or cannot point finds every
// control by a name of its own, and sees where the keyboard is.
#include <gmock/gmock.h>

#include <qpa/qwindowsysteminterface.h>
#include <QAbstractButton>
#include <QAccessible>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
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

    // A notebook's at 150 %, else a common one.
    static void SetUpTestSuite() {
        QRect const screen = qApp->devicePixelRatio() > 1.4 && qApp->devicePixelRatio() < 1.6
                                 ? QRect(0, 0, 1366, 768)
                                 : QRect(0, 0, 1920, 1080);
        QWindowSystemInterface::handleScreenGeometryChange(qApp->primaryScreen(), screen, screen);
        QCoreApplication::processEvents();
    }

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

// What a screen reader names: the controls, and the buttons of cards that the keyboard acts on.
bool isRead(QWidget const& widget) {
    bool const button = qobject_cast<QAbstractButton const*>(&widget) != nullptr;
    return widget.isVisible() && !widget.visibleRegion().isEmpty() && (button || isControl(widget));
}

// The stops of the keyboard, and those of them that do not show that it is there.
struct Stops {
    std::set<QWidget const*> reached;
    std::set<std::string> unseen;
};

Stops walkByTab(QWidget& window) {
    Stops stops;
    for (int presses = 0; presses < 200; ++presses) {
        QWidget* const focus = window.focusWidget() != nullptr ? window.focusWidget() : &window;
        bool const known = focus == &window || !stops.reached.insert(focus).second;
        if (known && presses > 100) {
            break;
        }
        if (!known && !gallery::ShowsFocus(window, *focus)) {
            stops.unseen.insert(describe(*focus));
        }
        QTest::keyClick(focus, Qt::Key_Tab);
    }
    return stops;
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
    auto* list = new QListWidget(&window);
    list->addItem(text);
    list->move(0, 120);
    window.setStyleSheet(
        QStringLiteral("* { background: #FFFFFF; color: #868686; outline: none; }"
                       "QLineEdit { border: 1px solid #AAAAAA; }"));
    window.show();
    EXPECT_THAT(gallery::CutTexts(window), testing::SizeIs(5)) << "two of them twice";
    EXPECT_THAT(gallery::FaintThings(window), testing::SizeIs(5)) << "four texts and a border";
    list->setFocus();
    EXPECT_FALSE(gallery::ShowsFocus(window, *list));
}

// What holds for a window of any kind.
void expectWhole(QWidget& window, bool in_front) {
    EXPECT_THAT(gallery::CutTexts(window), IsEmpty());
    bool const frameless = window.windowFlags().testFlag(Qt::FramelessWindowHint);
    if (window.windowType() == Qt::Window && !frameless) {
        return;  // parts side by side
    }
    EXPECT_TRUE(gallery::HasEdge(window));
    QSize const screen = window.screen()->availableSize();
    EXPECT_EQ(window.size().boundedTo(screen), window.size());
    auto const* const dialog = qobject_cast<ZVLDialog*>(&window);
    if (dialog == nullptr) {
        return;
    }
    EXPECT_LE(dialog->height(), screen.height() - 20);
    EXPECT_TRUE(dialog->screen()->availableGeometry().contains(dialog->geometry()));
    int fixed = 0;
    for (auto const* button : dialog->findChildren<QPushButton*>()) {
        if (button->isVisible() && !dialog->Body()->isAncestorOf(button)) {
            ++fixed;
            QPoint const middle = button->mapTo(dialog, button->rect().center());
            EXPECT_TRUE(button->visibleRegion().boundingRect() == button->rect() &&
                        (!in_front || dialog->childAt(middle) == button))
                << button->text().toStdString();
        }
    }
    EXPECT_GT(fixed, 0);
}

void expectNamedAndReached(QWidget& window) {
    auto const stops = walkByTab(window);
    EXPECT_THAT(stops.unseen, IsEmpty());
    std::vector<std::string> nameless;
    std::vector<std::string> unreached;
    std::vector<std::string> doubles;
    std::set<std::pair<QAccessible::Role, QString>> names;
    for (QWidget* const widget : window.findChildren<QWidget*>()) {
        if (!isRead(*widget)) {
            continue;
        }
        QAccessibleInterface* const read = QAccessible::queryAccessibleInterface(widget);
        QString const name = read != nullptr ? read->text(QAccessible::Name) : QString();
        if (name.isEmpty()) {
            nameless.push_back(describe(*widget));
        } else if (!names.insert({read->role(), name}).second) {
            doubles.push_back(describe(*widget) + " " + name.toStdString());
        }
        if (isControl(*widget) && !stops.reached.contains(widget) &&
            !isReachedByArrows(*widget, stops.reached)) {
            unreached.push_back(describe(*widget));
        }
    }
    EXPECT_THAT(nameless, IsEmpty());
    EXPECT_THAT(unreached, IsEmpty());
    EXPECT_THAT(doubles, IsEmpty());
}

// Once at 100 %, and at 150 % and 200 % on the smallest screens that have them, where only the room
// is another.
TEST_P(Windows, AreWholeReadableAndReached) {
    bool const at_100_percent = qFuzzyCompare(qApp->devicePixelRatio(), 1.0);
    for (gallery::Row const& row : gallery::AllRows()) {
        SCOPED_TRACE(row.name);
        gallery::Stage stage(false);
        row.set(stage);
        stage.Settle();
        for (QWidget* const window : stage.Shown()) {
            expectWhole(*window, window == stage.Shown().back());
            if (at_100_percent) {
                EXPECT_THAT(gallery::FaintThings(*window), IsEmpty());
            }
        }
        QWidget& front = *stage.Shown().back();
        auto const* const wait = front.findChild<WaitForm*>();
        bool const waits = wait != nullptr && wait->isVisible();  // nothing is reached behind it
        if (at_100_percent && !waits && front.windowType() != Qt::Popup &&
            front.windowType() != Qt::ToolTip) {
            expectNamedAndReached(front);
        }
    }
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

INSTANTIATE_TEST_SUITE_P(Languages, Windows,
                         testing::Values(SysLang::kEnglish, SysLang::kSimplifiedChinese),
                         [](auto const& info) {
                             return std::string(info.param == SysLang::kEnglish ? "English"
                                                                                : "Chinese");
                         });

}  // namespace
}  // namespace zorvanelink::ui
