#pragma once

namespace Gtk {
class TreeView;
}

class SurveyWindow;

// Lets a species tree explain why a row is shaded: in a tooltip, by mouse or by
// Ctrl+F1, and in the accessible description of the cell that has the keyboard.
// Call it once; the tree's model may change afterwards.
void explain_rarity(SurveyWindow& window, Gtk::TreeView& tree);
