#pragma once

#include <gtk/gtk.h>

#include <string>
#include <vector>

// The references for the species tables: only the toolkit, with precomputed texts and without
// the rules of a survey.

// One row of a store of species, with precomputed texts.
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

// Returns all rows of a store, families before their species.
std::vector<PlainRow> rows_of(GtkTreeModel* model);
// Clears the store and fills it. REQUIRES: no view shows the store.
void fill_plainly(GtkTreeStore* store, const std::vector<PlainRow>& rows);

// A window with an entry and a tree of the rows of `store` that a search finds. The results of
// the search are precomputed.
class PlainSearch
{
public:
  // REQUIRES: the store outlives this object.
  explicit PlainSearch(GtkTreeModel* the_store);
  ~PlainSearch();
  PlainSearch(const PlainSearch&) = delete;
  PlainSearch& operator=(const PlainSearch&) = delete;

  // The results of a search: by species id, and by family in their order.
  struct Matches {
    std::string text;
    std::vector<char> species;
    std::vector<char> families;
  };
  // Returns the species whose text with both names contains `text`, and their families.
  static Matches matches_of(const std::vector<PlainRow>& rows, const std::string& text);

  // Types the text and shows the results, with all families expanded: with the existing filter
  // or with a new one.
  void refilter(const Matches& found);
  void replace_filter(const Matches& found);

  // Returns the number of species that the tree shows.
  int species_shown() const;

private:
  void create_filter();

  GtkTreeModel* store;
  GtkTreeModel* filter = nullptr;
  GtkWidget* window;
  GtkWidget* entry;
  GtkTreeView* tree;
  Matches matches;
};
