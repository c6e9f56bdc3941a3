#include "support/test-server.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "tools/raw-exchange.h"

namespace {

const char* const success = "X-Survey-Upload-Successful";
const char* const reason = "X-Survey-Upload-Error";

std::set<std::string> names_in(const std::string& dir)
{
  std::set<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(dir))
    names.insert(entry.path().filename().string());
  return names;
}

std::string form_data(const std::string& parameters)
{
  return "form-data; name=\"survey-file\"; " + parameters;
}

} // namespace

TEST(SurveyServerUploads, StoresASurveyByItsNameByteForByte)
{
  const TestServer server;
  Upload upload;
  upload.bytes = Upload::survey("Pe\xc3\xb1"
                                "a\r\n\n");
  const std::string answer = send_upload(server, upload);
  EXPECT_EQ(201, status_of(answer)) << answer;
  EXPECT_NE("(none)", header_of(answer, success));
  EXPECT_EQ("(none)", header_of(answer, reason));
  EXPECT_EQ(upload.bytes, read_file(server.uploads + "a.MAVO-Survey"));
  EXPECT_EQ(std::set<std::string>{"a.MAVO-Survey"}, names_in(server.uploads));
}

TEST(SurveyServerUploads, AcceptsTheSameBytesAgainButStoresThemOnce)
{
  const TestServer server;
  for (int time = 0; time < 3; ++time)
    EXPECT_EQ(201, status_of(send_upload(server)));
  EXPECT_EQ(std::set<std::string>{"a.MAVO-Survey"}, names_in(server.uploads));
}

TEST(SurveyServerUploads, StoresDifferentBytesWithTheSameNameInAnotherFile)
{
  const TestServer server;
  const std::string versions[] = {"first", "second", "third", "second"};
  for (const auto& version : versions) {
    Upload upload;
    upload.bytes = Upload::survey(version);
    EXPECT_EQ(201, status_of(send_upload(server, upload)));
  }
  const std::set<std::string> expected = {"a.MAVO-Survey", "a-2.MAVO-Survey", "a-3.MAVO-Survey"};
  EXPECT_EQ(expected, names_in(server.uploads));
  EXPECT_EQ(Upload::survey("first"), read_file(server.uploads + "a.MAVO-Survey"));
  EXPECT_EQ(Upload::survey("second"), read_file(server.uploads + "a-2.MAVO-Survey"));
  EXPECT_EQ(Upload::survey("third"), read_file(server.uploads + "a-3.MAVO-Survey"));
}

TEST(SurveyServerUploads, UnderstandsEveryFormOfAFileName)
{
  const struct {
    const char* parameters;
    const char* name;
  } cases[] = {
      {R"(filename="1234-PNW-20210630.MAVO-Survey")", "1234-PNW-20210630.MAVO-Survey"},
      {R"(filename=plain.MAVO-Survey)", "plain.MAVO-Survey"},
      {R"(filename*=UTF-8''Pe%C3%B1a%20%26%20co.MAVO-Survey)", "Peña & co.MAVO-Survey"},
      {R"(filename="with \"quotes\".xml")", "with \"quotes\".xml"},
      {R"(filename="no extension")", "no extension"},
  };
  for (const auto& c : cases) {
    const TestServer server;
    Upload upload;
    upload.disposition = form_data(c.parameters);
    EXPECT_EQ(201, status_of(send_upload(server, upload))) << c.parameters;
    EXPECT_EQ(std::set<std::string>{c.name}, names_in(server.uploads)) << c.parameters;
  }
}

TEST(SurveyServerUploads, RefusesUnsuitableNamesAndTypesWithAReason)
{
  const TestServer server;
  const struct {
    const char* why;
    int status;
    Upload upload;
  } cases[] = {
      {"no file name", 400, {Upload::survey(), "form-data; name=\"survey-file\""}},
      {"empty name", 400, {Upload::survey(), form_data("filename=\"\"")}},
      {"the directory itself", 400, {Upload::survey(), form_data("filename=\".\"")}},
      {"the directory above", 400, {Upload::survey(), form_data("filename=\"..\"")}},
      {"a way out", 400, {Upload::survey(), form_data("filename=\"../a.MAVO-Survey\"")}},
      {"absolute", 400, {Upload::survey(), form_data("filename=\"/tmp/a.MAVO-Survey\"")}},
      {"a hidden way out", 400, {Upload::survey(), form_data("filename*=UTF-8''..%2Fa")}},
      {"too long", 400, {Upload::survey(), form_data("filename=" + std::string(300, 'x'))}},
      {"other control", 400, {Upload::survey(), "form-data; name=\"file\"; filename=\"a\""}},
      {"no control", 400, {Upload::survey(), "form-data; filename=\"a\""}},
      {"other type", 415, {Upload::survey(), form_data("filename=\"a\""), "text/plain"}},
      {"no type", 415, {Upload::survey(), form_data("filename=\"a\""), ""}},
  };
  for (const auto& c : cases) {
    const std::string answer = send_upload(server, c.upload);
    EXPECT_EQ(c.status, status_of(answer)) << c.why;
    EXPECT_NE("(none)", header_of(answer, reason)) << c.why;
    EXPECT_EQ("(none)", header_of(answer, success)) << c.why;
  }
  EXPECT_TRUE(names_in(server.uploads).empty());
}

TEST(SurveyServerUploads, AcceptsOnlyASurveyDocument)
{
  const struct {
    const char* why;
    int status;
    const char* bytes;
  } cases[] = {
      {"older root", 201, "<MAVO_Fish_Survey version='0.2'><survey/></MAVO_Fish_Survey>"},
      {"newest minor", 201, "<MAVO-Survey version='1.9'><survey/></MAVO-Survey>"},
      {"empty", 422, ""},
      {"text", 422, "no survey"},
      {"cut off", 422, "<MAVO-Survey version='1.0'><survey>"},
      {"bad character", 422, "<MAVO-Survey version='1.0'><survey>\x01</survey></MAVO-Survey>"},
      {"other root", 422, "<other version='1.0'><survey/></other>"},
      {"no version", 422, "<MAVO-Survey><survey/></MAVO-Survey>"},
      {"bad version", 422, "<MAVO-Survey version='one'><survey/></MAVO-Survey>"},
      {"half a version", 422, "<MAVO-Survey version='1'><survey/></MAVO-Survey>"},
      {"too old", 422, "<MAVO-Survey version='0.1'><survey/></MAVO-Survey>"},
      {"too new", 422, "<MAVO-Survey version='2.0'><survey/></MAVO-Survey>"},
      {"no survey", 422, "<MAVO-Survey version='1.0'/>"},
      {"unknown element", 422, "<MAVO-Survey version='1.0'><survey><wave/></survey></MAVO-Survey>"},
      {"two surveys", 422, "<MAVO-Survey version='1.0'><survey/><survey/></MAVO-Survey>"},
  };
  for (const auto& c : cases) {
    const TestServer server;
    Upload upload;
    upload.bytes = c.bytes;
    const std::string answer = send_upload(server, upload);
    EXPECT_EQ(c.status, status_of(answer)) << c.why;
    EXPECT_EQ(c.status == 201, names_in(server.uploads).size() == 1) << c.why;
    EXPECT_EQ(c.status == 201, header_of(answer, reason) == "(none)") << c.why;
  }
}

TEST(SurveyServerUploads, ReadsNothingThatADocumentRefersTo)
{
  const TestServer server({"--data-query", "ok"});
  Upload upload;
  upload.bytes = "<!DOCTYPE MAVO-Survey SYSTEM \"" + server.address() +
                 "/offline-data-entry/?get-version=data-files\">"
                 "<MAVO-Survey version='1.0'><survey/></MAVO-Survey>";
  EXPECT_EQ(201, status_of(send_upload(server, upload)));
  EXPECT_EQ(1U, server.log().size());
}

TEST(SurveyServerUploads, RefusesEverythingExceptAFormWithOneFile)
{
  const TestServer server;
  const std::string path = " /dataentry/upload-survey.php HTTP/1.1\r\nHost: a\r\n"
                           "Connection: close\r\n";
  const std::string file = "--x\r\nContent-Disposition: form-data; name=\"survey-file\"; "
                           "filename=\"a\"\r\nContent-Type: application/xml\r\n\r\n" +
                           Upload::survey() + "\r\n";
  const auto form = [&path](const std::string& type, const std::string& body) {
    return "POST" + path + "Content-Type: " + type +
           "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
  };
  const struct {
    const char* why;
    int status;
    std::string request;
  } cases[] = {
      {"one file", 201, form("multipart/form-data; boundary=x", file + "--x--\r\n")},
      {"two files", 400, form("multipart/form-data; boundary=x", file + file + "--x--\r\n")},
      {"no file", 400, form("multipart/form-data; boundary=x", "--x--\r\n")},
      {"cut off", 400, form("multipart/form-data; boundary=x", file)},
      {"no boundary", 400, form("multipart/form-data", file + "--x--\r\n")},
      {"a bare document", 415, form("application/xml", Upload::survey())},
      {"another method", 405, "GET" + path + "\r\n"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(c.status, status_of(send_request(server.port, c.request))) << c.why;
  EXPECT_EQ(std::set<std::string>{"a"}, names_in(server.uploads));
}

TEST(SurveyServerUploads, ReportsThatItCannotStoreASurvey)
{
  const TestServer server;
  std::filesystem::remove(server.uploads);
  const std::string answer = send_upload(server);
  EXPECT_EQ(500, status_of(answer));
  EXPECT_EQ("The survey cannot be kept: No such file or directory", header_of(answer, reason));
}

TEST(SurveyServerUploads, StoresEachRequest)
{
  const TestServer server;
  const Upload upload;
  send_upload(server, upload);
  const std::string kept = read_file(server.requests + "1-upload.txt");
  EXPECT_EQ(0U, kept.find("POST /dataentry/upload-survey.php HTTP/1.1\r\nHost: 127.0.0.1\r\n"));
  EXPECT_EQ(body_of(upload.request()), body_of(kept));
}

TEST(SurveyServerUploads, NumbersRequestsAfterThoseOfEarlierRuns)
{
  const DataSet kept;
  for (const char* bytes : {"first", "second"}) {
    const TestServer server({"--requests", kept.dir});
    Upload upload;
    upload.bytes = Upload::survey(bytes);
    send_upload(server, upload);
  }
  EXPECT_EQ((std::set<std::string>{"1-upload.txt", "2-upload.txt"}), names_in(kept.dir));
  EXPECT_NE(std::string::npos, read_file(kept.dir + "1-upload.txt").find("first"));
}

TEST(SurveyServerUploads, OverwritesNoRequestOfAnotherServerAtTheSameTime)
{
  const DataSet kept;
  const TestServer one({"--requests", kept.dir});
  const TestServer other({"--requests", kept.dir});
  send_upload(one);
  send_upload(other);
  send_upload(one);
  EXPECT_EQ((std::set<std::string>{"1-upload.txt", "2-upload.txt", "3-upload.txt"}),
            names_in(kept.dir));
}
