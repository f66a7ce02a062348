// Texts for the user, from the catalogue, in the display language. GUI thread and the link's
// threads.
#pragma once

#include <QString>

#include "common/message_catalogue.h"

namespace zorvanelink::ui {

// The Chinese text when texts are shown in Chinese, else the English one; empty for a code
// without a row.
QString GetTrMsg(common::MsgCode code);
// The same by its other name; inside the client GetTrMsg is the one that is called.
QString GetErrMsg(common::MsgCode code);

// The text of a row that ends in a colon, without it, as a check box has it.
QString GetCaption(common::MsgCode code);

// A text of ours that has no row in the catalogue, in the display language. GUI thread.
QString Translate(char const* english);

}  // namespace zorvanelink::ui
