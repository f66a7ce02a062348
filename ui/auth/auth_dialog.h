// Asks for the code of a second factor: sent to a phone or an address, or shown by a token. GUI
// thread.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <string>

#include "ui/session/context.h"
#include "ui/widgets/dialog_foot.h"
#include "ui/widgets/message_text.h"
#include "ui/widgets/prompts.h"
#include "ui/widgets/zvl_dialog.h"

namespace zorvanelink::ui {

class AuthDialog : public ZVLDialog {
    Q_OBJECT

  public:
    // What is asked for follows from the context's kind of code.
    explicit AuthDialog(Context const& context, QWidget* parent = nullptr);
    ~AuthDialog() override;

    void ShowTimeLeft(QString const& text);

    // Breaks a text without blanks, so that no line is `width` pixels wide.
    static QString Text_Changeline(QString const& text, int width, QFontMetrics const& metrics);

  Q_SIGNALS:
    void SendAuthCode(QString const& code);
    void RequestAuthCode();
    // What was typed is no good, and the user is to be told so over the dialog.
    void Refused(BoxRequest const& request);
    // The user gives up; the dialog is still there.
    void GivenUp();

  public Q_SLOTS:
    void onAuthCodeVerifyResult(bool ok);
    void onRetryTimerTimeout();
    void on_verify_button__clicked();
    void on_retry_button__clicked();
    void on_cancel_button__clicked();
    void on_close_btn__clicked();
    // 0 sends the text, 1 asks for another code, 2 gives up.
    void AutoConfirmAuth(int action, std::string const& text);
    void AutoRefusedAuth();
    void reject() override;

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void build();
    void fill(Context const& context);
    void startPause();
    void send(QString typed);
    void refuse(common::MsgCode title, common::MsgCode text);

    MessageText* prompt_;
    QLineEdit* code_;
    QPushButtonExt* retry_;
    QLabel* tips_;
    QLabel* timeLeft_;
    DialogFoot* foot_;
    QTimer pause_;
    int pauseLeft_ = 0;        // seconds
    bool unanswered_ = false;  // what the field holds has been sent
};

}  // namespace zorvanelink::ui
