#include "ui/next-window.h"

#include "core/my-app.h"
#include "ui/survey-window.h"

#include <gtkmm/application.h>

NextWindow::NextWindow(MyApp& app) : window(SurveyWindow::create(app))
{
  app.app->add_window(*window);
}

NextWindow::~NextWindow()
{
  if (!window->get_visible())
    window->my_app->app->remove_window(*window);
}

void NextWindow::take_the_place_of(SurveyWindow& old)
{
  window->place.take_over(old.place);
  window->show();
  old.hide();
}
