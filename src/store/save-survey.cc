#include "core/markup.h"
#include "core/message-dialog.h"
#include "core/text.h"
#include "core/thrown-text.h"
#include "store/file-identity.h"
#include "store/replace-file.h"
#include "store/survey-document.h"
#include "store/survey-fields.h"
#include "store/survey-file-name.h"
#include "store/unlisted-year.h"
#include "ui/confirm-panel.h"
#include "ui/start-panel.h"
#include "ui/survey-window.h"

#include <giomm/error.h>
#include <giomm/file.h>
#include <unistd.h>

#include <cstdio>

namespace {

const char* const not_saved = "ERROR: Survey NOT Saved!!!";

// Returns the text of the current exception as markup for a dialog.
Glib::ustring failure_text()
{
  return escape_markup(thrown_text("Unknown error (sorry!)", "Unknown exception (sorry!)"));
}

// Returns the path of the survey's own file, or an empty text if it has none. After a failed
// save, the path is not its own, because another program may have written a survey there.
std::string own_path(const SurveyData& survey)
{
  return survey.filename == survey.unwritten_path ? "" : survey.filename;
}

// Returns the path for a survey. It is `stem` with the extension if that is free or the survey's
// own file, else the first free path with a number. `own` can be another path of the same file.
std::string path_to_save_to(const std::string& stem, const std::string& own)
{
  return first_free_path(stem, own, [&](const std::string& path) {
    return !same_place(path, own) && Gio::File::create_for_path(path)->query_exists();
  });
}

// Replaces the survey's own file. Accepts a changed entity tag if the content is unchanged,
// because programs that synchronise or back up files can change the tag.
std::string replace_own_file(const SurveyData& survey, const std::string& text)
{
  try {
    return replace_file(survey.filename, text.data(), text.size(), survey.file_etag);
  } catch (const Gio::Error& error) {
    if (error.code() != Gio::Error::WRONG_ETAG)
      throw;
    // Get the tag before the content is read, so that a later change of the file is detected.
    const std::string etag = entity_tag(survey.filename);
    if (!file_holds(survey.filename, survey.written_text))
      throw;
    return replace_file(survey.filename, text.data(), text.size(), etag);
  }
}

void write_document(SurveyData& survey, bool is_own)
{
  const std::string& text = survey.xml_current.raw();
  try {
    survey.file_etag =
        is_own ? replace_own_file(survey, text)
               : replace_file(survey.filename, text.data(), text.size(), no_existing_file);
  } catch (...) {
    // The file can have the new content even if the flush has failed.
    if (is_own && file_holds(survey.filename, text))
      survey.written_text = text;
    throw;
  }
  survey.written_text = text;
  survey.xml_last_saved = survey.xml_current;
}

// Writes the document to `stem`, with a number if necessary. If another program creates a file
// with the chosen name in the meantime, uses the next free name.
void write_document_to(SurveyData& survey, const std::string& stem)
{
  const std::string own = own_path(survey);
  while (true) {
    survey.filename = path_to_save_to(stem, own);
    const bool is_own = same_place(survey.filename, own);
    survey.unwritten_path = is_own ? "" : survey.filename;
    try {
      write_document(survey, is_own);
      survey.unwritten_path.clear();
      return;
    } catch (const Gio::Error& error) {
      const bool is_taken = error.code() == Gio::Error::WRONG_ETAG && !is_own;
      if (!is_taken || !Gio::File::create_for_path(survey.filename)->query_exists())
        throw;
    }
  }
}

// Writes the document to a file in `directory` whose name begins with `name`. If it throws, the
// previous file of the survey still exists.
void save_document(SurveyData& survey, const std::string& directory, const std::string& name)
{
  const std::string old_path = own_path(survey);
  write_document_to(survey, directory + "/" + name);
  // If the name is unchanged, only the state has changed, so the old file is removed. If the
  // name has changed, the old file remains as another survey. A name can contain a slash from
  // the member id.
  const std::string& new_path = survey.filename;
  const std::string new_name = new_path.substr(directory.size() + 1);
  if (new_path != old_path && new_name == base_name(old_path) && !same_file(new_path, old_path))
    unlink(old_path.c_str());
}

Survey without_member(Survey survey)
{
  survey.member_id.clear();
  survey.last_name.clear();
  return survey;
}

int show_saved_message(const std::string& path, bool ask_next)
{
  Message message;
  message.title = "Survey Saved";
  message.text = "Survey saved to " + path +
                 "\n\nTo return to this survey later, select Open Survey under the File menu.";
  message.text_is_markup = false;
  message.type = Gtk::MESSAGE_INFO;
  message.standard_buttons = Gtk::BUTTONS_OK;
  message.modal = false;
  if (ask_next) {
    message.buttons = {{"Open Saved Survey", SurveyWindow::RESPONSE_OPEN_SURVEY},
                       {"Start New Survey", SurveyWindow::RESPONSE_NEW_SURVEY},
                       {"Quit Program", SurveyWindow::RESPONSE_QUIT}};
  }
  return run_message(message);
}

void go_on_after_save(SurveyWindow& window, int response)
{
  switch (response) {
  case SurveyWindow::RESPONSE_OPEN_SURVEY:
    window.select_and_open_saved_survey();
    break;
  case SurveyWindow::RESPONSE_NEW_SURVEY:
    window.on_action_FileNew("FileNew");
    break;
  case SurveyWindow::RESPONSE_QUIT:
    if (window.check_file_save_okay("exiting this program"))
      window.hide();
    break;
  default:
    break;
  }
}

int ask_about_unsaved_changes(const Glib::ustring& doing_what)
{
  Message message;
  message.title = "Survey Not Saved Yet!";
  message.text = "Survey has been changed without being saved!\nSave it before " + doing_what +
                 "?\nClick Save to save and proceed,\nNo to <b>abandon your survey</b>,\n"
                 "or Cancel to do nothing instead of " +
                 doing_what + ".";
  message.type = Gtk::MESSAGE_WARNING;
  message.buttons = {{"gtk-save", Gtk::RESPONSE_ACCEPT},
                     {"gtk-no", Gtk::RESPONSE_NO},
                     {"gtk-cancel", Gtk::RESPONSE_CANCEL}};
  return run_message(message);
}

} // namespace

Survey SurveyWindow::entered_survey() const
{
  Survey entered;
  for (const SurveyField& field : survey_fields()) {
    const bool has_input = field.kind != FieldKind::location;
    set_field_text(field, has_input ? fields.text(field) : survey.subregion, entered);
  }
  entered.bottom_time_confirmed = confirm_panel->confirm_bottom_time->get_active();
  return entered;
}

RetCode SurveyWindow::generate_xml_string(Glib::ustring& error_text, bool omit_member)
{
  platform = software_platform();
  const Survey entered = entered_survey();
  return build_document(omit_member ? without_member(entered) : entered, error_text);
}

RetCode SurveyWindow::build_document(Survey entered, Glib::ustring& error_text)
{
  error_text.clear();
  try {
    entered.species = species_sightings(survey, *reference_data.abundance_choices);
    survey.xml_current = survey_document(entered, platform);
    return RET_SUCCESS;
  } catch (...) {
    error_text = thrown_text("Unknown xml-generation error (sorry!)",
                             "Unknown xml-generation exception (sorry!)");
    return RET_FAILURE;
  }
}

Glib::ustring SurveyWindow::entered_text() const
{
  Survey entered = entered_survey();
  for (const auto& [id, abundance] : survey.abundances)
    entered.species.push_back({id, abundance, 0});
  return survey_document(entered, "");
}

RetCode SurveyWindow::do_save(MyApp::WhichDir which, DoSaveFlags flags)
{
  if (survey.subregion.empty())
    return titled_error(not_saved,
                        "Sorry, you must select a location before you can save a survey!");
  if (survey.is_uploaded)
    return titled_error(not_saved,
                        "This survey was already uploaded and cannot be changed offline.");
  if (!may_be_saved_without_its_year(*this))
    return RET_DECLINED;
  try {
    const Survey entered = entered_survey();
    Glib::ustring error_text;
    platform = software_platform();
    if (build_document(entered, error_text) != RET_SUCCESS)
      throw Glib::ustring(error_text);
    save_document(survey, my_app->get_survey_dir(which),
                  survey_base_name(file_name_parts(entered)));
    survey.unlisted_year.clear();
    start_panel->build_survey_model();
    if (flags != SAVE_QUIET)
      go_on_after_save(*this, show_saved_message(survey.filename, flags == SAVE_ASK_NEXT));
    return RET_SUCCESS;
  } catch (...) {
    const Glib::ustring reason = failure_text();
    return titled_error(not_saved, "FAILED to save survey to %s!\n%s",
                        escape_markup(survey.filename).c_str(), reason.c_str());
  }
}

bool SurveyWindow::file_needs_saving()
{
  // If no document can be generated, compare the entries instead.
  const Survey entered = entered_survey();
  Glib::ustring error_text;
  if (build_document(without_member(entered), error_text) != RET_SUCCESS)
    return !same_bytes(entered_text(), unwritable_as_opened);
  if (same_bytes(survey.xml_current, survey.xml_pristine))
    return false; // do not ask if only the details of the member have changed

  build_document(entered, error_text);
  return !same_bytes(survey.xml_current, survey.xml_last_saved);
}

bool SurveyWindow::check_file_save_okay(const Glib::ustring& doing_what)
{
  if (!file_needs_saving())
    return true;
  if (debug_level > 0)
    std::printf("check_file_save_okay(\"%s\"):\n    last saved = %s\n    now = %s\n",
                doing_what.c_str(), survey.xml_last_saved.c_str(), survey.xml_current.c_str());

  switch (ask_about_unsaved_changes(doing_what)) {
  case Gtk::RESPONSE_NO:
    discarded_text = entered_text();
    return true;
  case Gtk::RESPONSE_ACCEPT:
    return do_save(MyApp::WD_IN_PROGRESS, SAVE_NOTIFY) == RET_SUCCESS;
  default:
    return false;
  }
}

RetCode SurveyWindow::write_file(const std::string& path, const char* data, unsigned long size)
{
  try {
    replace_file(path, data, size, "");
    return RET_SUCCESS;
  } catch (...) {
    const Glib::ustring reason = failure_text();
    return error("FAILED to write to %s!\n%s", escape_markup(path).c_str(), reason.c_str());
  }
}
