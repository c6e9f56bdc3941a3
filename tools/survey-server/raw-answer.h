#pragma once

#include <sigc++/connection.h>

#include <functional>
#include <string>
#include <vector>

#include "c-owner.h"

// Bytes written to a connection as they are, piece by piece, after which it is
// closed. Ends at once when it is destroyed.
class RawAnswer
{
public:
  // Waits before the first piece. `done` is called when all is sent, or the other
  // side has gone.
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
