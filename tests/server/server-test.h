#pragma once

#include "store/saving-test.h"
#include "support/test-server.h"

#include <memory>
#include <string>
#include <vector>

// A test of what goes over the network: a window on the screen, an empty store,
// no local data, and the project's own server.
class ServerTest : public SavingTest
{
public:
  void SetUp() override;

  // Starts a server with these options; the program asks it from then on.
  TestServer& serve(const std::vector<std::string>& options = {});
  // Lets the program ask there: "http://host:port".
  void ask_server_at(const std::string& address) const;

  std::unique_ptr<TestServer> server;
};
