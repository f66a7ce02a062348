// Pages in the user's browser. What a server names is opened only as http or https with a host, a
// local page only as an HTML file below the data folder, and nothing above 2 KiB. GUI thread.
#pragma once

#include <QUrl>
#include <QWidget>
#include <optional>

#include "common/message_catalogue.h"
#include "ui/widgets/prompts.h"

namespace zorvanelink::ui {

// With `local` the text is a file unless it has a scheme. Empty when it may not be opened.
QUrl PageUrl(QString const& text, bool local);

// Nothing when a browser has been started, else what the user is to read.
std::optional<common::MsgCode> TryOpenUrl(Prompts& prompts, QString const& text, bool local);
// True when a browser has been started.
bool OpenUrl(Prompts& prompts, QString const& text, bool local);
// For what the user has clicked: with a box, over the raised window of `parent`, when that is not
// so.
bool OpenUrlWithHint(Prompts& prompts, QWidget* parent, QString const& text, bool local);

}  // namespace zorvanelink::ui
