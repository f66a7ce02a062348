// Asks for one secret: a password or a PIN. GUI thread.
#pragma once

#include <QCheckBox>
#include <QLabel>
#include <memory>
#include <string>

#include "ui/widgets/dialog_foot.h"
#include "ui/widgets/elided_label.h"
#include "ui/widgets/secret_edit.h"
#include "ui/widgets/zvl_dialog.h"

namespace zorvanelink::ui {

struct SecretRequest;

class InputDialog : public ZVLDialog {
    Q_OBJECT

  public:
    explicit InputDialog(Prompts& prompts, QWidget* parent = nullptr);
    // Whatever way it ends, no typed secret stays behind.
    ~InputDialog() override;

    // Whose secret it is: a name, and what tells it from others.
    void SetSubject(QString const& name, QString const& detail);
    void setLabelText(QString const& text);   // what is asked for
    void setLabel2Text(QString const& text);  // the field's caption, hidden while empty
    void setTextEchoMode(QLineEdit::EchoMode mode);
    void setTextValue(QString const& text);
    void setPlaceholderText(QString const& text);
    void setOkButtonText(QString const& text);
    void setCancelButtonText(QString const& text);
    void setCheckBoxText(QString const& text);
    void setRemember(bool checked);
    // What an empty and a too long text is answered with. An empty message allows an empty text.
    void setEmptyTextMessage(QString const& text);
    void setTooLongMessage(QString const& text);
    void set_max_utf8_length(int bytes);  // of UTF-8; 0 for no limit
    void SetRememberCheckHide(bool hide);

    QString textValue() const;
    // What stands in the field, as a sensitive value; the field is empty afterwards.
    std::string TakeSensitiveValue();
    bool remberCheck() const;

  public Q_SLOTS:
    void AutoConfirmPwd(QString const& text, bool remember);
    void AutoRefusedPwd();

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void on_ok_button__clicked();
    void nameField();

    ElidedLabel* subject_;
    ElidedLabel* subjectDetail_;
    QLabel* label_;
    QLabel* label2_;
    SecretEdit* edit_;
    QCheckBox* remember_;
    DialogFoot* foot_;
    QString emptyMessage_;
    QString tooLongMessage_;
    int maxUtf8Length_ = 0;
};

// The prompt that a request describes, not shown yet.
std::unique_ptr<InputDialog> PromptFor(SecretRequest const& request, Prompts& prompts);

}  // namespace zorvanelink::ui
