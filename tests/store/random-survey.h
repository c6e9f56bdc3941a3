#pragma once

#include "store/survey-document.h"

#include <random>
#include <string>
#include <vector>

class DataDefs;
class HabitatInfo;
class RegionInfo;

// The tables for random surveys; not owned.
struct SurveyTables {
  RegionInfo& regions;
  AbundanceChoices& abundances;
  HabitatInfo& habitats;
  DataDefs& defs;
};

// A survey that a user could have entered.
struct RandomSurvey {
  Survey form;
  SurveyData data; // location, type and species
};

// Creates random surveys, which are the same in every run: with and without each choice, with
// markup characters, accents and other scripts in texts, with each habitat in turn, and with up
// to 500 species.
class RandomSurveys
{
public:
  explicit RandomSurveys(const SurveyTables& the_tables) : tables(the_tables) {}

  // Fills the new survey `survey` with random values. Uses the subregions in turn.
  void make(RandomSurvey& survey);

private:
  int below(int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); }
  bool seldom() { return below(4) == 0; }
  Glib::ustring words(int most);
  int one_of(const std::vector<int>& ids, int none);
  void choose_place(RandomSurvey& survey);
  void choose_type(RandomSurvey& survey);
  void choose_time(Survey& form);
  void choose_conditions(RandomSurvey& survey);
  void see_species(RandomSurvey& survey);
  std::vector<int> classes_of(const RandomSurvey& survey, int invertebratetype) const;

  SurveyTables tables;
  std::mt19937 random{20211218};
  int made = 0;
};
