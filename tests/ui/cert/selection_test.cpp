// Selecting and deleting imported certificates, by mouse and by keyboard.
#include "tests/ui/cert/cert_fixture.h"
#include "ui/cert/cert_view_form.h"
#include "ui/widgets/elided_label.h"

namespace zorvanelink::ui {
namespace {

using test::Find;

TEST_F(CertDialogTest, OkCopiesTheSelectedRecordAndCancelKeepsTheTarget) {
    CertInfo const anna = stored("Anna");
    stored("Boris");
    CertInfo target = anna;
    {
        DigitalCertDialog dialog(&target, config, prompts);
        click(dialog, "btn_ok_");
        EXPECT_EQ(target.fingerprint, anna.fingerprint) << "opens with the target selected";
    }
    target.fingerprint = "of a certificate that has gone";
    DigitalCertDialog dialog(&target, config, prompts);
    dialog.show();
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
    EXPECT_EQ(target.commonName, "Anna");
    click(dialog, "btn_ok_");
    EXPECT_EQ(target.commonName + target.pin, "") << "nothing selected is no certificate";
    choose(dialog, 1);
    CertInfo const& expected = std::next(config.clientCerts.begin())->second;
    click(dialog, "btn_ok_");
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(target.fingerprint + target.commonName + target.pin,
              expected.fingerprint + expected.commonName + expected.pin);
    EXPECT_EQ(target.filePath, fileOf(expected).string());
}

TEST_F(CertDialogTest, DeleteAsksAndNoIsTheDefault) {
    CertInfo const cert = stored("Anna");
    QString const detail =
        QStringLiteral("#@@#Anna\nAnna \u00B7 Valid until ") + LocalTime(cert.validTo).left(10);
    DigitalCertDialog dialog(nullptr, config, prompts);
    auto const deleting = [&](std::vector<std::pair<MsgCode, int>> const& boxes) {
        for (auto const& [code, answer] : boxes) {
            bool const asks = code == MsgCode::UI_TR_SURE_TO_DELETE_CERT;
            prompts.ExpectBox(text(code) + (asks ? detail : QString()), answer);
        }
        click(dialog, "btn_delete_");
    };
    deleting({{MsgCode::UI_INFO_PLEASE_SELECT_CERTIFICATE, 0}});
    choose(dialog, 0);
    for (int const refusal : {1, -1}) {
        deleting({{MsgCode::UI_TR_SURE_TO_DELETE_CERT, refusal}});
        EXPECT_EQ(prompts.Boxes().back().defaultButton, 1);
        EXPECT_TRUE(config.IsClientCertExist(cert));
    }
    config.Save();
    std::string const bytes = test::ReadFile(fileOf(cert));
    std::filesystem::remove(fileOf(cert));
    test::WriteFile(fileOf(cert) / "inside", "a folder that is not empty stays");
    deleting({{MsgCode::UI_TR_SURE_TO_DELETE_CERT, 0}, {MsgCode::SDK_ERR_FAILED_DELETE_FILE, 0}});
    EXPECT_TRUE(config.IsClientCertExist(cert));
    EXPECT_EQ(boxOf(dialog).Pages().size(), 1U);
    std::filesystem::remove_all(fileOf(cert));
    test::WriteFile(fileOf(cert), bytes);

    test::LogCapture const log;
    deleting({{MsgCode::UI_TR_SURE_TO_DELETE_CERT, 0}});
    EXPECT_TRUE(log.Has("Delete cert: [Anna]"));
    EXPECT_FALSE(config.IsClientCertExist(cert));
    EXPECT_FALSE(std::filesystem::exists(fileOf(cert)));
    EXPECT_TRUE(boxOf(dialog).Pages().empty());
    EXPECT_TRUE(Find<QLabel>(dialog, "empty_label_").isVisibleTo(&dialog));
    EXPECT_FALSE(fileHas(cert.fingerprint)) << "the deletion saved the configuration";
    EXPECT_FALSE(Find<QPushButton>(dialog, "btn_delete_").isEnabled());
}

TEST_F(CertDialogTest, KeyboardMovesFoldsAndAccepts) {
    for (char const* name : {"Anna", "Boris", "Clara"}) {
        stored(name, "EC");
    }
    CertInfo target;
    DigitalCertDialog dialog(&target, config, prompts);
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    auto const& pages = boxOf(dialog).Pages();
    pages[0]->SelectButton()->setFocus();
    struct Press {
        Qt::Key key;
        std::size_t selected;
        bool open;
    } const presses[] = {{Qt::Key_Space, 0, false}, {Qt::Key_Down, 1, false},
                         {Qt::Key_Right, 1, true},  {Qt::Key_Left, 1, false},
                         {Qt::Key_End, 2, false},   {Qt::Key_Down, 2, false}};
    for (Press const& press : presses) {
        QTest::keyClick(QApplication::focusWidget(), press.key);
        for (std::size_t i = 0; i < pages.size(); ++i) {
            EXPECT_EQ(pages[i]->IsSelected(), i == press.selected) << press.key;
        }
        EXPECT_EQ(pages[press.selected]->Body()->isVisible(), press.open) << press.key;
    }
    for (Qt::Key const key : {Qt::Key_Tab, Qt::Key_Tab}) {
        QTest::keyClick(QApplication::focusWidget(), key);
    }
    EXPECT_EQ(QApplication::focusWidget()->objectName().toStdString(), "btn_cancel_")
        << "of all rows only the selected one is in the order of Tab";
    for (Qt::Key const key : {Qt::Key_Backtab, Qt::Key_Backtab, Qt::Key_Return}) {
        QTest::keyClick(QApplication::focusWidget(), key);
    }
    EXPECT_EQ(target.fingerprint, config.clientCerts.rbegin()->first);
}

TEST_F(CertDialogTest, ViewsShowNamesAndTimesAsPeopleReadThem) {
    setenv("TZ", "XYZ-8", 1);  // eight hours ahead
    tzset();
    CertInfo const gm = stored("M\xC3\xBCller", "SM2", EVP_sm3());
    struct Case {
        char const* from;
        char const* to;
        char const* name;
        char const* shownTo;
    } const cases[] = {
        {"2026-01-02 03:04:05", "2999-12-31 20:00:00", "[GMSSL] Müller", "3000-01-01 04:00:00"},
        {"2026-01-02 03:04:05", "2026-01-03 03:04:05", "[Expired] [GMSSL] Müller",
         "2026-01-03 11:04:05"},
        {"2999-01-01 00:00:00", "none", "[Not yet valid] [GMSSL] Müller", "none"},
        {"", "", "[GMSSL] Müller", ""},
    };
    for (Case const& c : cases) {
        CertInfo& record = config.clientCerts[gm.fingerprint];
        record.validFrom = c.from;
        record.validTo = c.to;
        record.issuer = "M\\C3\\BCller, Plain \\ name";
        DigitalCertDialog dialog(nullptr, config, prompts);
        CertViewPage const& page = *boxOf(dialog).Pages()[0];
        EXPECT_EQ(page.SelectButton()->accessibleName().toStdString(), c.name);
        auto const shown = [&](char const* label) {
            return Find<ElidedLabel>(*page.Body(), label).FullText().toStdString();
        };
        EXPECT_EQ(shown("cert_valid_to_"), c.shownTo);
        EXPECT_EQ(shown("cert_issuer_"), "Müller, Plain \\ name");
    }
    unsetenv("TZ");
    tzset();
}

}  // namespace
}  // namespace zorvanelink::ui
