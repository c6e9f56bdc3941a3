#include "core/version.h"
#include "data/data-file-info.h"
#include "server/update-test.h"
#include "support/main-loop.h"
#include "support/memory.h"
#include "support/output.h"
#include "ui/start-panel.h"
#include "ui/survey-panel1.h"

namespace {

const int close_frame = Gtk::RESPONSE_DELETE_EVENT;
const auto no_next = SurveyWindow::RESPONSE_NONE;
const auto quit = SurveyWindow::RESPONSE_QUIT;

using Lines = std::vector<std::string>;
using Labels = std::vector<Glib::ustring>;
using Responses = std::vector<int>;

class UpdateCheck : public UpdateTest
{
public:
  std::string news_of_program(const std::string& version) const
  {
    return std::string("New program version is available: You are running version ") +
           BuildInfo::version_str + " of this program, but version " + version +
           "\nis now available at " + server->address() + "/offline-data-entry/";
  }

  const std::string news_of_data =
      "New data files are available: You are using data files from January 1, 2021, but data "
      "files updated February 2, 2022 are now available for download.\nDownload them now and "
      "restart the program?\nClick Yes to download the new data files";
  const std::string or_cancel = ",\nor click Cancel to do nothing at this time.";

  // Checks for updates without contact to the server, and then ends the program. Expects one
  // message and hidden windows. Shows the window again.
  void expect_no_contact(const std::string& why)
  {
    EXPECT_EQ(RET_FAILURE, check({ok}, quit)) << why;
    EXPECT_EQ(Lines{no_contact}, messages()) << why;
    EXPECT_FALSE(window->get_visible()) << why;
    window->show();
  }
};

} // namespace

// --- the messages to the user ---

TEST_F(UpdateCheck, ReportsWhatIsNewAndWhatFailsInEachCase)
{
  const struct {
    const char* why;
    Lines options;
    const char* new_data; // their timestamp; null: the data in use
    Responses answers;
    Lines titles;
    RetCode result;
  } cases[] = {
      {"program query fails",
       {"--app-query", "status=500"},
       "2022",
       {ok},
       {"Can't reach MAVO server"},
       RET_FAILURE},
      {"data query fails",
       {"--data-query", "status=500"},
       "2022",
       {ok},
       {"Can't reach MAVO server"},
       RET_FAILURE},
      {"program differs, data query fails",
       {"--app-version", "9", "--data-query", "status=500"},
       "2022",
       {yes, ok},
       {"New program version is available", "Can't reach MAVO server"},
       RET_FAILURE},
      {"nothing differs", {}, nullptr, {ok}, {"Program and Data are Up To Date"}, RET_SUCCESS},
      {"nothing differs, closed",
       {},
       nullptr,
       {close_frame},
       {"Program and Data are Up To Date"},
       RET_SUCCESS},
      {"program differs",
       {"--app-version", "9"},
       nullptr,
       {yes},
       {"New program version is available"},
       RET_SUCCESS},
      {"program differs, closed",
       {"--app-version", "9"},
       nullptr,
       {close_frame},
       {"New program version is available"},
       RET_DECLINED},
      {"an older program",
       {"--app-version", "0.1"},
       nullptr,
       {yes},
       {"New program version is available"},
       RET_SUCCESS},
      {"data differ, cancelled",
       {},
       "2022",
       {cancel},
       {"New data files are available"},
       RET_DECLINED},
      {"data differ, closed",
       {},
       "2022",
       {close_frame},
       {"New data files are available"},
       RET_DECLINED},
      {"both differ",
       {"--app-version", "9"},
       "2022",
       {close_frame, cancel},
       {"New program version is available", "New data files are available"},
       RET_DECLINED},
      {"both differ, installed",
       {"--app-version", "9"},
       "2022",
       {close_frame, yes, ok},
       {"New program version is available", "New data files are available",
        "Data File Update Successful"},
       RET_DATA_INSTALLED},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    serve(c.options);
    if (c.new_data)
      offer_new_data(c.new_data);
    EXPECT_EQ(c.result, check(c.answers));
    Lines titles;
    for (const auto& dialog : seen) {
      titles.push_back(dialog.title);
      EXPECT_TRUE(dialog.has_icon);
    }
    EXPECT_EQ(c.titles, titles);
  }
}

TEST_F(UpdateCheck, DoesNotReportCurrentVersionsIfTheUserWasDoingSomethingElse)
{
  serve();
  EXPECT_EQ(RET_SUCCESS, check({}, no_next, "upload"));
}

TEST_F(UpdateCheck, AlsoOffersDataThatAreOlderThanThoseInUse)
{
  serve();
  offer_new_data("2019");
  EXPECT_EQ(RET_DECLINED, check({cancel}));
  EXPECT_EQ(Lines{news_of_data + or_cancel}, messages());
}

TEST_F(UpdateCheck, ReportsThatAllIsUpToDateWithOneButton)
{
  serve();
  check({ok});
  EXPECT_EQ(Lines{up_to_date}, messages());
  EXPECT_EQ(Responses{Gtk::RESPONSE_OK}, seen.at(0).responses);
  EXPECT_EQ(Gtk::MESSAGE_INFO, seen.at(0).message_type);
}

TEST_F(UpdateCheck, ShowsTheAddressOfTheNewProgram)
{
  serve({"--app-version", "1.2 beta"});
  check({yes});
  EXPECT_EQ(Lines{news_of_program("1.2 beta")}, messages());
  EXPECT_EQ(Labels{"gtk-ok"}, seen.at(0).buttons);
  EXPECT_EQ(Responses{yes}, seen.at(0).responses);
  EXPECT_EQ(Gtk::MESSAGE_INFO, seen.at(0).message_type);
  const std::string url = server->address() + "/offline-data-entry/";
  EXPECT_NE(std::string::npos,
            seen.at(0).markup.raw().find("<a href=\"" + url + "\">" + url + "</a>"));
}

TEST_F(UpdateCheck, AsksWhetherToContinueWithTheOldProgram)
{
  const struct {
    int answer;
    RetCode result;
  } cases[] = {{yes, RET_SUCCESS}, {cancel, RET_DECLINED}, {close_frame, RET_DECLINED}};
  serve({"--app-version", "9"});
  for (const auto& c : cases) {
    EXPECT_EQ(c.result, check({c.answer}, no_next, "upload <b>all</b>")) << c.answer;
    EXPECT_EQ(Lines{news_of_program("9") +
                    "\nDo you want to continue anyway?\nClick Yes to upload all" + or_cancel},
              messages());
    EXPECT_EQ((Labels{"gtk-yes", "gtk-cancel"}), seen.at(0).buttons);
    EXPECT_EQ((Responses{yes, cancel}), seen.at(0).responses);
  }
}

TEST_F(UpdateCheck, OffersNewData)
{
  serve();
  offer_new_data();
  check({cancel});
  EXPECT_EQ(Lines{news_of_data + or_cancel}, messages());
  EXPECT_EQ((Labels{"gtk-yes", "gtk-cancel"}), seen.at(0).buttons);
  EXPECT_EQ((Responses{yes, cancel}), seen.at(0).responses);
  EXPECT_EQ(Gtk::MESSAGE_INFO, seen.at(0).message_type);
}

TEST_F(UpdateCheck, OffersNewDataOrTheActionThatTheUserWanted)
{
  const struct {
    const char* version;
    Responses answers;
    RetCode result;
  } cases[] = {
      {BuildInfo::version_str, {no}, RET_SUCCESS},
      {BuildInfo::version_str, {cancel}, RET_DECLINED},
      {BuildInfo::version_str, {close_frame}, RET_DECLINED},
      {"9", {yes, no}, RET_SUCCESS},
      {"9", {cancel, no}, RET_DECLINED}, // the user declined an earlier question
  };
  for (const auto& c : cases) {
    serve({"--app-version", c.version});
    offer_new_data();
    EXPECT_EQ(c.result, check(c.answers, no_next, "upload"));
    EXPECT_EQ(news_of_data + " and not upload,\nClick No to upload" + or_cancel, messages().back());
    EXPECT_EQ((Labels{"gtk-yes", "gtk-no", "gtk-cancel"}), seen.back().buttons);
    EXPECT_EQ((Responses{yes, no, cancel}), seen.back().responses);
  }
}

// --- texts of the server as markup ---

TEST_F(UpdateCheck, ShowsOddAddressesAndVersionsReadably)
{
  const struct {
    const char* version;
    const char* url;
    const char* shown_version;
    const char* shown_url;
    const char* address; // the target of the link
  } cases[] = {
      {"2", "http://a.example/?b=1&c=2", "2", "http://a.example/?b=1&c=2",
       "http://a.example/?b=1&c=2"},
      {"2", "http://a.example/?b=1&amp;c=2", "2", "http://a.example/?b=1&c=2",
       "http://a.example/?b=1&c=2"},
      {"2", "http://a.example/\"b\"<c>'", "2", "http://a.example/\"b\"<c>'",
       "http://a.example/\"b\"<c>'"},
      {"<b>2", "http://a.example/", "<b>2", "http://a.example/", "http://a.example/"},
      {"2 & 3", "http://a.example/", "2 & 3", "http://a.example/", "http://a.example/"},
      {"<i>2</i>", "http://a.example/", "2", "http://a.example/", "http://a.example/"},
      {"2 \xff", "http://a.example/\xff", "2 \ufffd", "http://a.example/\ufffd",
       "http://a.example/\ufffd"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.version) + " at " + c.url);
    serve({"--app-version", c.version, "--app-url", c.url});
    check({yes});
    EXPECT_EQ(std::string("You are running version ") + BuildInfo::version_str +
                  " of this program, but version " + c.shown_version + "\nis now available at " +
                  c.shown_url,
              seen.at(0).text.raw());
    EXPECT_NE(std::string::npos, seen.at(0).markup.raw().find("<a href=\"")) << "a link";
  }
}

TEST_F(UpdateCheck, ShowsOddDatesOfDataReadably)
{
  const struct {
    const char* updated;
    const char* shown;
  } cases[] = {
      {"May <1", "May <1"}, {"<b>May</b> & June", "<b>May</b> & June"}, {"<b>May</b>", "May"}};
  for (const auto& c : cases) {
    serve();
    write_file(server->data + "data-file-info.txt",
               std::string("timestamp=3\nupdated=") + c.updated + "\n");
    check({cancel});
    EXPECT_NE(std::string::npos, seen.at(0).text.raw().find(std::string("but data files updated ") +
                                                            c.shown + " are now available"))
        << seen.at(0).text;
  }
}

// --- failures ---

TEST_F(UpdateCheck, TreatsAnAnswerWithoutAHeaderAsNoContact)
{
  for (const char* header : {"X-Current-App-Version-Is", "X-Download-App-From"}) {
    serve({"--app-query", std::string("without=") + header});
    expect_no_contact(header);
    EXPECT_EQ(1U, server->log().size()) << "no query for the data";
  }
  for (const char* header :
       {"X-Current-Data-Version-Is", "X-Download-Data-Files-From", "X-Data-Last-Updated-Is"}) {
    serve({"--data-query", std::string("without=") + header});
    EXPECT_EQ(RET_FAILURE, check({ok})) << header;
    EXPECT_EQ(Lines{no_consistent_contact}, messages()) << header;
  }
}

TEST_F(UpdateCheck, ReportsEveryFailureOnceAndContinues)
{
  for (const char* spec :
       {"close=before", "garbage", "status=201", "status=204", "status=304", "status=400",
        "status=404", "status=500", "status=503", "status=999", "long-header=1000000",
        "redirect=/nowhere", "redirect=/offline-data-entry/?get-version=mac",
        "redirect=http://127.0.0.1:1/", "redirect=nonsense:"}) {
    serve({"--app-query", spec});
    expect_no_contact(spec);
    serve({"--data-query", spec});
    EXPECT_EQ(RET_FAILURE, check({ok}, quit)) << spec;
    EXPECT_EQ(Lines{no_consistent_contact}, messages()) << spec;
    EXPECT_FALSE(window->get_visible()) << spec;
    window->show();
  }
}

TEST_F(UpdateCheck, ReportsOnceThatThereIsNoServer)
{
  serve().stop();
  expect_no_contact("refused");
  for (const char* address :
       {"", "not an address", "http://", "http://[", "http://a b/", "file:///etc/passwd"}) {
    use_server_at(address);
    expect_no_contact(address);
  }
}

TEST_F(UpdateCheck, AcceptsAnAnswerThatIsSlowOrEndsAfterItsHeaders)
{
  serve({"--app-query", "trickle", "--data-query", "close=middle"});
  EXPECT_EQ(RET_SUCCESS, check({ok}));
  EXPECT_EQ(Lines{up_to_date}, messages());
}

TEST_F(UpdateCheck, AcceptsAnAnswerWithALongHeader)
{
  serve({"--app-query", "long-header=8000"});
  EXPECT_EQ(RET_SUCCESS, check({ok}));
}

TEST_F(UpdateCheck, FollowsTheServerToAnotherAddress)
{
  const TestServer elsewhere({"--app-version", "9"});
  serve(
      {"--app-query", "redirect=" + elsewhere.address() + "/offline-data-entry/?get-version=mac"});
  EXPECT_EQ(RET_SUCCESS, check({yes}));
  EXPECT_EQ("New program version is available", seen.at(0).title);
}

// --- requests and traces ---

TEST_F(UpdateCheck, AsksForTheProgramAndThenForTheData)
{
  serve();
  check({ok});
  EXPECT_EQ((Lines{"GET /offline-data-entry/?get-version=mac 200",
                   "GET /offline-data-entry/?get-version=data-files 200"}),
            server->log());
}

TEST_F(UpdateCheck, TracesBothQueries)
{
  serve({"--app-url", "http://a.example/"});
  const std::string url = my_app->version_query_url;
  EXPECT_EQ("version query response code is 200\n"
            "GET " +
                url + "mac returned 200, version " + BuildInfo::version_str +
                ", url http://a.example/\n"
                "data version query response code is 200\n"
                "GET " +
                url +
                "data-files returned 200, version 20210101000000, "
                "last updated January 1, 2021, url " +
                server->address() + "/offline-data-entry/current-offline-data.tar.bz2\n",
            output_of(1, [this] { check({ok}); }));
  EXPECT_EQ("", output_of(0, [this] { check({ok}); }));
}

TEST_F(UpdateCheck, TracesMissingHeaders)
{
  serve({"--app-query", "status=404,without=X-Current-App-Version-Is,without=X-Download-App-From"});
  const std::string url = my_app->version_query_url;
  EXPECT_EQ("version query response code is 404\n"
            "GET " +
                url + "mac returned 404, version (none), url (none)\n",
            output_of(1, [this] { check({ok}); }));

  serve({"--app-url", "a:", "--data-query",
         "without=X-Current-Data-Version-Is,without=X-Download-Data-Files-From,"
         "without=X-Data-Last-Updated-Is"});
  const std::string traced = output_of(1, [this] { check({ok}); });
  EXPECT_NE(std::string::npos, traced.find("data-files returned 200, version (none), last updated "
                                           "(unknown), url (none)\n"))
      << traced;
}

TEST_F(UpdateCheck, LogsTheWholeExchangeFromLevelTwoOn)
{
  serve();
  const std::string header = "X-Current-App-Version-Is: ";
  EXPECT_EQ(std::string::npos, output_of(1, [this] { check({ok}); }).find(header));
  EXPECT_NE(std::string::npos, output_of(2, [this] { check({ok}); }).find(header));
}

// --- the ways to start a check ---

TEST_F(UpdateCheck, AsksAboutUnsavedChangesAtEachStartOfACheck)
{
  const struct {
    const char* name;
    std::function<void()> start;
  } ways[] = {
      {"menu", [this] { window->actions.at("HelpCheckForUpdates")->activate(); }},
      {"direct", [this] { window->manual_check_for_updates(); }},
      {"button", [this] { window->start_panel->updates_button->clicked(); }},
  };
  serve();
  enter_survey();
  const std::string question =
      "Survey has been changed without being saved!\nSave it before checking for updates?\n"
      "Click Save to save and proceed,\nNo to abandon your survey,\n"
      "or Cancel to do nothing instead of checking for updates.";
  std::size_t requests = 0;
  for (const auto& way : ways) {
    SCOPED_TRACE(way.name);
    EXPECT_EQ(question, answer_next_dialog(cancel, way.start).text.raw());
    EXPECT_EQ(requests, server->log().size()) << "the server got a request";
    seen = answer_dialogs({no, ok}, way.start);
    EXPECT_EQ(up_to_date, messages().back());
    requests += 2;
    EXPECT_EQ(requests, server->log().size());
  }
  for (const auto& way : ways) {
    choose(*window->survey_panel1->month, way.name == ways[1].name ? "May" : "April");
    seen = answer_dialogs({yes, ok, ok}, way.start);
    EXPECT_EQ("Survey Saved", seen.at(1).title);
    EXPECT_EQ(up_to_date, messages().back());
    answer_dialogs({ok}, way.start); // there are no unsaved changes any more
  }
  EXPECT_TRUE(window->get_visible());
}

// --- many checks ---

TEST_F(UpdateCheck, UsesNoMoreMemoryWithEachCheck)
{
  constexpr int checks = 100;
  serve();
  const auto check_often = [this] {
    for (int i = 0; i < checks; ++i)
      expect_no_dialog([this] { window->check_for_updates("upload", no_next); });
  };
  check_often();
  const long before = memory_peak_kb();
  check_often();
  EXPECT_GT(1024L + memory_kept_back_kb, memory_peak_kb() - before);
}
