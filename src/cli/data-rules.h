#pragma once

#include <vector>

#include "cli/finding.h"

// The rules of `mavo-data check`. docs/data-files.md explains each with an example.
enum class DataRule {
  // Faults that prevent the start of the program.
  FILE_MISSING,
  FILE_TOO_LARGE,
  LINE_TOO_LONG,
  BYTE_ORDER_MARK,
  HEADING_MISSING,
  ROW_WIDTH,
  METADATA_LINE,
  METADATA_VERSION,
  METADATA_INCOMPLETE,
  // Faults that make the program skip a row or display it incorrectly.
  // In any file:
  LINE_ENDS,
  TABLE_EMPTY,
  HEADING_TWICE,
  QUOTING_BOTCHED,
  QUOTE_OPEN,
  ENCODING,
  NUMBER_INVALID,
  NUMBER_TOO_LARGE,
  FLAG_UNCLEAR,
  ID_OUT_OF_RANGE,
  ID_DUPLICATE,
  NUMBERING_GAP,
  NAME_MISSING,
  NAME_TWICE,
  NAMES_ALIKE,
  MARKUP_BROKEN,
  // In the metadata:
  METADATA_KEY,
  TIMESTAMP_FORM,
  // In the rows of regions and survey types:
  CODE_UNUSABLE,
  SUBREGION_INCONSISTENT,
  SURVEY_TYPE_RESERVED,
  ABUNDANCE_MISSING,
  // In the rows of species and zones:
  SPECIES_ID_ZERO,
  FAMILY_MISSING,
  FAMILY_UNKNOWN,
  INVERTEBRATE_TYPE,
  RARITY,
  ZONE_LEVEL,
  ZONE_NO_PARENT,
  ZONE_ORDER,
  // In the rows of habitats:
  REGION_UNKNOWN,
  HABITAT_UNKNOWN,
  HABITATS_MISSING,
  // In the rows of abundance classes:
  SURVEY_TYPE_UNKNOWN,
  RESPONSE_ID,
  RESPONSE_TWICE,
  ABUNDANCE_CLASS,
  ABUNDANCE_ORDER,
  ABUNDANCE_GAP,
  PRESENCE_MISSING,
  // In the rows of views:
  SUBREGION_UNKNOWN,
  VIEW_UNKNOWN,
  SPECIES_UNKNOWN,
  DEFAULT_VIEW_MISSING,
  DEFAULT_VIEW_TWICE,
  VIEW_EMPTY,
  VIEW_SPECIES_TWICE,
  VIEW_FAMILY_SPLIT,
  // In the rows of choices and limits:
  GROUP_MISSING,
  GROUP_SPLIT,
  GROUP_UNNAMED,
  SNORKEL_MISSING,
  DEPTH_ORDER,
  DIVE_START_HOUR,
  DIVE_START_SHORT,
  LIMIT_MISSING,
  LIMIT_ORDER,
  // Hints.
  SPECIES_NOT_IN_VIEW,
  IDS_SPARSE,
  FILE_UNUSED,
};

// A rule as findings show it.
struct Rule {
  DataRule rule;
  const char* id; // in lower case with hyphens
  Severity severity;
};

// Returns all rules in the order of DataRule.
const std::vector<Rule>& data_rules();
// Returns the entry of data_rules() for a rule.
const Rule& rule_of(DataRule rule);
