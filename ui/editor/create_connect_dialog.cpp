#include "ui/editor/create_connect_dialog.h"

#include "app/environment/app_ctrl.h"
#include "components/logger/logger.h"
#include "ui/cert/client_certs.h"
#include "ui/text/texts.h"
#include "ui/widgets/automation_hooks.h"
#include "ui/widgets/elide.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using components::logger::Log;

// Pixels, before scaling. The heights are the least: what stands in the dialog may need more.
constexpr int kWidth = 480;
constexpr int kCollapsedHeight = 328;
constexpr int kOpenHeight = 560;

constexpr std::uint16_t kLastMode = 2;

}  // namespace

CreateConnectDialog::CreateConnectDialog(std::shared_ptr<Profile> profile, Services services,
                                         QWidget* parent)
    : CreateConnectDialog(
          profile, profile ? std::make_shared<Profile>(*profile) : std::make_shared<Profile>(),
          services, parent) {
}

CreateConnectDialog::CreateConnectDialog(std::shared_ptr<Profile> shared,
                                         std::shared_ptr<Profile> working, Services services,
                                         QWidget* parent)
    : AuthConfigBase(std::move(working), false, services, parent),
      shared_(std::move(shared)),
      modifying_(shared_ != nullptr),
      credentials_(new CredentialForm(Body())),
      form_(*this) {
    setObjectName(QStringLiteral("create_connect_dialog_"));
    setFixedWidth(kWidth);
    SetCredentialWidgets(credentials_->Widgets());
    wire();
    Init();
    InitAuthConfig();
    if (modifying_) {
        InitUIForModify();
    } else {
        setWindowTitle(GetTrMsg(MsgCode::UI_INFO_ADD_CONNECTION));
        form_.profile_name_->setFocus();
    }
}

void CreateConnectDialog::Init() {
    form_.InsertCredentials(credentials_);
    form_.SetTabOrder(credentials_->TabStops());
    // Where only standard TLS may be used there is nothing to choose.
    form_.tabs->setHidden(AppCtrl::Instance().overseaVersion);
    credentials_->setVisible(modifying_);
    form_.checkbox_keep_auth_type_->setVisible(modifying_);
    form_.advanced->hide();
    form_.SetArrow(false);
    if (!modifying_) {
        QString const text = Translate(QT_TRANSLATE_NOOP("ui", "Next Step"));
        form_.add_connect_button_->setText(text);
        form_.add_connect_button_->setAccessibleName(text);
    }
    form_.save_button_->setHidden(modifying_);  // there, saving is all
    form_.port_->setText(EditedProfile().port == 0 ? QString()
                                                   : QString::number(EditedProfile().port));
    fillAdvanced(EditedProfile());
}

void CreateConnectDialog::wire() {
    auto const pressed = [this](QPushButton* button, void (CreateConnectDialog::*slot)()) {
        connect(button, &QPushButton::clicked, this, slot);
    };
    pressed(form_.pushButton_tls, &CreateConnectDialog::on_pushButton_tls_clicked);
    pressed(form_.pushButton_gmssl, &CreateConnectDialog::on_pushButton_gmssl_clicked);
    pressed(form_.btn_icon_advanced_config_,
            &CreateConnectDialog::on_btn_icon_advanced_config__clicked);
    pressed(form_.add_connect_button_, &CreateConnectDialog::on_add_connect_button__clicked);
    pressed(form_.save_button_, &CreateConnectDialog::onSaveButtonClicked);
    pressed(form_.cannel_connect_button_, &CreateConnectDialog::on_cannel_connect_button__clicked);
    connect(form_.verfy_server_cert_checkbox_, &QCheckBox::stateChanged, this,
            &CreateConnectDialog::on_verfy_server_cert_checkbox__stateChanged);
    connect(form_.trustWarning, &QLabel::linkActivated, this, [this] {
        ManageTrustedCerts(services().prompts, this);
        warnAboutTrust();
    });
    connect(form_.gateway_detect_checkbox_, &QCheckBox::clicked, this,
            &CreateConnectDialog::on_gateway_detect_checkbox__clicked);
    connect(form_.comboBox_spa_mode_, qOverload<int>(&QComboBox::activated), this,
            [this](int index) { SetSPAMode(static_cast<SPAMode>(index)); });
}

void CreateConnectDialog::InitUIForModify() {
    Profile const& profile = EditedProfile();
    setWindowTitle(GetTrMsg(MsgCode::UI_INFO_MODIFY_CONNECTION));
    bool const gm = profile.loginMode == kLoginModeGm;
    (gm ? form_.pushButton_gmssl : form_.pushButton_tls)->setChecked(true);
    form_.profile_name_->setText(QString::fromStdString(profile.name));
    form_.profile_name_->setEnabled(false);  // it is the profile's key
    form_.server_->setText(QString::fromStdString(profile.server));
    form_.server_->setFocus();
    form_.checkbox_keep_auth_type_->setChecked(profile.keepAuthType);
    EnableUserNameAndPassword(false);
    EnableDigitalCertificate(false);
    switch (profile.authType) {
        case SupportedAuthType::kPwdWithCert:
            EnableUserNameAndCertAuth();
            break;
        case SupportedAuthType::kOnlyUkey:
            EnableOnlyCertAuth();
            break;
        case SupportedAuthType::kPwd:
            EnableUserNameAuth();
            break;
        default:
            credentials_->hide();
    }
}

void CreateConnectDialog::fillAdvanced(ProfileBase const& profile) {
    form_.optimal_channel_checkbox_->setChecked(profile.optimalChannel);
    form_.gateway_detect_checkbox_->setChecked(profile.gatewayDetect);
    fillGateways(profile);
    on_gateway_detect_checkbox__clicked();
    SetSPAMode(profile.spaMode <= kLastMode ? static_cast<SPAMode>(profile.spaMode)
                                            : SPAMode::kAuto);
    if (profile.spaPort != 0) {
        form_.lineEdit_spa_port_->setText(QString::number(profile.spaPort));
    }
    form_.comboBox_comm_optim_mode->setCurrentIndex(qMin(profile.commOptimMode, kLastMode));
    form_.verfy_server_cert_checkbox_->setChecked(profile.verifyServerCert);
}

void CreateConnectDialog::fillGateways(ProfileBase const& profile) {
    QStringList names;
    for (auto const& [name, gateway] : profile.gatewayList) {
        names.append(QString::fromStdString(name));
    }
    QString const preferred = QString::fromStdString(profile.perferredGatewayName);
    // The choice outlives a list that does not name it at present.
    if (!preferred.isEmpty() && !names.contains(preferred)) {
        names.append(preferred);
    }
    names.sort();
    names.removeAll(QString());
    while (form_.perfer_gateway_combobox_->count() > 1) {
        form_.perfer_gateway_combobox_->removeItem(1);
    }
    form_.perfer_gateway_combobox_->addItems(names);
    if (!preferred.isEmpty()) {
        form_.perfer_gateway_combobox_->setCurrentIndex(names.indexOf(preferred) + 1);
    }
}

void CreateConnectDialog::EnableUserNameAuth() {
    EnableUserNameAndPassword(true);
}

void CreateConnectDialog::EnableOnlyCertAuth() {
    EnableDigitalCertificate(true);
}

void CreateConnectDialog::EnableUserNameAndCertAuth() {
    EnableUserNameAndPassword(true);
    EnableDigitalCertificate(true);
}

void CreateConnectDialog::EnableUserNameAndPassword(bool enable) {
    credentials_->PasswordGroup()->setVisible(enable);
}

void CreateConnectDialog::EnableDigitalCertificate(bool enable) {
    credentials_->CertGroup()->setVisible(enable);
}

void CreateConnectDialog::SetSPAMode(SPAMode mode) {
    form_.spaPortCell->setVisible(mode == SPAMode::kOn);
    form_.comboBox_spa_mode_->setCurrentIndex(static_cast<int>(mode));
}

void CreateConnectDialog::on_pushButton_tls_clicked() {
    form_.pushButton_tls->setChecked(true);
    SetLoginMode(kLoginModeTls);
}

void CreateConnectDialog::on_pushButton_gmssl_clicked() {
    form_.pushButton_gmssl->setChecked(true);
    SetLoginMode(kLoginModeGm);
}

void CreateConnectDialog::on_verfy_server_cert_checkbox__stateChanged(int arg) {
    Log().info("arg1 = {}", arg);
    warnAboutTrust();
}

void CreateConnectDialog::warnAboutTrust() {
    bool const warn = form_.verfy_server_cert_checkbox_->isChecked() && !HasTrustedCerts();
    form_.verfy_server_cert_checkbox_->setToolTip(
        warn ? PlainToolTip(GetTrMsg(MsgCode::UI_TR_IMPORT_TRUSTED_CERT_TIPS)) : QString());
    form_.trustWarning->setVisible(warn);
}

void CreateConnectDialog::on_gateway_detect_checkbox__clicked() {
    form_.gatewayCell->setVisible(form_.gateway_detect_checkbox_->isChecked());
}

void CreateConnectDialog::on_btn_icon_advanced_config__clicked() {
    openAdvanced(!advancedOpen_);
}

void CreateConnectDialog::openAdvanced(bool open) {
    advancedOpen_ = open;
    form_.advanced->setVisible(open);
    form_.SetArrow(open);
    SetCurrentAtParentCenter();
}

void CreateConnectDialog::on_cannel_connect_button__clicked() {
    reject();
}

void CreateConnectDialog::reject() {
    if (auto const& answer = automationHooks().setResult) {
        answer(-1, QStringLiteral("REFUSED CREATE CONNECT"));
    }
    AuthConfigBase::reject();
}

int CreateConnectDialog::MinHeight() const {
    return advancedOpen_ ? kOpenHeight : kCollapsedHeight;
}

// It stands inside its window, which is as large as its user wants it.
int CreateConnectDialog::MaxHeight() const {
    int const room = AuthConfigBase::MaxHeight();
    QWidget const* const owner = VisibleOwner();
    return owner != nullptr ? qMin(room, qMax(kCollapsedHeight, owner->contentsRect().height()))
                            : room;
}

void CreateConnectDialog::SetCurrentAtParentCenter() {
    if (isVisible()) {
        Place();
    }
}

void CreateConnectDialog::showEvent(QShowEvent* event) {
    AuthConfigBase::showEvent(event);
    QMetaObject::invokeMethod(this, &CreateConnectDialog::reportOpened, Qt::QueuedConnection);
}

void CreateConnectDialog::reportOpened() {
    if (auto const& opened = automationHooks().dialogOpened) {
        opened(*this, windowTitle());
    }
}

}  // namespace zorvanelink::ui
