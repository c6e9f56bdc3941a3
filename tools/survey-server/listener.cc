#include "listener.h"

#include <stdexcept>

Listener::~Listener()
{
  soup_server_disconnect(server.get());
}

unsigned Listener::listen(unsigned wanted)
{
  GError* failure = nullptr;
  const bool listens =
      soup_server_listen_local(server.get(), wanted, SOUP_SERVER_LISTEN_IPV4_ONLY, &failure);
  const GErrorPtr error(failure);
  if (!listens)
    throw std::runtime_error(error->message);
  return port();
}
