#pragma once

#include "store/survey-parser.h"

// A parser for the list of surveys, which does not show species. The parser checks the content
// of "ids" as usual but does not add it to the tree. "ids" is the largest part of a survey, so
// this parser takes less than half of the time of a SurveyParser.
class SurveyHeadParser : public SurveyParser
{
protected:
  void initialize_context() override;

private:
  struct Handlers;

  struct Place {
    int level = 0; // the number of open elements in the tree
    int depth = 0; // 1 in "ids", 2 in one of its species, 0 elsewhere
  };
  Place place;
};
