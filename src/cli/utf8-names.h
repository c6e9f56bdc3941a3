#pragma once

#include <locale.h>

// Makes the names of archive entries UTF-8 in this thread during its lifetime. libarchive
// converts names to the character set of the locale, so this class sets a locale with UTF-8.
class Utf8Names
{
public:
  Utf8Names(); // keeps the locale of the thread if the system has no locale with UTF-8
  ~Utf8Names();
  Utf8Names(const Utf8Names&) = delete;
  Utf8Names& operator=(const Utf8Names&) = delete;

private:
  locale_t utf8;
  locale_t previous;
};
