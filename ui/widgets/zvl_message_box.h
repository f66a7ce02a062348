// Message boxes: information, warning, critical and question. GUI thread; each runs a nested event
// loop. Flow code asks through Prompts instead.
#pragma once

#include <QLabel>
#include <QTimer>
#include <functional>
#include <vector>

#include "ui/widgets/message_text.h"
#include "ui/widgets/push_button_ext.h"
#include "ui/widgets/zvl_dialog.h"

namespace zorvanelink::ui {

enum class ZVLMsgBoxType : int { kInformation = 1, kWarning = 2, kCritical = 3 };

// Divides a text into a headline and a detail.
inline constexpr char const* kMessageSeparator = "#@@#";

// Every answer is the index of the pressed button, or -1 when the box was closed, escaped or timed
// out.
class ZVLMessageBox : public ZVLDialog {
    Q_OBJECT

  public:
    using Buttons = std::vector<QString>;

    // The first button is the default one. Plain text unless AllowLink is called.
    ZVLMessageBox(QWidget* parent, ZVLMsgBoxType kind, QString const& title, QString const& text,
                  Buttons const& buttons);

    static int information(QWidget* parent, QString const& title, QString const& text,
                           QString const& button);
    static int information(QWidget* parent, QString const& title, QString const& text,
                           Buttons const& buttons);
    static int warning(QWidget* parent, QString const& title, QString const& text,
                       QString const& button);
    static int warning(QWidget* parent, QString const& title, QString const& text,
                       Buttons const& buttons);
    static int critical(QWidget* parent, QString const& title, QString const& text,
                        QString const& button);
    static int critical(QWidget* parent, QString const& title, QString const& text,
                        Buttons const& buttons);
    // With a non-zero timeoutSeconds the box closes by itself then and calls onTimeout.
    static int question(QWidget* parent, QString const& title, QString const& text,
                        int timeoutSeconds, QString const& yes, QString const& no,
                        std::function<void()> onTimeout = {});
    static int question(QWidget* parent, QString const& title, QString const& text,
                        int timeoutSeconds, Buttons const& buttons,
                        std::function<void()> onTimeout = {}, int defaultButton = 0);

    void SetDefaultButton(int index);
    // Says how many seconds are left.
    void SetTimeout(std::chrono::milliseconds timeout, std::function<void()> onTimeout);
    // Reads the text as markup with links, for our own texts only.
    void AllowLink(std::function<void(QString const& url)> onLink);
    // Runs the box; the answer as told above.
    int Ask();

    // The text without its numbers, so that automation can compare it.
    static QString AutoPreprocess(QString text);
    void AutoRefused();

  protected:
    void Place() override;
    void fitTexts();
    void showEvent(QShowEvent* event) override;

  private:
    void init(ZVLMsgBoxType kind, QString const& text, Buttons const& buttons);
    void addButtons(Buttons const& buttons);
    void showTimeLeft();
    void AutoGetRes();

    ZVLMsgBoxType kind_;
    QString text_;
    MessageText* mainLabel_ = nullptr;
    MessageText* detailLabel_ = nullptr;
    std::vector<QPushButtonExt*> buttons_;
    QTimer timeout_;
    QTimer second_;
    QLabel* timeLeft_ = nullptr;
    int answer_ = -1;
};

// A box with a black backdrop of its own, for a parent that may be hidden.
class ZVLMessageBoxWithBackground : public ZVLMessageBox {
    Q_OBJECT

  public:
    using ZVLMessageBox::ZVLMessageBox;

    static int box(QWidget* parent, ZVLMsgBoxType kind, QString const& title, QString const& text,
                   Buttons const& buttons);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void Place() override;
    void Fit() override {}  // the backdrop is as large as the owner
};

}  // namespace zorvanelink::ui
