#include "cli/darwin-core-exporter.h"

#include "core/markup.h"
#include "core/text.h"
#include "data/region.h"

#include "cli/csv-row.h"
#include "cli/darwin-core-tables.h"
#include "cli/darwin-core-values.h"

namespace {

// Returns a name of the data as plain text. The name can contain tags.
std::string plain(const Glib::ustring& name)
{
  return without_markup(name).make_valid().raw();
}

std::string plain_text(const Glib::ustring& text)
{
  return trim_ws(text.make_valid()).raw();
}

} // namespace

DarwinCoreExporter::DarwinCoreExporter(OutputFile& the_output, const SurveyNames& the_names)
    : names(the_names), output(the_output)
{
  events.write(heading_row(event_terms()));
  occurrences.write(heading_row(occurrence_terms()));
}

void DarwinCoreExporter::add(const std::string& /*file*/, const std::string& id,
                             const Survey& survey)
{
  const Region* const type = names.survey_type(survey);
  const std::string minutes = whole_minutes(survey.bottom_time);
  events.write(csv_row({id, event_date(survey), type ? plain(type->surveytypename) : "", minutes,
                        minutes.empty() ? "" : "minutes", plain_text(survey.zonecode),
                        plain(names.zone(survey)), plain(names.habitat(survey)),
                        depth_ends(names.choice("depth", survey.avg_depth)).lower,
                        depth_ends(names.choice("depth", survey.max_depth)).upper}));
  for (const SpeciesSighting& sighting : survey.species)
    add_occurrence(id, survey, sighting);
}

void DarwinCoreExporter::add_occurrence(const std::string& id, const Survey& survey,
                                        const SpeciesSighting& sighting)
{
  static const RegionFishInfo::Species no_species;
  const auto* const found = names.species(survey, sighting.id);
  const auto& species = found ? *found : no_species;
  const auto* const family = names.family_of(survey, sighting.id);
  const std::string quantity = plain(names.abundance(survey, sighting));
  const std::string number = std::to_string(sighting.id);
  occurrences.write(csv_row({id, id + ":" + number, "HumanObservation", "present",
                             plain_text(survey.last_name), plain(species.scientificname),
                             plain(species.commonname), family ? plain(family->scientificname) : "",
                             names.region_code(survey) + ":" + number, quantity,
                             quantity.empty() ? "" : "abundance class"}));
}

void DarwinCoreExporter::finish()
{
  ZipWriter zip(output);
  zip.add_file("meta.xml", archive_description());
  zip.add_file("eml.xml", metadata_document());
  zip.add_file("event.csv", events);
  zip.add_file("occurrence.csv", occurrences);
  zip.finish();
}
