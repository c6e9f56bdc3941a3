#pragma once

#include <cstddef>
#include <mutex>
#include <string>
#include <thread>

// A server on loopback that sends the same bytes as the answer to every request and then
// closes the connection. It is for answers that no well-behaved library sends.
class CannedServer
{
public:
  // Fails the test if it cannot listen.
  explicit CannedServer(std::string answer);
  ~CannedServer();
  CannedServer(const CannedServer&) = delete;
  CannedServer& operator=(const CannedServer&) = delete;

  std::string address() const; // "http://127.0.0.1:PORT/"
  // The bytes of all requests that have been answered.
  std::string received() const;
  // How many bytes of answers were sent before the other side closed the connection.
  std::size_t sent() const;

private:
  void serve();
  void answer_one(int connection);

  const std::string answer;
  const int listener;
  int port = 0;
  mutable std::mutex mutex; // of the next two
  std::string requests;
  std::size_t bytes_sent = 0;
  std::thread thread;
};
