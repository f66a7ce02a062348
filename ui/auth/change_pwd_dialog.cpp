#include "ui/auth/change_pwd_dialog.h"

#include <QHBoxLayout>

#include "ui/config/profile.h"
#include "ui/session/box_queue.h"
#include "ui/text/texts.h"
#include "ui/widgets/automation_hooks.h"
#include "ui/widgets/secret_field.h"
#include "ui/widgets/style.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;

// Pixels.
constexpr int kWidth = 480;
constexpr int kMargin = 20;
constexpr int kSpacing = 12;
constexpr int kLabelSpacing = 5;
constexpr int kMark = 16;

MsgCode titleOf(ChangePWdType type) {
    switch (type) {
        case ChangePWdType::kExpired:
            return MsgCode::UI_INFO_CHANGE_PWD_EXPIRED;
        case ChangePWdType::kFirstLogin:
            return MsgCode::UI_INFO_CHANGEPWD_FIRST_LOGIN;
        default:
            return MsgCode::UI_INFO_CHANGE_PWD;
    }
}

void setMark(QLabel& mark, bool met) {
    mark.setPixmap(LoadImage(met ? QStringLiteral(":/assets/images/rule_met.png")
                                 : QStringLiteral(":/assets/images/rule_open.png")));
    mark.setAccessibleName(met ? Translate(QT_TRANSLATE_NOOP("ui", "Met"))
                               : Translate(QT_TRANSLATE_NOOP("ui", "Not met yet")));
}

}  // namespace

ChangePWDDialog::ChangePWDDialog(QString const& userName,
                                 core::sslvpn::UserPasswordComplexity const& policy,
                                 ChangePWdType type, QWidget* parent)
    : ZVLDialog(parent),
      userName_(userName),
      rules_(PasswordRulesOf(policy)),
      user_(new QLineEdit(userName, Body())),
      current_(new QLineEdit(Body())),
      new_(new SecretEdit(kMaxPasswordBytes, Body())),
      confirm_(new SecretEdit(kMaxPasswordBytes, Body())),
      match_(new QLabel(Body())),
      timeLeft_(new QLabel(Body())),
      foot_(new DialogFoot(Panel(), "pushButton_ok", "pushButton_cancel")) {
    setObjectName(QStringLiteral("change_pwd_dialog_"));
    setWindowTitle(GetTrMsg(titleOf(type)));
    build(ConvertPWDComplexityToString(policy));
    for (SecretEdit* const field : {new_, confirm_}) {
        connect(field, &QLineEdit::textChanged, this, &ChangePWDDialog::onTyped);
    }
    onTyped();
    connect(foot_->Ok(), &QPushButton::clicked, this, &ChangePWDDialog::on_pushButton_ok_clicked);
    connect(foot_->Cancel(), &QPushButton::clicked, this,
            &ChangePWDDialog::on_pushButton_cancel_clicked);
}

ChangePWDDialog::~ChangePWDDialog() {
    for (QLineEdit* const field :
         {current_, static_cast<QLineEdit*>(new_), static_cast<QLineEdit*>(confirm_)}) {
        WipeField(*field);
    }
}

void ChangePWDDialog::build(QString const& policyText) {
    setFixedWidth(kWidth);
    auto* column = new QVBoxLayout(Body());
    column->setContentsMargins(kMargin, kMargin, kMargin, 8);
    column->setSpacing(kSpacing);
    user_->setReadOnly(true);
    current_->setMaxLength(kMaxPasswordBytes);
    SetSecretEcho(*current_, QLineEdit::Password);
    addField(user_, "lineEdit_user_", MsgCode::UI_INFO_CURRENT_USER);
    addField(current_, "lineEdit_current_pwd_", MsgCode::UI_INFO_CURRENT_PWD);
    addField(new_, "lineEdit_new_pwd_", MsgCode::UI_INFO_NEW_PWD);
    auto* caption = addField(confirm_, "lineEdit_confirm_pwd_", MsgCode::UI_INFO_CONFIRM_NEW_PWD);
    match_->setParent(caption->parentWidget());
    match_->setObjectName(QStringLiteral("match_mark_"));
    match_->setFixedSize(kMark, kMark);
    new_->setAccessibleDescription(policyText.trimmed());
    addRules();
    timeLeft_->setObjectName(QStringLiteral("time_left_label_"));
    timeLeft_->setProperty("role", QStringLiteral("hint"));
    foot_->SetLead(timeLeft_);
    SetFoot(foot_);
    setTabOrder(new_->Eye(), confirm_);
}

// The caption stands above its field, a mark at its end.
QLabel* ChangePWDDialog::addField(QWidget* field, char const* name, MsgCode text) {
    auto* label = new QLabel(GetTrMsg(text), Body());
    label->setProperty("role", QStringLiteral("label"));
    label->setBuddy(field);
    field->setObjectName(QLatin1String(name));
    field->setAccessibleName(label->text());
    auto* head = new QHBoxLayout;
    head->setSpacing(kLabelSpacing);
    head->addWidget(label);
    if (field == confirm_) {
        head->addWidget(match_);
    }
    head->addStretch();
    auto* pair = new QVBoxLayout;
    pair->setSpacing(kLabelSpacing);
    pair->addLayout(head);
    pair->addWidget(field);
    static_cast<QVBoxLayout*>(Body()->layout())->addLayout(pair);
    return label;
}

void ChangePWDDialog::addRules() {
    if (rules_.empty()) {
        return;
    }
    auto* list = new QVBoxLayout;
    list->setSpacing(kLabelSpacing);
    auto* heading = new QLabel(GetTrMsg(MsgCode::UI_INFO_PWD_RULE), Body());
    heading->setProperty("role", QStringLiteral("label"));
    list->addWidget(heading);
    for (PasswordRule const& rule : rules_) {
        auto* mark = marks_.emplace_back(new QLabel(Body()));
        mark->setObjectName(QStringLiteral("rule_mark_"));
        mark->setFixedSize(kMark, kMark);
        auto* text = new QLabel(rule.text, Body());
        text->setProperty("role", QStringLiteral("hint"));
        text->setTextFormat(Qt::PlainText);
        auto* row = new QHBoxLayout;
        row->setSpacing(6);
        row->addWidget(mark);
        row->addWidget(text, 1);
        list->addLayout(row);
    }
    static_cast<QVBoxLayout*>(Body()->layout())->addLayout(list);
}

void ChangePWDDialog::onTyped() {
    for (std::size_t i = 0; i < rules_.size(); ++i) {
        setMark(*marks_[i], rules_[i].MetBy(new_->text(), userName_));
    }
    bool const match = !new_->text().isEmpty() && new_->text() == confirm_->text();
    setMark(*match_, match);
}

void ChangePWDDialog::ShowTimeLeft(QString const& text) {
    timeLeft_->setText(text);
}

void ChangePWDDialog::SetWaiting(bool waiting) {
    foot_->Ok()->setEnabled(!waiting);
}

void ChangePWDDialog::showEvent(QShowEvent* event) {
    ZVLDialog::showEvent(event);
    current_->setFocus();
    ReportOpened(*this, windowTitle());
}

// UNSPECIFIED for none.
MsgCode ChangePWDDialog::fault() const {
    bool const empty =
        current_->text().isEmpty() || new_->text().isEmpty() || confirm_->text().isEmpty();
    if (empty) {
        return MsgCode::UI_INFO_CHECK_NO_EMPTY_ITEM;
    }
    if (new_->text() != confirm_->text()) {
        return MsgCode::UI_ERROR_TWO_PWD_NOT_MATCH;
    }
    if (new_->text() == current_->text()) {
        return MsgCode::UI_INFO_PWD_NOT_CHANGE;
    }
    if (Utf8Length(*current_) > kMaxPasswordBytes) {
        return MsgCode::UI_TR_ERR_CUR_PWD_LENGTH;
    }
    return Utf8Length(*new_) > kMaxPasswordBytes ? MsgCode::UI_TR_ERR_NEW_PWD_LENGTH
                                                 : MsgCode::UNSPECIFIED;
}

void ChangePWDDialog::on_pushButton_ok_clicked() {
    if (MsgCode const text = fault(); text != MsgCode::UNSPECIFIED) {
        complain(GetTrMsg(text), text == MsgCode::UI_TR_ERR_CUR_PWD_LENGTH ? *current_ : *new_);
        return;
    }
    SetWaiting(true);
    Q_EMIT ChangePWDSignal(SensitiveValueOf(*current_), SensitiveValueOf(*new_));
}

void ChangePWDDialog::Refuse(QString const& text, bool fromCurrent) {
    SetWaiting(false);
    complain(text, fromCurrent ? *current_ : *new_);
}

void ChangePWDDialog::complain(QString const& text, QWidget& focus) {
    focus.setFocus();
    Q_EMIT Refused(Complaint(text));
}

BoxRequest ChangePWDDialog::Complaint(QString const& text) {
    BoxRequest request = OkBox(BoxKind::kCritical, text);
    request.parent = this;
    return request;
}

void ChangePWDDialog::on_pushButton_cancel_clicked() {
    reject();
}

void ChangePWDDialog::on_close_btn__clicked() {
    reject();
}

// The close button and Escape come here too.
void ChangePWDDialog::reject() {
    if (auto const& answer = automationHooks().setResult) {
        answer(0, QStringLiteral("REFUSED CHANGE PWD"));
    }
    Q_EMIT GivenUp();
    ZVLDialog::reject();
}

void ChangePWDDialog::AutoConfirmChangePwd(int action, std::string const& current,
                                           std::string const& password,
                                           std::string const& confirmed) {
    if (action != 0) {
        if (auto const& answer = automationHooks().setResult) {
            answer(-1, QStringLiteral("Action is invalid"));
        }
        return;
    }
    TypeInto(*current_, current);
    TypeInto(*new_, password);
    TypeInto(*confirm_, confirmed);
    on_pushButton_ok_clicked();
}

void ChangePWDDialog::AutoRefusedChangePwd() {
    on_pushButton_cancel_clicked();
}

}  // namespace zorvanelink::ui
