#include "received-survey.h"

#include "answer.h"
#include "c-owner.h"
#include "survey-document-check.h"

namespace {

SoupMultipartPtr multipart_of(SoupMessage* message)
{
  const char* const type = soup_message_headers_get_content_type(message->request_headers, nullptr);
  if (!type || g_ascii_strcasecmp(type, "multipart/form-data") != 0)
    throw Refusal{415, "The survey has to come as a form."};
  SoupMultipartPtr multipart(
      soup_multipart_new_from_message(message->request_headers, message->request_body));
  if (!multipart)
    throw Refusal{400, "The form cannot be read."};
  return multipart;
}

// A parameter of Content-Disposition as it came; empty if there is none. The
// library's own reader would cut a directory off a file name silently.
std::string parameter(GHashTable* parameters, const char* name)
{
  const auto* const value = static_cast<const char*>(g_hash_table_lookup(parameters, name));
  return value ? value : "";
}

std::string file_name(SoupMessageHeaders* headers)
{
  const char* const disposition = soup_message_headers_get_one(headers, "Content-Disposition");
  const SoupParamList parameters(soup_header_parse_semi_param_list(disposition ? disposition : ""));
  if (parameter(parameters.get(), "name") != "survey-file")
    throw Refusal{400, "The form has no file called survey-file."};
  std::string name = parameter(parameters.get(), "filename");
  if (name.empty() || name == "." || name == ".." || name.find('/') != std::string::npos)
    throw Refusal{400, "The survey's file name cannot be used."};
  return name;
}

void check_type(SoupMessageHeaders* headers)
{
  const char* const type = soup_message_headers_get_content_type(headers, nullptr);
  if (!type || g_ascii_strcasecmp(type, "application/xml") != 0)
    throw Refusal{415, "The survey has to be of the type application/xml."};
}

} // namespace

ReceivedSurvey received_survey(SoupMessage* message)
{
  const SoupMultipartPtr multipart = multipart_of(message);
  SoupMessageHeaders* headers = nullptr;
  SoupBuffer* body = nullptr;
  if (soup_multipart_get_length(multipart.get()) != 1 ||
      !soup_multipart_get_part(multipart.get(), 0, &headers, &body))
    throw Refusal{400, "The form has to hold one file."};

  ReceivedSurvey survey{file_name(headers), {body->data, body->length}};
  check_type(headers);
  const std::string fault = fault_of_survey_document(survey.bytes);
  if (!fault.empty())
    throw Refusal{422, fault};
  return survey;
}
