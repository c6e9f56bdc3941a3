#pragma once

// The most memory that the process has had so far, in kB.
long memory_peak_kb();

// The memory that the process has now, in kB.
long memory_now_kb();

// How much freed memory a sanitizer keeps back, in kB; 0 without one.
#ifdef __SANITIZE_ADDRESS__
constexpr long memory_kept_back_kb = 256 * 1024;
#else
constexpr long memory_kept_back_kb = 0;
#endif
