#pragma once

#include "support/bench.h"

class MyApp;
class SurveyWindow;

// The program with the reference data of that directory. Its saved surveys are
// those in the directory `store`; without one it has none. As in the program
// itself, what it has read is never freed.
MyApp& bench_program(const BenchData& data, const std::string& store = "");

// A window of that program, on the screen with its first page and drawn.
SurveyWindow& bench_window(MyApp& program);

// Lets GTK do all that it has put off.
void settle_windows();
