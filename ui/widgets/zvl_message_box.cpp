#include "ui/widgets/zvl_message_box.h"

#include <QDateTime>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QRegularExpression>
#include <QScreen>

#include "components/logger/logger.h"
#include "ui/text/bounded_text.h"
#include "ui/text/texts.h"
#include "ui/widgets/automation_hooks.h"
#include "ui/widgets/style.h"

namespace zorvanelink::ui {
namespace {

constexpr int kTextWidth = 332;
constexpr int kMaxTextHeight = 320;

struct Kind {
    char const* icon;
    char const* prefix;  // of the text that automation sees
};

Kind kindOf(ZVLMsgBoxType type) {
    switch (type) {
        case ZVLMsgBoxType::kWarning:
            return {":/assets/images/msgbox_warning.png", "WARNING: "};
        case ZVLMsgBoxType::kCritical:
            return {":/assets/images/msgbox_error.png", "ERROR: "};
        default:
            return {":/assets/images/msgbox_info.png", "INFO: "};
    }
}

int ask(QWidget* parent, ZVLMsgBoxType kind, QString const& title, QString const& text,
        ZVLMessageBox::Buttons const& buttons) {
    ZVLMessageBox box(parent, kind, title, text, buttons);
    return box.Ask();
}

}  // namespace

ZVLMessageBox::ZVLMessageBox(QWidget* parent, ZVLMsgBoxType kind, QString const& title,
                             QString const& text, Buttons const& buttons)
    : ZVLDialog(parent), kind_(kind), text_(text) {
    setWindowTitle(title);
    init(kind, text_, buttons);
}

void ZVLMessageBox::init(ZVLMsgBoxType kind, QString const& text, Buttons const& buttons) {
    auto* icon = new QLabel(Body());
    icon->setObjectName(QStringLiteral("icon_label_"));
    icon->setPixmap(LoadImage(QLatin1String(kindOf(kind).icon)));
    icon->setFixedSize(32, 32);
    mainLabel_ = new MessageText(Body());
    mainLabel_->setObjectName(QStringLiteral("main_label_"));
    detailLabel_ = new MessageText(Body());
    detailLabel_->setObjectName(QStringLiteral("detail_label_"));

    QLatin1String const separator(kMessageSeparator);
    int const at = text.indexOf(separator);
    // Cut before it is broken: a mark inside the separator would hide it.
    QString const main = BoundedText(text.left(at));
    QString const detail = at < 0 ? QString() : text.mid(at + separator.size()).trimmed();
    mainLabel_->setPlainText(main);
    detailLabel_->setPlainText(BoundedText(detail, kUnbrokenRun, kMaxBoxText - main.size()));
    mainLabel_->setProperty("headline", at >= 0);
    mainLabel_->setAccessibleName(mainLabel_->toPlainText());
    detailLabel_->setAccessibleName(detailLabel_->toPlainText());
    detailLabel_->setVisible(at >= 0);

    auto* texts = new QVBoxLayout;
    texts->setSpacing(4);
    texts->addWidget(mainLabel_);
    texts->addWidget(detailLabel_);
    auto* top = new QHBoxLayout;
    top->setSpacing(16);
    top->addWidget(icon, 0, Qt::AlignTop);
    top->addLayout(texts);
    auto* column = new QVBoxLayout(Body());
    column->setContentsMargins(20, 20, 20, 8);
    column->addLayout(top);
    addButtons(buttons);
    setAccessibleDescription(
        (mainLabel_->toPlainText() + QLatin1Char('\n') + detailLabel_->toPlainText()).trimmed());
}

void ZVLMessageBox::addButtons(Buttons const& buttons) {
    auto* foot = new QWidget(Panel());
    auto* row = new QHBoxLayout(foot);
    row->setSpacing(12);
    timeLeft_ = new QLabel(foot);
    timeLeft_->setObjectName(QStringLiteral("time_left_"));
    timeLeft_->setProperty("role", QStringLiteral("hint"));
    timeLeft_->hide();
    row->addWidget(timeLeft_);
    row->addStretch();
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        auto* button = new QPushButtonExt(buttons[i], foot);
        button->setObjectName(QStringLiteral("button_%1_").arg(i));
        connect(button, &QPushButton::clicked, this, [this, i] {
            answer_ = static_cast<int>(i);
            accept();
        });
        // The first answer stands at the right, where the eye ends.
        row->insertWidget(2, button);
        buttons_.push_back(button);
    }
    SetFoot(foot);
    SetDefaultButton(0);
}

void ZVLMessageBox::SetDefaultButton(int index) {
    if (index < 0 || index >= static_cast<int>(buttons_.size())) {
        return;
    }
    auto* chosen = buttons_[static_cast<std::size_t>(index)];
    chosen->setDefault(true);
    chosen->setFocus();
}

void ZVLMessageBox::SetTimeout(std::chrono::milliseconds timeout, std::function<void()> onTimeout) {
    timeout_.setSingleShot(true);
    timeout_.setInterval(timeout);
    timeLeft_->show();
    second_.setInterval(1000);
    connect(&second_, &QTimer::timeout, this, &ZVLMessageBox::showTimeLeft);
    showTimeLeft();
    connect(&timeout_, &QTimer::timeout, this, [this, onTimeout = std::move(onTimeout)] {
        reject();
        if (onTimeout) {
            onTimeout();
        }
    });
}

void ZVLMessageBox::showTimeLeft() {
    int const left = timeout_.isActive() ? timeout_.remainingTime() : timeout_.interval();
    timeLeft_->setText(
        Translate(QT_TRANSLATE_NOOP("ui", "Closes in %1 s")).arg((left + 999) / 1000));
}

void ZVLMessageBox::AllowLink(std::function<void(QString const& url)> onLink) {
    mainLabel_->setTextInteractionFlags(Qt::TextBrowserInteraction | Qt::TextSelectableByKeyboard);
    mainLabel_->setHtml(mainLabel_->toPlainText());
    connect(mainLabel_, &MessageText::LinkActivated, this, std::move(onLink));
}

int ZVLMessageBox::Ask() {
    answer_ = -1;
    if (timeout_.interval() > 0) {
        timeout_.start();
        second_.start();
    }
    exec();
    timeout_.stop();
    second_.stop();
    return answer_;
}

void ZVLMessageBox::fitTexts() {
    mainLabel_->FitTo(kTextWidth, kMaxTextHeight);
    detailLabel_->FitTo(kTextWidth, kMaxTextHeight);
}

void ZVLMessageBox::Place() {
    fitTexts();
    ZVLDialog::Place();
}

void ZVLMessageBox::showEvent(QShowEvent* event) {
    ZVLDialog::showEvent(event);
    // Queued: an answer given before the nested loop runs would leave that loop without an end.
    QMetaObject::invokeMethod(this, &ZVLMessageBox::AutoGetRes, Qt::QueuedConnection);
}

void ZVLMessageBox::AutoGetRes() {
    if (auto const& opened = automationHooks().dialogOpened) {
        opened(*this, AutoPreprocess(QLatin1String(kindOf(kind_).prefix) + text_));
    }
}

QString ZVLMessageBox::AutoPreprocess(QString text) {
    static QRegularExpression const numbers(QStringLiteral("[%0-9]+"));
    return text.remove(numbers);
}

void ZVLMessageBox::AutoRefused() {
    if (auto const& answer = automationHooks().setResult) {
        answer(-1, QStringLiteral("REFUSED MESSAGE BOX"));
    }
    reject();
}

int ZVLMessageBox::information(QWidget* parent, QString const& title, QString const& text,
                               QString const& button) {
    return ask(parent, ZVLMsgBoxType::kInformation, title, text, {button});
}

int ZVLMessageBox::information(QWidget* parent, QString const& title, QString const& text,
                               Buttons const& buttons) {
    return ask(parent, ZVLMsgBoxType::kInformation, title, text, buttons);
}

int ZVLMessageBox::warning(QWidget* parent, QString const& title, QString const& text,
                           QString const& button) {
    return ask(parent, ZVLMsgBoxType::kWarning, title, text, {button});
}

int ZVLMessageBox::warning(QWidget* parent, QString const& title, QString const& text,
                           Buttons const& buttons) {
    return ask(parent, ZVLMsgBoxType::kWarning, title, text, buttons);
}

int ZVLMessageBox::critical(QWidget* parent, QString const& title, QString const& text,
                            QString const& button) {
    return ask(parent, ZVLMsgBoxType::kCritical, title, text, {button});
}

int ZVLMessageBox::critical(QWidget* parent, QString const& title, QString const& text,
                            Buttons const& buttons) {
    return ask(parent, ZVLMsgBoxType::kCritical, title, text, buttons);
}

int ZVLMessageBox::question(QWidget* parent, QString const& title, QString const& text,
                            int timeoutSeconds, QString const& yes, QString const& no,
                            std::function<void()> onTimeout) {
    return question(parent, title, text, timeoutSeconds, Buttons{yes, no}, std::move(onTimeout));
}

int ZVLMessageBox::question(QWidget* parent, QString const& title, QString const& text,
                            int timeoutSeconds, Buttons const& buttons,
                            std::function<void()> onTimeout, int defaultButton) {
    ZVLMessageBox box(parent, ZVLMsgBoxType::kWarning, title, text, buttons);
    box.SetDefaultButton(defaultButton);
    if (timeoutSeconds > 0) {
        box.SetTimeout(std::chrono::seconds(timeoutSeconds), std::move(onTimeout));
    }
    return box.Ask();
}

int ZVLMessageBoxWithBackground::box(QWidget* parent, ZVLMsgBoxType kind, QString const& title,
                                     QString const& text, Buttons const& buttons) {
    auto const now = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh::mm::ss"));
    components::logger::Log().info("zvlmesage box with background {}", now.toStdString());
    ZVLMessageBoxWithBackground box(parent, kind, title, text, buttons);
    return box.Ask();
}

void ZVLMessageBoxWithBackground::paintEvent(QPaintEvent*) {
    auto const now = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh::mm::ss"));
    components::logger::Log().debug("zvlmesage box update {}", now.toStdString());
    QPainter painter(this);
    QColor backdrop(Qt::black);
    backdrop.setAlphaF(0.5);
    painter.fillRect(rect(), backdrop);
}

void ZVLMessageBoxWithBackground::Place() {
    QWidget const* const owner = VisibleOwner();
    fitTexts();
    FrameLayout()->setAlignment(Panel(), Qt::AlignCenter);
    setGeometry(owner != nullptr ? owner->frameGeometry().marginsRemoved(owner->contentsMargins())
                                 : screen()->availableGeometry());
}

}  // namespace zorvanelink::ui
