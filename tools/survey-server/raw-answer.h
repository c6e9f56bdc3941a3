#pragma once

#include <sigc++/connection.h>

#include <functional>
#include <string>
#include <vector>

#include "c-owner.h"

// Writes bytes to a connection, piece by piece, and then closes it. The destructor stops at
// once.
class RawAnswer
{
public:
  // Waits before the first piece. Calls `done` when all is sent or the client has closed the
  // connection.
  RawAnswer(GObjectPtr<GIOStream> connection, std::vector<std::string> pieces, unsigned delay_ms,
            std::function<void(RawAnswer*)> done);
  ~RawAnswer();
  RawAnswer(const RawAnswer&) = delete;
  RawAnswer& operator=(const RawAnswer&) = delete;

private:
  bool on_time();
  bool send_next();

  GObjectPtr<GIOStream> connection;
  std::vector<std::string> pieces;
  std::size_t sent = 0;
  std::function<void(RawAnswer*)> done;
  sigc::connection timer;
};
