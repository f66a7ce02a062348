#include "ui/auth/credential_form.h"

#include <QLabel>
#include <QVBoxLayout>

#include "ui/config/profile.h"
#include "ui/text/texts.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;

// Pixels.
constexpr int kFieldSpacing = 12;
constexpr int kLabelSpacing = 5;

}  // namespace

CredentialForm::CredentialForm(QWidget* parent) : QWidget(parent) {
    passwordGroup_ = buildGroup("password_group_", this);
    widgets_.userName = new QLineEdit(passwordGroup_);
    widgets_.password = new SecretEdit(kMaxPasswordBytes, passwordGroup_);
    addField(passwordGroup_, widgets_.userName, "lineedit_username_",
             GetTrMsg(MsgCode::UI_INFO_USER_NAME));
    addField(passwordGroup_, widgets_.password, "lineedit_password_",
             GetTrMsg(MsgCode::UI_INFO_USER_PASSWORD));
    widgets_.rememberPassword = addCheckBox(passwordGroup_, "checkBox_remember_pwd_");

    certGroup_ = buildGroup("cert_group_", this);
    widgets_.certName = new QLineEdit(certGroup_);
    widgets_.certName->setReadOnly(true);
    widgets_.certName->setPlaceholderText(GetTrMsg(MsgCode::UI_INFO_SELECT_CERTIFICATE));
    widgets_.selectCert =
        new FieldButton(widgets_.certName, QStringLiteral(":/assets/images/dot.png"),
                        GetTrMsg(MsgCode::UI_INFO_SELECT_CERTIFICATE));
    widgets_.selectCert->setObjectName(QStringLiteral("select_cert_button_"));
    addField(certGroup_, widgets_.certName, "lineEdit_select_cert",
             GetTrMsg(MsgCode::UI_TR_AUTH_INFO_CERT));
    widgets_.pinGroup = buildGroup("pin_group_", certGroup_);
    certGroup_->layout()->addWidget(widgets_.pinGroup);
    widgets_.pin = new SecretEdit(kMaxPinBytes, widgets_.pinGroup);
    addField(widgets_.pinGroup, widgets_.pin, "lineedit_pin_", GetTrMsg(MsgCode::UI_INFO_PINCODE));
    widgets_.rememberPin = addCheckBox(widgets_.pinGroup, "checkBox_remember_pin_");

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kFieldSpacing);
    column->addWidget(passwordGroup_);
    column->addWidget(certGroup_);
}

QList<QWidget*> CredentialForm::TabStops() const {
    CredentialWidgets const& w = widgets_;
    return {w.userName,   w.password, w.password->Eye(), w.rememberPassword, w.certName,
            w.selectCert, w.pin,      w.pin->Eye(),      w.rememberPin};
}

QWidget* CredentialForm::buildGroup(char const* name, QWidget* parent) {
    auto* group = new QWidget(parent);
    group->setObjectName(QLatin1String(name));
    auto* column = new QVBoxLayout(group);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kFieldSpacing);
    return group;
}

void CredentialForm::addField(QWidget* group, QLineEdit* field, char const* name,
                              QString const& text) {
    auto* label = new QLabel(text, group);
    label->setProperty("role", QStringLiteral("label"));
    label->setBuddy(field);
    field->setObjectName(QLatin1String(name));
    field->setAccessibleName(text);
    auto* pair = new QVBoxLayout;
    pair->setSpacing(kLabelSpacing);
    pair->addWidget(label);
    pair->addWidget(field);
    static_cast<QVBoxLayout*>(group->layout())->addLayout(pair);
}

QCheckBox* CredentialForm::addCheckBox(QWidget* group, char const* name) {
    auto* box = new QCheckBox(group);
    box->setObjectName(QLatin1String(name));
    static_cast<QVBoxLayout*>(group->layout())->addWidget(box, 0, Qt::AlignLeft);
    return box;
}

}  // namespace zorvanelink::ui
