#pragma once

#include "store/saving-test.h"
#include "support/dialogs.h"
#include "support/test-server.h"

#include <gtkmm/dialog.h>

#include <memory>
#include <string>
#include <vector>

// The words of these tests: lists, the states of surveys, the answers to dialogs
// and the titles of some.
using Names = std::vector<std::string>;
using Titles = std::vector<Glib::ustring>;
constexpr auto in_progress = MyApp::WD_IN_PROGRESS;
constexpr auto ready = MyApp::WD_READY_TO_UPLOAD;
constexpr auto uploaded = MyApp::WD_UPLOADED;
constexpr int ok = Gtk::RESPONSE_OK;
constexpr int yes = Gtk::RESPONSE_ACCEPT; // also Save, and the button of the new-program dialog
constexpr int no = Gtk::RESPONSE_NO;
constexpr int cancel = Gtk::RESPONSE_CANCEL;
constexpr int closed = Gtk::RESPONSE_DELETE_EVENT;
constexpr const char* succeeded = "Upload Successful";
constexpr const char* upload_all = "Upload all surveys that are ready?";
constexpr const char* up_to_date = "Program and Data are Up To Date";

// A test of what goes over the network: a window on the screen, an empty store,
// no local data, and the project's own server.
class ServerTest : public SavingTest
{
public:
  void SetUp() override;

  // Starts a server with these options; the program asks it from then on.
  TestServer& serve(const std::vector<std::string>& options = {});
  // Lets the program ask there: "http://host:port".
  void ask_server_at(const std::string& address) const;

  // Puts a survey into the window that may be uploaded; its name is natural_name.
  void enter_complete_survey();
  // Writes a file into the directory of a state and gives its path.
  std::string put(MyApp::WhichDir which, const std::string& name, const std::string& text) const;

  // What both messages of success end with.
  Glib::ustring second_step() const;
  // Fails the test unless a message of success is shown as one, with a link to the
  // online page and with what can be done next.
  void expect_next_steps(const SeenDialog& seen) const;

  std::unique_ptr<TestServer> server;
};

// The titles of dialogs, in order.
std::vector<Glib::ustring> titles_of(const std::vector<SeenDialog>& dialogs);
