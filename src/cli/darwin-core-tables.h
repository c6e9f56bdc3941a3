#pragma once

#include <string>
#include <vector>

// The form of a Darwin Core Archive: its tables and the documents that describe them.

// The terms of the columns, without the namespace that all of them share.
const std::vector<const char*>& event_terms();
const std::vector<const char*>& occurrence_terms();
// The line of headings of a table.
std::string heading_row(const std::vector<const char*>& terms);

// meta.xml, which says what each column means.
std::string archive_description();
// eml.xml with what is certain: the publisher of the data puts in the rest.
std::string metadata_document();
