// The one door to the user: boxes, secrets, file choosers and the browser. Flow code gets a
// Prompts&; tests script it. GUI thread; every call may run a nested event loop.
#pragma once

#include <QDialog>
#include <QString>
#include <QUrl>
#include <QWidget>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace zorvanelink::ui {

enum class BoxKind { kInformation, kWarning, kCritical, kQuestion };

struct BoxRequest {
    BoxKind kind = BoxKind::kInformation;
    QWidget* parent = nullptr;
    QString title;
    QString text;  // "#@@#" divides headline and detail
    std::vector<QString> buttons;
    int defaultButton = 0;
    int timeoutSeconds = 0;  // 0: none
    std::function<void()> onTimeout;
    // Set: the text is our own markup with one link, and this opens it.
    std::function<void(QString const& url)> onLink;
};

struct SecretRequest {
    QWidget* parent = nullptr;
    QString title;
    QString subject;  // whose secret it is, and what tells it from others
    QString subjectDetail;
    QString label;
    QString label2;
    QString placeholder;
    QString okButton;
    QString cancelButton;
    QString rememberText;  // empty: no box to remember
    bool remember = false;
    int maxUtf8Length = 0;  // bytes, 0: no limit
    QString emptyMessage;   // empty: an empty secret is accepted
    QString tooLongMessage;
};

struct SecretAnswer {
    std::string value;  // sensitive value, never clear; empty for an empty text
    bool remember = false;
};

struct FileRequest {
    enum class Mode { kOpen, kOpenMany, kSave, kFolder };
    Mode mode = Mode::kOpen;
    QWidget* parent = nullptr;
    QString title;
    QString startPath;  // folder, or the proposed file for kSave
    QString filter;     // as QFileDialog takes it; empty entries are left out
};

class Prompts {
  public:
    virtual ~Prompts() = default;

    // The index of the pressed button; -1 when closed, escaped or timed out.
    int Information(QWidget* parent, QString const& title, QString const& text,
                    QString const& button);
    int Warning(QWidget* parent, QString const& title, QString const& text, QString const& button);
    int Critical(QWidget* parent, QString const& title, QString const& text, QString const& button);
    // A critical box titled "Error" with the button "OK".
    void Error(QWidget* parent, QString const& text);
    // True only when `yes` was pressed. kDefaultNo is for questions that delete or trust.
    enum class Default { kYes, kNo };
    bool Question(QWidget* parent, QString const& title, QString const& text, QString const& yes,
                  QString const& no, Default choice = Default::kYes);

    virtual int Box(BoxRequest const& request) = 0;
    // Empty when cancelled.
    virtual std::optional<SecretAnswer> InputSecret(SecretRequest const& request) = 0;
    std::optional<QString> ChooseFile(FileRequest const& request);
    virtual std::vector<QString> ChooseFiles(FileRequest const& request) = 0;
    // Hands the address to the desktop's browser as it stands; OpenUrl of open_url.h looks at it
    // first. False when nothing could be started, as without a desktop.
    virtual bool OpenUrl(QUrl const& /*url*/) { return false; }

    // Ends every box, prompt and chooser that this object has opened and that still stands. Each
    // answers as when it is closed: -1, or empty. What is asked afterwards is shown.
    virtual void CloseAll() {}
};

// The real one, on ZVLMessageBox, InputDialog, QFileDialog and QDesktopServices.
class DialogPrompts : public Prompts {
  public:
    int Box(BoxRequest const& request) override;
    std::optional<SecretAnswer> InputSecret(SecretRequest const& request) override;
    std::vector<QString> ChooseFiles(FileRequest const& request) override;
    bool OpenUrl(QUrl const& url) override;
    void CloseAll() override;

  private:
    class Standing;

    std::vector<QDialog*> open_;  // the innermost last
};

}  // namespace zorvanelink::ui
