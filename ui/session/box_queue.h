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

class BoxQueue : public QObject {
    Q_OBJECT

  public:
    // What the text leads to: runs when its box has been closed, and never without that. Gets the
    // index of the pressed button, -1 for none.
    using Then = std::function<void(int button)>;

    explicit BoxQueue(SessionCore& core);

    // Tells a failure. While a box stands, the latest failure that differs waits for its turn, and
    // is told then unless another attempt has begun.
    void Tell(BoxRequest request, Then then = {});
    // Tells what did not succeed beside the login: no failure of it, so the text waits its turn and
    // takes no other's place.
    void Hint(common::MsgCode text);
    // Asks a question of the session: every one waits for its turn, is asked once, and closes with
    // the session.
    void Ask(BoxRequest request, Then then);

    // The user has ended the session: what stands of it closes, and leads to nothing any more.
    void Overtake();

    // The window that a box belongs over.
    QWidget* Parent() const;

  private:
    enum class Kind { kFailure, kHint, kQuestion };
    struct Box {
        BoxRequest request;
        Then then;
        Attempt attempt;
        Kind kind;
    };

    void add(Box box);
    void show(Box const& box);
    void showNext();
    void closeQuestions();

    SessionCore& core_;
    std::deque<Box> waiting_;
    QString standing_;  // text of the box that stands
    bool stands_ = false;
    std::optional<Attempt> standingFor_;
    bool asks_ = false;       // it is a question
    bool overtaken_ = false;  // it closes without an effect
};

}  // namespace zorvanelink::ui
