#pragma once

#include <string>
#include <vector>

struct ReferenceData;

// A kind of thing that has an id in the reference data, such as zones.
struct ThingKind {
  enum Trait : unsigned {
    FIXED_NAME = 1,   // a changed name is always another thing, never a correction
    ONLY_MEANING = 2, // report only changed meanings; another kind reports other changes
    OF_REGION = 4,    // the scope is a region; do not report things of a missing region
  };

  const char* rule;         // the prefix of the ids of its rules: "species" for "species-renamed"
  const char* noun;         // for the start of a sentence: "Species"
  const char* when_removed; // what members notice, as a sentence without a full stop
  std::vector<std::string> headings; // the columns of its id in the data file
  unsigned traits = 0;
};

// One thing of a data set, prepared for a comparison of two sets.
struct Thing {
  std::string key;  // unique in the set; see thing_key
  std::string id;   // follows the noun in a message: "12 of region PAC"
  std::string file; // the name of the data file that lists it
  // The name that identifies it. It is the common name if a species has no scientific name.
  std::string name;
  std::string second_name;      // the common name of a species; empty if there is none
  std::string scope;            // `name` is comparable only in the same scope: "CAR"
  std::string context;          // must not change: "of location FLA"; empty for some kinds
  std::string detail;           // may change: "no longer offered"; empty for some kinds
  std::vector<std::string> row; // the fields under the headings of its kind
};

// All things of one kind.
struct ThingList {
  const ThingKind* kind;
  std::vector<Thing> things; // in the order in which they are reported
};

// Returns everything in a complete data set that has an id, by kind. The order and the number
// of the kinds are the same for all data sets.
std::vector<ThingList> list_things(const ReferenceData& data);

// Functions that return the keys of the things to which a saved survey can refer.
namespace thing_key {
std::string place(const std::string& code);
std::string type(int id);
std::string zone(const std::string& region, int id);
std::string species(const std::string& region, int id);
std::string view(int id);
std::string habitat(const std::string& region, int code);
std::string choice(const std::string& group, int value);
std::string abundance(int type, int abundance_class);
} // namespace thing_key
