#include "core/thrown-text.h"

#include <giomm/error.h>
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>

namespace {

Thrown thrown_by(const std::function<void()>& thrower)
{
  try {
    thrower();
  } catch (...) {
    return what_was_thrown();
  }
  ADD_FAILURE() << "nothing was thrown";
  return {};
}

Glib::ustring text_thrown_by(const std::function<void()>& thrower)
{
  try {
    thrower();
  } catch (...) {
    return thrown_text("unknown", "wordless");
  }
  return "nothing was thrown";
}

class Whim : public Glib::Exception
{
public:
  Glib::ustring what() const override { return "a whim"; }
};

} // namespace

TEST(WhatWasThrown, NamesEveryKindAndItsText)
{
  const struct {
    const char* kind;
    const char* text;
    std::function<void()> thrower;
  } cases[] = {
      {"gioerr", "no such file", [] { throw Gio::Error(Gio::Error::NOT_FOUND, "no such file"); }},
      {"gliberr", "odd",
       [] { throw Glib::Error(g_quark_from_static_string("test-domain"), 1, "odd"); }},
      {"glibexc", "a whim", [] { throw Whim(); }},
      {"stdexc", "out", [] { throw std::out_of_range("out"); }},
      {"ustr", "zu früh", [] { throw Glib::ustring("zu früh"); }},
      {"str", "text", [] { throw std::string("text"); }},
      {"cstr", "literal", [] { throw "literal"; }},
  };
  for (const auto& c : cases) {
    const Thrown thrown = thrown_by(c.thrower);
    EXPECT_STREQ(c.kind, thrown.kind);
    EXPECT_EQ(c.text, thrown.text) << c.kind;
  }
  EXPECT_EQ(nullptr, thrown_by([] { throw 42; }).kind);
}

TEST(WhatWasThrown, ReturnsValidTextForAnyBytes)
{
  EXPECT_TRUE(thrown_by([] { throw std::string("caf\xe9"); }).text.validate());
  EXPECT_TRUE(thrown_by([] { throw std::runtime_error("caf\xe9"); }).text.validate());
}

TEST(ThrownText, IsTheDefaultForAnExceptionWithoutAText)
{
  EXPECT_EQ("reason", text_thrown_by([] { throw std::string("reason"); }));
  EXPECT_EQ("wordless", text_thrown_by([] { throw std::string(); }));
  EXPECT_EQ("wordless", text_thrown_by([] { throw std::runtime_error(""); }));
  EXPECT_EQ("unknown", text_thrown_by([] { throw 42; }));
}
