#include "survey-document-check.h"

#include "core/thrown-text.h"
#include "store/read-survey.h"

std::string fault_of_survey_document(const std::string& bytes)
{
  try {
    read_survey_bytes(bytes);
    return "";
  } catch (const Glib::ustring& fault) {
    return fault.raw();
  } catch (...) {
    return "The file is not well-formed XML."; // the parser's message has several lines
  }
}
