#include "raw-answer.h"

#include <glibmm/main.h>

#include <utility>

namespace {

const unsigned interval_ms = 50; // between pieces

} // namespace

RawAnswer::RawAnswer(GObjectPtr<GIOStream> connection_, std::vector<std::string> pieces_,
                     unsigned delay_ms, std::function<void(RawAnswer*)> done_)
    : connection(std::move(connection_)), pieces(std::move(pieces_)), done(std::move(done_))
{
  timer = Glib::signal_timeout().connect(sigc::mem_fun(*this, &RawAnswer::on_time), delay_ms);
}

RawAnswer::~RawAnswer()
{
  timer.disconnect();
  g_io_stream_close(connection.get(), nullptr, nullptr);
}

bool RawAnswer::on_time()
{
  if (!send_next() || sent == pieces.size()) {
    done(this); // destroys this object
    return false;
  }
  timer = Glib::signal_timeout().connect(sigc::mem_fun(*this, &RawAnswer::on_time), interval_ms);
  return false;
}

// Returns false if all is sent or the client has closed the connection.
bool RawAnswer::send_next()
{
  if (sent == pieces.size())
    return false;
  const std::string& piece = pieces[sent++];
  return g_output_stream_write_all(g_io_stream_get_output_stream(connection.get()), piece.data(),
                                   piece.size(), nullptr, nullptr, nullptr);
}
