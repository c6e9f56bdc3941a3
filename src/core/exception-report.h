#pragma once

// Makes an exception that leaves a signal handler end that handler and not the
// program, which is the toolkit's default: it is reported through error(), and
// the window lives on with what the user typed.
void install_exception_report();
