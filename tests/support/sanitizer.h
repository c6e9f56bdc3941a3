#pragma once

// Tests with many similar cases try a third of them with the address sanitizer, which makes them
// several times slower. Without it, they try all cases.
#ifdef __SANITIZE_ADDRESS__
constexpr int case_step = 3;
#else
constexpr int case_step = 1;
#endif
