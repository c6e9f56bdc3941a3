#pragma once

// Installs a handler of all events, which replaces the toolkit's handler.
//
// If a key arrives at a menu that is already closed, the handler forwards the key to the window
// of the menu. This happens because the display sends all keys to an open menu until the program
// releases the keyboard grab: a user who types fast after a choice still types into the menu.
//
// The handler also ignores a late report that a grab has ended, if the program already has a new
// grab. Otherwise this report would close a menu that the user has just opened again.
//
// REQUIRES: GTK is initialised.
void forward_late_keys();
