#pragma once

#include <libxml++/parsers/domparser.h>

// What a survey file may hold: many times what a survey can need, and little enough
// to be read at once. See docs/survey-format.md.
namespace survey_limits {
constexpr long file_size = 4L * 1024 * 1024;    // bytes
constexpr long unusual_file_size = 128L * 1024; // see check_survey_source()
constexpr int elements = 20000;
constexpr int attributes = 32;   // of one element, with its namespaces
constexpr unsigned text = 65535; // bytes; an entry of the toolkit holds no more
} // namespace survey_limits

// Throws a text if the bytes of a survey file hold more than survey_limits allows,
// as far as this has to be known before they are parsed: the time for an element
// grows with the square of its attributes. In a document that declares entities or
// is in a rare encoding, attributes cannot be counted, so such a file has to be small.
void check_survey_source(const std::string& bytes);

// A parser that stops at an element that is one too many, has too many attributes
// or comes from an entity: a few entities make millions of elements.
class SurveyParser : public xmlpp::DomParser
{
public:
  SurveyParser() = default;
  ~SurveyParser() override;
  SurveyParser(const SurveyParser&) = delete;
  SurveyParser& operator=(const SurveyParser&) = delete;

  // Whether the last document was given up for that.
  bool has_stopped() const { return stopped; }

protected:
  void initialize_context() override;
  // Counts an element as it starts. False, and the parser stops, if it is too much.
  bool admits(void* context, int attribute_count);

  // The parser that began a document last, for the handlers: what the library hands them
  // has no room for an object of ours. One thread parses one document at a time.
  static SurveyParser* at_work;

private:
  struct Handlers;

  int elements = 0;
  bool stopped = false;
};
