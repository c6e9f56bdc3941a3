#include "received-survey.h"

#include "answer.h"
#include "c-owner.h"
#include "survey-document-check.h"

namespace {

// Returns an unchanged parameter of Content-Disposition, or an empty text if there is none. The
// library's own reader silently removes a directory from a file name.
std::string parameter(GHashTable* parameters, const char* name)
{
  const auto* const value = static_cast<const char*>(g_hash_table_lookup(parameters, name));
  return value ? value : "";
}

std::string file_name(const FormFile& file)
{
  const SoupParamList parameters(soup_header_parse_semi_param_list(file.disposition.c_str()));
  if (parameter(parameters.get(), "name") != "survey-file")
    throw Refusal{400, "The form has no file called survey-file."};
  std::string name = parameter(parameters.get(), "filename");
  if (name.empty() || name == "." || name == ".." || name.find('/') != std::string::npos)
    throw Refusal{400, "The survey's file name cannot be used."};
  return name;
}

void check_type(const FormFile& file)
{
  if (g_ascii_strcasecmp(file.content_type.c_str(), "application/xml") != 0)
    throw Refusal{415, "The survey must have the content type application/xml."};
}

} // namespace

ReceivedSurvey received_survey(const Request& request)
{
  FormFile file = request.form_file();
  ReceivedSurvey survey{file_name(file), std::move(file.bytes)};
  check_type(file);
  const std::string fault = fault_of_survey_document(survey.bytes);
  if (!fault.empty())
    throw Refusal{422, fault};
  return survey;
}
