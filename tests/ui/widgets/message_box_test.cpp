#include <gtest/gtest.h>

#include <QtTest/QTest>

#include "tests/support/qt_helpers.h"
#include "ui/text/bounded_text.h"
#include "ui/widgets/automation_hooks.h"
#include "ui/widgets/zvl_message_box.h"

using namespace zorvanelink;
using test::Find;
using test::WhenModal;
using ui::MessageText;
using ui::ZVLMessageBox;
using ui::ZVLMsgBoxType;

namespace {

QString text(char const* latin) {
    return QString::fromUtf8(latin);
}

int askWith(std::function<void(ZVLMessageBox&)> act) {
    WhenModal<ZVLMessageBox>(std::move(act));
    return ZVLMessageBox::warning(nullptr, text("Title"), text("Text"),
                                  {text("First"), text("Second"), text("Third")});
}

}  // namespace

TEST(MessageBox, AnswersByThePressedButtonAndByNothingElse) {
    auto const press = [](char const* name) {
        return [name](ZVLMessageBox& box) { Find<ui::QPushButtonExt>(box, name).click(); };
    };
    auto const key = [](Qt::Key pressed) {
        return [pressed](ZVLMessageBox& box) { QTest::keyClick(&box, pressed); };
    };
    EXPECT_EQ(0, askWith(press("button_0_")));
    EXPECT_EQ(2, askWith(press("button_2_")));
    EXPECT_EQ(0, askWith(key(Qt::Key_Return)));
    EXPECT_EQ(-1, askWith(key(Qt::Key_Escape)));
    EXPECT_EQ(-1, askWith([](ZVLMessageBox& box) { box.close(); }));
    EXPECT_EQ(-1, askWith([](auto& box) { Find<QToolButton>(box, "btn_close_").click(); }));
    WhenModal<ZVLMessageBox>(key(Qt::Key_Return));
    EXPECT_EQ(1, ZVLMessageBox::question(nullptr, text("T"), text("Delete?"), 0,
                                         {text("Yes"), text("No")}, {}, 1));
}

TEST(MessageBox, SplitsHeadlineAndDetail) {
    struct Row {
        char const* text;
        char const* main;
        char const* detail;
        bool detailShown;
    };
    for (auto const& row :
         {Row{"one line", "one line", "", false}, Row{"head#@@#detail", "head", "detail", true},
          Row{"head#@@#a#@@#b", "head", "a#@@#b", true},
          Row{"<b>no</b> markup", "<b>no</b> markup", "", false}}) {
        ZVLMessageBox box(nullptr, ZVLMsgBoxType::kCritical, text("T"), text(row.text),
                          {text("OK")});
        box.show();
        EXPECT_EQ(Find<MessageText>(box, "main_label_").toPlainText(), text(row.main));
        EXPECT_EQ(Find<MessageText>(box, "detail_label_").toPlainText(), text(row.detail));
        EXPECT_EQ(Find<MessageText>(box, "detail_label_").isVisible(), row.detailShown) << row.text;
    }
}

TEST(MessageBox, StandsInTheMiddleOfItsOwner) {
    QWidget owner;
    owner.setGeometry(20, 20, 700, 500);
    owner.show();
    ZVLMessageBox box(&owner, ZVLMsgBoxType::kWarning, text("T"),
                      text("Headline#@@#") + text("many words ").repeated(20), {text("OK")});
    box.show();
    EXPECT_LE((box.geometry().center() - owner.geometry().center()).manhattanLength(), 2);
}

TEST(MessageBox, LongWordsWrapAndLongTextsAreBoundedAndScroll) {
    ZVLMessageBox box(nullptr, ZVLMsgBoxType::kWarning, text("T"),
                      QString(400, u'w') + text("#@@#") + QString(1500, u'i') +
                          text(" many words").repeated(6000),
                      {text("OK")});
    box.show();
    auto& main = Find<MessageText>(box, "main_label_");
    auto& detail = Find<MessageText>(box, "detail_label_");
    EXPECT_LE(main.document()->idealWidth(), main.width());
    EXPECT_GE(main.height(), static_cast<int>(main.document()->size().height()));
    EXPECT_LT(detail.height(), static_cast<int>(detail.document()->size().height()));
    EXPECT_EQ(detail.verticalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
    EXPECT_LE(main.toPlainText().size() + detail.toPlainText().size(), 2001);
}

TEST(MessageBox, ATextIsCutAtTwoThousandAndBrokenInLongRuns) {
    QChar const gap(u'\u200B');
    struct Row {
        QString text;
        QString shown;
    };
    for (auto const& row :
         {Row{text("a b"), text("a b")}, Row{QString(200, u'x'), QString(200, u'x')},
          Row{QString(401, u'x'),
              QString(200, u'x') + gap + QString(200, u'x') + gap + QString(1, u'x')},
          Row{text("ab ").repeated(1000), text("ab ").repeated(666) + text("ab…")},
          Row{text("ab ").repeated(666) + text("a") + text("😀!"),
              text("ab ").repeated(666) + text("a😀…")}}) {
        EXPECT_EQ(ui::BoundedText(row.text).toStdString(), row.shown.toStdString());
    }
}

TEST(MessageBox, AQuestionTimesOutAndCallsBack) {
    int calls = 0;
    ZVLMessageBox box(nullptr, ZVLMsgBoxType::kWarning, text("T"), text("Now?"), {text("Yes")});
    box.SetTimeout(std::chrono::milliseconds(1), [&calls] { ++calls; });
    EXPECT_EQ(box.Ask(), -1);
    EXPECT_EQ(calls, 1);

    ZVLMessageBox answered(nullptr, ZVLMsgBoxType::kWarning, text("T"), text("Now?"),
                           {text("Yes")});
    answered.SetTimeout(std::chrono::hours(1), [&calls] { ++calls; });
    WhenModal<ZVLMessageBox>([](ZVLMessageBox& shown) {
        EXPECT_EQ(Find<QLabel>(shown, "time_left_").text(), text("Closes in 3600 s"));
        Find<ui::QPushButtonExt>(shown, "button_0_").click();
    });
    EXPECT_EQ(answered.Ask(), 0);
    EXPECT_EQ(calls, 1);
}

TEST(MessageBox, OnlyAnAllowedLinkIsALink) {
    ZVLMessageBox box(nullptr, ZVLMsgBoxType::kInformation, text("T"),
                      text("Click <a href='https://example.com/'>here</a>"), {text("OK")});
    box.AllowLink([](QString const&) {});
    EXPECT_EQ(Find<MessageText>(box, "main_label_").toPlainText(), text("Click here"));
    EXPECT_TRUE(Find<MessageText>(box, "main_label_").toHtml().contains(text("example.com")));
}

TEST(MessageBox, TellsAutomationItsTextWithoutNumbers) {
    QString heard;
    QString answer;
    ui::automationHooks().dialogOpened = [&heard](QDialog& dialog, QString const& said) {
        heard = said;
        dynamic_cast<ZVLMessageBox&>(dialog).AutoRefused();
    };
    ui::automationHooks().setResult = [&answer](int, QString const& said) { answer = said; };
    EXPECT_EQ(-1,
              ZVLMessageBox::critical(nullptr, text("T"), text("Try in 20%1 seconds"), text("OK")));
    ui::automationHooks() = {};
    EXPECT_EQ(heard, text("ERROR: Try in  seconds"));
    EXPECT_EQ(answer, text("REFUSED MESSAGE BOX"));
}

TEST(MessageBox, WithBackgroundCoversItsParent) {
    QWidget parent;
    parent.resize(500, 400);
    parent.show();
    QRect covered;
    WhenModal<ui::ZVLMessageBoxWithBackground>([&](ui::ZVLMessageBoxWithBackground& box) {
        covered = box.geometry();
        Find<ui::QPushButtonExt>(box, "button_0_").click();
    });
    EXPECT_EQ(0, ui::ZVLMessageBoxWithBackground::box(&parent, ZVLMsgBoxType::kWarning, text("T"),
                                                      text("Text"), {text("OK")}));
    EXPECT_EQ(covered, parent.frameGeometry());
}
