#pragma once

// Adds the program's style sheet to the desktop's theme, once a process. The
// program also works without it: a sheet that cannot be used is one line on
// standard output.
void load_style();
