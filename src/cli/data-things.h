#pragma once

#include <string>
#include <vector>

struct ReferenceData;

// A kind of thing that has an id in the reference data.
struct ThingKind {
  enum Trait : unsigned {
    FIXED_NAME = 1,   // any other name means another thing; else a name may be corrected
    ONLY_MEANING = 2, // only a changed meaning is reported; another kind reports all else
    OF_REGION = 4,    // its scope is a region; not reported if a set lacks that region
  };

  const char* rule;         // the start of the names of its rules: "species" for "species-renamed"
  const char* noun;         // as a sentence begins: "Species"
  const char* when_removed; // what that means for members, as a sentence without a full stop
  std::vector<std::string> headings; // of the columns that hold its id in its data file
  unsigned traits = 0;
};

// One thing of a data set, in the form in which sets are compared.
struct Thing {
  std::string key;  // unique in the set; see below
  std::string id;   // what is behind the noun in a message: "12 of region PAC"
  std::string file; // name of the data file that lists it
  // What identifies it. A species without a scientific name has its common name here.
  std::string name;
  std::string second_name;      // the common name of a species; empty if there is none
  std::string scope;            // the things in which `name` can be compared: "CAR"
  std::string context;          // must not change: "of location FLA"; empty for some kinds
  std::string detail;           // may change: "no longer offered"; empty for some kinds
  std::vector<std::string> row; // the fields below the headings of its kind
};

struct ThingList {
  const ThingKind* kind;
  std::vector<Thing> things; // in the order in which they are reported
};

// Everything in a complete data set that has an id, by kind, always in the same order of
// kinds. Both lists of two sets have the same kinds at the same places.
std::vector<ThingList> list_things(const ReferenceData& data);

// The keys of things that a saved survey can name.
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
