#include "server/server-test.h"
#include "store/survey-file.h"
#include "support/memory.h"
#include "ui/survey-window.h"

#include <string>

namespace {

// Returns a survey that is so large that a leak of one copy is measurable.
std::string large_survey()
{
  return SurveyFile().text() + "<!--" + std::string(50000, 'x') + "-->";
}

} // namespace

// The server alternately accepts and refuses surveys.
TEST_F(ServerTest, KeepsNoMemoryOfUploads)
{
  std::vector<std::string> options;
  for (int i = 0; i < 200; ++i) {
    options.emplace_back("--upload");
    options.emplace_back(i % 20 == 0 ? "status=422,error=No." : "ok");
  }
  serve(options);
  const std::string text = large_survey();
  const auto upload = [&](int times) {
    answer_all_dialogs(Gtk::RESPONSE_OK, [&] {
      for (int i = 0; i < times; ++i)
        window->do_upload_file(put(MyApp::WD_READY_TO_UPLOAD, "7.MAVO-Survey", text));
    });
  };
  upload(50);
  const long before = memory_now_kb();
  upload(150);
  EXPECT_GT(before + 4096 + memory_kept_back_kb, memory_now_kb());
  EXPECT_EQ(200U, server->log().size());
  EXPECT_EQ(1U, names_in(MyApp::WD_UPLOADED).size());
}
