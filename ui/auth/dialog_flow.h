// What the flows of a login have in common: one dialog, modal without an event loop of its own,
// known from its opening to its end. GUI thread.
#pragma once

#include <QPointer>

#include "ui/session/session.h"
#include "ui/text/texts.h"
#include "ui/widgets/bring_into_view.h"

namespace zorvanelink::ui {

template <class Dialog>
class DialogFlow : public QObject, public Conversation {
  public:
    ~DialogFlow() override { session_.conversation.Close(*this); }

    // Who is typing reads why the dialog goes, unless that has been told.
    void OnLost() override {
        if (!dialog_ || std::exchange(session_.state.errorShown, true)) {
            close();
        } else {
            QString const untold = QString::fromStdString(session_.state.untoldFailure);
            session_.Failures().EndConversation(OkBox(
                BoxKind::kCritical, untold.isEmpty()
                                        ? GetTrMsg(common::MsgCode::UI_INFO_CONNECTION_TERMINATED)
                                        : untold));
        }
    }
    void OnEnded() override { close(); }

  protected:
    explicit DialogFlow(Session& session) : session_(session) {}

    // Whether the dialog may still send: it is open, and not merely behind the text of its end.
    bool isOpen() const { return dialog_ && session_.conversation.Is(*this); }

    // Takes the place of the open conversation, and of a dialog of its own.
    void begin() {
        close();
        session_.conversation.Open(*this);
    }

    // A text that stands is read first.
    void show() {
        dialog_->show();
        session_.Boxes().Reopen();
    }

    // The dialog is new; it goes when it has finished.
    void run(Dialog& dialog) {
        dialog_ = &dialog;
        connect(&dialog, &QDialog::finished, this, [this, &dialog](int result) {
            dialog.DeleteBehindBoxes();
            if (dialog_ == &dialog) {
                bool const itself = isOpen();
                dialog_ = nullptr;
                session_.conversation.Close(*this);
                onFinished(result, itself);
            }
        });
    }

    // Over the dialog; gone with it.
    void say(BoxRequest const& request, BoxQueue::Then const& then = {}) {
        auto const holds = [this, over = dialog_] { return over && over == dialog_ && isOpen(); };
        session_.Boxes().SayWhile(holds, request, then);
    }

    void close() {
        session_.conversation.Close(*this);
        if (QDialog* const dialog = dialog_) {
            dialog->done(QDialog::Rejected);
        }
    }

    // Queued: whoever leaves the program is not shown its window once more, nor does it come back
    // when the login has succeeded.
    void bringWindowForward() {
        auto const bring = [this, here = session_.Now()] {
            if (here.Still()) {
                BringForward(session_.window);
            }
        };
        QMetaObject::invokeMethod(this, bring, Qt::QueuedConnection);
    }

    // The dialog is gone: by itself, or because its step is over.
    virtual void onFinished(int result, bool itself) = 0;

    Session& session_;
    QPointer<Dialog> dialog_;  // while it stands
};

}  // namespace zorvanelink::ui
