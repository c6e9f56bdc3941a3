#pragma once

#include <locale.h>

// While it lives, names of entries of archives are UTF-8 in this thread, whatever the
// user's locale: the archive library converts them by the character set of the locale.
class Utf8Names
{
public:
  Utf8Names();
  ~Utf8Names();
  Utf8Names(const Utf8Names&) = delete;
  Utf8Names& operator=(const Utf8Names&) = delete;

private:
  locale_t utf8;
  locale_t previous;
};
