#pragma once

#include <libxml++/parsers/domparser.h>

// The limits of a survey file (docs/survey-format.md). They are far above the needs of any
// survey, and a file within them is parsed without a noticeable delay.
namespace survey_limits {
constexpr long file_size = 4L * 1024 * 1024;    // bytes
constexpr long unusual_file_size = 128L * 1024; // see check_survey_source()
constexpr int elements = 20000;
constexpr int attributes = 32;   // attributes and namespaces of one element
constexpr unsigned text = 65535; // bytes; the largest text of a GtkEntry
} // namespace survey_limits

// Throws a text if the bytes of a survey file exceed a limit that must be checked before the
// parser runs. The time for an element grows with the square of the number of its attributes.
// In a document that declares entities or has a rare encoding, attributes cannot be counted, so
// such a document must not exceed `unusual_file_size`.
void check_survey_source(const std::string& bytes);

// A parser that stops if a document has too many elements, if an element has too many
// attributes, or if an entity contains an element. A few entities can expand to millions of
// elements.
class SurveyParser : public xmlpp::DomParser
{
public:
  SurveyParser() = default;
  ~SurveyParser() override;
  SurveyParser(const SurveyParser&) = delete;
  SurveyParser& operator=(const SurveyParser&) = delete;

  // Returns whether the parser stopped at a limit in the last document.
  bool has_stopped() const { return stopped; }

protected:
  void initialize_context() override;
  // Counts an element at its start. If it exceeds a limit, stops the parser and returns false.
  bool admits(void* context, int attribute_count);

  // The parser of the current document. The handlers need it, because the library passes them no
  // pointer to this object. REQUIRES: only one parser is in use at a time.
  static SurveyParser* at_work;

private:
  struct Handlers;

  int elements = 0;
  bool stopped = false;
};
