#include <gtest/gtest.h>

#include <QFileDialog>

#include "components/utils/sensitive_value.h"
#include "tests/support/qt_helpers.h"
#include "ui/widgets/input_dialog.h"
#include "ui/widgets/prompts.h"
#include "ui/widgets/zvl_message_box.h"

using namespace zorvanelink;
using test::Find;
using test::WhenModal;
using ui::Prompts;

namespace {

bool askDelete(Prompts& prompts) {
    return prompts.Question(nullptr, QStringLiteral("Warning"), QStringLiteral("Delete?"),
                            QStringLiteral("Yes"), QStringLiteral("No"), Prompts::Default::kNo);
}

}  // namespace

TEST(Prompts, OnlyAPressedYesIsYes) {
    ui::DialogPrompts prompts;
    WhenModal<ui::ZVLMessageBox>(
        [](ui::ZVLMessageBox& box) { Find<QPushButton>(box, "button_0_").click(); });
    EXPECT_TRUE(askDelete(prompts));
    WhenModal<ui::ZVLMessageBox>([](ui::ZVLMessageBox& box) { box.close(); });
    EXPECT_FALSE(askDelete(prompts));
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
    WhenModal<ui::InputDialog>(
        [](ui::InputDialog& dialog) { dialog.AutoConfirmPwd(QStringLiteral("pin"), true); });
    auto const answer = prompts.InputSecret(request);
    ASSERT_TRUE(answer);
    EXPECT_EQ(components::utils::DecodeSensitiveValue(answer->value), "pin");
    EXPECT_TRUE(answer->remember);
    WhenModal<ui::InputDialog>([](ui::InputDialog& dialog) { dialog.reject(); });
    EXPECT_FALSE(prompts.InputSecret(request));
}

TEST(Prompts, EndsAllThatItHasOpened) {
    ui::DialogPrompts prompts;
    std::vector<int> answers;
    WhenModal<ui::ZVLMessageBox>([&](ui::ZVLMessageBox&) {
        WhenModal<ui::InputDialog>([&](ui::InputDialog&) {
            WhenModal<QFileDialog>([&](QFileDialog&) { prompts.CloseAll(); });
            EXPECT_FALSE(prompts.ChooseFile({}));
            answers.push_back(1);
        });
        EXPECT_FALSE(prompts.InputSecret({}));
        answers.push_back(2);
    });
    EXPECT_FALSE(askDelete(prompts));
    EXPECT_EQ(answers, (std::vector{1, 2}));
    prompts.CloseAll();
}
