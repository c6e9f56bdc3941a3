#pragma once

#include <string>

// A survey document whose parts can be changed.
struct SurveyFile {
  // Returns the complete text of the file.
  std::string text() const;
  // Returns a copy in which `element` replaces the element with this name. `element` may be
  // empty or several elements. Fails the test if there is no element with this name.
  SurveyFile with(const std::string& name, const std::string& element) const;
  // Returns a copy with another root tag and version.
  SurveyFile as(const std::string& tag, const std::string& version_text) const;

  std::string root_tag = "MAVO-Survey";
  std::string version = "1.0";
  std::string elements = "<member_id>1234</member_id><last_name>N\u00fa\u00f1ez &amp; &lt;Sons&gt;"
                         "</last_name><subregion>PNW</subregion>"
                         "<survey_subtype>3</survey_subtype><year>2021</year><month>06</month>"
                         "<mday>30</mday><dive_start>9</dive_start><zonecode>31020003</zonecode>"
                         "<surface_temp>55</surface_temp><bottom_temp>50</bottom_temp>"
                         "<temp_units>F</temp_units><bottom_time confirmed=\"1\">130</bottom_time>"
                         "<visibility>2</visibility><avg_depth>2</avg_depth>"
                         "<max_depth>3</max_depth><current>1</current><habitat>3</habitat>"
                         "<species_view>2</species_view>"
                         "<ids><species id=\"0010\" abun=\"2\" resp=\"302\"/>"
                         "<species id=\"0012\" abun=\"1\" resp=\"301\"/></ids>";
};
