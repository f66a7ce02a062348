// Shows the cards to assistive programs: Qt's own view of a list knows the texts of its items and
// nothing of the widgets in their places.
#pragma once

namespace zorvanelink::ui {

// Before the first list is shown; further calls change nothing. GUI thread.
void MakeCardsAccessible();

}  // namespace zorvanelink::ui
