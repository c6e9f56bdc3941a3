#include "ui/field-widgets.h"

#include "core/report.h"
#include "core/text.h"
#include "data/data-defs.h"
#include "store/survey-fields.h"
#include "ui/drop-down-box.h"

#include <string>

namespace {

bool is_text(const SurveyField& field)
{
  return field.kind == FieldKind::text || field.kind == FieldKind::bottom_time;
}

// Returns null, without a message, if the definition file lacks the widget.
template<typename T>
T* find_widget(const Glib::RefPtr<Gtk::Builder>& builder, const std::string& id)
{
  T* widget = nullptr;
  if (gtk_builder_get_object(builder->gobj(), id.c_str()))
    builder->get_widget(id, widget);
  return widget;
}

template<>
DropDownBox* find_widget(const Glib::RefPtr<Gtk::Builder>& builder, const std::string& id)
{
  DropDownBox* box = nullptr;
  if (gtk_builder_get_object(builder->gobj(), id.c_str()))
    builder->get_widget_derived(id, box);
  return box;
}

template<typename T>
T& present(T* widget, const SurveyField& field)
{
  if (!widget)
    fatal("Failed to find %s in UI", field.name);
  return *widget;
}

} // namespace

void FieldWidgets::find(const Glib::RefPtr<Gtk::Builder>& builder)
{
  for (const SurveyField& field : survey_fields()) {
    Widgets& row = widgets[&field];
    if (is_text(field))
      row.input = find_widget<Gtk::Entry>(builder, field.name);
    else
      row.input = find_widget<DropDownBox>(builder, field.name);
    if (!field.summary)
      continue;
    row.summary_name = find_widget<Gtk::Label>(builder, std::string("conf_label_") + field.summary);
    row.summary_value = find_widget<Gtk::Label>(builder, std::string("conf_") + field.summary);
  }
}

Gtk::Widget& FieldWidgets::input(const SurveyField& field) const
{
  return present(widgets.at(&field).input, field);
}

Gtk::Entry& FieldWidgets::entry(const SurveyField& field) const
{
  return dynamic_cast<Gtk::Entry&>(input(field));
}

DropDownBox& FieldWidgets::box(const SurveyField& field) const
{
  return dynamic_cast<DropDownBox&>(input(field));
}

Gtk::Label& FieldWidgets::summary_name(const SurveyField& field) const
{
  return present(widgets.at(&field).summary_name, field);
}

Gtk::Label& FieldWidgets::summary_value(const SurveyField& field) const
{
  return present(widgets.at(&field).summary_value, field);
}

void FieldWidgets::fill_boxes(DataDefs& defs) const
{
  for (const SurveyField& field : survey_fields()) {
    if (!field.choices)
      continue;
    const auto& choices = defs.defs[field.choices];
    box(field).init(choices.values, choices.labels, -1, 0);
  }
}

Glib::ustring FieldWidgets::text(const SurveyField& field) const
{
  if (is_text(field))
    return trim_ws(entry(field).get_text());
  const DropDownBox& chosen = box(field);
  // The id of a year is the number in its label.
  return field.kind == FieldKind::temp_units ? chosen.get_label().substr(0, 1)
                                             : padded(chosen.get_id(), field.digits);
}

Glib::ustring FieldWidgets::shown_text(const SurveyField& field) const
{
  return is_text(field) ? text(field) : box(field).get_label();
}

void FieldWidgets::lock(Gtk::Container& panel) const
{
  for (const SurveyField& field : survey_fields())
    if (field.locked_when_uploaded && input(field).is_ancestor(panel))
      input(field).set_sensitive(false);
}
