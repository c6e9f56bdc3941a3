#include "store/survey-parser.h"

#include "core/text.h"

#include <glibmm/ustring.h>
#include <libxml/SAX2.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace {

constexpr std::string_view document_type = "<!DOCTYPE";

// Returns the name of the encoding in the XML declaration in lower case, or an empty text if
// there is none.
std::string declared_encoding(std::string_view bytes)
{
  const std::string_view declaration = bytes.substr(0, bytes.find("?>"));
  const std::size_t word = declaration.find("encoding");
  const std::size_t start = word == std::string_view::npos ? std::string_view::npos
                                                           : declaration.find_first_of("\"'", word);
  if (!begins_with(declaration, "<?xml") || start == std::string_view::npos)
    return {};
  std::string name(declaration.substr(start + 1));
  name.resize(std::min(name.size(), name.find_first_of("\"'")));
  std::transform(name.begin(), name.end(), name.begin(), g_ascii_tolower);
  return name;
}

// Returns whether the attributes of all tags can be counted in these bytes: the encoding uses the
// bytes of ASCII for all markup, and the document declares no entities.
bool has_plain_markup(std::string_view bytes)
{
  constexpr std::string_view byte_order_mark = "\xef\xbb\xbf";
  if (begins_with(bytes, byte_order_mark))
    bytes.remove_prefix(byte_order_mark.size());
  const std::string encoding = declared_encoding(bytes);
  const bool is_plain = encoding.empty() || encoding == "utf-8" || encoding == "us-ascii" ||
                        begins_with(encoding, "iso-8859-") || begins_with(encoding, "windows-125");
  return is_plain && begins_with(bytes, "<") && bytes.find('\0') == std::string_view::npos &&
         !contains(bytes, document_type);
}

// Returns the number of equals signs outside of values in the tag at the start of `bytes`.
int count_attributes(std::string_view bytes)
{
  int count = 0;
  char quote = '\0';
  for (const char c : bytes) {
    if (quote != '\0')
      quote = c == quote ? '\0' : quote;
    else if (c == '"' || c == '\'')
      quote = c;
    else if (c == '>')
      break;
    else if (c == '=')
      ++count;
  }
  return count;
}

// Returns whether a tag has too many attributes. In XML, "<" always starts markup, except in
// comments. There the count can be too high, but never too low.
bool has_large_tag(std::string_view bytes)
{
  std::size_t start = bytes.find('<');
  while (start != std::string_view::npos) {
    const std::size_t next = bytes.find('<', start + 1);
    const std::string_view markup = bytes.substr(start, next - start);
    const bool is_tag = markup.size() > 1 && markup[1] != '!' && markup[1] != '?';
    if (is_tag && count_attributes(markup) > survey_limits::attributes)
      return true;
    start = next;
  }
  return false;
}

} // namespace

void check_survey_source(const std::string& bytes)
{
  const auto size = static_cast<long>(bytes.size());
  const bool is_too_large =
      size > survey_limits::file_size ||
      (has_plain_markup(bytes) ? has_large_tag(bytes) : size > survey_limits::unusual_file_size);
  if (is_too_large)
    throw Glib::ustring("Not a valid saved MAVO Survey (too large)");
}

struct SurveyParser::Handlers {
  static void start_element(void* context, const xmlChar* name, const xmlChar* prefix,
                            const xmlChar* uri, int namespace_count, const xmlChar** namespaces,
                            int count, int defaulted, const xmlChar** attributes)
  {
    if (at_work->admits(context, namespace_count + count))
      xmlSAX2StartElementNs(context, name, prefix, uri, namespace_count, namespaces, count,
                            defaulted, attributes);
  }
};

SurveyParser* SurveyParser::at_work = nullptr;

SurveyParser::~SurveyParser()
{
  if (at_work == this)
    at_work = nullptr;
}

void SurveyParser::initialize_context()
{
  DomParser::initialize_context();
  at_work = this;
  elements = 0;
  stopped = false;
  context_->sax->startElementNs = &Handlers::start_element;
}

bool SurveyParser::admits(void* context, int attribute_count)
{
  const bool is_from_entity = context != context_; // libxml2 parses an entity in a separate context
  ++elements;
  stopped = stopped || is_from_entity || elements > survey_limits::elements ||
            attribute_count > survey_limits::attributes;
  if (stopped)
    xmlStopParser(static_cast<xmlParserCtxt*>(context));
  return !stopped;
}
