#pragma once

#include <glibmm/ustring.h>

class SurveyWindow;
namespace xmlpp {
class Node;
}

// Pours the elements of a survey document into a new window's panels, in the
// order of the document: each sets its widget in passing, with the panels' own
// handlers at work. Throws a text at the first thing that is wrong; the window
// is then partly loaded and must not be shown.
class SurveyLoader
{
public:
  explicit SurveyLoader(SurveyWindow& the_window) : window(the_window) {}

  // Loads all children of the "survey" element.
  void load(const xmlpp::Node* survey_element);

private:
  void load_element(const xmlpp::Node& element);
  bool load_text(const Glib::ustring& name, const Glib::ustring& content);
  bool load_choice(const Glib::ustring& name, const Glib::ustring& content);
  void load_subregion(const Glib::ustring& content);
  void load_year(const Glib::ustring& content);
  void load_bottom_time(const xmlpp::Node& element);
  void load_single_depth(int depth_id);

  SurveyWindow& window;
  Glib::ustring subregion;
  bool single_depth_is_maximum = false; // of older surveys from this subregion
};
