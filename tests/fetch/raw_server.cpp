// SPDX-License-Identifier: GPL-3.0-or-later
#include "fetch/raw_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>

namespace kivandra::testing {

bool Connection::ReadByte(char& byte) {
  if (secure_ == nullptr) return recv(socket_, &byte, 1, 0) == 1;
  return g_input_stream_read(g_io_stream_get_input_stream(secure_), &byte, 1, nullptr, nullptr) == 1;
}

std::string Connection::ReadRequest() {
  std::string request;
  char byte = 0;
  while (!request.ends_with("\r\n\r\n")) {
    if (!ReadByte(byte)) return {};
    request += byte;
  }
  return request;
}

bool Connection::Send(const std::string& bytes) {
  if (secure_ != nullptr) {
    return g_output_stream_write_all(g_io_stream_get_output_stream(secure_), bytes.data(), bytes.size(),
                                     nullptr, nullptr, nullptr) != FALSE;
  }
  std::size_t sent = 0;
  while (sent < bytes.size()) {
    const ssize_t count = send(socket_, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
    if (count <= 0) return false;
    sent += static_cast<std::size_t>(count);
  }
  return true;
}

void Connection::Reset() {
  const linger abrupt{1, 0};
  setsockopt(socket_, SOL_SOCKET, SO_LINGER, &abrupt, sizeof abrupt);
}

void Connection::WaitForEnd() {
  char byte = 0;
  while (ReadByte(byte)) {
  }
}

RawServer::RawServer(Handler handler, const std::string& certificate)
    : handler_(std::move(handler)), listener_(socket(AF_INET, SOCK_STREAM, 0)) {
  if (!certificate.empty()) {
    certificate_ = g_tls_certificate_new_from_file(certificate.c_str(), nullptr);
    if (certificate_ == nullptr) throw std::runtime_error("no certificate in " + certificate);
  }
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  if (bind(listener_, reinterpret_cast<sockaddr*>(&address), size) != 0 || listen(listener_, 128) != 0 ||
      getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size) != 0) {
    throw std::runtime_error("no loopback port");
  }
  port_ = ntohs(address.sin_port);
  thread_ = std::thread([this] { Serve(); });
}

RawServer::~RawServer() {
  stopping_ = true;
  shutdown(listener_, SHUT_RDWR);
  thread_.join();
  {
    const std::lock_guard lock(mutex_);
    for (const int socket : sockets_) shutdown(socket, SHUT_RDWR);
  }
  for (std::thread& connection : connections_) connection.join();
  for (const int socket : sockets_) {
    if (socket >= 0) close(socket);
  }
  close(listener_);
  g_clear_object(&certificate_);
}

void RawServer::Serve() {
  while (!stopping_) {
    const int socket = accept(listener_, nullptr, nullptr);
    if (socket < 0) return;
    std::size_t index = 0;
    {
      const std::lock_guard lock(mutex_);
      index = sockets_.size();
      sockets_.push_back(socket);
    }
    ++callers_;
    connections_.emplace_back([this, socket, index] {
      Talk(socket);
      const std::lock_guard lock(mutex_);
      close(socket);
      sockets_[index] = -1;
    });
  }
}

void RawServer::Talk(int socket) {
  GIOStream* secure = nullptr;
  if (certificate_ != nullptr) {
    GSocket* plain = g_socket_new_from_fd(dup(socket), nullptr);
    GSocketConnection* stream = g_socket_connection_factory_create_connection(plain);
    secure = g_tls_server_connection_new(G_IO_STREAM(stream), certificate_, nullptr);
    g_object_unref(stream);
    g_object_unref(plain);
  }
  Connection connection(socket, secure);
  const std::string request = connection.ReadRequest();
  if (!request.empty()) {
    {
      const std::lock_guard lock(mutex_);
      requests_.push_back(request);
    }
    handler_(connection, request);
  }
  if (secure == nullptr) return;
  g_io_stream_close(secure, nullptr, nullptr);
  g_object_unref(secure);
}

std::string RawServer::Url(const std::string& path, const std::string& host) const {
  return (certificate_ != nullptr ? "https://" : "http://") + host + ":" + std::to_string(port_) + path;
}

std::vector<std::string> RawServer::Requests() const {
  const std::lock_guard lock(mutex_);
  return requests_;
}

std::string HttpAnswer(const std::string& body, const std::string& type, const std::string& status,
                       const std::string& headers) {
  return "HTTP/1.1 " + status + "\r\nContent-Type: " + type +
         "\r\nContent-Length: " + std::to_string(body.size()) + "\r\nConnection: close\r\n" + headers +
         "\r\n" + body;
}

}  // namespace kivandra::testing
