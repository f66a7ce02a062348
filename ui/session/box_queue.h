// Boxes that no click has asked for stand one at a time. GUI thread; a box runs a nested event
// loop, and further messages are handled while it stands.
#pragma once

#include <QObject>
#include <QString>
#include <deque>
#include <functional>
#include <optional>

#include "ui/session/session_core.h"

namespace zorvanelink::ui {

// A box with the button "OK" and the title of its kind, warning or critical.
BoxRequest OkBox(BoxKind kind, QString const& text);

// A critical one under the title of a warning.
BoxRequest WarningBox(common::MsgCode text);

class BoxQueue : public QObject {
    Q_OBJECT

  public:
    // What the text leads to: runs when its box has been closed, and never without that. Gets the
    // index of the pressed button, -1 for none.
    using Then = std::function<void(int button)>;
    // Whether a text still means something.
    using Holds = std::function<bool()>;

    explicit BoxQueue(SessionCore& core);

    // Tells a failure. While a box stands, the latest failure that differs waits for its turn, and
    // is told then unless another attempt has begun.
    void Tell(BoxRequest request, Then then = {});
    // Tells what did not succeed beside the login: no failure of it, so the text waits its turn and
    // takes no other's place.
    void Hint(common::MsgCode text);
    // Says or asks what belongs to a step: waits its turn, is told once, and closes, without
    // `then`, when it no longer holds. Looked at after every change of the session, and before
    // another text comes.
    void SayWhile(Holds holds, BoxRequest request, Then then = {});

    // A dialog has come over the box that stands: it is told again, over that.
    void Reopen();

    // The user has ended the session: what stands of it closes, and leads to nothing any more.
    void Overtake();

    // The window that a box belongs over, unless its request names one.
    QWidget* Parent() const;

  private:
    struct Box {
        BoxRequest request;
        Then then;
        Holds holds;  // at its turn
        bool failure = false;
        bool closes = false;  // as soon as it does not hold
    };

    Holds sameAttempt() const;
    void add(Box box);
    void show(Box const& box);
    void showNext();
    void dropWhatEnded();
    void closeStanding(bool again);

    SessionCore& core_;
    std::deque<Box> waiting_;
    Box const* standing_ = nullptr;  // until its loop has ended
    std::optional<Attempt> standingFor_;
    bool closing_ = false;  // without an effect
    bool again_ = false;    // to be told once more
};

}  // namespace zorvanelink::ui
