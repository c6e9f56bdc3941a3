#pragma once

#include "store/survey-parser.h"

// A parser for the list of surveys, which tells nothing of their species: the parser checks
// the content of "ids" as usual but leaves it out of the tree. Most of a survey is in
// "ids": the list takes less than half the time that it takes with whole trees.
class SurveyHeadParser : public SurveyParser
{
protected:
  void initialize_context() override;

private:
  struct Handlers;

  struct Place {
    int level = 0; // open elements of the tree
    int depth = 0; // 1 in "ids" itself, 2 in one of its species; 0 elsewhere
  };
  Place place;
};
