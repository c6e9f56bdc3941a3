#pragma once

// Returns the peak memory of the process so far, in kB.
long memory_peak_kb();

// Returns the current memory of the process, in kB.
long memory_now_kb();

// The freed memory that a sanitizer retains, in kB; 0 without a sanitizer.
#ifdef __SANITIZE_ADDRESS__
constexpr long memory_kept_back_kb = 256 * 1024;
#else
constexpr long memory_kept_back_kb = 0;
#endif
