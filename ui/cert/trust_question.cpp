#include "ui/cert/trust_question.h"

#include <QFileInfo>
#include <QFormLayout>

#include "ui/cert/cert_lines.h"
#include "ui/cert/cert_view_form.h"
#include "ui/text/texts.h"
#include "ui/widgets/dialog_foot.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;

constexpr int kWidth = 560;  // pixels, before scaling

// In two lines, which can be compared by eye.
QString fingerprintLines(std::string const& sha256) {
    QString text = QString::fromStdString(sha256);
    int const middle = (text.size() + 1) / 2;
    return text.isEmpty() ? text : text.left(middle) + QLatin1Char('\n') + text.mid(middle);
}

}  // namespace

TrustQuestion::TrustQuestion(std::vector<TrustedCerts::Held> const& certs, QWidget* parent)
    : ZVLDialog(parent) {
    setObjectName(QStringLiteral("trust_question_"));
    setWindowTitle(GetTrMsg(MsgCode::UI_TR_IMPORT_TRUSTED_CERT));
    auto* const question =
        new QLabel(Translate(QT_TRANSLATE_NOOP(
                       "ui",
                       "Do you trust every gateway that these certificates vouch for? Compare the "
                       "fingerprints with those that your administrator gave you.")),
                   Body());
    question->setObjectName(QStringLiteral("trust_text_"));
    question->setWordWrap(true);
    auto* const column = new QVBoxLayout(Body());
    column->setContentsMargins(20, 16, 20, 12);
    column->setSpacing(16);
    column->addWidget(question);
    for (TrustedCerts::Held const& held : certs) {
        column->addWidget(buildCert(held));
    }
    auto* const foot = new DialogFoot(Panel(), "yes_button_", "no_button_");
    foot->Ok()->setText(GetTrMsg(MsgCode::UI_INFO_YES));
    foot->Ok()->setAccessibleName(foot->Ok()->text());
    foot->Cancel()->setText(GetTrMsg(MsgCode::UI_INFO_NO));
    foot->Cancel()->setAccessibleName(foot->Cancel()->text());
    setAccessibleDescription(question->text());
    foot->Ok()->setDefault(false);
    foot->Cancel()->setDefault(true);
    foot->Cancel()->setFocus();
    connect(foot->Ok(), &QPushButton::clicked, this, &QDialog::accept);
    connect(foot->Cancel(), &QPushButton::clicked, this, &QDialog::reject);
    SetFoot(foot);
    setFixedWidth(kWidth);
}

QWidget* TrustQuestion::buildCert(TrustedCerts::Held const& held) {
    auto* const group = new QFrame(Body());
    group->setProperty("card", true);
    auto* const rows = new QFormLayout(group);
    rows->setContentsMargins(16, 12, 16, 12);
    rows->setHorizontalSpacing(12);
    rows->setVerticalSpacing(4);
    rows->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    auto* const name = new QLabel(LinesOf(held.cert.details).name, group);
    name->setTextFormat(Qt::PlainText);
    name->setWordWrap(true);
    name->setProperty("role", QStringLiteral("heading"));
    rows->addRow(name);
    auto const add = [&](QString const& caption, QString const& text) {
        auto* const label = new QLabel(caption, group);
        label->setProperty("role", QStringLiteral("label"));
        auto* const value = new QLabel(text, group);
        value->setTextFormat(Qt::PlainText);
        value->setWordWrap(true);
        value->setTextInteractionFlags(Qt::TextSelectableByMouse);
        value->setProperty("role", QStringLiteral("detail"));
        rows->addRow(label, value);
    };
    CertInfo const& cert = held.cert.details;
    add(Translate(QT_TRANSLATE_NOOP("ui", "File")), QFileInfo(held.path).fileName());
    add(Translate(QT_TRANSLATE_NOOP("ui", "Subject")),
        CertViewForm::Readable(QString::fromStdString(cert.subject)));
    add(Translate(QT_TRANSLATE_NOOP("ui", "Issuer")),
        CertViewForm::Readable(QString::fromStdString(cert.issuer)));
    add(Translate(QT_TRANSLATE_NOOP("ui", "Valid from")), LocalTime(cert.validFrom));
    add(Translate(QT_TRANSLATE_NOOP("ui", "Valid to")), LocalTime(cert.validTo));
    add(QStringLiteral("SHA-256"), fingerprintLines(held.cert.sha256));
    return group;
}

}  // namespace zorvanelink::ui
