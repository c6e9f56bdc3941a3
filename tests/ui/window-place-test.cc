// Tests where the window manager places a window that replaces another one.

#include "support/dialogs.h"
#include "support/main-loop.h"
#include "support/window-fixture.h"
#include "ui/next-window.h"
#include "ui/survey-window.h"

#include <tuple>

namespace {

// The x and y of the frame's upper left corner, then width and height without the frame, in pixels.
using Place = std::tuple<int, int, int, int>;

Place place_of(const SurveyWindow& window)
{
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  window.get_position(x, y);
  window.get_size(width, height);
  return {x, y, width, height};
}

bool is_fullscreen(const SurveyWindow& window)
{
  return (window.get_window()->get_state() & Gdk::WINDOW_STATE_FULLSCREEN) != 0;
}

// A window that the user has moved and sized.
class PlaceOfWindows : public WindowTest
{
public:
  PlaceOfWindows()
  {
    open_window();
    window->move(137, 91);
    window->resize(953, 641);
    wait_until("the window is where it was put",
               [this] { return place_of(*window) == moved_place; });
    settle();
  }

  // Replaces the window with a new one. Returns the new one when it is drawn.
  SurveyWindow* next_window() const
  {
    NextWindow next(*my_app);
    next.take_the_place_of(*window);
    return wait_for(next.window);
  }
  static SurveyWindow* wait_for(SurveyWindow* next)
  {
    wait_until("the next window is the active one", [next] { return next->is_active(); });
    let_draw(*next);
    return next;
  }

  const Place moved_place{137, 91, 953, 641};
};

} // namespace

TEST_F(PlaceOfWindows, IsThatOfTheOldWindow)
{
  EXPECT_EQ(moved_place, place_of(*next_window()));
}

TEST_F(PlaceOfWindows, IsKeptByNewSurveys)
{
  window->actions["FileNew"]->activate();
  const auto visible = visible_windows();
  ASSERT_EQ(1U, visible.size());
  ASSERT_NE(window, visible.front());
  EXPECT_EQ(moved_place, place_of(*wait_for(visible.front())));
}

TEST_F(PlaceOfWindows, StaysThroughManyWindows)
{
  for (int count = 0; count < 5; ++count) {
    window = next_window();
    EXPECT_EQ(moved_place, place_of(*window)) << count;
  }
}

TEST_F(PlaceOfWindows, FillsTheScreenIfTheOldWindowDid)
{
  window->maximize();
  wait_until("the window is maximised", [this] { return window->is_maximized(); });
  auto* const next = next_window();
  wait_until("the next window is maximised, too", [next] { return next->is_maximized(); });

  next->unmaximize();
  wait_until("it is as large as the first one was before",
             [&] { return place_of(*next) == moved_place; });
}

TEST_F(PlaceOfWindows, CoversTheScreenIfTheOldWindowDid)
{
  window->fullscreen();
  wait_until("the window covers the screen", [this] { return is_fullscreen(*window); });
  auto* const next = next_window();
  wait_until("the next window does so, too", [next] { return is_fullscreen(*next); });

  next->unfullscreen();
  wait_until("it is as large as the first one was before",
             [&] { return place_of(*next) == moved_place; });
}

TEST_F(PlaceOfWindows, HasTheInitialSizeIfTheOldWindowWasNeverShown)
{
  auto* const shown = window;
  create_window();
  auto* const hidden = window;
  NextWindow next(*my_app);
  next.take_the_place_of(*hidden);
  int width = 0;
  int height = 0;
  wait_for(next.window)->get_size(width, height);
  EXPECT_EQ(std::make_tuple(900, 600), std::make_tuple(width, height));
  shown->hide();
}
