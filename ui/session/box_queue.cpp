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

BoxQueue::BoxQueue(SessionCore& core) : core_(core) {
    connect(&core_, &SessionCore::Changed, this, [this] {
        if (!core_.state.SessionStands()) {
            closeQuestions();
        }
    });
}

void BoxQueue::Tell(BoxRequest request, Then then) {
    core_.state.errorShown = true;
    add({std::move(request), std::move(then), core_.Now(), Kind::kFailure});
}

void BoxQueue::Hint(common::MsgCode text) {
    add({OkBox(BoxKind::kCritical, GetTrMsg(text)), {}, core_.Now(), Kind::kHint});
}

void BoxQueue::Ask(BoxRequest request, Then then) {
    add({std::move(request), std::move(then), core_.Now(), Kind::kQuestion});
}

void BoxQueue::add(Box box) {
    if (!stands_) {
        show(box);
        return;
    }
    QString const& text = box.request.text;
    Log().info("A box stands already, next text: {}", text.toStdString());
    bool const known = (text == standing_ && standingFor_->NotBegunAnew()) ||
                       (box.kind != Kind::kFailure &&
                        std::any_of(waiting_.begin(), waiting_.end(), [&text](Box const& other) {
                            return other.request.text == text;
                        }));
    if (known) {
        return;
    }
    if (box.kind == Kind::kFailure) {
        std::erase_if(waiting_, [](Box const& other) { return other.kind == Kind::kFailure; });
    }
    waiting_.push_back(std::move(box));
}

void BoxQueue::show(Box const& box) {
    BoxRequest request = box.request;
    request.parent = Parent();
    standing_ = request.text;
    standingFor_ = box.attempt;
    stands_ = true;
    asks_ = box.kind == Kind::kQuestion;
    overtaken_ = false;
    BringIntoView(core_.window);
    int const button = core_.prompts.Box(request);
    stands_ = asks_ = false;
    if (box.then && !g_quit && !overtaken_) {
        box.then(button);
    }
    // Queued: who showed this one goes on first. Behind what it led to, so that no older text
    // covers that.
    if (!waiting_.empty()) {
        QMetaObject::invokeMethod(this, &BoxQueue::showNext, Qt::QueuedConnection);
    }
}

void BoxQueue::showNext() {
    while (!stands_ && !waiting_.empty()) {
        Box const next = std::move(waiting_.front());
        waiting_.pop_front();
        bool const current = next.kind == Kind::kQuestion
                                 ? next.attempt.Still() && core_.state.SessionStands()
                                 : next.attempt.NotBegunAnew();
        if (current) {
            show(next);
        }
    }
}

void BoxQueue::closeQuestions() {
    std::erase_if(waiting_, [](Box const& box) { return box.kind == Kind::kQuestion; });
    if (std::exchange(asks_, false)) {
        core_.prompts.CloseAll();
    }
}

void BoxQueue::Overtake() {
    waiting_.clear();
    if (stands_) {
        overtaken_ = true;
        core_.prompts.CloseAll();
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
