#include "support/test-server.h"

#include <gtest/gtest.h>
#include <libsoup/soup.h>

#include <memory>

namespace {

struct GObjectUnref {
  void operator()(gpointer object) const { g_object_unref(object); }
};
template<typename T>
using GObjectPtr = std::unique_ptr<T, GObjectUnref>;

guint status_of(const std::string& address)
{
  const GObjectPtr<SoupSession> session(soup_session_new());
  const GObjectPtr<SoupMessage> message(soup_message_new("GET", address.c_str()));
  return soup_session_send_message(session.get(), message.get());
}

} // namespace

TEST(TestServer, TellsOfEachRequestThatItAnswered)
{
  const TestServer server;
  EXPECT_EQ(std::vector<std::string>{}, server.log());
  EXPECT_EQ(200U, status_of(server.address() + "/offline-data-entry/?get-version=data-files"));
  EXPECT_EQ(404U, status_of(server.address() + "/other"));
  const std::vector<std::string> expected = {"GET /offline-data-entry/?get-version=data-files 200",
                                             "GET /other 404"};
  EXPECT_EQ(expected, server.log());
  EXPECT_TRUE(file_exists(server.requests + "1-data-query.txt"));
}

TEST(TestServer, FollowsItsOptions)
{
  const TestServer server({"--app-query", "status=503", "--app-query", "close=before"});
  const std::string question = server.address() + "/offline-data-entry/?get-version=mac";
  EXPECT_EQ(503U, status_of(question));
  EXPECT_TRUE(SOUP_STATUS_IS_TRANSPORT_ERROR(status_of(question)));
}

TEST(TestServer, RefusesConnectionsOnceStopped)
{
  TestServer server;
  server.stop();
  EXPECT_EQ(static_cast<guint>(SOUP_STATUS_CANT_CONNECT), status_of(server.address() + "/"));
}
