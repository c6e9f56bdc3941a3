#include "store/survey-xml-info.h"

#include <string>

Glib::ustring SurveyXMLinfo::get_current_version_str() const
{
  return std::to_string(current_major) + "." + std::to_string(current_minor);
}
