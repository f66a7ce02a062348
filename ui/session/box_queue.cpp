#include "ui/session/box_queue.h"

#include <QApplication>
#include <algorithm>

#include "components/logger/logger.h"
#include "ui/text/texts.h"
#include "ui/widgets/bring_into_view.h"

namespace zorvanelink::ui {

using components::logger::Log;

BoxRequest OkBox(BoxKind kind, QString const& text) {
    BoxRequest request;
    request.kind = kind;
    request.title = GetTrMsg(kind == BoxKind::kCritical      ? common::MsgCode::UI_ERROR
                             : kind == BoxKind::kInformation ? common::MsgCode::UI_INFO
                                                             : common::MsgCode::UI_WARNING);
    request.text = text;
    request.buttons = {GetTrMsg(common::MsgCode::UI_INFO_OK)};
    return request;
}

BoxRequest WarningBox(common::MsgCode text) {
    BoxRequest request = OkBox(BoxKind::kCritical, GetTrMsg(text));
    request.title = GetTrMsg(common::MsgCode::UI_WARNING);
    return request;
}

BoxQueue::BoxQueue(SessionCore& core) : core_(core) {
    connect(&core_, &SessionCore::Changed, this, &BoxQueue::dropWhatEnded);
}

BoxQueue::Holds BoxQueue::sameAttempt() const {
    return [here = core_.Now()] { return here.NotBegunAnew(); };
}

void BoxQueue::Tell(BoxRequest request, Then then) {
    core_.state.errorShown = true;
    add({std::move(request), std::move(then), sameAttempt(), true});
}

void BoxQueue::Hint(common::MsgCode text) {
    add({OkBox(BoxKind::kCritical, GetTrMsg(text)), {}, sameAttempt()});
}

void BoxQueue::SayWhile(Holds holds, BoxRequest request, Then then) {
    add({std::move(request), std::move(then), std::move(holds), false, true});
}

void BoxQueue::add(Box box) {
    dropWhatEnded();
    if (standing_ == nullptr) {
        show(box);
        return;
    }
    QString const& text = box.request.text;
    Log().info("A box stands already, next text: {}", text.toStdString());
    bool const stands = text == standing_->request.text && standingFor_->NotBegunAnew();
    bool const waits =
        !box.failure && std::any_of(waiting_.begin(), waiting_.end(), [&text](Box const& other) {
            return other.request.text == text;
        });
    if (stands || waits) {
        return;
    }
    if (box.failure) {
        std::erase_if(waiting_, [](Box const& other) { return other.failure; });
    }
    waiting_.push_back(std::move(box));
}

void BoxQueue::show(Box const& box) {
    BoxRequest request = box.request;
    if (request.parent == nullptr) {
        request.parent = Parent();
    }
    standing_ = &box;
    standingFor_ = core_.Now();
    closing_ = again_ = false;
    BringIntoView(core_.window);
    int const button = core_.prompts.Box(request);
    standing_ = nullptr;
    bool const ended = closing_ || (box.closes && !box.holds());
    if (again_) {
        waiting_.push_front(box);
    } else if (box.then && !g_quit && !ended) {
        box.then(button);
    }
    // Queued: who showed this one goes on first. Behind what it led to, so that no older text
    // covers that.
    if (!waiting_.empty()) {
        QMetaObject::invokeMethod(this, &BoxQueue::showNext, Qt::QueuedConnection);
    }
}

void BoxQueue::showNext() {
    while (standing_ == nullptr && !waiting_.empty()) {
        Box const next = std::move(waiting_.front());
        waiting_.pop_front();
        if (next.holds()) {
            show(next);
        }
    }
}

void BoxQueue::dropWhatEnded() {
    auto const ended = [](Box const& box) { return box.closes && !box.holds(); };
    std::erase_if(waiting_, ended);
    if (standing_ != nullptr && !closing_ && ended(*standing_)) {
        closeStanding(false);
    }
}

void BoxQueue::closeStanding(bool again) {
    closing_ = true;
    again_ = again;
    core_.prompts.CloseAll();
}

void BoxQueue::Reopen() {
    if (standing_ != nullptr && !closing_) {
        closeStanding(true);
    }
}

void BoxQueue::Overtake() {
    waiting_.clear();
    if (standing_ != nullptr) {
        closeStanding(false);
    }
}

QWidget* BoxQueue::Parent() const {
    // Without the focus of the desktop none of our windows is active, but one may be modal.
    for (QWidget* const widget :
         {QApplication::activeWindow(), QApplication::activeModalWidget()}) {
        if (widget != nullptr) {
            return widget;
        }
    }
    return core_.window;
}

}  // namespace zorvanelink::ui
