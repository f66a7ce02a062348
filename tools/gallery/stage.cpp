#include "tools/gallery/stage.h"

#include <QApplication>
#include <QWindow>

#include "tools/support/wait.h"
#include "ui/widgets/zvl_message_box.h"

namespace zorvanelink::gallery {

constexpr int kDeadline = 2000;  // milliseconds

Stage::Stage(bool behind) : behind_(behind) {
}

Stage::~Stage() {
    while (!kept_.empty()) {
        kept_.pop_back();  // a dialog over another one goes before it
    }
}

SampleWindow& Stage::Main(SampleWindow::Content content, bool linked) {
    if (main_ == nullptr) {
        main_ = std::make_unique<SampleWindow>(content, linked);
        shown_.insert(shown_.begin(), &main_->Window());
    }
    return *main_;
}

QWidget* Stage::Owner() {
    return behind_ || main_ != nullptr ? &Main().Window() : nullptr;
}

void Stage::ShowBox(ui::BoxRequest const& request) {
    auto const kind = request.kind == ui::BoxKind::kCritical      ? ui::ZVLMsgBoxType::kCritical
                      : request.kind == ui::BoxKind::kInformation ? ui::ZVLMsgBoxType::kInformation
                                                                  : ui::ZVLMsgBoxType::kWarning;
    auto box = std::make_unique<ui::ZVLMessageBox>(Owner(), kind, request.title, request.text,
                                                   request.buttons);
    box->SetDefaultButton(request.defaultButton);
    if (request.onLink) {
        box->AllowLink(request.onLink);
    }
    if (request.timeoutSeconds > 0) {
        box->SetTimeout(std::chrono::seconds(request.timeoutSeconds), {});
    }
    Keep(std::move(box));
}

ui::InputDialog& Stage::ShowSecret(ui::SecretRequest const& request) {
    ui::SecretRequest here = request;
    here.parent = Owner();
    auto made = ui::PromptFor(here, prompts);
    ui::InputDialog& dialog = *made;
    Keep(std::move(made));
    return dialog;
}

void Stage::Keep(std::unique_ptr<QWidget> widget) {
    kept_.push_back(std::move(widget));
    kept_.back()->show();
    Lean(*kept_.back());
}

void Stage::Lean(QWidget& popup) {
    shown_.push_back(&popup);
    Settle();
}

void Stage::Settle() {
    QWidget& front = *shown_.back();
    bool const popup = front.windowType() == Qt::Popup || front.windowType() == Qt::ToolTip;
    if (!popup) {
        front.activateWindow();
    }
    test::WaitUntil(
        [&front, popup] {  // a real display takes its time
            return front.windowHandle() != nullptr && front.windowHandle()->isExposed() &&
                   (popup || front.isActiveWindow());
        },
        kDeadline);
    for (int i = 0; i < 3; ++i) {
        QApplication::sendPostedEvents();
        QApplication::processEvents();
    }
}

void Stage::Hover(QWidget& widget) {
    widget.setAttribute(Qt::WA_UnderMouse);
    QEvent entered(QEvent::Enter);
    QApplication::sendEvent(&widget, &entered);
    QMouseEvent moved(QEvent::MouseMove, widget.rect().center(), Qt::NoButton, {}, {});
    QApplication::sendEvent(&widget, &moved);
    widget.update();
}

std::vector<Row> AllRows() {
    std::vector<Row> all = WindowRows();
    for (auto const& more : {CertRows(), AuthRows(), EditorRows(), PointerRows()}) {
        all.insert(all.end(), more.begin(), more.end());
    }
    return all;
}

}  // namespace zorvanelink::gallery
