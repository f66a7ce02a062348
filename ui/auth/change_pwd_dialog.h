// Asks for a new password, in place of one that is over or because the user wants to. GUI thread.
#pragma once

#include <QLabel>
#include <string>
#include <vector>

#include "common/message_catalogue.h"
#include "ui/auth/password_rules.h"
#include "ui/widgets/dialog_foot.h"
#include "ui/widgets/prompts.h"
#include "ui/widgets/secret_edit.h"
#include "ui/widgets/zvl_dialog.h"

namespace zorvanelink::ui {

// Any other number is a change that the gateway wants.
enum class ChangePWdType : std::int32_t { kExpired = 1, kFirstLogin = 2, kUser = 100 };

// Checks the form of what is typed; the rules tick themselves off, and bind nobody.
class ChangePWDDialog : public ZVLDialog {
    Q_OBJECT

  public:
    ChangePWDDialog(QString const& userName, core::sslvpn::UserPasswordComplexity const& policy,
                    ChangePWdType type, QWidget* parent = nullptr);
    ~ChangePWDDialog() override;

    void ShowTimeLeft(QString const& text);
    // While the gateway looks at what was sent, nothing else is.
    void SetWaiting(bool waiting);
    // The gateway's no, and its words for it; the dialog stays for another try, from the current
    // password on or from the new one.
    void Refuse(QString const& text, bool fromCurrent);
    // A critical box over the dialog.
    BoxRequest Complaint(QString const& text);

  Q_SIGNALS:
    // The passwords as sensitive values.
    void ChangePWDSignal(std::string const& current, std::string const& password);
    // What was typed is no good, and the user is to be told so over the dialog.
    void Refused(BoxRequest const& request);
    // The user gives up; the dialog is still there.
    void GivenUp();

  public Q_SLOTS:
    void on_pushButton_ok_clicked();
    void on_pushButton_cancel_clicked();
    void on_close_btn__clicked();
    // 0 fills the three fields and presses OK.
    void AutoConfirmChangePwd(int action, std::string const& current, std::string const& password,
                              std::string const& confirmed);
    void AutoRefusedChangePwd();
    void reject() override;

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void build(QString const& policyText);
    QLabel* addField(QWidget* field, char const* name, common::MsgCode text);
    void addRules();
    void onTyped();
    common::MsgCode fault() const;
    void complain(QString const& text, QWidget& focus);

    QString const userName_;
    std::vector<PasswordRule> const rules_;
    QLineEdit* user_;
    QLineEdit* current_;
    SecretEdit* new_;
    SecretEdit* confirm_;
    QLabel* match_;
    std::vector<QLabel*> marks_;  // one a rule
    QLabel* timeLeft_;
    DialogFoot* foot_;
};

}  // namespace zorvanelink::ui
