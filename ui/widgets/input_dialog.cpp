#include "ui/widgets/input_dialog.h"

#include <QVBoxLayout>

#include "ui/text/bounded_text.h"
#include "ui/text/texts.h"
#include "ui/widgets/automation_hooks.h"
#include "ui/widgets/field_note.h"
#include "ui/widgets/secret_field.h"

namespace zorvanelink::ui {

using common::MsgCode;

namespace {

constexpr int kRun = 32;  // the widest signs so many fit a line
constexpr int kMaxChars = 1024;

}  // namespace

InputDialog::InputDialog(Prompts& prompts, QWidget* parent)
    : ZVLDialog(parent, &prompts),
      subject_(new ElidedLabel({}, Body())),
      subjectDetail_(new ElidedLabel({}, Body())),
      label_(new QLabel(Body())),
      label2_(new QLabel(Body())),
      edit_(new SecretEdit(kMaxChars, Body())),
      remember_(new QCheckBox(Body())),
      foot_(new DialogFoot(Panel(), "ok_button_", "cancel_button_")) {
    subject_->setObjectName(QStringLiteral("subject_"));
    subject_->setProperty("role", QStringLiteral("heading"));
    subjectDetail_->setObjectName(QStringLiteral("subject_detail_"));
    subjectDetail_->setProperty("role", QStringLiteral("secondary"));
    label_->setObjectName(QStringLiteral("label_"));
    label2_->setObjectName(QStringLiteral("label2_"));
    label2_->setProperty("role", QStringLiteral("label"));
    edit_->setObjectName(QStringLiteral("text_edit_"));
    setTextEchoMode(QLineEdit::Password);
    remember_->setObjectName(QStringLiteral("remember_check_"));
    for (auto* label : {label_, label2_}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        label->setBuddy(edit_);
        label->hide();
    }
    connect(foot_->Ok(), &QPushButton::clicked, this, &InputDialog::on_ok_button__clicked);
    connect(foot_->Cancel(), &QPushButton::clicked, this, &QDialog::reject);
    auto* field = new QVBoxLayout;
    field->setSpacing(5);
    field->addWidget(label2_);
    field->addWidget(edit_);
    auto* column = new QVBoxLayout(Body());
    column->setContentsMargins(20, 20, 20, 8);
    column->setSpacing(12);
    auto* subject = new QVBoxLayout;
    subject->setSpacing(2);
    subject->addWidget(subject_);
    subject->addWidget(subjectDetail_);
    column->addLayout(subject);
    column->addWidget(label_);
    column->addLayout(field);
    column->addWidget(remember_);
    SetFoot(foot_);
    setFixedWidth(480);
    SetSubject({}, {});
    edit_->setFocus();
}

InputDialog::~InputDialog() {
    WipeField(*edit_);
}

void InputDialog::SetSubject(QString const& name, QString const& detail) {
    subject_->SetFullText(name);
    subject_->setHidden(name.isEmpty());
    subjectDetail_->SetFullText(detail);
    subjectDetail_->setHidden(detail.isEmpty());
    setAccessibleDescription((name + QLatin1Char('\n') + detail).trimmed());
}

void InputDialog::setLabelText(QString const& text) {
    label_->setText(BoundedText(text, kRun));
    label_->setVisible(!text.isEmpty());
    nameField();
}

void InputDialog::setLabel2Text(QString const& text) {
    label2_->setText(BoundedText(text, kRun));
    label2_->setVisible(!text.isEmpty());
    nameField();
}

void InputDialog::setTextEchoMode(QLineEdit::EchoMode mode) {
    SetSecretEcho(*edit_, mode);
}

void InputDialog::setTextValue(QString const& text) {
    edit_->setText(text);
}

void InputDialog::setPlaceholderText(QString const& text) {
    edit_->setPlaceholderText(text);
    nameField();
}

// Named by what is asked for, else by its caption, else by what stands in it while it is empty.
void InputDialog::nameField() {
    edit_->setAccessibleDescription(label2_->text());
    for (QString const& name : {label_->text(), label2_->text(), edit_->placeholderText()}) {
        if (!name.isEmpty()) {
            edit_->setAccessibleName(name);
            return;
        }
    }
}

void InputDialog::setOkButtonText(QString const& text) {
    foot_->Ok()->setText(text);
    foot_->Ok()->setAccessibleName(text);
}

void InputDialog::setCancelButtonText(QString const& text) {
    foot_->Cancel()->setText(text);
    foot_->Cancel()->setAccessibleName(text);
}

void InputDialog::setCheckBoxText(QString const& text) {
    remember_->setText(text);
    remember_->setAccessibleName(text);
}

void InputDialog::setRemember(bool checked) {
    remember_->setChecked(checked);
}

void InputDialog::setEmptyTextMessage(QString const& text) {
    emptyMessage_ = text;
}

void InputDialog::setTooLongMessage(QString const& text) {
    tooLongMessage_ = text;
}

void InputDialog::set_max_utf8_length(int bytes) {
    maxUtf8Length_ = bytes;
}

void InputDialog::SetRememberCheckHide(bool hide) {
    remember_->setHidden(hide);
}

QString InputDialog::textValue() const {
    return edit_->text();
}

std::string InputDialog::TakeSensitiveValue() {
    return ui::TakeSensitiveValue(*edit_);
}

bool InputDialog::remberCheck() const {
    return remember_->isChecked();
}

void InputDialog::showEvent(QShowEvent* event) {
    ZVLDialog::showEvent(event);
    edit_->setFocus();
    ReportOpened(*this, label_->text());
}

void InputDialog::on_ok_button__clicked() {
    int const length = Utf8Length(*edit_);
    QString complaint;
    if (length == 0) {
        complaint = emptyMessage_;
    } else if (maxUtf8Length_ > 0 && length > maxUtf8Length_) {
        complaint =
            tooLongMessage_.isEmpty() ? GetTrMsg(MsgCode::UI_TR_ERR_PWD_LENGTH) : tooLongMessage_;
    }
    if (complaint.isEmpty()) {
        accept();
        return;
    }
    MarkRefused(*edit_, complaint);
    ShowCriticalBox(this, GetTrMsg(MsgCode::UI_ERROR), complaint, GetTrMsg(MsgCode::UI_INFO_OK));
    edit_->setFocus();
}

void InputDialog::AutoConfirmPwd(QString const& text, bool remember) {
    setTextValue(text);
    setRemember(remember);
    on_ok_button__clicked();
}

void InputDialog::AutoRefusedPwd() {
    if (auto const& answer = automationHooks().setResult) {
        answer(-1, QStringLiteral("REFUSED AND QUIT INPUT"));
    }
    reject();
}

}  // namespace zorvanelink::ui
