#pragma once

#include "store/survey-parser.h"

#include <glibmm/ustring.h>
#include <libxml++/nodes/element.h>

#include <string>

// Small helpers on nodes of a survey document. A null node gives the empty value.

// The value of an attribute; empty if the node is no element or lacks it.
Glib::ustring get_attr(const xmlpp::Node* node, const Glib::ustring& name);
// The same as a number; 0 for anything missing or not numeric.
int get_numeric_attr(const xmlpp::Node* node, const Glib::ustring& name);
// The text of the node's first child, empty if that is not a text node: what
// stands behind a comment is not seen.
Glib::ustring get_content(const xmlpp::Node* node);
// Whether the node is text of nothing but white space.
bool is_white_space(const xmlpp::Node* node);

// Parses the file at `path` with `parser` and returns the document's "survey"
// element, which lives as long as the parser. Throws what is wrong as a text,
// or an exception of the parser, if the file is not a survey of a version that
// this program reads. Nothing but the file itself is read: a document that
// draws text from other files is refused, as it could only be read in part. So
// is a file that holds more than survey_limits allows, and what is no plain file.
const xmlpp::Node* parse_survey_file(SurveyParser& parser, const std::string& path);

// The same of what such a file holds.
const xmlpp::Node* parse_survey_bytes(SurveyParser& parser, const std::string& contents);
