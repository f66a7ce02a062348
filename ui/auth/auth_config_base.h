// Credentials as the user types and picks them: the base of the dialogs that ask for them. All
// their limits live here. GUI thread.
#pragma once

#include <QMenu>
#include <memory>

#include "common/message_catalogue.h"
#include "ui/auth/credential_form.h"
#include "ui/cert/client_certs.h"
#include "ui/config/config.h"
#include "ui/widgets/prompts.h"
#include "ui/widgets/zvl_dialog.h"

namespace zorvanelink::ui {

// How a subclass uses it:
//   its constructor builds the widgets (CredentialForm makes the usual ones), hands them over with
//   SetCredentialWidgets, then calls InitAuthConfig; its OK runs CheckUserPwdInput, CheckCert and
//   CheckPinCode as its type of login needs, then SaveSSLConfig and SaveAuthConfig, then accepts.
// The certificates are working copies until SaveSSLConfig; cancelling changes nothing.
class AuthConfigBase : public ZVLDialog {
    Q_OBJECT

  public:
    struct Services {
        Config& config;
        Prompts& prompts;
        CertListRoad& certList;  // the certificates that the service lists
    };

    // `profile` is what the dialog edits; null makes a new one with the default values. With
    // passwordRequired an empty password or PIN is refused even when it is not to be remembered.
    AuthConfigBase(std::shared_ptr<Profile> profile, bool passwordRequired, Services services,
                   QWidget* parent);

    // Each answers true, or shows what is wrong and puts the focus back on the faulty field.
    bool CheckUserPwdInput();
    bool CheckCert();
    bool CheckPinCode();  // only while the PIN can be seen

    // Whether the mask of the stored secret still stands.
    bool IsUIInputPwdForShow() const;
    bool IsUIInputPinCodeForShow() const;

    // The kind of SSL connection, kLoginModeTls or kLoginModeGm; at first the profile's. It decides
    // which kinds of certificate are offered and which record is shown.
    void SetLoginMode(std::uint16_t loginMode);
    std::uint16_t LoginMode() const { return loginMode_; }

  public Q_SLOTS:
    // Opens the menu of the kinds of certificate; the chosen kind's selection follows.
    void onActionSelectCertTriggered();

  protected:
    void SetCredentialWidgets(CredentialWidgets const& widgets);
    // Texts, limits, masks and the certificate, from the profile.
    void InitAuthConfig();
    // Shows the certificate of the current choice, and the PIN where its kind needs one.
    void RefreshCertInfo();
    // Each runs its dialog; the choice, and with it the kind, changes only when something was
    // chosen.
    void SelectCertFile();
    void SelectTlsCert(std::uint16_t preset);  // kind that the dialog opens with
    void SelectGMCert();
    // User name, password, PIN and remember flags, as far as the profile's authType uses them. A
    // mask leaves the stored value alone. The secret fields are empty afterwards.
    void SaveAuthConfig();
    // The certificates and the choice among them.
    void SaveSSLConfig();

    // The box for wrong input, with what exactly is wrong below it, then the focus on the field.
    bool refuse(common::MsgCode text, QWidget* field, QString const& reason = {});
    // The record being edited.
    Profile& EditedProfile() const { return *profile_; }
    std::shared_ptr<Profile> const& SharedProfile() const { return profile_; }
    Services& services() { return services_; }

    void done(int result) override;

    bool gm() const { return loginMode_ == kLoginModeGm; }
    // Of the USB key that is chosen, in the working copy.
    std::string& keyPin() { return gm() ? gmCert_.pin : systemCert_.pin; }

  private:
    std::uint16_t certKind() const;
    QString certText() const;
    bool& rememberPinFlag() const;
    void dropMissingFileCert();
    void takeCert(CertInfo const& chosen, bool isFile);
    void fillPin();
    // Whether a mask is to stand for the secret.
    bool standsFor(std::string const& secret, bool remembered) const;

    std::shared_ptr<Profile> const profile_;
    bool const passwordRequired_;
    Services services_;
    CredentialWidgets widgets_;
    std::uint16_t loginMode_;
    CertInfo systemCert_;
    GmCertInfo gmCert_;
    CertInfo fileCert_;
    bool certIsFile_ = true;
};

}  // namespace zorvanelink::ui
