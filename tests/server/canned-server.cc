#include "server/canned-server.h"

#include "core/c-resource.h"

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <list>
#include <utility>

namespace {

// Returns whether a request has its headers and the complete body that they announce. A request
// that is not HTTP is complete at once.
bool is_complete(const std::string& request)
{
  if (!request.empty() && (request.front() < 'A' || request.front() > 'Z'))
    return true;
  const char* const name = "Content-Length: ";
  const auto end = request.find("\r\n\r\n");
  if (end == std::string::npos)
    return false;
  const auto length = request.find(name);
  const std::size_t body =
      length < end ? std::stoul(request.substr(length + std::strlen(name))) : 0;
  return request.size() >= end + 4 + body;
}

} // namespace

CannedServer::CannedServer(std::string answer_)
    : answer(std::move(answer_)), listener(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
  sockaddr_in place{};
  place.sin_family = AF_INET;
  place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof place;
  auto* const generic = reinterpret_cast<sockaddr*>(&place);
  EXPECT_EQ(0, bind(listener, generic, size));
  EXPECT_EQ(0, listen(listener, 8));
  EXPECT_EQ(0, getsockname(listener, generic, &size));
  port = ntohs(place.sin_port);
  thread = std::thread([this] { serve(); });
}

CannedServer::~CannedServer()
{
  shutdown(listener, SHUT_RDWR); // ends accept()
  thread.join();
  close(listener);
}

std::string CannedServer::address() const
{
  return "http://127.0.0.1:" + std::to_string(port) + "/";
}

std::string CannedServer::received() const
{
  const std::lock_guard lock(mutex);
  return requests;
}

std::size_t CannedServer::sent() const
{
  const std::lock_guard lock(mutex);
  return bytes_sent;
}

void CannedServer::serve()
{
  // The connections stay open until the end, because to close one while the client is still sending
  // would reset it.
  std::list<Descriptor> connections;
  while (true) {
    const int connection = connections.emplace_back(accept(listener, nullptr, nullptr)).number;
    if (connection < 0)
      return;
    answer_one(connection);
    shutdown(connection, SHUT_WR);
  }
}

void CannedServer::answer_one(int connection)
{
  std::array<char, 4096> buffer;
  std::string request;
  while (!is_complete(request)) {
    const ssize_t size = recv(connection, buffer.data(), buffer.size(), 0);
    if (size <= 0)
      return;
    request.append(buffer.data(), static_cast<std::size_t>(size));
  }
  const std::lock_guard lock(mutex);
  requests += request;
  for (std::size_t done = 0; done < answer.size();) {
    const ssize_t size = send(connection, answer.data() + done, answer.size() - done, MSG_NOSIGNAL);
    if (size <= 0)
      return;
    done += static_cast<std::size_t>(size);
    bytes_sent += static_cast<std::size_t>(size);
  }
}
