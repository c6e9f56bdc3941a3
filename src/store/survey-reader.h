#pragma once

#include "store/survey-parser.h"

#include <glibmm/ustring.h>
#include <libxml++/nodes/element.h>

#include <string>

// Functions on the nodes of a survey document. They accept a null node and return an empty
// value for it.

// Returns the value of an attribute, or an empty text if the node is not an element or lacks the
// attribute.
Glib::ustring get_attr(const xmlpp::Node* node, const Glib::ustring& name);
// Returns the value of an attribute as a number, or 0 if it is missing or not a number.
int get_numeric_attr(const xmlpp::Node* node, const Glib::ustring& name);
// Returns the text of the node's first child, or an empty text if that is not a text node. So
// the function ignores text after a comment.
Glib::ustring get_content(const xmlpp::Node* node);
// Returns whether the node is a text that consists of white space.
bool is_white_space(const xmlpp::Node* node);

// Parses the file at `path` with `parser` and returns the document's "survey" element, which the
// parser owns. Throws a text or an exception of the parser if the file is not a survey of a
// version that this program reads, if it exceeds a limit of survey_limits, if it is not a regular
// file, or if the document refers to other files. The parser never reads other files.
const xmlpp::Node* parse_survey_file(SurveyParser& parser, const std::string& path);

// Does the same for the content of a file.
const xmlpp::Node* parse_survey_bytes(SurveyParser& parser, const std::string& contents);
