#pragma once

// Installs an event handler that forwards a key to the window of a menu if the key arrives at the
// menu after it has closed. The display sends all keys to an open menu until the program releases
// the keyboard grab, so fast typing after a choice arrives at the closed menu. The handler also
// keeps a menu open that opens again before the display reports the end of its previous grab.
// It replaces the toolkit's handler of all events. REQUIRES: GTK is initialised.
void forward_late_keys();
