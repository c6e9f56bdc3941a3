#pragma once

#include <functional>
#include <string>

#include "c-owner.h"
#include "request.h"

// Listens on loopback and passes each request to a handler. The destructor stops listening.
class Listener
{
public:
  // `asked` is the value of "get-version" in the query; empty if there is none.
  using Handler = std::function<void(const Request& request, const std::string& path,
                                     const std::string& asked)>;

  explicit Listener(Handler handler);
  ~Listener();
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;

  // Starts to listen on the port `wanted`, or on any free port if it is 0. Returns the port.
  // Throws std::runtime_error if that fails.
  unsigned listen(unsigned wanted);

  const Handler handler;

private:
  unsigned port() const;

  GObjectPtr<SoupServer> server;
};
