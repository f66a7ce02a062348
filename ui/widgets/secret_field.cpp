#include "ui/widgets/secret_field.h"

#include <QByteArray>

#include "components/utils/secret_string.h"
#include "components/utils/sensitive_value.h"

namespace zorvanelink::ui {

std::string SensitiveValueOf(QLineEdit const& field) {
    QByteArray bytes = field.text().toUtf8();
    components::utils::SecretString const clear(bytes.toStdString());
    bytes.fill('\0');
    return components::utils::EncodeSensitiveValue(clear.Get());
}

std::string TakeSensitiveValue(QLineEdit& field) {
    std::string value = SensitiveValueOf(field);
    WipeField(field);
    return value;
}

void TypeInto(QLineEdit& field, std::string const& clear) {
    QString text = QString::fromStdString(clear);
    field.setText(text);
    text.fill(QChar(u'\0'));  // where the field holds this very buffer it keeps it, unwiped
}

void WipeField(QLineEdit& field) {
    QString text = field.text();
    // Only when the field has let go of the shared buffer does fill() reach that very buffer.
    field.setText(QString());
    text.fill(QChar(u'\0'));
}

// Qt takes the hints back with the mode.
void SetSecretEcho(QLineEdit& field, QLineEdit::EchoMode mode) {
    field.setEchoMode(mode);
    field.setInputMethodHints(field.inputMethodHints() | Qt::ImhSensitiveData |
                              Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase);
}

int Utf8Length(QLineEdit const& field) {
    QByteArray bytes = field.text().toUtf8();
    int const length = bytes.size();
    bytes.fill('\0');
    return length;
}

}  // namespace zorvanelink::ui
