// The widgets for credentials: user name and password, certificate and PIN.
#pragma once

#include <QCheckBox>
#include <QWidget>

#include "ui/widgets/secret_edit.h"

namespace zorvanelink::ui {

// What a dialog hands over to AuthConfigBase. The dialog owns the widgets.
struct CredentialWidgets {
    QLineEdit* userName = nullptr;
    SecretEdit* password = nullptr;
    QCheckBox* rememberPassword = nullptr;
    QLineEdit* certName = nullptr;  // read only
    FieldButton* selectCert = nullptr;
    QWidget* pinGroup = nullptr;  // label, field and box of the PIN, shown together
    SecretEdit* pin = nullptr;
    QCheckBox* rememberPin = nullptr;
};

// Two groups below each other, labels above their fields; who places the form shows and hides the
// groups. Object names: lineedit_username_, lineedit_password_, checkBox_remember_pwd_,
// lineEdit_select_cert, select_cert_button_, lineedit_pin_, checkBox_remember_pin_.
class CredentialForm : public QWidget {
    Q_OBJECT

  public:
    explicit CredentialForm(QWidget* parent);

    CredentialWidgets const& Widgets() const { return widgets_; }
    QWidget* PasswordGroup() const { return passwordGroup_; }
    QWidget* CertGroup() const { return certGroup_; }
    // All that can have the focus, in the order of the tabulator.
    QList<QWidget*> TabStops() const;

  private:
    static QWidget* buildGroup(char const* name, QWidget* parent);
    void addField(QWidget* group, QLineEdit* field, char const* name, QString const& text);
    QCheckBox* addCheckBox(QWidget* group, char const* name);

    QWidget* passwordGroup_ = nullptr;
    QWidget* certGroup_ = nullptr;
    CredentialWidgets widgets_;
};

}  // namespace zorvanelink::ui
