#pragma once

#include <string>
#include <vector>

// The structure of a Darwin Core Archive: its tables and the documents that describe them.

// Return the terms of the columns of a table, without their common namespace.
const std::vector<const char*>& event_terms();
const std::vector<const char*>& occurrence_terms();
// Returns the row of headings of a table, with its line end.
std::string heading_row(const std::vector<const char*>& terms);

// Returns the text of meta.xml, which defines the meaning of each column.
std::string archive_description();
// Returns the text of eml.xml. It has only the facts that are always true; the publisher of
// the data adds the rest.
std::string metadata_document();
