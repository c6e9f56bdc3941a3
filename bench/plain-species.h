#pragma once

#include <gtk/gtk.h>

#include <string>
#include <vector>

// The references for the species tables: the toolkit alone, without a thought for the
// survey, given all that there is to work out.

// One row of a store of species, as texts that stand ready.
struct PlainRow {
  int id; // negative for a family
  std::string common;
  std::string scientific;
  std::string both;
  std::string spanish;
  int abundance;
  std::string label;
  bool in_view;

  bool operator==(const PlainRow& other) const;
};

// All rows of a store, families before their species.
std::vector<PlainRow> rows_of(GtkTreeModel* model);
// Empties the store, which no view shows, and fills it.
void fill_plainly(GtkTreeStore* store, const std::vector<PlainRow>& rows);

// A window with an entry and a tree of the rows of `store` that a search has found. What it finds
// is known beforehand.
class PlainSearch
{
public:
  explicit PlainSearch(GtkTreeModel* the_store);
  ~PlainSearch();
  PlainSearch(const PlainSearch&) = delete;
  PlainSearch& operator=(const PlainSearch&) = delete;

  // A search, and what it is to find: by species id, and by family in their order.
  struct Matches {
    std::string text;
    std::vector<char> species;
    std::vector<char> families;
  };
  // The species and the families with one whose both names have `text`.
  static Matches matches_of(const std::vector<PlainRow>& rows, const std::string& text);

  // Types the text and shows what was found, with all families unfolded: by the filter
  // that is there, or by one of its own.
  void refilter(const Matches& found);
  void filter_anew(const Matches& found);

  int species_shown() const;

private:
  void take_new_filter();

  GtkTreeModel* store;
  GtkTreeModel* filter = nullptr;
  GtkWidget* window;
  GtkWidget* entry;
  GtkTreeView* tree;
  Matches matches;
};
