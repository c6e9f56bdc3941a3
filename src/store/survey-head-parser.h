#pragma once

#include "store/survey-parser.h"

// A parser for the list of surveys, which tells nothing of their species: what stands
// in "ids" is seen to be sound as ever, but is no part of the tree. It is most of a
// survey, and its nodes are most of the work.
class SurveyHeadParser : public SurveyParser
{
protected:
  void initialize_context() override;

private:
  struct Handlers;

  int depth = 0; // 1 in "ids" itself, 2 in one of its species; 0 elsewhere
};
