#include "faults/other-program.h"

#include "ui/survey-window.h"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <filesystem>

namespace fs = std::filesystem;

void in_another_program(const std::function<void()>& action, const std::function<void()>& meanwhile)
{
  std::fflush(nullptr);
  const pid_t process = fork();
  ASSERT_GE(process, 0);
  if (process == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    action();
    std::fflush(nullptr);
    _exit(testing::Test::HasFailure() ? 1 : 0);
  }
  meanwhile();
  int status = 0;
  EXPECT_EQ(process, waitpid(process, &status, 0));
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "the other program: " << status;
}

void TwoPrograms::SetUp()
{
  theirs = create_window();
  enter_survey();
  theirs->survey.abundances = {{10, 3}, {12, 1}};
  mine = create_window();
  enter_survey();
  my_text = text_of(*mine);
  their_text = text_of(*theirs);
}

std::string TwoPrograms::text_of(SurveyWindow& window)
{
  Glib::ustring error_text;
  EXPECT_EQ(RET_SUCCESS, window.generate_xml_string(error_text, false)) << error_text;
  return window.survey.xml_current.raw();
}

std::vector<std::string> TwoPrograms::files_that_are_neither()
{
  std::vector<std::string> others;
  for (const auto& entry : fs::recursive_directory_iterator(my_app->survey_root)) {
    if (entry.is_directory())
      continue;
    const std::string text = read_file(entry.path().string());
    if (text != my_text && text != their_text)
      others.push_back(entry.path().string() + ":\n" + text);
  }
  return others;
}

std::vector<std::string> TwoPrograms::texts_in(MyApp::WhichDir which) const
{
  const std::string directory = my_app->get_survey_dir(which) + "/";
  std::vector<std::string> texts;
  for (const auto& name : names_in(which))
    texts.push_back(read_file(directory + name));
  std::sort(texts.begin(), texts.end());
  return texts;
}
