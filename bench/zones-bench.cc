// Measures the tree of geographic zones: a keystroke in its search, and the whole tree.
#include "core/my-app.h"
#include "data/region-info.h"
#include "support/bench-window.h"
#include "ui/survey-panel1.h"
#include "ui/survey-window.h"

#include <gtk/gtk.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace {

enum Column { ID, NAME, LABEL };

// A zone with everything that can be computed before a search. The first one is the root,
// which is never shown.
struct PlainZone {
  int id = 0;
  std::string name;
  std::string lower_name;
  std::string label;
  std::string code;
  int parent = 0;
  int previous = 0; // under the same parent; 0: none
  int last_child = 0;
};

bool begins_with(const std::string& code, const std::string& beginning)
{
  return code.compare(0, beginning.size(), beginning) == 0;
}

// Returns the zones of a region in which sites are leaves, as in all real data.
std::vector<PlainZone> zones_of(const RegionFishInfo& fish)
{
  std::vector<PlainZone> zones(1);
  for (const int id : fish.geog_ids) {
    PlainZone zone;
    zone.id = id;
    zone.name = fish.geog_names.at(id);
    zone.lower_name = fish.geog_names.at(id).lowercase();
    zone.code = std::to_string(id);
    zone.label = zone.code + ": " + zone.name;
    zone.parent = static_cast<int>(zones.size()) - 1;
    while (!begins_with(zone.code, zones[zone.parent].code))
      zone.parent = zones[zone.parent].parent;
    zone.previous = zones[zone.parent].last_child;
    zones[zone.parent].last_child = static_cast<int>(zones.size());
    zones.push_back(zone);
  }
  return zones;
}

// The same tree, with only the toolkit.
class PlainTree
{
public:
  // The tree view and the page are those of a window of the program.
  PlainTree(GtkTreeView* tree_view, GtkContainer* page, const RegionFishInfo& fish)
      : view(tree_view),
        entry(GTK_ENTRY(gtk_entry_new())),
        store(gtk_tree_store_new(3, G_TYPE_INT, G_TYPE_STRING, G_TYPE_STRING)),
        zones(zones_of(fish)),
        shown(zones.size())
  {
    gtk_container_add(page, GTK_WIDGET(entry));
    gtk_widget_show(GTK_WIDGET(entry));
  }
  ~PlainTree() { g_object_unref(store); }
  PlainTree(const PlainTree&) = delete;
  PlainTree& operator=(const PlainTree&) = delete;

  void search(const char* typed)
  {
    gtk_entry_set_text(entry, typed);
    const char* const text = typed + std::strspn(typed, " ");
    std::fill(shown.begin(), shown.end(), false);
    for (int i = static_cast<int>(zones.size()); i-- > 1;) {
      const PlainZone& zone = zones[i];
      if (!shown[i])
        shown[i] = std::strstr(zone.lower_name.c_str(), text) != nullptr;
      if (shown[i])
        shown[zone.parent] = true;
    }
    gtk_tree_view_set_model(view, nullptr);
    gtk_tree_store_clear(store);
    fill(0, nullptr);
    gtk_tree_view_set_model(view, GTK_TREE_MODEL(store));
    gtk_tree_view_set_search_column(view, NAME);
    if (*text)
      gtk_tree_view_expand_all(view);
  }

private:
  // Adds rows from the last to the first, because a store walks along the list to append.
  void fill(int parent, GtkTreeIter* parent_row)
  {
    for (int i = zones[parent].last_child; i > 0; i = zones[i].previous) {
      if (!shown[i])
        continue;
      GtkTreeIter row;
      gtk_tree_store_insert_with_values(store, &row, parent_row, 0, ID, zones[i].id, NAME,
                                        zones[i].name.c_str(), LABEL, zones[i].label.c_str(), -1);
      fill(i, &row);
    }
  }

  GtkTreeView* view;
  GtkEntry* entry; // the page's search field
  GtkTreeStore* store;
  std::vector<PlainZone> zones;
  std::vector<char> shown;
};

// Returns all rows of the model, in the order of the tree.
std::string rows_of(GtkTreeModel* model)
{
  std::string text;
  gtk_tree_model_foreach(
      model,
      [](GtkTreeModel* tree, GtkTreePath* path, GtkTreeIter* row, gpointer all) -> gboolean {
        int id = 0;
        gchar* name = nullptr;
        gchar* label = nullptr;
        gtk_tree_model_get(tree, row, ID, &id, NAME, &name, LABEL, &label, -1);
        *static_cast<std::string*>(all) += std::string(2 * gtk_tree_path_get_depth(path), ' ') +
                                           std::to_string(id) + name + label + "\n";
        g_free(name);
        g_free(label);
        return FALSE;
      },
      &text);
  return text;
}

// Returns the visible zone page of a window, for a region with many zones.
SurveyPanel1& zone_panel(MyApp& program)
{
  SurveyWindow& window = bench_window(program);
  SurveyPanel1& panel = *window.survey_panel1;
  window.notebook->set_current_page(panel.page);
  for (const auto& [subregion, region] : program.region_info->subregion_regions)
    if (region.raw() != "PAC") { // each subregion of PAC has only a part of the zones
      panel.setup_for_subregion(subregion);
      break;
    }
  settle_windows();
  return panel;
}

// Two texts that are typed alternately, so that each is a change. They find almost the same.
struct Keystroke {
  const char* job;
  const char* size;
  const char* texts[2];
};
const Keystroke keystrokes[] = {
    {"zone_search", " few", {"manta r", "manta re"}}, // one zone in some hundreds
    {"zone_search", " some", {"zqt", "zqte"}},        // one in ten
    {"zone_search", " most", {"e", "a"}},             // five in six
    {"zone_tree", "", {"", " "}},
};

void register_for(const BenchData& data)
{
  MyApp& program = bench_program(data);
  SurveyPanel1* const panel = &zone_panel(program);
  SurveyPanel1* const other = &zone_panel(program);
  GtkTreeView* const view = other->geog_tree->gobj();
  const auto plain = std::make_shared<PlainTree>(view, GTK_CONTAINER(other->gobj()),
                                                 *other->window->survey.region_fish);

  for (const auto& keystroke : keystrokes) {
    const auto measure = [=](benchmark::State& state, auto&& search) {
      bool odd = false;
      for (auto _ : state) {
        search(keystroke.texts[odd ? 1 : 0]);
        odd = !odd;
      }
      settle_windows();
      for (const char* text : keystroke.texts) {
        panel->zone_search->set_text(text);
        plain->search(text);
        check_result(state,
                     rows_of(gtk_tree_view_get_model(view)) ==
                         rows_of(gtk_tree_view_get_model(panel->geog_tree->gobj())),
                     "other rows");
      }
    };
    bench_one(keystroke.job, "ours", data.name + keystroke.size, [=](benchmark::State& state) {
      measure(state, [&](const char* text) { panel->zone_search->set_text(text); });
    });
    bench_one(keystroke.job, "plain", data.name + keystroke.size, [=](benchmark::State& state) {
      measure(state, [&](const char* text) { plain->search(text); });
    });
  }
}

} // namespace

void register_benchmarks()
{
  for (const auto& data : bench_data_sets())
    register_for(data);
}
