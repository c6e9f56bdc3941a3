#pragma once

// Installs a handler for exceptions that leave a signal handler. It reports the exception
// through error(), and the program continues with everything that the user typed. By
// default the toolkit ends the program.
void install_exception_report();
