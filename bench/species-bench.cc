// Measures filling the tables of species after a change of view, and searching them.
#include "core/my-app.h"
#include "data/region-info.h"
#include "support/bench-window.h"
#include "ui/drop-down-box.h"
#include "ui/listed-panel.h"
#include "ui/plain-models.h"
#include "ui/species-list.h"
#include "ui/survey-panel1.h"
#include "ui/survey-window.h"
#include "ui/unlisted-panel.h"

#include <dlfcn.h>
#include <glibmm/main.h>
#include <glibmm/timer.h>

#include <algorithm>
#include <cstring>
#include <ctime>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "plain-species.h"

// --- counters of calls between the program and the toolkit ---

namespace {

long names_lowered = 0;
long visible_calls = 0;

// A visible function that counts and calls another one.
struct CountedFunction {
  GtkTreeModelFilterVisibleFunc function;
  gpointer data;
  GDestroyNotify destroy;
};

gboolean count_and_call(GtkTreeModel* model, GtkTreeIter* row, gpointer counted)
{
  ++visible_calls;
  const auto* const inner = static_cast<CountedFunction*>(counted);
  return inner->function(model, row, inner->data);
}

void destroy_counted(gpointer counted)
{
  const std::unique_ptr<CountedFunction> inner(static_cast<CountedFunction*>(counted));
  if (inner->destroy)
    inner->destroy(inner->data);
}

// Returns the library's function of that name, which this program replaces.
template<typename Function>
Function* next_function(const char* name)
{
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" gchar* g_utf8_strdown(const gchar* text, gssize length)
{
  static auto* const next = next_function<gchar*(const gchar*, gssize)>("g_utf8_strdown");
  ++names_lowered;
  return next(text, length);
}

extern "C" void gtk_tree_model_filter_set_visible_func(GtkTreeModelFilter* filter,
                                                       GtkTreeModelFilterVisibleFunc function,
                                                       gpointer data, GDestroyNotify destroy)
{
  static auto* const next =
      next_function<void(GtkTreeModelFilter*, GtkTreeModelFilterVisibleFunc, gpointer,
                         GDestroyNotify)>("gtk_tree_model_filter_set_visible_func");
  next(filter, count_and_call, new CountedFunction{function, data, destroy}, destroy_counted);
}

namespace {

// Lets the toolkit finish its work, including drawing, until it has been idle for the time of
// some frames.
void settle()
{
  constexpr int pause = 20'000; // microseconds
  const auto loop = Glib::MainContext::get_default();
  for (bool quiet = false; !quiet; Glib::usleep(pause)) {
    quiet = true;
    while (loop->iteration(false))
      quiet = false;
  }
}

// Returns the processor time of this process so far, in seconds.
double processor_time()
{
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// Measures only `action`, each time after `prepare`. Measures processor time, because the
// program has no influence on the wait for the next frame.
template<typename Prepare, typename Action>
void measure(benchmark::State& state, const Prepare& prepare, const Action& action)
{
  for (auto _ : state) {
    prepare();
    const double start = processor_time();
    action();
    state.SetIterationTime(processor_time() - start);
  }
}

template<typename Function>
void add(const std::string& job, const char* who, const std::string& size, const Function& f)
{
  constexpr int repeated = 5; // the preparation takes longer than the action
  bench_one(job, who, size, f)->UseManualTime()->Iterations(repeated);
}

// --- filling ---

void type(SurveyWindow& window, const char* text)
{
  window.unlisted_panel->species_search->set_text(text);
}

using Stores = std::pair<std::vector<PlainRow>, std::vector<PlainRow>>;

Stores stores_of(const SurveyWindow& window)
{
  return {rows_of(GTK_TREE_MODEL(window.listed_model->gobj())),
          rows_of(GTK_TREE_MODEL(window.unlisted_model->gobj()))};
}

// Changes the view and changes it back, with all effects of the choice.
void fill_ours(benchmark::State& state, SurveyWindow& window)
{
  const Stores before = stores_of(window);
  const auto prepare = [&] {
    type(window, "");
    settle();
  };
  measure(state, prepare, [&] { window.listed_panel->on_view_changed(); });
  check_result(state, before == stores_of(window), "other rows");
}

void fill_reference(benchmark::State& state, SurveyWindow& window)
{
  const Stores ready = stores_of(window);
  const auto listed = plain_store(window.species_columns);
  const auto unlisted = plain_store(window.species_columns);
  measure(state, settle, // as for our own code, because much is slower after a pause
          [&] {
            fill_plainly(unlisted->gobj(), ready.second);
            fill_plainly(listed->gobj(), ready.first);
          });
  check_result(state,
               rows_of(GTK_TREE_MODEL(listed->gobj())) == ready.first &&
                   rows_of(GTK_TREE_MODEL(unlisted->gobj())) == ready.second,
               "other rows");
}

void register_filling(SurveyWindow& window, const std::string& size)
{
  add("fill_species", "ours", size, [&](benchmark::State& state) { fill_ours(state, window); });
  add("fill_species", "insert", size,
      [&](benchmark::State& state) { fill_reference(state, window); });
}

// --- sorting ---

// Returns the species in the order of their ids, which is their order before sorting.
std::vector<SpeciesListItem> unsorted_species(const SurveyWindow& window)
{
  std::vector<SpeciesListItem> list;
  auto& fish = *window.survey.region_fish;
  for (const auto& species : fish.species)
    if (species.speciesid >= 0)
      list.push_back({&species, &fish.families[species.familyid], false});
  return list;
}

bool same_species(const std::vector<SpeciesListItem>& one,
                  const std::vector<SpeciesListItem>& other)
{
  return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                    [](const auto& a, const auto& b) { return a.species == b.species; });
}

struct KeyedSpecies {
  std::string family;
  std::string species;
  SpeciesListItem item;
};

void sort_by_keys(std::vector<SpeciesListItem>& list)
{
  std::vector<KeyedSpecies> keyed;
  keyed.reserve(list.size());
  for (const auto& item : list)
    keyed.push_back(
        {item.family->commonname.collate_key(), item.species->commonname.collate_key(), item});
  std::sort(keyed.begin(), keyed.end(), [](const KeyedSpecies& a, const KeyedSpecies& b) {
    const int families = a.family.compare(b.family);
    return families != 0 ? families < 0 : a.species < b.species;
  });
  std::transform(keyed.begin(), keyed.end(), list.begin(),
                 [](const KeyedSpecies& species) { return species.item; });
}

void register_sorting(SurveyWindow& window, const std::string& size)
{
  const auto unsorted = unsorted_species(window);
  auto expected = unsorted;
  std::sort(expected.begin(), expected.end());
  const auto sort = [=](benchmark::State& state, auto&& sort_list) {
    std::vector<SpeciesListItem> list;
    const auto restore = [&] { list = unsorted; };
    measure(state, restore, [&] { sort_list(list); });
    check_result(state, same_species(list, expected), "another order");
  };
  const auto& fish = *window.survey.region_fish;
  add("sort_species", "ours", size, [&fish, sort](benchmark::State& state) {
    sort(state, [&](auto& list) { SpeciesOrder().sort(list, fish); });
  });
  add("sort_species", "keys", size, [=](benchmark::State& state) { sort(state, sort_by_keys); });
}

// --- searching ---

// A text, and the share of species with that text in their names or in the markup.
struct Search {
  const char* text;
  const char* share;
};
const char* const nothing = "zzzz";
const char* const everything = "i"; // part of the tag around scientific names
const Search searches[] = {{"zqone", "1 %"}, {"zqten", "10 %"}, {"i>", "100 %"}};

int species_in(const std::vector<char>& matches)
{
  return static_cast<int>(std::count(matches.begin(), matches.end(), char(1)));
}

void search_ours(benchmark::State& state, SurveyWindow& window, const char* first,
                 const Search& search)
{
  const auto rows = rows_of(GTK_TREE_MODEL(window.unlisted_model->gobj()));
  long calls = 0;
  long lowered = 0;
  measure(
      state,
      [&] {
        type(window, first);
        settle();
        visible_calls = 0;
        names_lowered = 0;
      },
      [&] {
        type(window, search.text);
        calls = std::max(calls, visible_calls);
        lowered = std::max(lowered, names_lowered - 1); // one call is for the text itself
      });
  state.counters["lowered"] = static_cast<double>(lowered);
  state.counters["visible"] = static_cast<double>(calls) / static_cast<double>(rows.size());

  const auto shown = rows_of(GTK_TREE_MODEL(window.unlisted_panel->found_filter->gobj()));
  const int expected =
      static_cast<int>(std::count_if(rows.begin(), rows.end(), [&](const PlainRow& row) {
        return row.id >= 0 && row.both.find(search.text) != std::string::npos;
      }));
  check_result(state,
               window.unlisted_panel->num_found == expected &&
                   std::count_if(shown.begin(), shown.end(),
                                 [](const PlainRow& row) { return row.id >= 0; }) == expected,
               "other species found");
}

void search_reference(benchmark::State& state, SurveyWindow& window, const char* first,
                      const Search& search, void (PlainSearch::*show)(const PlainSearch::Matches&))
{
  GtkTreeModel* const store = GTK_TREE_MODEL(window.unlisted_model->gobj());
  const auto rows = rows_of(store);
  PlainSearch plain(store);
  const auto before = PlainSearch::matches_of(rows, first);
  const auto found = PlainSearch::matches_of(rows, search.text);
  measure(
      state,
      [&] {
        (plain.*show)(before);
        settle();
      },
      [&] { (plain.*show)(found); });
  check_result(state, plain.species_shown() == species_in(found.species), "other species found");
}

void register_searches(SurveyWindow& window, const std::string& data)
{
  const std::pair<const char*, const char*> starts[] = {{"search_species", nothing},
                                                        {"narrow_species", everything}};
  for (const auto& [job, first] : starts) {
    for (const auto& search : searches) {
      const std::string size = data + ", " + search.share;
      const char* const from = first;
      add(job, "ours", size,
          [&, from](benchmark::State& state) { search_ours(state, window, from, search); });
      add(job, "refilter", size, [&, from](benchmark::State& state) {
        search_reference(state, window, from, search, &PlainSearch::refilter);
      });
      add(job, "new-filter", size, [&, from](benchmark::State& state) {
        search_reference(state, window, from, search, &PlainSearch::replace_filter);
      });
    }
  }
}

// --- until the program is idle ---

void register_idle(SurveyWindow& window, const std::string& size)
{
  add("species_idle", "ours", size, [&](benchmark::State& state) {
    const auto search = [&](const char* text) {
      type(window, text);
      settle();
    };
    const auto restore = [&] { search(nothing); };
    measure(state, restore, [&] { search(everything); });
  });
  add("species_idle", "plain", size, [&](benchmark::State& state) {
    GtkTreeModel* const store = GTK_TREE_MODEL(window.unlisted_model->gobj());
    const auto rows = rows_of(store);
    PlainSearch plain(store);
    const auto show = [&](const PlainSearch::Matches& found) {
      plain.replace_filter(found);
      settle();
    };
    const auto none = PlainSearch::matches_of(rows, nothing);
    const auto all = PlainSearch::matches_of(rows, everything);
    const auto restore = [&] { show(none); };
    measure(state, restore, [&] { show(all); });
  });
}

// Starts a survey at the first location of the data, with its first survey type that includes
// all kinds of animals.
void start_survey(SurveyWindow& window)
{
  auto& page = *window.survey_panel1;
  page.subregion->set_active(0);
  const auto& types = window.my_app->region_info->regions;
  for (const auto& [id, label] : std::vector(page.survey_subtype->items)) {
    const auto& type = types.at(static_cast<std::size_t>(id));
    if (type.hasabundance && type.hasfish && type.hasinverts)
      return page.survey_subtype->set_id(id);
  }
}

} // namespace

void register_benchmarks()
{
  for (const auto& data : bench_data_sets()) {
    SurveyWindow& window = bench_window(bench_program(data));
    start_survey(window);
    window.unlisted_panel->species_search_by->set_active_text("Common + Scientific Names");
    window.notebook->set_current_page(window.unlisted_panel->page);
    settle();
    register_filling(window, data.name);
    register_sorting(window, data.name);
    register_searches(window, data.name);
    register_idle(window, data.name);
  }
}
