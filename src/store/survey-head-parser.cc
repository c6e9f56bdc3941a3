#include "store/survey-head-parser.h"

#include <libxml/SAX2.h>
#include <libxml/parserInternals.h>

// The SAX handlers that build the tree. Outside of "ids", they call the library's handlers with
// the same arguments.
struct SurveyHeadParser::Handlers {
  static SurveyHeadParser& parser() { return static_cast<SurveyHeadParser&>(*at_work); }

  // libxml2 passes five pointers for each attribute. The second one is its prefix.
  static bool has_prefix(int count, const xmlChar** attributes)
  {
    for (int i = 0; i < count; ++i)
      if (attributes[5 * i + 1])
        return true;
    return false;
  }

  // Returns false for a document with a DTD: the first use of an entity determines its
  // expansion, so no part of such a document may be skipped.
  static bool is_ids(const xmlParserCtxt* context, int level, const xmlChar* name)
  {
    constexpr int ids_level = 3; // root, "survey", "ids"
    return level == ids_level && xmlStrEqual(name, BAD_CAST "ids") && !context->myDoc->intSubset;
  }

  static void start_element(void* context, const xmlChar* name, const xmlChar* prefix,
                            const xmlChar* uri, int namespace_count, const xmlChar** namespaces,
                            int count, int defaulted, const xmlChar** attributes)
  {
    if (!parser().admits(context, namespace_count + count))
      return;
    auto& [level, depth] = parser().place;
    if (depth == 0) {
      xmlSAX2StartElementNs(context, name, prefix, uri, namespace_count, namespaces, count,
                            defaulted, attributes);
      ++level;
      depth = is_ids(static_cast<xmlParserCtxt*>(context), level, name) ? 1 : 0;
      return;
    }
    ++depth;
    // The library checks the form and the uniqueness of an "xml:id" only if there is a node.
    if (has_prefix(count, attributes)) {
      xmlSAX2StartElementNs(context, name, nullptr, nullptr, 0, nullptr, count, defaulted,
                            attributes);
      xmlSAX2EndElementNs(context, name, nullptr, nullptr);
    }
  }

  static void end_element(void* context, const xmlChar* name, const xmlChar* prefix,
                          const xmlChar* uri)
  {
    auto& [level, depth] = parser().place;
    if (depth > 0)
      --depth;
    if (depth > 0)
      return;
    --level;
    xmlSAX2EndElementNs(context, name, prefix, uri);
  }

  static void text(void* context, const xmlChar* characters, int length)
  {
    if (parser().place.depth == 0)
      xmlSAX2Characters(context, characters, length);
  }
};

void SurveyHeadParser::initialize_context()
{
  SurveyParser::initialize_context();
  place = {};
  context_->sax->startElementNs = &Handlers::start_element;
  context_->sax->endElementNs = &Handlers::end_element;
  context_->sax->characters = &Handlers::text;
  context_->sax->ignorableWhitespace = &Handlers::text;
}
