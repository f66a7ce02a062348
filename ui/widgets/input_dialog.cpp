#include "ui/widgets/input_dialog.h"

#include <QHBoxLayout>

#include "ui/text/texts.h"
#include "ui/widgets/automation_hooks.h"
#include "ui/widgets/secret_field.h"

namespace zorvanelink::ui {

using common::MsgCode;

InputDialog::InputDialog(QWidget* parent)
    : ZVLDialog(parent),
      label_(new QLabel(Body())),
      label2_(new QLabel(Body())),
      edit_(new QLineEdit(Body())),
      remember_(new QCheckBox(Body())) {
    label_->setObjectName(QStringLiteral("label_"));
    label2_->setObjectName(QStringLiteral("label2_"));
    label2_->setProperty("role", QStringLiteral("hint"));
    edit_->setObjectName(QStringLiteral("text_edit_"));
    edit_->setEchoMode(QLineEdit::Password);
    remember_->setObjectName(QStringLiteral("remember_check_"));
    for (auto* label : {label_, label2_}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        label->hide();
    }
    label_->setBuddy(edit_);
    auto* column = new QVBoxLayout(Body());
    column->setContentsMargins(20, 20, 20, 20);
    column->setSpacing(12);
    column->addWidget(label_);
    column->addWidget(edit_);
    column->addWidget(label2_);
    column->addWidget(remember_);
    column->addSpacing(4);
    column->addWidget(buildButtons());
    setFixedWidth(480);
    edit_->setFocus();
}

QWidget* InputDialog::buildButtons() {
    auto* bar = new QWidget(Body());
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(12);
    row->addStretch();
    cancel_ = new QPushButtonExt(GetTrMsg(MsgCode::UI_INFO_CANCEL), bar);
    cancel_->setObjectName(QStringLiteral("cancel_button_"));
    ok_ = new QPushButtonExt(GetTrMsg(MsgCode::UI_INFO_OK), bar);
    ok_->setObjectName(QStringLiteral("ok_button_"));
    ok_->setDefault(true);
    row->addWidget(cancel_);
    row->addWidget(ok_);
    connect(ok_, &QPushButton::clicked, this, &InputDialog::on_ok_button__clicked);
    connect(cancel_, &QPushButton::clicked, this, &QDialog::reject);
    return bar;
}

void InputDialog::setLabelText(QString const& text) {
    label_->setText(text);
    label_->setVisible(!text.isEmpty());
    edit_->setAccessibleName(text);
}

void InputDialog::setLabel2Text(QString const& text) {
    label2_->setText(text);
    label2_->setVisible(!text.isEmpty());
}

void InputDialog::setTextEchoMode(QLineEdit::EchoMode mode) {
    edit_->setEchoMode(mode);
}

void InputDialog::setTextValue(QString const& text) {
    edit_->setText(text);
}

void InputDialog::setPlaceholderText(QString const& text) {
    edit_->setPlaceholderText(text);
    if (edit_->accessibleName().isEmpty()) {
        edit_->setAccessibleName(text);
    }
}

void InputDialog::setOkButtonText(QString const& text) {
    ok_->setText(text);
    ok_->setAccessibleName(text);
}

void InputDialog::setCancelButtonText(QString const& text) {
    cancel_->setText(text);
    cancel_->setAccessibleName(text);
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
    // Queued: an answer given before the nested loop runs would leave that loop without an end.
    QMetaObject::invokeMethod(this, &InputDialog::reportOpened, Qt::QueuedConnection);
}

void InputDialog::reportOpened() {
    if (auto const& opened = automationHooks().dialogOpened) {
        opened(*this, label_->text());
    }
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
