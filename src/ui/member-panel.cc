#include "ui/member-panel.h"

#include "core/text.h"
#include "ui/survey-panel1.h"
#include "ui/survey-window.h"

MemberPanel::MemberPanel(BaseObjectType* cobject, const Glib::RefPtr<Gtk::Builder>& /*builder*/)
    : Gtk::Grid(cobject)
{
}

void MemberPanel::ctor_continued(const Glib::RefPtr<Gtk::Builder>& builder,
                                 SurveyWindow* the_window)
{
  window = the_window;
  my_app = window->my_app;
  builder->get_widget("member_id", member_id);
  builder->get_widget("last_name", last_name);
}

void MemberPanel::connect_focus_signals()
{
  member_id->signal_activate().connect([this] { last_name->grab_focus(); });
  last_name->signal_activate().connect(
      [this] { window->survey_panel1->focus_on(window->survey_panel1->subregion); });
}

Glib::ustring MemberPanel::get_member_id() const
{
  return trim_ws(member_id->get_text());
}

Glib::ustring MemberPanel::get_last_name() const
{
  return trim_ws(last_name->get_text());
}
