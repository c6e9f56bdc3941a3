// Tests a disk that refuses data only when they are flushed, as with a full quota, a full network
// drive or a broken disk.
#include "store/saving-test.h"
#include "support/dialogs.h"
#include "ui/survey-window.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "faults/faulty-calls.h"

namespace fs = std::filesystem;

namespace {

using Names = std::vector<std::string>;

const auto in_progress = MyApp::WD_IN_PROGRESS;
const auto ready = MyApp::WD_READY_TO_UPLOAD;
constexpr int refusals[] = {EIO, ENOSPC, EDQUOT};

class FailedFlush : public SavingTest
{
public:
  void SetUp() override
  {
    SavingTest::SetUp();
    enter_survey();
    root = my_app->get_survey_dir(MyApp::WD_ROOT);
  }

  // The number of flushes of a first save: the file, then its directory.
  static constexpr int flushes_of_new_file = 2;

  void start_over() const
  {
    fs::remove_all(root);
    window->survey.filename.clear();
    window->survey.file_etag.clear();
    window->survey.xml_last_saved.clear();
  }

  // Saves while the `nth` flush fails. Returns the text of the dialog.
  std::string failure_of_save(MyApp::WhichDir which, int nth, int number) const
  {
    FaultyCalls faulty(root);
    faulty.fail_once(Call::fsync, nth, number);
    return failure_of_save(which);
  }
  std::string failure_of_save(MyApp::WhichDir which) const
  {
    RetCode result = RET_SUCCESS;
    const auto seen = answer_all_dialogs(
        Gtk::RESPONSE_OK, [&] { result = window->do_save(which, SurveyWindow::SAVE_QUIET); });
    EXPECT_EQ(RET_FAILURE, result);
    if (seen.size() != 1)
      return std::to_string(seen.size()) + " dialogs";
    EXPECT_EQ("ERROR: Survey NOT Saved!!!", seen[0].title);
    return seen[0].text.raw();
  }
  std::string expected_words(MyApp::WhichDir which, int number) const
  {
    return "FAILED to save survey to " + path_of(which, natural_name) +
           "!\nError writing to file: " + std::strerror(number);
  }

  Names natural_file() const { return {natural_name + ".MAVO-Survey"}; }

  std::string root;
};

} // namespace

TEST_F(FailedFlush, OfANewFileLeavesNoFileAndTheSurveyUnsaved)
{
  for (const int number : refusals) {
    for (int nth = 1; nth <= flushes_of_new_file; ++nth) {
      SCOPED_TRACE(std::string(std::strerror(number)) + " at flush " + std::to_string(nth));
      start_over();
      EXPECT_EQ(expected_words(in_progress, number), failure_of_save(in_progress, nth, number));
      EXPECT_EQ(Names(), names_in(in_progress));
      EXPECT_TRUE(window->file_needs_saving());

      save_quietly(*window, in_progress);
      EXPECT_EQ(natural_file(), names_in(in_progress));
      EXPECT_FALSE(window->file_needs_saving());
    }
  }
}

TEST_F(FailedFlush, OfANewFileLeavesNoFileIfTheSystemHasNoUnnamedFiles)
{
  FaultyCalls faulty(root);
  faulty.fail_once(Call::open, 1, EOPNOTSUPP);
  faulty.fail_always(Call::fsync, EIO);
  EXPECT_EQ(expected_words(in_progress, EIO), failure_of_save(in_progress));
  EXPECT_EQ(Names(), names_in(in_progress));
}

TEST_F(FailedFlush, OfAnExistingFileLeavesTheSurveyUnsavedAndTheNextSaveSucceeds)
{
  for (int nth = 1; nth <= 3; ++nth) { // the library's flush, then the file and its directory
    SCOPED_TRACE("flush " + std::to_string(nth));
    start_over();
    window->survey.abundances = {{10, 2}};
    save_quietly(*window, in_progress);
    window->survey.abundances = {{10, 3}};
    EXPECT_EQ(expected_words(in_progress, EIO), failure_of_save(in_progress, nth, EIO));
    EXPECT_EQ(natural_file(), names_in(in_progress));
    EXPECT_TRUE(window->file_needs_saving());

    window->survey.abundances = {{10, 1}};
    save_quietly(*window, in_progress);
    EXPECT_EQ(natural_file(), names_in(in_progress));
    EXPECT_EQ(window->survey.xml_current.raw(), read_file(window->survey.filename));
  }
}

TEST_F(FailedFlush, KeepsTheFileOfTheOldState)
{
  for (int nth = 1; nth <= flushes_of_new_file; ++nth) {
    start_over();
    save_quietly(*window, in_progress);
    const std::string saved = read_file(window->survey.filename);
    EXPECT_EQ(expected_words(ready, EDQUOT), failure_of_save(ready, nth, EDQUOT));
    EXPECT_EQ(Names(), names_in(ready));
    EXPECT_EQ(saved, read_file(path_of(in_progress, natural_name)));
  }
}

TEST_F(FailedFlush, OfADownloadIsReported)
{
  // FaultyCalls also watches the parent directory, because the code for plain POSIX creates new
  // files there.
  fs::create_directory(root + "/local");
  const std::string path = root + "/local/download";
  for (int nth = 1; nth <= flushes_of_new_file; ++nth) {
    RetCode result = RET_SUCCESS;
    const auto seen = answer_all_dialogs(Gtk::RESPONSE_OK, [&] {
      FaultyCalls faulty(root);
      faulty.fail_once(Call::fsync, nth, ENOSPC);
      result = window->write_file(path, "x", 1);
    });
    EXPECT_EQ(RET_FAILURE, result);
    ASSERT_EQ(1U, seen.size());
    EXPECT_EQ("FAILED to write to " + path + "!\nError writing to file: No space left on device",
              seen[0].text);
    EXPECT_FALSE(file_exists(path));
  }
}

TEST_F(FailedFlush, IsIgnoredIfTheFileSystemCannotFlush)
{
  for (const int number : {EINVAL, ENOTSUP}) {
    start_over();
    FaultyCalls faulty(root);
    faulty.fail_always(Call::fsync, number);
    save_quietly(*window, in_progress);
    EXPECT_EQ(natural_file(), names_in(in_progress));
    EXPECT_GT(faulty.count(Call::fsync), 0);
  }
}
