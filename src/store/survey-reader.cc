#include "store/survey-reader.h"

#include "core/c-resource.h"
#include "core/file-contents.h"
#include "core/number.h"
#include "core/text.h"
#include "store/survey-xml-info.h"

#include <fcntl.h>
#include <glibmm/stringutils.h>
#include <libxml++/document.h>
#include <libxml++/nodes/textnode.h>
#include <libxml/parser.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <exception>
#include <optional>
#include <utility>

namespace {

// The root tag of surveys from older programs.
const char* const older_root_tag = "MAVO_Fish_Survey";

const char* const too_large = "Not a valid saved MAVO Survey (too large)";

// Returns the bytes of the file. Opens only a regular file, because opening a pipe would block
// until another program writes to it.
std::string file_contents(const std::string& path)
{
  struct stat info = {};
  if (stat(path.c_str(), &info) != 0)
    throw Glib::strerror(errno);
  if (!S_ISREG(info.st_mode))
    throw Glib::ustring("Not a file");
  if (info.st_size > survey_limits::file_size)
    throw Glib::ustring(too_large);

  const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (file.number < 0)
    throw Glib::strerror(errno);
  auto contents = read_bytes(file, static_cast<std::size_t>(info.st_size));
  if (!contents)
    throw Glib::strerror(errno);
  return std::move(*contents);
}

// Prevents the parser from opening local and remote files during its lifetime. A survey can have
// an untrusted source, and it must not be able to copy other files of the user into an upload.
class NoOtherFiles
{
public:
  NoOtherFiles() : previous(xmlGetExternalEntityLoader())
  {
    refused = false;
    xmlSetExternalEntityLoader(&refuse);
  }
  ~NoOtherFiles() { xmlSetExternalEntityLoader(previous); }
  NoOtherFiles(const NoOtherFiles&) = delete;
  NoOtherFiles& operator=(const NoOtherFiles&) = delete;

  bool refused_one() const { return refused; }

private:
  static xmlParserInputPtr refuse(const char*, const char*, xmlParserCtxtPtr)
  {
    refused = true;
    return nullptr;
  }

  xmlExternalEntityLoader previous;
  static inline bool refused = false;
};

void parse_bytes(SurveyParser& parser, const std::string& contents)
{
  try {
    parser.set_substitute_entities(true);
    parser.parse_memory_raw(reinterpret_cast<const unsigned char*>(contents.data()),
                            static_cast<xmlpp::Parser::size_type>(contents.size()));
  } catch (const std::exception&) {
    if (!parser.has_stopped())
      throw;
  }
  if (parser.has_stopped())
    throw Glib::ustring(too_large);
}

void parse(SurveyParser& parser, const std::string& contents)
{
  if (contents.empty())
    throw Glib::ustring("Failed to parse survey");
  check_survey_source(contents);
  const NoOtherFiles guard;
  parse_bytes(parser, contents);
  if (!parser || !parser.get_document()->get_root_node())
    throw Glib::ustring("Failed to parse survey");
  if (guard.refused_one())
    throw Glib::ustring("Survey draws text from other files, which are not read");
}

struct Version {
  int major;
  int minor;
};

// Removes white space and a number from the start of `text`. Returns the number.
std::optional<int> take_number(std::string& text)
{
  std::size_t end = 0;
  while (end < text.size() && std::isspace(static_cast<unsigned char>(text[end])))
    ++end;
  if (end < text.size() && (text[end] == '-' || text[end] == '+'))
    ++end;
  const std::size_t digits = end;
  while (end < text.size() && std::isdigit(static_cast<unsigned char>(text[end])))
    ++end;
  if (end == digits)
    return std::nullopt;
  const int number = to_int(text.substr(0, end));
  text.erase(0, end);
  return number;
}

// Parses "major.minor" like scanf with "%d.%d", but accepts numbers of any length.
std::optional<Version> scan_version(std::string text)
{
  const auto major = take_number(text);
  if (!major || text.empty() || text.front() != '.')
    return std::nullopt;
  text.erase(0, 1);
  const auto minor = take_number(text);
  if (!minor)
    return std::nullopt;
  return Version{*major, *minor};
}

void check_root(const xmlpp::Element* root)
{
  const SurveyXMLinfo format;
  if (!same_bytes(root->get_name(), format.root_tag) &&
      !same_bytes(root->get_name(), older_root_tag))
    throw Glib::ustring("Not a valid saved MAVO Survey");

  const auto version = scan_version(get_attr(root, "version"));
  if (!version)
    throw Glib::ustring("Not a valid saved MAVO Survey (bad version)");
  if (version->major < format.oldest_major ||
      (version->major == format.oldest_major && version->minor < format.oldest_minor))
    throw Glib::ustring("Valid saved MAVO Survey, but too old - contact " MAVO_SUPPORT_ADDRESS
                        " for help");
  if (version->major > format.current_major)
    throw Glib::ustring("Valid saved MAVO Survey, but you need a newer version of this program "
                        "to open it");
}

// Returns the only child of the root that is not white space.
const xmlpp::Node* main_child(const xmlpp::Element* root)
{
  const xmlpp::Node* main = root->get_first_child();
  if (!main)
    throw Glib::ustring("MAVO Survey missing top level children");
  if (is_white_space(main))
    main = main->get_next_sibling();
  if (!main)
    return nullptr;

  for (const xmlpp::Node* node = main->get_next_sibling(); node; node = node->get_next_sibling()) {
    if (!is_white_space(node))
      throw "MAVO Survey has too many top level children (" + main->get_name() + ", " +
          node->get_name() + ")";
  }
  return main;
}

// Throws a text if a text of the survey is too long for its input field.
void check_texts(const xmlpp::Node& survey)
{
  for (const xmlpp::Node* node = survey.get_first_child(); node; node = node->get_next_sibling())
    if (get_content(node).bytes() > survey_limits::text)
      throw Glib::ustring(too_large);
}

} // namespace

Glib::ustring get_attr(const xmlpp::Node* node, const Glib::ustring& name)
{
  const auto* const element = dynamic_cast<const xmlpp::Element*>(node);
  return element ? element->get_attribute_value(name) : Glib::ustring();
}

int get_numeric_attr(const xmlpp::Node* node, const Glib::ustring& name)
{
  return to_int(get_attr(node, name));
}

Glib::ustring get_content(const xmlpp::Node* node)
{
  const auto* const text =
      node ? dynamic_cast<const xmlpp::TextNode*>(node->get_first_child()) : nullptr;
  return text ? text->get_content() : Glib::ustring();
}

bool is_white_space(const xmlpp::Node* node)
{
  const auto* const text = dynamic_cast<const xmlpp::TextNode*>(node);
  return text && text->is_white_space();
}

const xmlpp::Node* parse_survey_file(SurveyParser& parser, const std::string& path)
{
  return parse_survey_bytes(parser, file_contents(path));
}

const xmlpp::Node* parse_survey_bytes(SurveyParser& parser, const std::string& contents)
{
  parse(parser, contents);
  const xmlpp::Element* const root = parser.get_document()->get_root_node();
  check_root(root);
  const xmlpp::Node* const survey = main_child(root);
  if (!survey || !same_bytes(survey->get_name(), "survey"))
    throw Glib::ustring("MAVO Survey has a problem - missing 'survey' tag");
  check_texts(*survey);
  return survey;
}
