#pragma once

#include "store/saving-test.h"
#include "support/dialogs.h"
#include "support/test-server.h"

#include <gtkmm/dialog.h>

#include <memory>
#include <string>
#include <vector>

// Short names for these tests: lists, the states of surveys, the answers to dialogs and some
// titles.
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

// A test of the network exchange, with a visible window, an empty store, no local data, and the
// project's own server.
class ServerTest : public SavingTest
{
public:
  void SetUp() override;

  // Starts a server with these options and lets the program use it.
  TestServer& serve(const std::vector<std::string>& options = {});
  // Lets the program use the server at this address: "http://host:port".
  void use_server_at(const std::string& address) const;

  // Enters a complete survey into the window. Its name is natural_name.
  void enter_complete_survey();
  // Writes a file to the directory of a state and returns its path.
  std::string put(MyApp::WhichDir which, const std::string& name, const std::string& text) const;

  // Returns the text about the second step, which ends each message of success.
  Glib::ustring second_step() const;
  // Fails the test unless the dialog is a message of success with a link to the online page and
  // buttons for the next steps.
  void expect_next_steps(const SeenDialog& seen) const;

  std::unique_ptr<TestServer> server;
};

// Returns the titles of dialogs, in order.
std::vector<Glib::ustring> titles_of(const std::vector<SeenDialog>& dialogs);
