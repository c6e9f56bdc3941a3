#pragma once

#include <string>

// Why these bytes are not a survey that the program could open, in words for the user;
// empty if they are one. Nothing outside of the bytes is read.
std::string fault_of_survey_document(const std::string& bytes);
