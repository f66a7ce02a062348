#include "ui/auth/auth_dialog.h"

#include <QHBoxLayout>
#include <QValidator>
#include <algorithm>
#include <chrono>

#include "ui/session/box_queue.h"
#include "ui/text/bounded_text.h"
#include "ui/text/texts.h"
#include "ui/widgets/automation_hooks.h"
#include "ui/widgets/secret_field.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;

// Pixels.
constexpr int kWidth = 480;
constexpr int kMargin = 20;
constexpr int kPromptHeight = 160;  // of the longest that is shown without scrolling
constexpr QSize kRetrySize{80, 32};

constexpr int kMinCodeLength = 1;
constexpr int kMaxCodeLength = 36;
constexpr int kPauseSeconds = 60;
constexpr std::chrono::seconds kPauseTick{1};

// What differs by kind of code.
struct Kind {
    std::int32_t type;
    MsgCode prompt;
    MsgCode tips;
    bool resend;
};
constexpr Kind kKinds[] = {
    {0, MsgCode::UI_TR_DEFAULT_AUTH_VERF_DESP, MsgCode::UI_TR_DEFAULT_AUTH_TIPS, false},
    {1, MsgCode::UI_TR_SMS_AUTH_VERF_DESP, MsgCode::UI_TR_SMS_AUTH_TIPS, true},
    {2, MsgCode::UI_TR_EMAIL_AUTH_VERF_DESP, MsgCode::UI_TR_EMAIL_AUTH_TIPS, true},
};
constexpr Kind kUnknown{-1, MsgCode::UI_TR_DEFAULT_AUTH_VERF_DESP, MsgCode::UNSPECIFIED, false};

// Lets a code in, and of what is longer what is left without the blanks around it.
class CodeLength : public QValidator {
  public:
    using QValidator::QValidator;

    State validate(QString& input, int& position) const override {
        if (input.size() > kMaxCodeLength) {
            int const leading =
                static_cast<int>(std::find_if_not(input.cbegin(), input.cend(),
                                                  [](QChar sign) { return sign.isSpace(); }) -
                                 input.cbegin());
            input.remove(0, leading);
            input.truncate(kMaxCodeLength);
            position = std::clamp(position - leading, 0, input.size());
        }
        return Acceptable;
    }
};

Kind const& kindOf(std::int32_t type) {
    auto const* const row = std::find_if(std::begin(kKinds), std::end(kKinds),
                                         [type](Kind const& kind) { return kind.type == type; });
    return row == std::end(kKinds) ? kUnknown : *row;
}

}  // namespace

AuthDialog::AuthDialog(Context const& context, QWidget* parent)
    : ZVLDialog(parent),
      prompt_(new MessageText(Body())),
      code_(new QLineEdit(Body())),
      retry_(new QPushButtonExt(QString(), Body())),
      tips_(new QLabel(Body())),
      timeLeft_(new QLabel(Body())),
      foot_(new DialogFoot(Panel(), "verify_button_", "cancel_button_")) {
    setObjectName(QStringLiteral("auth_dialog_"));
    setWindowTitle(GetTrMsg(MsgCode::UI_INFO_AUTH));
    build();
    fill(context);
    connect(foot_->Ok(), &QPushButton::clicked, this, &AuthDialog::on_verify_button__clicked);
    connect(foot_->Cancel(), &QPushButton::clicked, this, &AuthDialog::on_cancel_button__clicked);
    connect(retry_, &QPushButton::clicked, this, &AuthDialog::on_retry_button__clicked);
    connect(&pause_, &QTimer::timeout, this, &AuthDialog::onRetryTimerTimeout);
    connect(code_, &QLineEdit::textChanged, this, [this] { unanswered_ = false; });
    pause_.setInterval(kPauseTick);
    startPause();
}

AuthDialog::~AuthDialog() {
    WipeField(*code_);
}

void AuthDialog::build() {
    setFixedWidth(kWidth);
    prompt_->setObjectName(QStringLiteral("prompt_label_"));
    code_->setObjectName(QStringLiteral("code_edit_"));
    code_->setValidator(new CodeLength(code_));
    code_->setPlaceholderText(GetTrMsg(MsgCode::UI_TR_DEFAULT_AUTH_LINEEDIT_CONTENT));
    SetSecretEcho(*code_, QLineEdit::Normal);
    retry_->setObjectName(QStringLiteral("retry_button_"));
    retry_->setAccessibleName(GetTrMsg(MsgCode::UI_TR_RESEND));
    retry_->setFixedSize(kRetrySize);
    retry_->setAutoDefault(false);
    tips_->setObjectName(QStringLiteral("tips_label_"));
    tips_->setWordWrap(true);
    tips_->setAlignment(Qt::AlignTop);
    timeLeft_->setObjectName(QStringLiteral("time_left_label_"));
    for (QLabel* const label : {tips_, timeLeft_}) {
        label->setProperty("role", QStringLiteral("hint"));
        label->setTextFormat(Qt::PlainText);
    }
    auto* row = new QHBoxLayout;
    row->setSpacing(12);
    row->addWidget(code_);
    row->addWidget(retry_);
    auto* column = new QVBoxLayout(Body());
    column->setContentsMargins(kMargin, kMargin, kMargin, 8);
    column->setSpacing(12);
    column->addWidget(prompt_);
    column->addLayout(row);
    column->addWidget(tips_);
    foot_->SetLead(timeLeft_);
    SetFoot(foot_);
    setTabOrder(code_, retry_);
}

void AuthDialog::fill(Context const& context) {
    Kind const& kind = kindOf(context.authCodeType);
    QString prompt = GetTrMsg(kind.prompt);
    QString tips = GetTrMsg(kind.tips);
    QString const sent = QString::fromStdString(context.tokenPromptMsg).trimmed();
    bool const servers = kind.type == 0 && !sent.isEmpty();
    if (servers) {
        prompt = BoundedText(sent);
        tips.clear();
    } else if (prompt.contains(QLatin1String("%1"))) {
        prompt = prompt.arg(BoundedText(QString::fromStdString(context.emailAuthAccount)));
    }
    for (QWidget* widget : {static_cast<QWidget*>(this), static_cast<QWidget*>(prompt_)}) {
        widget->ensurePolished();  // the sheet gives the font
    }
    int const width = kWidth - 2 * (kMargin + kEdge);
    // Our own text is wrapped at its words.
    prompt_->setPlainText(servers ? Text_Changeline(prompt, width, prompt_->fontMetrics())
                                  : prompt);
    prompt_->FitTo(width, kPromptHeight);
    code_->setAccessibleName(prompt);
    tips_->setText(tips);
    tips_->setHidden(tips.isEmpty());
    retry_->setVisible(kind.resend);
}

QString AuthDialog::Text_Changeline(QString const& text, int width, QFontMetrics const& metrics) {
    QString broken;
    QString line;
    for (QChar const sign : text) {
        line += sign;
        bool const second_half = sign.isLowSurrogate() && line.size() > 1;
        int const before = line.size() - (second_half ? 2 : 1);
        if (sign == QLatin1Char('\n')) {
            broken += line;
            line.clear();
        } else if (before > 0 && !sign.isHighSurrogate() &&
                   metrics.horizontalAdvance(line) >= width) {
            broken += line.left(before) + QLatin1Char('\n');
            line.remove(0, before);
        }
    }
    return broken + line;
}

void AuthDialog::ShowTimeLeft(QString const& text) {
    timeLeft_->setText(text);
}

void AuthDialog::showEvent(QShowEvent* event) {
    ZVLDialog::showEvent(event);
    code_->setFocus();
    ReportOpened(*this, prompt_->toPlainText());
}

void AuthDialog::startPause() {
    pauseLeft_ = kPauseSeconds;
    retry_->setEnabled(false);
    retry_->setText(QString::number(pauseLeft_));
    pause_.start();
}

void AuthDialog::onRetryTimerTimeout() {
    --pauseLeft_;
    retry_->setText(QString::number(pauseLeft_));
    if (pauseLeft_ <= 0) {
        pause_.stop();
        retry_->setEnabled(true);
        retry_->setText(GetTrMsg(MsgCode::UI_TR_RESEND));
    }
}

// The same once: each counts as a try.
void AuthDialog::on_verify_button__clicked() {
    if (!unanswered_) {
        send(code_->text());
    }
}

void AuthDialog::send(QString typed) {
    QString code = typed.trimmed();
    if (code.size() >= kMinCodeLength && code.size() <= kMaxCodeLength) {
        unanswered_ = true;
        Q_EMIT SendAuthCode(code);
    } else {
        refuse(MsgCode::UI_ERROR, MsgCode::UI_INFO_WRONG_AUTH_CODE_LENGTH);
    }
    for (QString* const copy : {&code, &typed}) {
        copy->fill(QChar(u'\0'));
    }
}

void AuthDialog::on_retry_button__clicked() {
    unanswered_ = false;
    Q_EMIT RequestAuthCode();
    startPause();
    code_->setFocus();
    if (auto const& answer = automationHooks().setResult) {
        answer(0, QStringLiteral("RESEND DONE"));
    }
}

void AuthDialog::onAuthCodeVerifyResult(bool ok) {
    if (ok) {
        accept();
        return;
    }
    auto const& answer = automationHooks().setResult;
    if (answer) {
        answer(-1, QStringLiteral("UNLUCKY"));
    }
    refuse(answer ? MsgCode::UI_INFO : MsgCode::UI_ERROR,
           MsgCode::UI_INFO_FAIL_VARIFY_AUTH_CODE_INPUT_AGAIN);
}

void AuthDialog::refuse(MsgCode title, MsgCode text) {
    unanswered_ = false;
    WipeField(*code_);
    code_->setFocus();
    BoxRequest request = OkBox(BoxKind::kCritical, GetTrMsg(text));
    request.parent = this;
    request.title = GetTrMsg(title);
    Q_EMIT Refused(request);
}

void AuthDialog::on_cancel_button__clicked() {
    reject();
}

void AuthDialog::on_close_btn__clicked() {
    reject();
}

// The close button and Escape come here too.
void AuthDialog::reject() {
    if (auto const& answer = automationHooks().setResult) {
        answer(0, QStringLiteral("REFUSED VERIFY CODE"));
    }
    Q_EMIT GivenUp();
    ZVLDialog::reject();
}

void AuthDialog::AutoConfirmAuth(int action, std::string const& text) {
    switch (action) {
        case 0:
            send(QString::fromStdString(text));  // not cut, as the field would: that is refused
            break;
        case 1:
            on_retry_button__clicked();
            break;
        case 2:
            on_cancel_button__clicked();
            break;
        default:
            if (auto const& answer = automationHooks().setResult) {
                answer(-1, QStringLiteral("Action is invalid"));
            }
    }
}

void AuthDialog::AutoRefusedAuth() {
    on_cancel_button__clicked();
}

}  // namespace zorvanelink::ui
