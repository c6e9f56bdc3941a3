#pragma once

#include <string>

// Returns the reason why the program could not open these bytes as a survey, as a text for the
// user. Returns an empty text if it could. Reads nothing except the bytes.
std::string fault_of_survey_document(const std::string& bytes);
