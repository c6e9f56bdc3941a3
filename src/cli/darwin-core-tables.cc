#include "cli/darwin-core-tables.h"

#include "cli/csv-row.h"

namespace {

const std::string terms_namespace = "http://rs.tdwg.org/dwc/terms/";

// Returns the description of a table in meta.xml. The first column is the id of an event.
std::string table_description(const char* element, const char* id_element, const char* row_type,
                              const char* file, const std::vector<const char*>& terms)
{
  std::string text = std::string("  <") + element + " rowType=\"" + terms_namespace + row_type +
                     "\" encoding=\"UTF-8\" fieldsTerminatedBy=\",\" linesTerminatedBy=\"\\r\\n\" "
                     "fieldsEnclosedBy=\"&quot;\" ignoreHeaderLines=\"1\">\n"
                     "    <files><location>" +
                     file + "</location></files>\n    <" + id_element + " index=\"0\"/>\n";
  for (std::size_t i = 0; i < terms.size(); ++i)
    text += "    <field index=\"" + std::to_string(i) + "\" term=\"" + terms_namespace + terms[i] +
            "\"/>\n";
  return text + "  </" + element + ">\n";
}

} // namespace

const std::vector<const char*>& event_terms()
{
  static const std::vector<const char*> terms = {"eventID",
                                                 "eventDate",
                                                 "samplingProtocol",
                                                 "sampleSizeValue",
                                                 "sampleSizeUnit",
                                                 "locationID",
                                                 "locality",
                                                 "habitat",
                                                 "minimumDepthInMeters",
                                                 "maximumDepthInMeters"};
  return terms;
}

const std::vector<const char*>& occurrence_terms()
{
  static const std::vector<const char*> terms = {
      "eventID",    "occurrenceID",     "basisOfRecord",       "occurrenceStatus",
      "recordedBy", "scientificName",   "vernacularName",      "family",
      "taxonID",    "organismQuantity", "organismQuantityType"};
  return terms;
}

std::string heading_row(const std::vector<const char*>& terms)
{
  return csv_row({terms.begin(), terms.end()});
}

std::string archive_description()
{
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<archive xmlns=\"http://rs.tdwg.org/dwc/text/\" metadata=\"eml.xml\">\n" +
         table_description("core", "id", "Event", "event.csv", event_terms()) +
         table_description("extension", "coreid", "Occurrence", "occurrence.csv",
                           occurrence_terms()) +
         "</archive>\n";
}

std::string metadata_document()
{
  return R"(<?xml version="1.0" encoding="UTF-8"?>
<eml:eml xmlns:eml="eml://ecoinformatics.org/eml-2.1.1" packageId="mavo-surveys" system="MAVO-Survey" xml:lang="en">
  <dataset>
    <title xml:lang="en">Fish surveys by volunteer divers</title>
    <creator>
      <organizationName>MAVO</organizationName>
      <electronicMailAddress>)" MAVO_SUPPORT_ADDRESS R"(</electronicMailAddress>
    </creator>
    <language>en</language>
    <abstract>
      <para>Each event is one survey by one volunteer diver or snorkeler. Each occurrence is a species that the diver saw, with the class of its abundance.</para>
    </abstract>
    <contact>
      <organizationName>MAVO</organizationName>
      <electronicMailAddress>)" MAVO_SUPPORT_ADDRESS R"(</electronicMailAddress>
    </contact>
  </dataset>
</eml:eml>
)";
}
