// What the connection editor accepts, and how it is stored.
#include <QRegularExpression>

#include "ui/editor/create_connect_dialog.h"
#include "ui/text/texts.h"
#include "ui/widgets/automation_hooks.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;

constexpr int kMaxNameBytes = static_cast<int>(Config::kMaxNameBytes);
constexpr int kMaxServerBytes = 511;
constexpr int kSmallestSpaPort = 1025;
constexpr int kLargestPort = 65535;

// Why the settings file could not keep the name apart from others: its separators, and its own
// group. Empty when it can.
QString faultOf(QString const& name) {
    for (char const* const sign : {";", "/"}) {
        if (name.contains(QLatin1String(sign))) {
            return Translate(QT_TRANSLATE_NOOP("ui", "A name cannot contain \"%1\"."))
                .arg(QLatin1String(sign));
        }
    }
    return name.compare(QLatin1String("general"), Qt::CaseInsensitive) == 0
               ? Translate(QT_TRANSLATE_NOOP("ui", "\"%1\" is reserved.")).arg(name)
               : QString();
}

bool hasControls(QString const& text) {
    static QRegularExpression const controls(QStringLiteral("[\\x00-\\x1F\\x7F]+"));
    return controls.match(text).hasMatch();
}

// What the editor does not show belongs to the connection and may have changed behind it.
void assignEdited(Profile& shared, Profile const& edited) {
    ProfileBase values = edited;
    values.authType = shared.authType;
    values.lastUserName = shared.lastUserName;
    values.gatewayList = shared.gatewayList;
    values.clusterList = shared.clusterList;
    values.forgotPwdUrl = shared.forgotPwdUrl;
    values.lastSupportedAuthTypes = shared.lastSupportedAuthTypes;
    values.supportedAuthTypes = shared.supportedAuthTypes;
    static_cast<ProfileBase&>(shared) = std::move(values);
}

}  // namespace

bool CreateConnectDialog::isProfileNameExist() {
    return services().config.HasName(form_.profile_name_->text().toStdString());
}

bool CreateConnectDialog::CheckInput() {
    return checkName() && checkAddress() && checkCredentials() && checkSpaPort() &&
           checkAutomated();
}

bool CreateConnectDialog::checkName() {
    QLineEdit* const edit = form_.profile_name_;
    if (edit->text().isEmpty()) {
        return refuse(MsgCode::UI_INFO_INPUT_CONNECTION_NAME, edit);
    }
    if (edit->text().toUtf8().size() > kMaxNameBytes) {
        return refuse(MsgCode::UI_TR_ERR_CONNECTION_NAME_LENGTH, edit);
    }
    if (modifying_) {
        return true;  // it cannot be changed
    }
    if (QString const fault = faultOf(edit->text()); !fault.isEmpty()) {
        return refuse(MsgCode::UI_TR_ERR_INVALID_INPUT, edit, fault);
    }
    return !isProfileNameExist() || refuse(MsgCode::UI_INFO_CONNECTION_ALREADY_EXIST, edit);
}

bool CreateConnectDialog::checkAddress() {
    if (form_.server_->text().isEmpty()) {
        return refuse(MsgCode::UI_INFO_INPUT_SERVER_ADDR, form_.server_);
    }
    if (form_.server_->text().toUtf8().size() > kMaxServerBytes) {
        return refuse(MsgCode::UI_TR_ERR_SERVER_ADDR_LENGTH, form_.server_);
    }
    return !form_.port_->text().isEmpty() || refuse(MsgCode::UI_INFO_INPUT_PORT, form_.port_);
}

bool CreateConnectDialog::checkCredentials() {
    SupportedAuthType const type = EditedProfile().authType;
    if (common::NeedsPassword(type) && !CheckUserPwdInput()) {
        return false;
    }
    return !common::NeedsCertificate(type) || (CheckCert() && CheckPinCode());
}

bool CreateConnectDialog::checkSpaPort() {
    if (form_.comboBox_spa_mode_->currentIndex() != static_cast<int>(SPAMode::kOn)) {
        return true;
    }
    QLineEdit* const edit = form_.lineEdit_spa_port_;
    int const port = edit->text().toInt();
    if (!edit->text().isEmpty() && port >= kSmallestSpaPort && port <= kLargestPort) {
        return true;
    }
    if (!advancedOpen_) {
        openAdvanced(true);
    }
    return refuse(edit->text().isEmpty() ? MsgCode::UI_INFO_INPUT_SPA_PORT
                                         : MsgCode::UI_TR_ERR_INVALID_SPA_PORT,
                  edit);
}

// Fields that a program has set never met their validators.
bool CreateConnectDialog::checkAutomated() {
    if (!automationHooks().setResult) {
        return true;
    }
    static QRegularExpression const printable(QStringLiteral("^[!-~]*$"));
    if (!printable.match(form_.server_->text()).hasMatch()) {
        return refuse(MsgCode::UI_TR_ERR_INVALID_INPUT, form_.server_);
    }
    CredentialWidgets const& w = credentials_->Widgets();
    QList<QLineEdit*> fields{form_.profile_name_, w.userName};
    if (w.rememberPassword->isChecked()) {
        fields.append(w.password);
    }
    if (w.rememberPin->isChecked()) {
        fields.append(w.pin);
    }
    for (QLineEdit* const field : fields) {
        if (hasControls(field->text())) {
            return refuse(MsgCode::UI_TR_ERR_INVALID_INPUT, field);
        }
    }
    return true;
}

void CreateConnectDialog::on_add_connect_button__clicked() {
    if (!CheckInput()) {
        return;
    }
    Profile& profile = EditedProfile();
    storeForm(profile);
    Config& config = services().config;
    if (modifying_) {
        profile.keepAuthType = form_.checkbox_keep_auth_type_->isChecked();
        assignEdited(*shared_, profile);
        config.ModifyProfile(profile.name, shared_);
    } else {
        config.AddProfile(SharedProfile(), true);
    }
    accept();
}

void CreateConnectDialog::onSaveButtonClicked() {
    connectWanted_ = false;
    on_add_connect_button__clicked();
    connectWanted_ = result() != Accepted;
}

void CreateConnectDialog::storeForm(Profile& profile) {
    if (!modifying_) {
        profile.name = form_.profile_name_->text().toStdString();
    }
    profile.server = form_.server_->text().toStdString();
    profile.port = form_.port_->text().toUShort();
    // A settings file may hold other numbers.
    profile.loginMode = LoginMode() == kLoginModeGm ? kLoginModeGm : kLoginModeTls;
    SaveSSLConfig();
    SaveAuthConfig();
    profile.optimalChannel = form_.optimal_channel_checkbox_->isChecked();
    profile.spaMode = static_cast<std::uint16_t>(form_.comboBox_spa_mode_->currentIndex());
    profile.spaPort = static_cast<std::uint16_t>(form_.lineEdit_spa_port_->text().toInt());
    profile.commOptimMode =
        static_cast<std::uint16_t>(form_.comboBox_comm_optim_mode->currentIndex());
    profile.gatewayDetect = form_.gateway_detect_checkbox_->isChecked();
    storeGateway(profile);
    profile.verifyServerCert = form_.verfy_server_cert_checkbox_->isChecked();
}

void CreateConnectDialog::storeGateway(Profile& profile) const {
    if (!profile.gatewayDetect || form_.perfer_gateway_combobox_->currentIndex() <= 0) {
        profile.perferredGatewayName.clear();
        profile.perferredGateway = Gateway();
        return;
    }
    profile.perferredGatewayName = form_.perfer_gateway_combobox_->currentText().toStdString();
    auto const known = profile.gatewayList.find(profile.perferredGatewayName);
    if (known != profile.gatewayList.end()) {
        profile.perferredGateway = known->second;
    }
}

void CreateConnectDialog::AutoSetProfile(
    std::shared_ptr<zorvanelink::ui::AutoProfile> const& profile) {
    if (!modifying_) {
        form_.profile_name_->setText(QString::fromStdString(profile->name));
    }
    if (profile->server != "INVALID") {
        form_.server_->setText(QString::fromStdString(profile->server));
    }
    form_.port_->setText(QString::number(profile->port));
    if (profile->loginMode == kLoginModeGm) {
        on_pushButton_gmssl_clicked();
    } else {
        on_pushButton_tls_clicked();
    }
    CredentialWidgets const& w = credentials_->Widgets();
    w.userName->setText(QString::fromStdString(profile->userName));
    w.password->setText(QString::fromStdString(profile->password));
    w.rememberPassword->setChecked(profile->rememberPassword);
    form_.checkbox_keep_auth_type_->setChecked(profile->keepAuthType);
    fillAdvanced(*profile);
}

}  // namespace zorvanelink::ui
