#include <gtest/gtest.h>

#include <QComboBox>
#include <QtTest/QTest>

#include "components/utils/sensitive_value.h"
#include "tests/support/qt_helpers.h"
#include "ui/widgets/dim_cover.h"
#include "ui/widgets/input_dialog.h"
#include "ui/widgets/zvl_message_box.h"

using namespace zorvanelink;
using test::Find;
using test::WaitFor;
using test::WhenModal;

namespace {

QString text(char const* utf8) {
    return QString::fromUtf8(utf8);
}

bool isDimmed(QDialog const& dialog) {
    auto const* cover = dialog.findChild<ui::DimCover*>(QStringLiteral("dialog_cover_"));
    return cover != nullptr && cover->isVisible() && cover->geometry() == dialog.rect();
}

}  // namespace

TEST(Dialog, DimsBehindABoxAndComesBack) {
    ui::ZVLDialog dialog;
    dialog.resize(300, 200);
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
    bool dimmed = false;
    WhenModal<ui::ZVLMessageBox>([&](ui::ZVLMessageBox& box) {
        dimmed = isDimmed(dialog);
        box.reject();
    });
    ui::ZVLDialog::ShowCriticalBox(&dialog, text("T"), text("Text"), text("OK"));
    EXPECT_TRUE(dimmed);
    EXPECT_FALSE(isDimmed(dialog));
}

TEST(Dialog, StaysLitWhileItsComboBoxIsOpen) {
    ui::ZVLDialog dialog;
    auto* combo = new QComboBox(dialog.Body());
    combo->addItems({text("a"), text("b")});
    dialog.resize(300, 200);
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
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
        ui::InputDialog dialog;
        dialog.set_max_utf8_length(row.limit);
        dialog.setTooLongMessage(text("too long"));
        dialog.setEmptyTextMessage(text("empty"));
        dialog.show();
        dialog.setTextValue(text(row.secret));
        QString complaint;
        if (row.complaint != nullptr) {
            WhenModal<ui::ZVLMessageBox>([&](ui::ZVLMessageBox& box) {
                complaint = Find<ui::MessageText>(box, "main_label_").toPlainText();
                box.reject();
            });
        }
        Find<QPushButton>(dialog, "ok_button_").click();
        EXPECT_EQ(complaint.toStdString(), row.complaint == nullptr ? "" : row.complaint);
        EXPECT_EQ(dialog.isVisible(), row.complaint != nullptr) << row.secret;
    }
}

TEST(InputDialog, HidesTheSecretAndAcceptsAnEmptyOneWhenTold) {
    ui::InputDialog dialog;
    auto& edit = Find<QLineEdit>(dialog, "text_edit_");
    EXPECT_EQ(edit.echoMode(), QLineEdit::Password);
    dialog.setLabelText(text("PIN"));
    EXPECT_EQ(edit.accessibleName(), text("PIN"));
    dialog.SetRememberCheckHide(true);
    dialog.show();
    EXPECT_EQ(dialog.focusWidget(), &edit);
    EXPECT_FALSE(Find<QCheckBox>(dialog, "remember_check_").isVisible());
    QTest::keyClick(&edit, Qt::Key_Return);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
}

TEST(InputDialog, AutomationAnswersAndRefuses) {
    ui::InputDialog dialog;
    dialog.show();
    dialog.AutoConfirmPwd(text("secret"), true);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(dialog.textValue(), text("secret"));
    EXPECT_TRUE(dialog.remberCheck());
    EXPECT_EQ(dialog.TakeSensitiveValue(), components::utils::EncodeSensitiveValue("secret"));
    EXPECT_TRUE(dialog.textValue().isEmpty());
    dialog.show();
    dialog.AutoRefusedPwd();
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
}
