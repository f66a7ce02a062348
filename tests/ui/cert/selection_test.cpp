// Selecting and deleting imported certificates, by mouse and by keyboard.
#include "components/cert/pkcs12.h"
#include "tests/ui/cert/cert_fixture.h"
#include "ui/cert/cert_view_form.h"
#include "ui/widgets/elided_label.h"

namespace zorvanelink::ui {
namespace {

using test::Find;

TEST_F(CertDialogTest, OkCopiesTheSelectedRecord) {
    stored("Anna");
    stored("Boris");
    CertInfo target;
    DigitalCertDialog dialog(&target, config, prompts);
    choose(dialog, 1);
    CertInfo const& expected = std::next(config.clientCerts.begin())->second;
    click(dialog, "btn_ok_");
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(target.fingerprint, expected.fingerprint);
    EXPECT_EQ(target.commonName, expected.commonName);
    EXPECT_EQ(target.filePath, fileOf(expected).string());
    EXPECT_EQ(target.pin, expected.pin);
}

TEST_F(CertDialogTest, OkWithoutSelectionClearsTheTargetAndCancelKeepsIt) {
    CertInfo const before = stored("Anna");
    CertInfo target = before;
    target.fingerprint = "of a certificate that has gone";
    DigitalCertDialog dialog(&target, config, prompts);
    dialog.show();
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
    EXPECT_EQ(target.commonName, "Anna");
    click(dialog, "btn_ok_");
    EXPECT_EQ(target.commonName, "");
    EXPECT_EQ(target.pin, "");
}

TEST_F(CertDialogTest, OpensWithTheTargetSelected) {
    stored("Anna");
    CertInfo target = stored("Boris");
    std::string const fingerprint = target.fingerprint;
    DigitalCertDialog dialog(&target, config, prompts);
    click(dialog, "btn_ok_");
    EXPECT_EQ(target.fingerprint, fingerprint);
}

TEST_F(CertDialogTest, DeleteAsksAndNoIsTheDefault) {
    CertInfo const cert = stored("Anna");
    DigitalCertDialog dialog(nullptr, config, prompts);
    prompts.ExpectBox(text(MsgCode::UI_INFO_PLEASE_SELECT_CERTIFICATE), 0);
    click(dialog, "btn_delete_");

    choose(dialog, 0);
    for (int const refusal : {1, -1}) {
        prompts.ExpectBox(text(MsgCode::UI_TR_SURE_TO_DELETE_CERT), refusal);
        click(dialog, "btn_delete_");
        EXPECT_EQ(prompts.Boxes().back().defaultButton, 1);
        EXPECT_TRUE(config.IsClientCertExist(cert));
    }
    config.Save();
    test::LogCapture const log;
    prompts.ExpectBox(text(MsgCode::UI_TR_SURE_TO_DELETE_CERT), 0);
    click(dialog, "btn_delete_");
    EXPECT_TRUE(log.Has("Delete cert: [Anna]"));
    EXPECT_FALSE(config.IsClientCertExist(cert));
    EXPECT_FALSE(std::filesystem::exists(fileOf(cert)));
    EXPECT_TRUE(boxOf(dialog).Pages().empty());
    EXPECT_FALSE(fileHas(cert.fingerprint)) << "the deletion saved the configuration";
    prompts.ExpectBox(text(MsgCode::UI_INFO_PLEASE_SELECT_CERTIFICATE), 0);
    click(dialog, "btn_delete_");
}

TEST_F(CertDialogTest, FailedDeleteKeepsRowAndRecord) {
    CertInfo const cert = stored("Anna");
    std::filesystem::remove(fileOf(cert));
    test::WriteFile(fileOf(cert) / "inside", "a folder that is not empty stays");
    DigitalCertDialog dialog(nullptr, config, prompts);
    choose(dialog, 0);
    prompts.ExpectBox(text(MsgCode::UI_TR_SURE_TO_DELETE_CERT), 0);
    prompts.ExpectBox(text(MsgCode::SDK_ERR_FAILED_DELETE_FILE), 0);
    click(dialog, "btn_delete_");
    EXPECT_TRUE(config.IsClientCertExist(cert));
    EXPECT_EQ(boxOf(dialog).Pages().size(), 1U);
}

TEST_F(CertDialogTest, KeyboardMovesFoldsAndAccepts) {
    stored("Anna");
    stored("Boris");
    stored("Clara");
    CertInfo target;
    DigitalCertDialog dialog(&target, config, prompts);
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    CertViewBox& box = boxOf(dialog);
    auto const press = [](Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); };
    box.Pages()[0]->SelectButton()->setFocus();
    press(Qt::Key_Space);
    EXPECT_TRUE(box.Pages()[0]->IsSelected());
    press(Qt::Key_Down);
    EXPECT_FALSE(box.Pages()[0]->IsSelected());
    EXPECT_TRUE(box.Pages()[1]->IsSelected());
    press(Qt::Key_Right);
    EXPECT_TRUE(box.Pages()[1]->Body()->isVisible());
    press(Qt::Key_Left);
    EXPECT_FALSE(box.Pages()[1]->Body()->isVisible());
    press(Qt::Key_End);
    EXPECT_TRUE(box.Pages()[2]->IsSelected());
    press(Qt::Key_Down);
    EXPECT_TRUE(box.Pages()[2]->IsSelected()) << "the list does not run around";
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->objectName().toStdString(), "btn_cancel_")
        << "of all rows only the selected one is in the order of Tab";
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
    press(Qt::Key_Return);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(target.fingerprint, config.clientCerts.rbegin()->first);
}

TEST_F(CertDialogTest, ViewsShowNamesAsPeopleReadThem) {
    CertInfo const gm = stored("Anna", "SM2", EVP_sm3());
    DigitalCertDialog dialog(nullptr, config, prompts);
    EXPECT_EQ(boxOf(dialog).Pages()[0]->SelectButton()->accessibleName().toStdString(),
              "[GMSSL] Anna");
    struct Case {
        char const* name;
        char const* shown;
    } const cases[] = {{"M\\C3\\BCller", "Müller"}, {"Plain \\ name", "Plain \\ name"}};
    for (Case const& c : cases) {
        CertViewForm const form(QString::fromUtf8(c.name), QString::fromUtf8(c.name), {}, {});
        EXPECT_EQ(form.Name().toStdString(), c.shown);
        EXPECT_EQ(Find<ElidedLabel>(form, "cert_issuer_").FullText().toStdString(), c.shown);
    }
}

TEST(CertViewBox, DeletingTheSelectedRowLeavesNothingSelected) {
    CertViewBox box;
    auto* first = new QWidget;
    auto* second = new QWidget;
    box.addWidget(QStringLiteral("first"), first);
    box.addWidget(QStringLiteral("second"), second);
    box.PageOf(second)->SelectButton()->click();
    box.deleteWidget(first);
    EXPECT_EQ(box.SelectedCertWidget(), second);
    box.deleteWidget(second);
    EXPECT_EQ(box.SelectedCertWidget(), nullptr);
    EXPECT_TRUE(Find<QLabel>(box, "empty_label_").isVisibleTo(&box));
}

}  // namespace
}  // namespace zorvanelink::ui
