#include "ui/cert/cert_view_form.h"

#include "ui/config/cert_decode.h"
#include "ui/text/texts.h"
#include "ui/widgets/elided_label.h"

namespace zorvanelink::ui {

CertViewForm::CertViewForm(QString const& name, QString const& issuer, QString const& validFrom,
                           QString const& validTo, QWidget* parent)
    : QWidget(parent), name_(Readable(name)) {
    auto* rows = new QFormLayout(this);
    rows->setContentsMargins(29, 4, 12, 12);
    rows->setHorizontalSpacing(12);
    rows->setVerticalSpacing(4);
    rows->setLabelAlignment(Qt::AlignLeft);
    rows->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    addRow(*rows, "cert_name_", Translate(QT_TRANSLATE_NOOP("ui", "Name")), name_);
    addRow(*rows, "cert_issuer_", Translate(QT_TRANSLATE_NOOP("ui", "Issuer")), Readable(issuer));
    addRow(*rows, "cert_valid_from_", Translate(QT_TRANSLATE_NOOP("ui", "Valid from")), validFrom);
    addRow(*rows, "cert_valid_to_", Translate(QT_TRANSLATE_NOOP("ui", "Valid to")), validTo);
}

QString CertViewForm::Readable(QString const& text) {
    std::string const utf8 = text.toStdString();
    return IsCertEncoded(utf8) ? QString::fromStdString(CertDecode(utf8)) : text;
}

void CertViewForm::addRow(QFormLayout& rows, char const* objectName, QString const& label,
                          QString const& value) {
    auto* caption = new QLabel(label, this);
    caption->setProperty("role", QStringLiteral("label"));
    auto* shown = new ElidedLabel(value, this);
    shown->setObjectName(QLatin1String(objectName));
    shown->setProperty("role", QStringLiteral("detail"));
    rows.addRow(caption, shown);
}

}  // namespace zorvanelink::ui
