#pragma once

// From the call on, a key that reaches a menu which has just closed goes on to the window that
// the menu belongs to. The display sends all keys to an open menu until the program gives the
// keyboard back, so that what somebody types quickly after a choice still arrives there. A menu
// that opens again at once stays open, too, when the end of its former grab is reported. Call
// it once GTK is initialised; it takes the place of the toolkit's handler of all events.
void forward_late_keys();
