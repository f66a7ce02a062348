#include "ui/widgets/prompts.h"

#include <QDesktopServices>
#include <QFileDialog>

#include "app/environment/globals.h"
#include "ui/text/texts.h"
#include "ui/widgets/input_dialog.h"
#include "ui/widgets/zvl_message_box.h"

namespace zorvanelink::ui {
namespace {

ZVLMsgBoxType typeOf(BoxKind kind) {
    switch (kind) {
        case BoxKind::kWarning:
        case BoxKind::kQuestion:
            return ZVLMsgBoxType::kWarning;
        case BoxKind::kCritical:
            return ZVLMsgBoxType::kCritical;
        default:
            return ZVLMsgBoxType::kInformation;
    }
}

// "A(*.a);;All(*.*);;": no empty last entry, and "All" shows files without an extension too.
QString usableFilter(QString const& filter) {
    QStringList parts = filter.split(QStringLiteral(";;"), Qt::SkipEmptyParts);
    parts.replaceInStrings(QStringLiteral("*.*"), QStringLiteral("*"));
    return parts.join(QStringLiteral(";;"));
}

}  // namespace

int Prompts::Information(QWidget* parent, QString const& title, QString const& text,
                         QString const& button) {
    return Box({BoxKind::kInformation, parent, title, text, {button}, 0, 0, {}, {}});
}

int Prompts::Warning(QWidget* parent, QString const& title, QString const& text,
                     QString const& button) {
    return Box({BoxKind::kWarning, parent, title, text, {button}, 0, 0, {}, {}});
}

int Prompts::Critical(QWidget* parent, QString const& title, QString const& text,
                      QString const& button) {
    return Box({BoxKind::kCritical, parent, title, text, {button}, 0, 0, {}, {}});
}

void Prompts::Error(QWidget* parent, QString const& text) {
    Critical(parent, GetTrMsg(common::MsgCode::UI_ERROR), text,
             GetTrMsg(common::MsgCode::UI_INFO_OK));
}

std::optional<QString> Prompts::ChooseFile(FileRequest const& request) {
    std::vector<QString> const paths = ChooseFiles(request);
    return paths.empty() || paths.front().isEmpty() ? std::nullopt : std::optional(paths.front());
}

bool Prompts::Question(QWidget* parent, QString const& title, QString const& text,
                       QString const& yes, QString const& no, Default choice) {
    int const preset = choice == Default::kNo ? 1 : 0;
    return Box({BoxKind::kQuestion, parent, title, text, {yes, no}, preset, 0, {}, {}}) == 0;
}

// Known while it stands. They are nested: what was opened last ends first.
class DialogPrompts::Standing {
  public:
    Standing(std::vector<QDialog*>& open, QDialog& dialog) : open_(open) {
        open_.push_back(&dialog);
    }
    ~Standing() { open_.pop_back(); }
    Standing(Standing const&) = delete;
    Standing& operator=(Standing const&) = delete;

  private:
    std::vector<QDialog*>& open_;
};

int DialogPrompts::Box(BoxRequest const& request) {
    ZVLMessageBox box(request.parent, typeOf(request.kind), request.title, request.text,
                      request.buttons);
    box.SetDefaultButton(request.defaultButton);
    if (request.timeoutSeconds > 0) {
        box.SetTimeout(std::chrono::seconds(request.timeoutSeconds), request.onTimeout);
    }
    if (request.onLink) {
        box.AllowLink(request.onLink);
    }
    Standing const standing(open_, box);
    return box.Ask();
}

std::unique_ptr<InputDialog> PromptFor(SecretRequest const& request, Prompts& prompts) {
    auto dialog = std::make_unique<InputDialog>(prompts, request.parent);
    dialog->setWindowTitle(request.title);
    dialog->SetSubject(request.subject, request.subjectDetail);
    dialog->setLabelText(request.label);
    dialog->setLabel2Text(request.label2);
    dialog->setPlaceholderText(request.placeholder);
    if (!request.okButton.isEmpty()) {
        dialog->setOkButtonText(request.okButton);
    }
    if (!request.cancelButton.isEmpty()) {
        dialog->setCancelButtonText(request.cancelButton);
    }
    dialog->setCheckBoxText(request.rememberText);
    dialog->SetRememberCheckHide(request.rememberText.isEmpty());
    dialog->setRemember(request.remember);
    dialog->set_max_utf8_length(request.maxUtf8Length);
    dialog->setEmptyTextMessage(request.emptyMessage);
    dialog->setTooLongMessage(request.tooLongMessage);
    return dialog;
}

std::optional<SecretAnswer> DialogPrompts::InputSecret(SecretRequest const& request) {
    auto const dialog = PromptFor(request, *this);
    Standing const standing(open_, *dialog);
    if (dialog->exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    return SecretAnswer{dialog->TakeSensitiveValue(), dialog->remberCheck()};
}

std::vector<QString> DialogPrompts::ChooseFiles(FileRequest const& request) {
    QFileDialog dialog(request.parent, request.title, request.startPath,
                       usableFilter(request.filter));
    switch (request.mode) {
        case FileRequest::Mode::kOpen:
            dialog.setFileMode(QFileDialog::ExistingFile);
            break;
        case FileRequest::Mode::kOpenMany:
            dialog.setFileMode(QFileDialog::ExistingFiles);
            break;
        case FileRequest::Mode::kSave:
            dialog.setAcceptMode(QFileDialog::AcceptSave);
            dialog.selectFile(request.startPath);
            break;
        case FileRequest::Mode::kFolder:
            dialog.setFileMode(QFileDialog::Directory);
            dialog.setOption(QFileDialog::ShowDirsOnly);
            break;
    }
    Standing const standing(open_, dialog);
    if (dialog.exec() != QDialog::Accepted) {
        return {};
    }
    QStringList const paths = dialog.selectedFiles();
    return {paths.begin(), paths.end()};
}

bool DialogPrompts::OpenUrl(QUrl const& url) {
    // Our own windows have been set up without OpenGL; a browser wants it.
    if (std::exchange(g_gl_integration_set, false)) {
        qunsetenv(kGlIntegrationVariable);
    }
    return QDesktopServices::openUrl(url);
}

void DialogPrompts::CloseAll() {
    // None of them goes before its nested loop has ended, which is after this call.
    for (auto dialog = open_.rbegin(); dialog != open_.rend(); ++dialog) {
        (*dialog)->reject();
    }
}

}  // namespace zorvanelink::ui
