// The certificates that gateways are trusted by: what is taken, refused, shown and kept.
#include <gmock/gmock.h>
#include <openssl/pem.h>

#include <QDir>
#include <QLabel>
#include <QRegularExpression>
#include <QScrollBar>

#include "components/utils/file.h"
#include "tests/ui/cert/cert_fixture.h"
#include "ui/cert/import_trusted_cert_dialog.h"
#include "ui/cert/trust_question.h"

namespace zorvanelink::ui {
namespace {

using Subject = std::vector<std::pair<std::string, std::string>>;

class TrustedCertsTest : public CertDialogTest {
  protected:
    static std::string pem(std::function<int(BIO*)> const& write) {
        std::unique_ptr<BIO, decltype(&BIO_free_all)> const bio(BIO_new(BIO_s_mem()),
                                                                &BIO_free_all);
        write(bio.get());
        char* bytes = nullptr;
        long const size = BIO_get_mem_data(bio.get(), &bytes);
        return {bytes, static_cast<std::size_t>(size)};
    }
    std::string certPem(Subject const& subject) const {
        test::Cert const cert = test::MakeCert({"EC", EVP_sha256(), subject}, key_.get());
        return pem([&](BIO* bio) { return PEM_write_bio_X509(bio, cert.get()); });
    }
    std::string certDer(Subject const& subject) const {
        test::Cert const cert = test::MakeCert({"EC", EVP_sha256(), subject}, key_.get());
        return test::DerOf<X509>(&i2d_X509, cert.get());
    }
    std::string keyPem() const {
        return pem([&](BIO* bio) {
            return PEM_write_bio_PrivateKey(bio, key_.get(), nullptr, nullptr, 0, nullptr, nullptr);
        });
    }
    static std::vector<std::string> files() {
        std::vector<std::string> names;
        for (QString const& name :
             QDir(GetConfigServerCertPath()).entryList(QDir::Files | QDir::Hidden, QDir::Name)) {
            names.push_back(name.toStdString());
        }
        return names;
    }
    // Chooses these, or what was scripted, and answers the question when one is expected.
    void offer(std::vector<QString> const& paths, char const* answer,
               std::function<void(TrustQuestion&)> const& during = {}) {
        bool asked = false;
        if (answer != nullptr) {
            test::WhenModal<TrustQuestion>([&, answer](TrustQuestion& question) {
                asked = true;
                EXPECT_TRUE(test::Find<QPushButton>(question, "no_button_").isDefault());
                if (during) {
                    during(question);
                }
                click(question, answer);
            });
        }
        if (!paths.empty()) {
            prompts.ExpectFiles(paths);
        }
        click(dialog, "import_button_");
        EXPECT_EQ(asked, answer != nullptr);
    }

    test::Pkey const key_ = test::MakeKey("EC");
    ImportTrustedCertDialog dialog{prompts};
};

TEST_F(TrustedCertsTest, WhatIsShownAndAcceptedIsWhatIsKept) {
    QString const root = write("root.pem", certPem({{"C", "DE"}, {"CN", "Root"}}));
    QString const der = write("der.pem", certDer({{"O", "Example"}, {"CN", "Second"}}));
    std::string const first = certPem({{"CN", "First"}});
    std::string const bundle = first + certPem({{"CN", "Hidden"}});
    offer({root, der}, "no_button_");
    EXPECT_THAT(files(), testing::IsEmpty());

    offer({root, der, write("bundle.crt", bundle)}, "yes_button_", [&](TrustQuestion& question) {
        QStringList shown;
        for (auto const* label : question.findChildren<QLabel*>()) {
            shown.append(label->text());
        }
        for (char const* name : {"Root", "Second", "First"}) {
            EXPECT_TRUE(shown.contains(QLatin1String(name))) << name;
        }
        EXPECT_EQ(shown.filter(QRegularExpression(QStringLiteral("^([0-9A-F]{2}:){16}\n"))).size(),
                  3);
        auto* const bar = test::Find<QScrollArea>(question, "form_scroll_").verticalScrollBar();
        QTest::keyClick(&test::Find<QPushButton>(question, "no_button_"), Qt::Key_PageDown);
        EXPECT_GT(bar->value(), 0) << "what does not fit is read by keyboard";
        write("bundle.crt", certPem({{"CN", "Exchanged meanwhile"}}));
    });
    EXPECT_THAT(files(), testing::ElementsAre("bundle.crt", "der.pem", "root.pem"));
    std::string kept;
    QString const path = QDir(GetConfigServerCertPath()).filePath(QStringLiteral("bundle.crt"));
    ASSERT_TRUE(components::utils::ReadContentFromFile(path.toStdString(), kept));
    EXPECT_EQ(kept, first) << "and nothing that was not shown";
    EXPECT_EQ(QFileInfo(path).permissions() & 0x0077, QFile::Permissions());

    // Known by the subject, whatever the file is called; a name that is taken gets a mark.
    QString const other = write("other.pem", certDer({{"CN", "Root"}, {"C", "DE"}}));
    prompts.ExpectFiles({other});
    prompts.ExpectBox(text(MsgCode::UI_TR_CERT_ALREADY_IMPORT).arg(other), 0);
    offer({}, nullptr);
    offer({write("root.pem", certPem({{"CN", "Root"}}))}, "yes_button_");
    offer({write("root.pem", certPem({{"CN", "Root 3"}}))}, "yes_button_");
    EXPECT_THAT(files(), testing::ElementsAre("bundle.crt", "der.pem", "root.pem", "root.pem_",
                                              "root.pem__"));

    auto& list = test::Find<QListView>(dialog, "trusted_cert_list_");
    ASSERT_EQ(list.model()->rowCount(), 5);
    list.setCurrentIndex({});
    prompts.ExpectBox(text(MsgCode::UI_INFO_PLEASE_SELECT_CERTIFICATE), 0);
    click(dialog, "delete_button_");
    list.setCurrentIndex(list.model()->index(1, 0));
    components::utils::ServerCert const second = TrustedCerts::List().at(1).cert;
    for (int const answer : {-1, 0}) {
        prompts.ExpectBox(text(MsgCode::UI_TR_SURE_TO_DELETE_CERT) + QStringLiteral("#@@#") +
                              LinesOf(second.details).Whole() + QStringLiteral("\nSHA-256 ") +
                              QString::fromStdString(second.sha256),
                          answer);
        click(dialog, "delete_button_");
        EXPECT_EQ((files().at(1) == "der.pem"), answer != 0);
    }
}  // namespace

TEST_F(TrustedCertsTest, RefusesWhatIsNoCertificateAloneAndMoreThanSixteen) {
    struct Case {
        char const* name;
        std::string content;
        QString box;
    } const cases[] = {
        {"empty.cer", "", text(MsgCode::UI_TR_IMPORT_CERT_FAILED)},
        {"text.cer", "-----BEGIN CERTIFICATE-----\n", text(MsgCode::UI_TR_IMPORT_CERT_FAILED)},
        {"large.cer", certPem({{"CN", "L"}}) + std::string(1 << 20, '\n'),
         text(MsgCode::UI_TR_IMPORT_CERT_FAILED)},
        {"key.pem", certPem({{"CN", "K"}}) + keyPem(),
         QStringLiteral("key.pem holds a private key and was not imported. Ask your administrator "
                        "for the certificate alone.")},
    };
    std::vector<QString> paths{QString::fromStdString(home_.string())};
    for (Case const& c : cases) {
        paths.push_back(write(c.name, c.content));
    }
    paths.push_back(write("good.cer", certPem({{"CN", "Good"}})));
    prompts.ExpectFiles(paths);
    prompts.ExpectBox(text(MsgCode::UI_TR_FILE_NOT_READABLE), 0);
    for (Case const& c : cases) {
        prompts.ExpectBox(c.box, 0);
    }
    offer({}, "yes_button_");
    EXPECT_THAT(files(), testing::ElementsAre("good.cer")) << "one bad file stops no other";

    for (int i = 1; i < 15; ++i) {
        test::WriteFile(GetConfigServerCertPath().toStdString() + "/" + std::to_string(i), "any");
    }
    prompts.ExpectFiles({paths.back(), write("x.cer", certPem({{"CN", "X"}}))});
    prompts.ExpectBox(text(MsgCode::UI_TR_CERT_FILE_NUM_LIMIT), 0);
    offer({}, nullptr);
    EXPECT_EQ(files().size(), 15U);
    offer({write("x.cer", certPem({{"CN", "X"}}))}, "yes_button_");
    EXPECT_EQ(files().size(), 16U);
}

}  // namespace
}  // namespace zorvanelink::ui
