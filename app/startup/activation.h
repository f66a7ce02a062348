// Bringing the running client to the front for a later start: a desktop lets a window come forward
// for the mark that it gave to the program which the user has just started.
#pragma once

#include <QWidget>
#include <functional>
#include <string>

namespace zorvanelink::ui {

// What a later start sends: the marks of its environment, as far as it has any.
std::string ShowRequest();

// Calls show in the name of that start, and tells the desktop that it is finished. Answers "ok";
// empty, with nothing done, for a text that is no such request. GUI thread.
std::string AnswerShow(std::string const& request, QWidget const& window,
                       std::function<void()> const& show);

}  // namespace zorvanelink::ui
