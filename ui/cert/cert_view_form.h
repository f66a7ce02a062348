// The details of one certificate. GUI thread.
#pragma once

#include <QFormLayout>
#include <QWidget>

#include "components/cert/cert_info.h"

namespace zorvanelink::ui {

// "[Expired] ", "[Not yet valid] " or nothing: what stands ahead of the name.
QString ValidityMark(CertInfo const& cert);
// A time of a certificate, which is UTC, on the user's clock; a text that is no time as it stands.
QString LocalTime(std::string const& utc);

class CertViewForm : public QWidget {
    Q_OBJECT

  public:
    // Name and issuer may carry the escapes of an RFC 2253 name; the dates are shown as they are.
    CertViewForm(QString const& name, QString const& issuer, QString const& validFrom,
                 QString const& validTo, QWidget* parent = nullptr);

    // The name as people read it.
    QString Name() const { return name_; }

    // The text with its escapes turned back into letters.
    static QString Readable(QString const& text);

  private:
    void addRow(QFormLayout& rows, char const* objectName, QString const& label,
                QString const& value);

    QString name_;
};

}  // namespace zorvanelink::ui
