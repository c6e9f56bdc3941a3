#pragma once

namespace Gtk {
class TreeView;
}

class SurveyWindow;

// Makes a species tree explain why a row is shaded: in a tooltip (by mouse or Ctrl+F1) and in
// the accessible description of the cell that has the focus. Call it once for each tree; the
// tree's model may change afterwards.
void explain_rarity(SurveyWindow& window, Gtk::TreeView& tree);
