#include "tools/raw-exchange.h"

#include "support/test-server.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

const std::string boundary = "between-the-parts";

} // namespace

RawClient::RawClient(int port, const std::string& request)
    : descriptor(socket(AF_INET, SOCK_STREAM, 0))
{
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  EXPECT_EQ(0, connect(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address));
  EXPECT_EQ(static_cast<ssize_t>(request.size()),
            send(descriptor, request.data(), request.size(), MSG_NOSIGNAL));
}

RawClient::~RawClient()
{
  close(descriptor);
}

std::string RawClient::answer() const
{
  std::string all;
  char block[4096];
  for (ssize_t size = 0; (size = read(descriptor, block, sizeof block)) > 0;)
    all.append(block, static_cast<std::size_t>(size));
  return all;
}

std::string send_request(int port, const std::string& request)
{
  return RawClient(port, request).answer();
}

std::string get_request(const std::string& target)
{
  return "GET " + target + " HTTP/1.1\r\nHost: 127.0.0.1\r\nConnection: close\r\n\r\n";
}

std::string Upload::survey(const std::string& text)
{
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<MAVO-Survey version=\"1.0\">\n  <survey>"
         "<last_name>" +
         text + "</last_name></survey>\n</MAVO-Survey>\n";
}

std::string Upload::request() const
{
  const std::string type_line = type.empty() ? "" : "Content-Type: " + type + "\r\n";
  const std::string body = "--" + boundary + "\r\nContent-Disposition: " + disposition + "\r\n" +
                           type_line + "\r\n" + bytes + "\r\n--" + boundary + "--\r\n";
  return "POST /dataentry/upload-survey.php HTTP/1.1\r\nHost: 127.0.0.1\r\nConnection: close\r\n"
         "Content-Type: multipart/form-data; boundary=\"" +
         boundary + "\"\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

std::string send_upload(const TestServer& server, const Upload& upload)
{
  return send_request(server.port, upload.request());
}

int status_of(const std::string& answer)
{
  const std::string start = "HTTP/1.1 ";
  const bool is_http = answer.rfind(start, 0) == 0;
  return is_http ? std::stoi(answer.substr(start.size())) : 0;
}

std::string header_of(const std::string& answer, const std::string& name)
{
  const std::string head = answer.substr(0, answer.find("\r\n\r\n") + 2);
  const std::string start = "\r\n" + name + ": ";
  const auto found = head.find(start);
  if (found == std::string::npos)
    return "(none)";
  const auto value = found + start.size();
  return head.substr(value, head.find("\r\n", value) - value);
}

std::string body_of(const std::string& answer)
{
  const auto end = answer.find("\r\n\r\n");
  return end == std::string::npos ? "" : answer.substr(end + 4);
}
