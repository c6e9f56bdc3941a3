#pragma once

#include <string>

// One survey type of one subregion: a row of region-info.csv.
struct Region {
  std::string regioncode;
  std::string subregioncode;
  std::string regionname;
  std::string subregionname;
  std::string surveytypename;
  int surveytypeid = -1;
  bool hasabundance = false; // false: surveys record presence only; conditions are optional
  bool hasfish = false;
  bool hasinverts = false;
  bool canhaveinverts = false;
  bool visible = false; // offered for new surveys
};
