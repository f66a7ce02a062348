#include <gtest/gtest.h>

#include <QComboBox>
#include <QFileDialog>
#include <QtTest/QTest>

#include "components/utils/sensitive_value.h"
#include "tests/support/qt_helpers.h"
#include "tests/support/scripted_prompts.h"
#include "ui/widgets/dim_cover.h"
#include "ui/widgets/fonts.h"
#include "ui/widgets/input_dialog.h"
#include "ui/widgets/zvl_message_box.h"

using namespace zorvanelink;
using test::Find;
using test::WaitFor;
using test::WhenModal;
using ui::Prompts;

namespace {

QString text(char const* utf8) {
    return QString::fromUtf8(utf8);
}

bool isDimmed(QDialog const& dialog) {
    auto const* cover = dialog.findChild<ui::DimCover*>(QStringLiteral("dialog_cover_"));
    return cover != nullptr && cover->isVisible() && cover->geometry() == dialog.rect();
}

bool askDelete(Prompts& prompts) {
    return prompts.Question(nullptr, QStringLiteral("Warning"), QStringLiteral("Delete?"),
                            QStringLiteral("Yes"), QStringLiteral("No"), Prompts::Default::kNo);
}

}  // namespace

TEST(Dialog, GoesWhenTheBoxesOverItHaveUnwound) {
    ui::DialogPrompts prompts;
    QPointer<ui::ZVLDialog> const dialog = new ui::ZVLDialog;
    dialog->show();
    auto const box = [&](char const* title) {
        prompts.Information(dialog, text(title), text("Text"), text("OK"));
        EXPECT_TRUE(dialog) << title;
    };
    QTimer::singleShot(0, dialog, [&] {
        QTimer::singleShot(0, dialog, [&] { dialog->DeleteBehindBoxes(); });
        box("second");
    });
    box("first");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(dialog);
}

TEST(Dialog, DimsBehindABoxAndComesBackButNotBehindItsComboBox) {
    ui::DialogPrompts prompts;
    ui::ZVLDialog dialog(nullptr, &prompts);
    auto* combo = new QComboBox(dialog.Body());
    combo->addItems({text("a"), text("b")});
    dialog.resize(300, 200);
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
    bool dimmed = false;
    WhenModal<ui::ZVLMessageBox>([&](ui::ZVLMessageBox& box) {
        dimmed = isDimmed(dialog);
        box.reject();
    });
    dialog.ShowCriticalBox(&dialog, text("T"), text("Text"), text("OK"));
    EXPECT_TRUE(dimmed);
    EXPECT_FALSE(isDimmed(dialog));
    combo->showPopup();
    ASSERT_TRUE(WaitFor([] { return QApplication::activePopupWidget() != nullptr; }));
    QEvent blocked(QEvent::WindowBlocked);
    QApplication::sendEvent(&dialog, &blocked);
    EXPECT_FALSE(isDimmed(dialog));
    combo->hidePopup();
}

TEST(InputDialog, MeasuresTheSecretInBytes) {
    struct Row {
        char const* secret;
        int limit;
        char const* complaint;  // null: accepted
    };
    for (auto const& row :
         {Row{"12345678", 8, nullptr}, Row{"123456789", 8, "too long"}, Row{"密码", 6, nullptr},
          Row{"密码", 5, "too long"}, Row{"", 8, "empty"}, Row{"123456789", 0, nullptr}}) {
        test::ScriptedPrompts prompts;
        ui::InputDialog dialog(prompts);
        dialog.set_max_utf8_length(row.limit);
        dialog.setTooLongMessage(text("too long"));
        dialog.setEmptyTextMessage(text("empty"));
        dialog.show();
        dialog.setTextValue(text(row.secret));
        if (row.complaint != nullptr) {
            prompts.ExpectBox(text(row.complaint), 0);
        }
        QTest::keyClick(&Find<QLineEdit>(dialog, "text_edit_"), Qt::Key_Return);
        EXPECT_EQ(dialog.isVisible(), row.complaint != nullptr) << row.secret;
        auto& edit = Find<QLineEdit>(dialog, "text_edit_");
        EXPECT_EQ(edit.property("refused").toBool(), row.complaint != nullptr);
        EXPECT_EQ(edit.accessibleDescription(), text(row.complaint));
        edit.insert(text("x"));
        EXPECT_FALSE(edit.property("refused").toBool());
        EXPECT_EQ(edit.accessibleDescription(), QString());
    }
    test::ScriptedPrompts prompts;
    ui::InputDialog anything(prompts);
    anything.show();
    Find<QPushButton>(anything, "ok_button_").click();
    EXPECT_EQ(anything.result(), QDialog::Accepted) << "an empty one, where none is refused";
}

TEST(InputDialog, HidesTheSecretAndSaysWhatItAsksFor) {
    test::ScriptedPrompts prompts;
    ui::InputDialog dialog(prompts);
    auto& edit = Find<QLineEdit>(dialog, "text_edit_");
    auto const hints = Qt::ImhSensitiveData | Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase;
    for (auto const mode : {QLineEdit::Normal, QLineEdit::Password}) {
        dialog.setTextEchoMode(mode);
        EXPECT_EQ(edit.echoMode(), mode);
        EXPECT_EQ(edit.inputMethodHints() & hints, hints);
    }
    dialog.setLabelText(text("Enter the PIN of alice.p12"));
    dialog.setLabel2Text(text("PIN"));
    EXPECT_EQ(edit.accessibleName(), text("Enter the PIN of alice.p12"));
    EXPECT_EQ(edit.accessibleDescription(), text("PIN"));
    dialog.show();
    EXPECT_EQ(dialog.focusWidget(), &edit);
    QTest::keyClick(&edit, 'a', Qt::ShiftModifier);
    auto const locked = [&dialog] {
        auto const* const line = dialog.findChild<QLabel*>(text("hint_of_text_edit_"));
        return line != nullptr && line->isVisible();
    };
    for (bool const caps : {false, true, false}) {
        QKeyEvent typed(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, text(caps ? "A" : "a"));
        QApplication::sendEvent(&edit, &typed);
        EXPECT_EQ(locked(), caps);
    }
}

TEST(Dialog, FocusIsARingOfTwoTones) {
    ui::SetApplicationStyle();
    test::ScriptedPrompts prompts;
    ui::InputDialog dialog(prompts);
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    auto& button = Find<QPushButton>(dialog, "cancel_button_");
    button.setFocus();
    QImage const picture = dialog.grab().toImage();
    auto const colorAt = [&](QPoint at) { return picture.pixelColor(at).name(); };
    QPoint const left = button.mapTo(&dialog, QPoint(0, button.height() / 2));
    EXPECT_EQ(colorAt(left - QPoint(1, 0)), text("#0b3e8c"));
    EXPECT_EQ(colorAt(left), text("#ffffff"));
}

TEST(InputDialog, NoTypedSecretStaysBehindACancelledPrompt) {
    test::ScriptedPrompts prompts;
    bool wiped = false;
    {
        ui::InputDialog dialog(prompts);
        dialog.setTextValue(text("secret"));
        QObject::connect(&Find<QLineEdit>(dialog, "text_edit_"), &QLineEdit::textChanged,
                         [&wiped](QString const& left) { wiped = left.isEmpty(); });
        dialog.reject();
    }
    EXPECT_TRUE(wiped);
}

TEST(Prompts, OnlyAPressedYesIsYes) {
    ui::DialogPrompts prompts;
    WhenModal<ui::ZVLMessageBox>(
        [](ui::ZVLMessageBox& box) { Find<QPushButton>(box, "button_0_").click(); });
    EXPECT_TRUE(askDelete(prompts));
    bool noIsDefault = false;
    WhenModal<ui::ZVLMessageBox>([&noIsDefault](ui::ZVLMessageBox& box) {
        noIsDefault = Find<QPushButton>(box, "button_1_").isDefault();
        box.reject();
    });
    EXPECT_FALSE(askDelete(prompts));
    EXPECT_TRUE(noIsDefault);
}

TEST(Prompts, SecretComesBackWithItsMark) {
    ui::DialogPrompts prompts;
    ui::SecretRequest request;
    request.rememberText = QStringLiteral("Remember");
    request.maxUtf8Length = 127;
    WhenModal<ui::InputDialog>([](ui::InputDialog& dialog) {
        WhenModal<ui::ZVLMessageBox>([](ui::ZVLMessageBox& box) { box.reject(); });
        dialog.AutoConfirmPwd(QString(128, u'x'), true);
        EXPECT_TRUE(dialog.isVisible()) << "too long";
        dialog.AutoConfirmPwd(QStringLiteral("pin"), true);
    });
    auto const answer = prompts.InputSecret(request);
    ASSERT_TRUE(answer);
    EXPECT_EQ(components::utils::DecodeSensitiveValue(answer->value), "pin");
    EXPECT_TRUE(answer->remember);
    WhenModal<ui::InputDialog>([](ui::InputDialog& dialog) { dialog.AutoRefusedPwd(); });
    EXPECT_FALSE(prompts.InputSecret(request));
}

TEST(Prompts, EndsAllThatItHasOpened) {
    ui::DialogPrompts prompts;
    int ended = 0;
    auto const expectEnded = [&ended](QDialog& dialog) {
        ended += dialog.isVisible() ? 0 : 1;
        dialog.reject();
    };
    WhenModal<ui::ZVLMessageBox>([&](ui::ZVLMessageBox& outer) {
        WhenModal<ui::InputDialog>([&](ui::InputDialog& secret) {
            WhenModal<QFileDialog>([&](QFileDialog& chooser) {
                prompts.CloseAll();
                expectEnded(chooser);
            });
            EXPECT_FALSE(prompts.ChooseFile({}));
            expectEnded(secret);
        });
        EXPECT_FALSE(prompts.InputSecret({}));
        expectEnded(outer);
    });
    EXPECT_FALSE(askDelete(prompts));
    EXPECT_EQ(ended, 3);
}
