#include "ui/auth/auth_config_base.h"

#include "components/logger/logger.h"
#include "ui/cert/cert_view_form.h"
#include "ui/cert/tls_cert_dialog.h"
#include "ui/text/texts.h"
#include "ui/widgets/elide.h"
#include "ui/widgets/field_note.h"
#include "ui/widgets/secret_field.h"
#include "ui/widgets/style.h"
#include "ui/widgets/zvl_message_box.h"

namespace zorvanelink::ui {

using common::MsgCode;
using components::logger::Log;

AuthConfigBase::AuthConfigBase(std::shared_ptr<Profile> profile, bool passwordRequired,
                               Services services, QWidget* parent)
    : ZVLDialog(parent),
      profile_(profile ? std::move(profile) : std::make_shared<Profile>()),
      passwordRequired_(passwordRequired),
      services_(services),
      loginMode_(profile_->loginMode) {
}

void AuthConfigBase::SetCredentialWidgets(CredentialWidgets const& widgets) {
    widgets_ = widgets;
    connect(widgets_.selectCert, &QToolButton::clicked, this,
            &AuthConfigBase::onActionSelectCertTriggered);
}

void AuthConfigBase::InitAuthConfig() {
    for (auto const& [box, code] :
         {std::pair(widgets_.rememberPassword, MsgCode::UI_INFO_REMEMBER_PWD),
          {widgets_.rememberPin, MsgCode::UI_INFO_REMEMBER_PIN}}) {
        box->setText(GetTrMsg(code));
        box->setAccessibleName(GetTrMsg(code));
    }
    widgets_.userName->setMaxLength(kMaxUserNameBytes);
    widgets_.userName->setPlaceholderText(GetTrMsg(MsgCode::UI_INFO_INPUT_USER));
    widgets_.password->setPlaceholderText(GetTrMsg(MsgCode::UI_INFO_PLEASE_INPUT_PWD));
    widgets_.pin->setPlaceholderText(GetTrMsg(MsgCode::UI_INFO_INPUT_PIN_CODE));
    systemCert_ = profile_->systemCert;
    gmCert_ = profile_->gmCert;
    fileCert_ = profile_->fileCert;
    certIsFile_ = profile_->certIsFile;
    dropMissingFileCert();
    widgets_.userName->setText(QString::fromStdString(profile_->userName));
    widgets_.rememberPassword->setChecked(profile_->rememberPassword);
    if (standsFor(profile_->password, profile_->rememberPassword)) {
        widgets_.password->ShowMask();
    }
    RefreshCertInfo();
}

bool AuthConfigBase::refuse(MsgCode text, QWidget* field, QString const& reason) {
    QString const detail = reason.isEmpty() ? QString() : QLatin1String(kMessageSeparator) + reason;
    // A button inside a field stands for it.
    auto* edit = qobject_cast<QLineEdit*>(field);
    edit = edit != nullptr ? edit : qobject_cast<QLineEdit*>(field->parentWidget());
    if (edit != nullptr) {
        MarkRefused(*edit, reason.isEmpty() ? GetTrMsg(text) : reason);
    }
    services_.prompts.Error(this, GetTrMsg(text) + detail);
    field->setFocus();
    Reveal(field);
    return false;
}

bool AuthConfigBase::CheckUserPwdInput() {
    int const name_length = Utf8Length(*widgets_.userName);
    int const password_length = Utf8Length(*widgets_.password);
    if (name_length == 0) {
        return refuse(MsgCode::UI_INFO_INPUT_USER, widgets_.userName);
    }
    if (name_length > kMaxUserNameBytes) {
        return refuse(MsgCode::UI_TR_ERR_USER_NAME_LENGTH, widgets_.userName);
    }
    if (password_length == 0 && (passwordRequired_ || widgets_.rememberPassword->isChecked())) {
        return refuse(MsgCode::UI_INFO_PLEASE_INPUT_PWD, widgets_.password);
    }
    if (password_length > kMaxPasswordBytes) {
        return refuse(MsgCode::UI_TR_ERR_PWD_LENGTH, widgets_.password);
    }
    return true;
}

bool AuthConfigBase::CheckCert() {
    if (certIsFile_) {
        if (!services_.config.IsClientCertExist(fileCert_)) {
            return refuse(MsgCode::UI_ERROR_NO_CERT, widgets_.selectCert);
        }
        if (fileCert_.isTls == gm()) {
            return refuse(MsgCode::UI_TR_WRONG_CERT_SSL_TYPE, widgets_.selectCert);
        }
        return true;
    }
    if ((gm() ? gmCert_.certName : systemCert_.certName).empty()) {
        return refuse(MsgCode::UI_ERROR_NO_CERT, widgets_.selectCert);
    }
    return true;
}

bool AuthConfigBase::CheckPinCode() {
    if (!widgets_.pin->isVisibleTo(this)) {
        return true;
    }
    int const length = Utf8Length(*widgets_.pin);
    bool const needed = passwordRequired_ || widgets_.rememberPin->isChecked();
    if (length == 0 && needed && certKind() == kCertTypeUsbKey) {
        return refuse(MsgCode::UI_INFO_INPUT_PIN_CODE, widgets_.pin);
    }
    if (length > kMaxPinBytes) {
        return refuse(MsgCode::UI_TR_ERR_PIN_CODE_LENGTH, widgets_.pin);
    }
    return true;
}

bool AuthConfigBase::IsUIInputPwdForShow() const {
    return widgets_.password->HoldsMask();
}

bool AuthConfigBase::IsUIInputPinCodeForShow() const {
    return widgets_.pin->HoldsMask();
}

void AuthConfigBase::SetLoginMode(std::uint16_t loginMode) {
    if (loginMode_ != loginMode) {
        loginMode_ = loginMode;
        WipeField(*widgets_.pin);  // it belongs to the other key
    }
    RefreshCertInfo();
}

std::uint16_t AuthConfigBase::certKind() const {
    if (certIsFile_) {
        return kCertTypeFile;
    }
    return gm() ? gmCert_.certType : systemCert_.certType;
}

QString AuthConfigBase::certText() const {
    auto const readable = [](std::string const& name) {
        return CertViewForm::Readable(QString::fromStdString(name)).simplified();
    };
    switch (certKind()) {
        case kCertTypeSystem:
            return GetTrMsg(MsgCode::UI_INFO_USE_SYSTEM_DEFAULT_CERTIFICATE);
        case kCertTypeUsbKey:
            return GetTrMsg(MsgCode::UI_INFO_USE_USB_KEY_CERTIFICATE);
        case kCertTypeFile:
            break;
        default:
            return readable(gm() ? gmCert_.certName : systemCert_.certName);
    }
    QString kind = GetTrMsg(MsgCode::UI_INFO_USE_SOFTWARE_CERTIFICATE);
    if (!certIsFile_) {
        return kind;
    }
    if (fileCert_.fingerprint.empty()) {
        return {};
    }
    std::string const& name =
        fileCert_.commonName.empty() ? fileCert_.subject : fileCert_.commonName;
    return Translate(QT_TRANSLATE_NOOP("ui", "%1 (%2)")).arg(readable(name), kind);
}

bool& AuthConfigBase::rememberPinFlag() const {
    return gm() ? profile_->rememberGmPin : profile_->rememberTlsPin;
}

void AuthConfigBase::RefreshCertInfo() {
    QString const text = certText();
    TakeMark(*widgets_.certName);
    widgets_.certName->setText(text);
    widgets_.certName->setCursorPosition(0);
    widgets_.certName->setToolTip(PlainToolTip(text));
    bool const needs_pin = certKind() == kCertTypeUsbKey;
    widgets_.pinGroup->setVisible(needs_pin);
    if (needs_pin) {
        fillPin();
    } else {
        WipeField(*widgets_.pin);
        widgets_.rememberPin->setChecked(false);
    }
}

// During a login also what was typed for it alone.
bool AuthConfigBase::standsFor(std::string const& secret, bool remembered) const {
    return !secret.empty() && (remembered || passwordRequired_);
}

void AuthConfigBase::fillPin() {
    if (widgets_.pin->text().isEmpty()) {
        widgets_.rememberPin->setChecked(rememberPinFlag());
        if (standsFor(keyPin(), rememberPinFlag())) {
            widgets_.pin->ShowMask();
        }
    }
}

void AuthConfigBase::onActionSelectCertTriggered() {
    Log().info("Select a certificate");
    auto* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("cert_kind_menu_"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setStyleSheet(LoadStyle(QStringLiteral("menu")));
    auto const add = [this, menu](MsgCode text, auto select) {
        QAction* const action = menu->addAction(GetTrMsg(text));
        // Queued: the menu has closed before a dialog opens.
        connect(action, &QAction::triggered, this, select, Qt::QueuedConnection);
        return action;
    };
    add(MsgCode::UI_INFO_USE_SOFTWARE_CERTIFICATE, [this] { SelectCertFile(); });
    if (gm()) {
        add(MsgCode::UI_INFO_USE_USB_KEY_CERTIFICATE, [this] {
            SelectGMCert();
        })->setEnabled(false);
    } else {
        add(MsgCode::UI_INFO_USE_SYSTEM_DEFAULT_CERTIFICATE,
            [this] { SelectTlsCert(kCertTypeSystem); });
        add(MsgCode::UI_INFO_USE_USB_KEY_CERTIFICATE, [this] { SelectTlsCert(kCertTypeUsbKey); });
    }
    menu->setMinimumWidth(widgets_.certName->width());
    menu->popup(widgets_.certName->mapToGlobal(QPoint(0, widgets_.certName->height() + 2)));
    menu->setActiveAction(menu->actions().constFirst());
}

// A certificate that the store has lost, perhaps just now and by the user, is no choice any more.
void AuthConfigBase::dropMissingFileCert() {
    if (!services_.config.IsClientCertExist(fileCert_)) {
        fileCert_ = CertInfo();
    }
}

void AuthConfigBase::takeCert(CertInfo const& chosen, bool isFile) {
    bool const same = !isFile && !certIsFile_ && chosen.certType == systemCert_.certType &&
                      chosen.fingerprint == systemCert_.fingerprint;
    if (same) {
        return;
    }
    (isFile ? fileCert_ : systemCert_) = chosen;
    certIsFile_ = isFile;
    WipeField(*widgets_.pin);  // it belonged to the certificate before
}

void AuthConfigBase::SelectCertFile() {
    CertInfo target = fileCert_;
    target.isTls = !gm();
    if (ui::SelectClientCert(target, services_.config, services_.prompts, this)) {
        takeCert(target, true);
    }
    dropMissingFileCert();
    RefreshCertInfo();
}

void AuthConfigBase::SelectTlsCert(std::uint16_t preset) {
    Log().info("Select a TLS certificate file");
    CertInfo target = systemCert_;
    target.isTls = true;
    target.certType = preset;
    if (ui::SelectTlsCert(target, services_.certList, services_.config, services_.prompts, this)) {
        takeCert(target, target.certType == kCertTypeFile);
    }
    dropMissingFileCert();
    RefreshCertInfo();
}

void AuthConfigBase::SelectGMCert() {
    Log().info("Select a GM SSL certificate file");
    Log().warning("The certificates of USB keys cannot be listed for GM SSL yet");
}

void AuthConfigBase::SaveAuthConfig() {
    if (common::NeedsPassword(profile_->authType)) {
        profile_->userName = widgets_.userName->text().toStdString();
        profile_->rememberPassword = widgets_.rememberPassword->isChecked();
        if (!IsUIInputPwdForShow()) {
            profile_->password = TakeSensitiveValue(*widgets_.password);
        }
    }
    if (common::NeedsCertificate(profile_->authType) && certKind() == kCertTypeUsbKey) {
        rememberPinFlag() = widgets_.rememberPin->isChecked();
        if (!IsUIInputPinCodeForShow()) {
            keyPin() = TakeSensitiveValue(*widgets_.pin);
            (gm() ? profile_->gmCert.pin : profile_->systemCert.pin) = keyPin();
        }
    }
}

void AuthConfigBase::SaveSSLConfig() {
    profile_->systemCert = systemCert_;
    profile_->gmCert = gmCert_;
    profile_->fileCert = fileCert_;
    profile_->certIsFile = certIsFile_;
}

void AuthConfigBase::done(int result) {
    for (SecretEdit* const field : {widgets_.password, widgets_.pin}) {
        if (field != nullptr) {
            WipeField(*field);
        }
    }
    ZVLDialog::done(result);
}

}  // namespace zorvanelink::ui
