// The opening road below the widgets: what a document says is read as it is for
// a window and written as it is from one. What was written can be read again
// and comes back the same.
#include "core/thrown-text.h"
#include "store/read-survey.h"
#include "store/survey-document.h"

#include <optional>

#include "target.h"

namespace {

std::optional<Survey> try_to_read(const std::string& path)
{
  try {
    return read_survey(path);
  } catch (...) {
    require(!thrown_text("", "").empty(), "the user is told what is wrong");
    return std::nullopt;
  }
}

std::string saved(const Survey& survey)
{
  return survey_document(survey, "Linux").raw();
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
  static const Scratch scratch;
  scratch.write("survey", bytes_of(data, size));
  auto read = try_to_read(scratch.dir + "survey");
  if (!read)
    return 0;
  if (read->subregion.empty())
    read->subregion = "PNW"; // a window saves no survey without a location

  const std::string document = saved(*read);
  scratch.write("survey", document);
  const auto read_again = try_to_read(scratch.dir + "survey");
  require(read_again.has_value(), "what is saved can be opened");
  for (const SurveyField& field : survey_fields())
    require(field_text(field, *read).raw() == field_text(field, *read_again).raw(),
            "a field is saved to the byte");
  require(read->bottom_time_confirmed == read_again->bottom_time_confirmed,
          "the confirmation is saved");
  require(document == saved(*read_again), "what is opened is saved the same");
  return 0;
}
