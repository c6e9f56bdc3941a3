#pragma once

#include "server/server-test.h"
#include "support/dialogs.h"
#include "ui/survey-window.h"

#include <string>
#include <vector>

// A test of checks for updates. By default the server offers the data in use.
class UpdateTest : public ServerTest
{
public:
  // Lets the server offer other data than those in use. They have another species, 13.
  void offer_new_data(const std::string& timestamp = "20220202000000") const;

  // Lets `window` check for updates, and answers its dialogs in turn.
  RetCode check(const std::vector<int>& answers,
                SurveyWindow::ResponseCode next = SurveyWindow::RESPONSE_NONE,
                const char* action = nullptr);
  // Returns "title: text" of each dialog.
  std::vector<std::string> messages() const;

  std::vector<SeenDialog> seen; // the dialogs of the last check

  const std::string up_to_date =
      "Program and Data are Up To Date: You are running the best available version of the "
      "program,\nand your data files are up to date.\nThanks for checking!";
  const std::string installed =
      "Data File Update Successful: Data files successfully downloaded and installed.";
  const std::string no_contact = "Can't reach MAVO server: Failed to contact MAVO server";
  const std::string no_consistent_contact =
      "Can't reach MAVO server: Failed to consistently contact MAVO server";
};
