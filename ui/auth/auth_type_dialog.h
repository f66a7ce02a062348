// The choice of the way to log in, with the credentials that it needs. GUI thread.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <vector>

#include "ui/auth/auth_config_base.h"
#include "ui/session/attempt_secrets.h"
#include "ui/widgets/push_button_ext.h"

namespace zorvanelink::ui {

// On OK the profile carries the chosen type and what was entered; nothing is written to the disk.
class AuthTypeDialog : public AuthConfigBase {
    Q_OBJECT

  public:
    // With `select` the user chooses among all types that are known; without it the dialog is
    // reduced to the profile's own type, if it has one.
    AuthTypeDialog(std::shared_ptr<Profile> profile, bool select, Services services,
                   QWidget* parent = nullptr);

    SupportedAuthType ChosenType() const { return chosen_; }
    // Empties the field of a secret that the gateway has refused, stored or not, and begins there.
    void AskAgainFor(AttemptSecrets::Secret secret);

  Q_SIGNALS:
    // As if the button had been pressed; for automation.
    void ClickedConnectButton();
    void ClickedCancelButton();
    // The user wants to log in with what the profile now holds. The dialog may still be open.
    void StartConnect(QString profileName, bool queryAuthType);

  public Q_SLOTS:
    void onClickedConnectButton();
    void onClickedThirdPartyLoginButton();
    void onClickedCancelButton();
    void ConnectButtonEnable(bool enable);
    void reject() override;

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    // A type that the user can pick by a radio button.
    struct Choice {
        SupportedAuthType type;
        QRadioButton* AuthTypeDialog::*radio;
        char const* objectName;
        common::MsgCode text;
        char const* logLine;
    };
    static Choice const kChoices[];

    void build();
    QWidget* buildRadios();
    QWidget* buildForgotten();
    QWidget* buildButtons();
    QPushButtonExt* addButton(QLayout& column, char const* name, common::MsgCode text);
    void completeKnownTypes();
    void Init(bool select);
    bool IsNeedAuthTypeRadioButton() const;
    void InitAuthTypeWidget(SupportedAuthType type);
    void pressFirstChoice();
    void orderTabs();
    void onRadio(Choice const& choice, bool checked);
    bool CheckInput();
    bool offers(SupportedAuthType type) const;

    std::vector<SupportedAuthType> offer_;
    SupportedAuthType chosen_ = SupportedAuthType::kNone;
    bool hasRadioButtons_ = false;
    QWidget* first_ = nullptr;  // where to begin; null: the first field that is empty
    QWidget* radioRow_ = nullptr;
    QRadioButton* userRadio_ = nullptr;
    QRadioButton* userCertRadio_ = nullptr;
    QRadioButton* certRadio_ = nullptr;
    CredentialForm* form_ = nullptr;
    QCheckBox* keepType_ = nullptr;
    QPushButtonExt* login_ = nullptr;
    QPushButtonExt* thirdParty_ = nullptr;
    QPushButtonExt* cancel_ = nullptr;
    QPushButtonExt* forgotten_ = nullptr;
    QLabel* browserHint_ = nullptr;
};

}  // namespace zorvanelink::ui
