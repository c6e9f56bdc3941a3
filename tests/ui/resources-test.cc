// Tests the texts and images that are shipped with the definition file.

#include <gdk-pixbuf/gdk-pixbuf.h>
#include <glibmm/fileutils.h>
#include <glibmm/ustring.h>
#include <gtest/gtest.h>
#include <pango/pango.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace {

struct ErrorFree {
  void operator()(GError* error) const { g_error_free(error); }
};

std::string resource(const std::string& name)
{
  return MAVO_RESOURCES "/" + name;
}

// Returns the error of the markup parser; empty if the text is valid.
std::string markup_complaint(const std::string& text)
{
  GError* error = nullptr;
  pango_parse_markup(text.data(), static_cast<int>(text.size()), 0, nullptr, nullptr, nullptr,
                     &error);
  const std::unique_ptr<GError, ErrorFree> owner(error);
  return error ? error->message : "";
}

// Returns whether a widget in the definition file has this label. Ignores the underscores of
// mnemonics and a colon at the end.
bool has_label(const std::string& definition, const std::string& words)
{
  std::string plain = definition;
  plain.erase(std::remove(plain.begin(), plain.end(), '_'), plain.end());
  return plain.find("name=\"label\">" + words + "<") != std::string::npos ||
         plain.find("name=\"label\">" + words + ":<") != std::string::npos;
}

} // namespace

TEST(HelpTexts, AreMarkupInUtf8)
{
  for (const std::string name : {"instructions.txt", "release-notes.txt"}) {
    const std::string text = Glib::file_get_contents(resource(name));
    EXPECT_GT(text.size(), 500U) << name;
    EXPECT_TRUE(Glib::ustring(text).validate()) << name;
    EXPECT_EQ(markup_complaint(text), "") << name;
  }
}

TEST(HelpTexts, NameTheWidgetsAsTheyAreLabelled)
{
  const std::string text = Glib::file_get_contents(resource("instructions.txt"));
  const std::string definition = Glib::file_get_contents(resource("survey-ui.glade"));
  for (const std::string words :
       {"Next", "Back", "New Survey", "Edit", "Location", "Survey type", "Zone code",
        "Search names", "View", "Show names", "Save For Later", "Mark For Upload",
        "Un-Mark For Upload", "Upload", "Upload All Ready Surveys", "Check For Updates",
        "Delete"}) {
    EXPECT_NE(text.find("<b>" + words + "</b>"), std::string::npos) << words;
    EXPECT_TRUE(has_label(definition, words)) << words;
  }
}

TEST(Logos, HaveTheSizesOfTheirNames)
{
  for (const int size : {16, 32, 64, 128, 256}) {
    const std::string path = resource("MAVO-logo-" + std::to_string(size) + ".png");
    int width = 0;
    int height = 0;
    ASSERT_NE(gdk_pixbuf_get_file_info(path.c_str(), &width, &height), nullptr) << path;
    EXPECT_EQ(width, size) << path;
    EXPECT_EQ(height, size) << path;
  }
}
