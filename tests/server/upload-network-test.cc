#include "server/server-test.h"
#include "store/survey-file.h"
#include "support/main-loop.h"
#include "ui/survey-window.h"

#include <gdk/gdkkeysyms.h>

namespace {

const Names file = {"7.MAVO-Survey"};
const char* const unknown = "Failed to upload file: Unknown (error header missing)";

// Tests uploads over an unreliable network.
class UploadOverABadNetwork : public ServerTest
{
public:
  // Uploads a survey and expects one message of failure and an unchanged survey file.
  void expect_failure(const std::string& why, const Glib::ustring& text = unknown)
  {
    const Names uploaded_before = names_in(uploaded);
    const std::string path = put(ready, file.front(), survey);
    RetCode result = RET_SUCCESS;
    const SeenDialog seen = answer_next_dialog(ok, [&] { result = window->do_upload_file(path); });
    EXPECT_EQ(RET_FAILURE, result) << why;
    EXPECT_EQ("Upload Failed!", seen.title) << why;
    EXPECT_EQ(text, seen.text) << why;
    EXPECT_EQ(survey, read_file(path)) << why;
    EXPECT_EQ(file, names_in(ready)) << why;
    EXPECT_EQ(uploaded_before, names_in(uploaded)) << why;
  }

  // Uploads a survey and expects success.
  void expect_success(const std::string& why)
  {
    const std::string path = put(ready, file.front(), survey);
    expect_no_dialog([&] { EXPECT_EQ(RET_SUCCESS, window->do_upload_file(path)) << why; });
    EXPECT_EQ(Names(), names_in(ready)) << why;
    EXPECT_EQ(file, names_in(uploaded)) << why;
    EXPECT_EQ(survey, read_file(my_app->get_survey_dir(uploaded) + "/" + file.front())) << why;
    EXPECT_EQ(survey, read_file(server->uploads + file.front())) << why;
  }

  // Starts a server that answers successive requests with these behaviours.
  void serve_in_turn(const Names& specs)
  {
    Names options;
    for (const auto& spec : specs) {
      options.emplace_back("--upload");
      options.push_back(spec);
    }
    serve(options);
  }

  const std::string survey = SurveyFile().text();
};

} // namespace

TEST_F(UploadOverABadNetwork, KeepsTheSurveyForEachStatus)
{
  const Names specs = {"status=100", "status=101", "status=102", "status=200", "status=202",
                       "status=204", "status=206", "status=300", "status=301", "status=302",
                       "status=303", "status=304", "status=307", "status=308", "status=400",
                       "status=401", "status=403", "status=404", "status=405", "status=407",
                       "status=408", "status=413", "status=417", "status=422", "status=429",
                       "status=500", "status=502", "status=503", "status=504", "status=599",
                       "status=999"};
  serve_in_turn(specs);
  for (const auto& spec : specs)
    expect_failure(spec);
  EXPECT_EQ(specs.size(), server->log().size()) << "no request was repeated";
}

TEST_F(UploadOverABadNetwork, KeepsTheSurveyIfTheServerRequiresAPassword)
{
  serve({"--upload", "status=401,header=WWW-Authenticate:Basic realm=\"divers\""});
  expect_failure("a password");
}

TEST_F(UploadOverABadNetwork, KeepsTheSurveyIfTheConnectionBreaks)
{
  const Names specs = {"close=before", "close=before,delay=100", "garbage", "garbage,delay=100",
                       "close=middle,status=500"};
  serve_in_turn(specs);
  for (const auto& spec : specs)
    expect_failure(spec);
  EXPECT_EQ(specs.size(), server->log().size()) << "no request was repeated";
}

TEST_F(UploadOverABadNetwork, IsRepeatedWithoutHarmIfOnlyTheAnswerWasLost)
{
  serve_in_turn({"without=X-Survey-Upload-Successful,status=201", "ok"});
  expect_failure("the server has it", "Confusion: response is 201 but success header is missing!?");
  EXPECT_EQ(survey, read_file(server->uploads + file.front()));
  expect_success("again");
}

TEST_F(UploadOverABadNetwork, SucceedsIfOnlyTheBodyOfTheAnswerIsIncomplete)
{
  serve({"--upload", "close=middle"});
  expect_success("only the headers are of interest");
}

TEST_F(UploadOverABadNetwork, WaitsForASlowAnswer)
{
  const Names specs = {"trickle", "delay=300", "delay=100,trickle"};
  serve_in_turn(specs);
  for (const auto& spec : specs)
    expect_success(spec);
}

TEST_F(UploadOverABadNetwork, DiscardsKeysThatArePressedMeanwhile)
{
  int keys = 0;
  window->signal_key_press_event().connect(
      [&keys](GdkEventKey*) {
        ++keys;
        return true;
      },
      false);
  const auto press_return = [this] {
    GdkDisplay* const display = gdk_display_get_default();
    GdkEvent* const event = gdk_event_new(GDK_KEY_PRESS);
    event->key.window = GDK_WINDOW(g_object_ref(window->get_window()->gobj()));
    event->key.keyval = GDK_KEY_Return;
    gdk_event_set_device(event, gdk_seat_get_keyboard(gdk_display_get_default_seat(display)));
    gdk_display_put_event(display, event);
    gdk_event_free(event);
  };
  serve({"--upload", "delay=100"});
  press_return();
  expect_success("a key in the queue of events");
  settle();
  EXPECT_EQ(0, keys);
  press_return();
  settle();
  EXPECT_EQ(1, keys) << "a later one counts";
}

TEST_F(UploadOverABadNetwork, AcceptsAnAnswerWithALongHeader)
{
  serve_in_turn({"long-header=60000", "long-header=60000,status=500,error=No room."});
  expect_success("long header");
  expect_failure("long header", "Failed to upload file: No room.");
}

TEST_F(UploadOverABadNetwork, KeepsTheSurveyIfAHeaderIsTooLong)
{
  serve({"--upload", "long-header=3000000"});
  expect_failure("a header of megabytes");
}

TEST_F(UploadOverABadNetwork, DoesNotFollowARedirect)
{
  // That server would answer a request without a survey with success.
  const TestServer elsewhere({"--app-query", "status=201,header=X-Survey-Upload-Successful:1"});
  const std::string address = elsewhere.address() + "/offline-data-entry/?get-version=mac";
  Names specs;
  for (const char* status : {"301", "302", "303", "307", "308"})
    specs.push_back("redirect=" + address + ",status=" + status);
  specs.push_back("redirect=/dataentry/upload-survey.php");
  specs.emplace_back("redirect=nowhere:at all");
  serve_in_turn(specs);
  for (const auto& spec : specs)
    expect_failure(spec);
  EXPECT_EQ(Names(), elsewhere.log());
  EXPECT_EQ(specs.size(), server->log().size());
}

TEST_F(UploadOverABadNetwork, KeepsTheSurveyIfThereIsNoServer)
{
  serve().stop();
  expect_failure("connection refused");
  my_app->upload_url = "http://no-such-host.invalid/dataentry/upload-survey.php";
  expect_failure("no such name");
}

TEST_F(UploadOverABadNetwork, KeepsTheSurveyIfTheAddressIsInvalid)
{
  for (const char* address : {"", "nowhere", "http://", "http:///dataentry", "http://[::1",
                              "/dataentry/upload-survey.php", "ftp://127.0.0.1/",
                              "file:///dev/null", "http://a b/", "http://\xff/"}) {
    my_app->upload_url = address;
    expect_failure(address);
  }
}

TEST_F(UploadOverABadNetwork, ReportsTheFailureAndThatTheCheckForUpdatesFailed)
{
  serve().stop();
  const std::string path = put(ready, file.front(), survey);
  const auto seen = answer_dialogs({ok, ok}, [&] { window->do_upload_single(path); });
  EXPECT_EQ((Titles{"Upload Failed!", "Can't reach MAVO server"}), titles_of(seen));
  EXPECT_EQ(survey, read_file(path));
}

TEST_F(UploadOverABadNetwork, MovesEachSurveyOfABatchToInProgress)
{
  const Names specs = {"close=before", "close=middle,status=502", "garbage", "status=503",
                       "redirect=http://127.0.0.1:1/"};
  serve_in_turn(specs);
  Names names;
  for (std::size_t i = 0; i < specs.size(); ++i) {
    names.push_back(std::to_string(i) + ".MAVO-Survey");
    put(ready, names.back(), survey);
  }
  const auto seen = answer_all_dialogs(
      Gtk::RESPONSE_ACCEPT, [&] { window->do_upload_all_ready(my_app->get_ready_survey_list()); });
  const Glib::ustring failed = "Upload Failed!";
  const Glib::ustring go_on = "Continue uploading surveys?";
  EXPECT_EQ((Titles{failed, go_on, failed, go_on, failed, go_on, failed, go_on, failed,
                    "Upload Failed", "Program and Data are Up To Date"}),
            titles_of(seen));
  EXPECT_EQ(Names(), names_in(ready));
  EXPECT_EQ(Names(), names_in(uploaded));
  EXPECT_EQ(names, names_in(in_progress));
  for (const auto& name : names)
    EXPECT_EQ(survey, read_file(my_app->get_survey_dir(in_progress) + "/" + name));
}
