#include "server/update-test.h"

void UpdateTest::offer_new_data(const std::string& timestamp) const
{
  const std::string species = "PAC-species-info.csv";
  write_file(server->data + "data-file-info.txt",
             "version=1\ntimestamp=" + timestamp + "\nupdated=February 2, 2022\n");
  write_file(server->data + species, read_file(server->data + species) +
                                         "13,Hexagrammos stelleri,Whitespotted Greenling,F2,0,0\n");
}

RetCode UpdateTest::check(const std::vector<int>& answers, SurveyWindow::ResponseCode next,
                          const char* action)
{
  RetCode result = RET_INTERNAL_ERROR;
  seen = answer_dialogs(answers, [&] { result = window->check_for_updates(action, next); });
  return result;
}

std::vector<std::string> UpdateTest::messages() const
{
  std::vector<std::string> lines;
  for (const auto& dialog : seen)
    lines.push_back(dialog.title + ": " + dialog.text);
  return lines;
}
