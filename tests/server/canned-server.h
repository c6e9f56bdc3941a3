#pragma once

#include <cstddef>
#include <mutex>
#include <string>
#include <thread>

// A server on loopback that answers every request with the same bytes and then ends the answer by
// closing its side of the connection. It is for answers that no well-behaved library sends.
class CannedServer
{
public:
  // Fails the test if it cannot listen.
  explicit CannedServer(std::string answer);
  ~CannedServer();
  CannedServer(const CannedServer&) = delete;
  CannedServer& operator=(const CannedServer&) = delete;

  std::string address() const; // "http://127.0.0.1:PORT/"
  // Returns the bytes of all requests that have been answered.
  std::string received() const;
  // Returns how many bytes of answers the server could send before clients closed the connections.
  std::size_t sent() const;

private:
  void serve();
  void answer_one(int connection);

  const std::string answer;
  const int listener;
  int port = 0;
  mutable std::mutex mutex; // protects the next two members
  std::string requests;
  std::size_t bytes_sent = 0;
  std::thread thread;
};
