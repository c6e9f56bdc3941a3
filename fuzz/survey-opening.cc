// Target: opening and saving a survey, without the widgets. Reads a document as for a window and
// writes it as from one. The new document must be readable and contain the same survey.
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
    require(!thrown_text("", "").empty(), "a refusal has a reason");
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
    read->subregion = "PNW"; // no window saves a survey without a location

  const std::string document = saved(*read);
  scratch.write("survey", document);
  const auto read_again = try_to_read(scratch.dir + "survey");
  require(read_again.has_value(), "a saved survey can be opened");
  for (const SurveyField& field : survey_fields())
    require(field_text(field, *read).raw() == field_text(field, *read_again).raw(),
            "a field is saved byte for byte");
  require(read->bottom_time_confirmed == read_again->bottom_time_confirmed,
          "the confirmation is saved");
  require(document == saved(*read_again), "a survey that was opened is saved as the same document");
  return 0;
}
