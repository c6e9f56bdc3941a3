#pragma once

#include "support/bench.h"

class MyApp;
class SurveyWindow;

// Returns the program with the reference data of that directory. `store` is the directory of its
// saved surveys; if it is empty, there are none. The tables are never freed, as in the program
// itself.
MyApp& bench_program(const BenchData& data, const std::string& store = "");

// Returns a visible window of that program, with its first page drawn.
SurveyWindow& bench_window(MyApp& program);

// Lets GTK do all its pending work.
void settle_windows();
