#include "core/version.h"
#include "server/server-test.h"
#include "support/dialogs.h"
#include "ui/survey-window.h"

namespace {

using UpdateCheck = ServerTest;

} // namespace

TEST_F(UpdateCheck, SaysThatAllIsUpToDate)
{
  serve();
  const SeenDialog seen = answer_next_dialog(Gtk::RESPONSE_OK, [this] {
    EXPECT_EQ(RET_SUCCESS, window->check_for_updates(nullptr, SurveyWindow::RESPONSE_NONE));
  });
  EXPECT_EQ("Program and Data are Up To Date", seen.title.raw());
}
