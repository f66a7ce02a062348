#include "ui/auth/auth_type_dialog.h"

#include <QHBoxLayout>
#include <algorithm>

#include "app/environment/app_ctrl.h"
#include "components/logger/logger.h"
#include "ui/text/texts.h"
#include "ui/widgets/open_url.h"
#include "ui/widgets/style.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using components::logger::Log;

// Pixels.
constexpr int kWidth = 480;
constexpr int kMargin = 20;
constexpr int kSpacing = 14;
constexpr int kRadioSpacing = 15;
constexpr int kRadioSpacingChinese = 55;

bool contains(std::vector<SupportedAuthType> const& types, SupportedAuthType type) {
    return std::find(types.begin(), types.end(), type) != types.end();
}

}  // namespace

// In the order of preference, which is also the order shown.
AuthTypeDialog::Choice const AuthTypeDialog::kChoices[] = {
    {SupportedAuthType::kPwd, &AuthTypeDialog::userRadio_, "radioButton_username_",
     MsgCode::UI_TR_AUTH_INFO_USER, "radio button user name "},
    {SupportedAuthType::kPwdWithCert, &AuthTypeDialog::userCertRadio_, "radioButton_user_cert_",
     MsgCode::UI_TR_AUTH_INFO_USER_CERT, "radio button user name and cert "},
    {SupportedAuthType::kOnlyUkey, &AuthTypeDialog::certRadio_, "radioButton_cert_",
     MsgCode::UI_TR_AUTH_INFO_CERT, "radio button only cert "},
};

AuthTypeDialog::AuthTypeDialog(std::shared_ptr<Profile> profile, bool select, Services services,
                               QWidget* parent)
    : AuthConfigBase(std::move(profile), true, services, parent) {
    setObjectName(QStringLiteral("auth_type_dialog_"));
    setStyleSheet(styleSheet() + LoadStyle(QStringLiteral("authtypedialog.css")));
    build();
    SetCredentialWidgets(form_->Widgets());
    completeKnownTypes();
    InitAuthConfig();
    Init(select);
}

void AuthTypeDialog::build() {
    setFixedWidth(kWidth);
    form_ = new CredentialForm(Body());
    keepType_ = new QCheckBox(GetTrMsg(MsgCode::UI_TR_INFO_REMEMBER_AUTH_TYPE), Body());
    keepType_->setObjectName(QStringLiteral("checkbox_keep_auth_type_"));
    keepType_->setAccessibleName(keepType_->text());
    keepType_->setChecked(EditedProfile().keepAuthType);
    SetSubtitle(QString::fromStdString(EditedProfile().name + " · " + EditedProfile().server));
    auto* column = new QVBoxLayout(Body());
    column->setContentsMargins(kMargin, kMargin, kMargin, 6);
    column->setSpacing(kSpacing);
    column->addWidget(buildRadios());
    column->addWidget(form_);
    auto* last = new QHBoxLayout;
    last->addWidget(keepType_);
    last->addStretch();
    last->addWidget(buildForgotten());
    column->addLayout(last);
    SetFoot(buildButtons());
}

QWidget* AuthTypeDialog::buildForgotten() {
    QString const page = QString::fromStdString(EditedProfile().forgotPwdUrl);
    forgotten_ = new QPushButtonExt(GetTrMsg(MsgCode::UI_TR_INFO_FORGOT_PWD), Body());
    forgotten_->setObjectName(QStringLiteral("btn_forgot_pwd_"));
    forgotten_->setProperty("flat", true);
    forgotten_->hide();
    connect(forgotten_, &QPushButton::clicked, this,
            [this, page] { OpenUrlWithHint(services().prompts, this, page, false); });
    return forgotten_;
}

QWidget* AuthTypeDialog::buildRadios() {
    radioRow_ = new QWidget(Body());
    auto* row = new QHBoxLayout(radioRow_);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(IsChineseDisplayLangguage() ? kRadioSpacingChinese : kRadioSpacing);
    for (Choice const& choice : kChoices) {
        auto* radio = new QRadioButton(GetTrMsg(choice.text), radioRow_);
        radio->setObjectName(QLatin1String(choice.objectName));
        radio->setAccessibleName(radio->text());
        radio->hide();
        connect(radio, &QRadioButton::toggled, this,
                [this, &choice](bool checked) { onRadio(choice, checked); });
        row->addWidget(radio);
        this->*choice.radio = radio;
    }
    row->addStretch();
    return radioRow_;
}

QWidget* AuthTypeDialog::buildButtons() {
    auto* bar = new QWidget(Panel());
    auto* column = new QVBoxLayout(bar);
    column->setSpacing(8);
    login_ = addButton(*column, "btn_connect_", MsgCode::UI_TR_INFO_BEGIN_LOGIN);
    thirdParty_ = addButton(*column, "btn_third_party_", MsgCode::UI_TR_INFO_THIRD_LOGIN);
    browserHint_ =
        new QLabel(Translate(QT_TRANSLATE_NOOP("ui", "Your browser opens to log in.")), bar);
    browserHint_->setObjectName(QStringLiteral("browser_hint_"));
    browserHint_->setProperty("role", QStringLiteral("hint"));
    thirdParty_->setAccessibleDescription(browserHint_->text());
    browserHint_->hide();
    auto* last = new QHBoxLayout;  // one row: on a low screen the form needs the room
    last->addWidget(browserHint_, 1);
    cancel_ = addButton(*last, "btn_cancel_", MsgCode::UI_INFO_CANCEL);
    cancel_->setProperty("flat", true);
    column->addLayout(last);
    login_->hide();
    thirdParty_->hide();
    return bar;
}

QPushButtonExt* AuthTypeDialog::addButton(QLayout& column, char const* name, MsgCode text) {
    auto* button = new QPushButtonExt(GetTrMsg(text), Panel());
    button->setObjectName(QLatin1String(name));
    button->setAccessibleName(button->text());
    // The default button stays the one that Enter means, wherever the focus is.
    button->setAutoDefault(false);
    column.addWidget(button);
    return button;
}

// What this run's server said, else what the last run's said, else all that can be chosen here.
void AuthTypeDialog::completeKnownTypes() {
    auto& known = EditedProfile().supportedAuthTypes;
    if (known.empty()) {
        known = EditedProfile().lastSupportedAuthTypes;
    }
    if (std::none_of(known.begin(), known.end(), common::HasControl)) {
        known = {SupportedAuthType::kPwd, SupportedAuthType::kPwdWithCert,
                 SupportedAuthType::kOnlyUkey};
    }
}

void AuthTypeDialog::Init(bool select) {
    Profile const& profile = EditedProfile();
    bool const reduced = !select && common::HasControl(profile.authType);
    offer_ = reduced ? std::vector{profile.authType} : profile.supportedAuthTypes;
    hasRadioButtons_ = IsNeedAuthTypeRadioButton();
    radioRow_->setVisible(hasRadioButtons_);
    setWindowTitle(
        GetTrMsg(hasRadioButtons_ ? MsgCode::UI_TR_INFO_AUTH_TYPE : MsgCode::UI_INFO_CONNECT));
    form_->PasswordGroup()->hide();
    form_->CertGroup()->hide();
    for (SupportedAuthType const type : offer_) {
        InitAuthTypeWidget(type);
    }
    form_->setHidden(login_->isHidden());
    if (!login_->isHidden()) {
        login_->setDefault(true);
    }
    pressFirstChoice();
    connect(login_, &QPushButton::clicked, this, &AuthTypeDialog::onClickedConnectButton);
    connect(thirdParty_, &QPushButton::clicked, this,
            &AuthTypeDialog::onClickedThirdPartyLoginButton);
    connect(cancel_, &QPushButton::clicked, this, &AuthTypeDialog::onClickedCancelButton);
    connect(this, &AuthTypeDialog::ClickedConnectButton, this,
            &AuthTypeDialog::onClickedConnectButton);
    connect(this, &AuthTypeDialog::ClickedCancelButton, this,
            &AuthTypeDialog::onClickedCancelButton);
    orderTabs();
}

bool AuthTypeDialog::offers(SupportedAuthType type) const {
    return contains(offer_, type);
}

bool AuthTypeDialog::IsNeedAuthTypeRadioButton() const {
    return std::count_if(std::begin(kChoices), std::end(kChoices),
                         [this](Choice const& choice) { return offers(choice.type); }) > 1;
}

void AuthTypeDialog::InitAuthTypeWidget(SupportedAuthType type) {
    if (type == SupportedAuthType::kOauth) {
        thirdParty_->show();
        browserHint_->show();
        thirdParty_->setDefault(true);
    }
    for (Choice const& choice : kChoices) {
        if (choice.type == type) {
            login_->show();
            (this->*choice.radio)->setVisible(hasRadioButtons_);
        }
    }
}

// Also where no radio button is shown: the one type on offer is chosen by its hidden button.
void AuthTypeDialog::pressFirstChoice() {
    Choice const* first = nullptr;
    for (Choice const& choice : kChoices) {
        bool const own = choice.type == EditedProfile().authType;
        if (offers(choice.type) && (first == nullptr || own)) {
            first = &choice;
        }
    }
    if (first != nullptr) {
        (this->*first->radio)->click();
    }
}

void AuthTypeDialog::orderTabs() {
    QList<QWidget*> stops{userRadio_, userCertRadio_, certRadio_};
    stops += form_->TabStops();
    stops += {login_, thirdParty_, keepType_, forgotten_, cancel_};
    for (int i = 1; i < stops.size(); ++i) {
        setTabOrder(stops[i - 1], stops[i]);
    }
}

void AuthTypeDialog::onRadio(Choice const& choice, bool checked) {
    Log().info("{}{}", choice.logLine, checked ? "true" : "false");
    if (!checked) {
        return;
    }
    chosen_ = choice.type;
    form_->PasswordGroup()->setVisible(common::NeedsPassword(chosen_));
    form_->CertGroup()->setVisible(common::NeedsCertificate(chosen_));
    forgotten_->setVisible(common::NeedsPassword(chosen_) && !EditedProfile().forgotPwdUrl.empty());
    if (common::NeedsCertificate(chosen_)) {
        RefreshCertInfo();
    }
}

void AuthTypeDialog::onClickedConnectButton() {
    Log().info("click start login button");
    if (!CheckInput()) {
        return;
    }
    EditedProfile().authType = chosen_;
    EditedProfile().keepAuthType = keepType_->isChecked();
    SaveSSLConfig();
    SaveAuthConfig();
    ConnectButtonEnable(false);
    accept();
    Q_EMIT StartConnect(QString::fromStdString(EditedProfile().name), false);
}

void AuthTypeDialog::onClickedThirdPartyLoginButton() {
    Profile& profile = EditedProfile();
    chosen_ = SupportedAuthType::kOauth;
    profile.keepAuthType = keepType_->isChecked();
    profile.authType = chosen_;
    profile.lastSupportedAuthTypes = profile.supportedAuthTypes;
    profile.password.clear();
    ConnectButtonEnable(false);
    Q_EMIT StartConnect(QString::fromStdString(profile.name), false);
    accept();
}

void AuthTypeDialog::onClickedCancelButton() {
    reject();
}

// The close button and Escape come here too.
void AuthTypeDialog::reject() {
    ConnectButtonEnable(true);
    AuthConfigBase::reject();
}

bool AuthTypeDialog::CheckInput() {
    if (common::NeedsPassword(chosen_) && !CheckUserPwdInput()) {
        return false;
    }
    return !common::NeedsCertificate(chosen_) || (CheckCert() && CheckPinCode());
}

void AuthTypeDialog::ConnectButtonEnable(bool enable) {
    login_->setEnabled(enable);
    thirdParty_->setEnabled(enable);
}

void AuthTypeDialog::AskAgainFor(AttemptSecrets::Secret secret) {
    CredentialWidgets const& w = form_->Widgets();
    bool const password = secret == AttemptSecrets::Secret::kPassword;
    (password ? w.password : w.pin)->clear();
    if (!password) {
        keyPin().clear();  // else its mask came back with the next look at the certificate
    }
    first_ = password ? static_cast<QWidget*>(w.password) : w.selectCert;
}

void AuthTypeDialog::showEvent(QShowEvent* event) {
    AuthConfigBase::showEvent(event);
    CredentialWidgets const& w = form_->Widgets();
    if (first_ != nullptr && first_->isVisibleTo(this)) {
        first_->setFocus();
    } else if (chosen_ == SupportedAuthType::kNone) {
        thirdParty_->setFocus();
    } else if (!common::NeedsPassword(chosen_)) {
        w.selectCert->setFocus();
    } else if (w.userName->text().isEmpty()) {
        w.userName->setFocus();
    } else {
        w.password->setFocus();
    }
}

}  // namespace zorvanelink::ui
