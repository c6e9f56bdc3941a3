#pragma once

// Lets the toolkit handle all that is waiting, such as drawing and idle work.
void settle();
