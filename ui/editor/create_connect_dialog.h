// The connection editor: makes a new connection or modifies one. GUI thread; lives for one modal
// run.
#pragma once

#include "ui/auth/auth_config_base.h"
#include "ui/editor/editor_form.h"

namespace zorvanelink::ui {

// How the gateway's single-packet authorisation is used; the values of Profile::spaMode.
enum class SPAMode : std::uint16_t { kAuto = 0, kOn = 1, kOff = 2 };

// Works on a copy. Accepting has put the values into the shared profile and that into the
// settings, which are not saved yet.
class CreateConnectDialog : public AuthConfigBase {
    Q_OBJECT

  public:
    // An empty pointer means adding.
    CreateConnectDialog(std::shared_ptr<Profile> profile, Services services,
                        QWidget* parent = nullptr);

    // The connection that was added or modified; after accepting.
    QString StoredName() const { return QString::fromStdString(EditedProfile().name); }

    // Whether a new connection is to be started at once; after accepting.
    bool ConnectWanted() const { return connectWanted_; }

    // False, with the fault told and the focus on its field, unless all input can be stored.
    bool CheckInput();
    bool isProfileNameExist();
    void SetSPAMode(SPAMode mode);

  public Q_SLOTS:
    void on_add_connect_button__clicked();
    void onSaveButtonClicked();  // stores as the other one does, but is no wish to connect
    void on_cannel_connect_button__clicked();
    void on_pushButton_tls_clicked();
    void on_pushButton_gmssl_clicked();
    void on_verfy_server_cert_checkbox__stateChanged(int arg);
    void on_btn_icon_advanced_config__clicked();
    void on_gateway_detect_checkbox__clicked();
    void reject() override;

    // What the automation bridge uses in the place of a user.
    void AutoSetProfile(std::shared_ptr<zorvanelink::ui::AutoProfile> const& profile);
    bool AutoCheckProfile() { return CheckInput(); }
    void AutoConfirmButtonSlots() { on_add_connect_button__clicked(); }

  protected:
    int MinHeight() const override;
    int MaxHeight() const override;
    void showEvent(QShowEvent* event) override;

  private:
    // `shared` is null when adding.
    CreateConnectDialog(std::shared_ptr<Profile> shared, std::shared_ptr<Profile> working,
                        Services services, QWidget* parent);

    void Init();
    void wire();
    void InitUIForModify();
    void fillAdvanced(ProfileBase const& profile);
    void fillGateways(ProfileBase const& profile);
    void EnableUserNameAuth();
    void EnableOnlyCertAuth();
    void EnableUserNameAndCertAuth();
    void EnableUserNameAndPassword(bool enable);
    void EnableDigitalCertificate(bool enable);

    bool checkName();
    bool checkAddress();
    bool checkCredentials();
    bool checkSpaPort();
    bool checkAutomated();

    void storeForm(Profile& profile);
    void storeGateway(Profile& profile) const;
    void openAdvanced(bool open);
    void warnAboutTrust();
    void SetCurrentAtParentCenter();
    void reportOpened();

    std::shared_ptr<Profile> const shared_;
    bool const modifying_;
    bool advancedOpen_ = false;
    bool connectWanted_ = true;
    CredentialForm* credentials_;
    EditorForm form_;
};

}  // namespace zorvanelink::ui
