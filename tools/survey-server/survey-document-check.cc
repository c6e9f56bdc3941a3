#include "survey-document-check.h"

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <cstdio>
#include <limits>
#include <memory>

namespace {

struct XmlDocFree {
  void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};

struct XmlFree {
  void operator()(xmlChar* text) const { xmlFree(text); }
};

std::string name_of(const xmlNode* node)
{
  return reinterpret_cast<const char*>(node->name);
}

std::string fault_of_version(xmlNode* root)
{
  const std::unique_ptr<xmlChar, XmlFree> text(xmlGetNoNsProp(root, BAD_CAST "version"));
  int major = 0;
  int minor = 0;
  // Longer numbers have no place in a version.
  if (!text ||
      std::sscanf(reinterpret_cast<const char*>(text.get()), "%4d.%4d", &major, &minor) != 2)
    return "The file does not tell the version of its format.";
  if (major < 0 || (major == 0 && minor < 2))
    return "The file is in a format that is too old.";
  if (major > 1)
    return "The file is in a format that is too new.";
  return "";
}

} // namespace

std::string fault_of_survey_document(const std::string& bytes)
{
  if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()))
    return "The file is too long.";
  const std::unique_ptr<xmlDoc, XmlDocFree> document(
      xmlReadMemory(bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr,
                    XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
  xmlNode* const root = document ? xmlDocGetRootElement(document.get()) : nullptr;
  if (!root)
    return "The file is not well-formed XML.";
  if (name_of(root) != "MAVO-Survey" && name_of(root) != "MAVO_Fish_Survey")
    return "The file is not a survey.";
  std::string fault = fault_of_version(root);
  if (!fault.empty())
    return fault;
  if (xmlChildElementCount(root) != 1)
    return "The file does not hold one survey.";
  return "";
}
