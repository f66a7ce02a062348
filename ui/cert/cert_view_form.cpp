#include "ui/cert/cert_view_form.h"

#include <QDateTime>

#include "ui/config/cert_decode.h"
#include "ui/widgets/elided_label.h"
#include "ui/widgets/style.h"

namespace zorvanelink::ui {
namespace {

QDateTime timeOf(std::string const& utc) {
    QDateTime time =
        QDateTime::fromString(QString::fromStdString(utc), QStringLiteral("yyyy-MM-dd hh:mm:ss"));
    time.setTimeSpec(Qt::UTC);
    return time;
}

}  // namespace

QString ValidityMark(CertInfo const& cert) {
    QDateTime const now = QDateTime::currentDateTimeUtc();
    QDateTime const from = timeOf(cert.validFrom);
    QDateTime const to = timeOf(cert.validTo);
    QString mark;
    if (to.isValid() && to < now) {
        mark = Translate(QT_TRANSLATE_NOOP("ui", "Expired"));
    } else if (from.isValid() && now < from) {
        mark = Translate(QT_TRANSLATE_NOOP("ui", "Not yet valid"));
    }
    return mark.isEmpty() ? mark : QStringLiteral("[%1] ").arg(mark);
}

QString LocalTime(std::string const& utc) {
    QDateTime const time = timeOf(utc);
    return time.isValid() ? time.toLocalTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"))
                          : QString::fromStdString(utc);
}

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
