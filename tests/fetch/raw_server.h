// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace kivandra::testing {

/// One connection of RawServer, in its own thread.
class Connection {
 public:
  explicit Connection(int socket) : socket_(socket) {}

  /// The request up to its empty line; empty if the other side has gone.
  std::string ReadRequest();
  /// False once the other side has gone.
  bool Send(const std::string& bytes);
  /// Closes so that the other side sees a broken connection and not an end.
  void Reset();
  /// Waits until the other side has gone.
  void WaitForEnd();

 private:
  int socket_;
};

/// A server on a free loopback port that answers each request by hand, so that it can misbehave in every way.
class RawServer {
 public:
  using Handler = std::function<void(Connection& connection, const std::string& request)>;

  explicit RawServer(Handler handler);
  ~RawServer();
  RawServer(const RawServer&) = delete;
  RawServer& operator=(const RawServer&) = delete;

  [[nodiscard]] std::string Url(const std::string& path, const std::string& host = "127.0.0.1") const;
  /// Every request so far.
  [[nodiscard]] std::vector<std::string> Requests() const;

 private:
  void Serve();

  Handler handler_;
  int listener_ = -1;
  int port_ = 0;
  std::atomic<bool> stopping_ = false;
  mutable std::mutex mutex_;
  std::vector<std::string> requests_;
  std::vector<int> sockets_;
  std::vector<std::thread> connections_;
  std::thread thread_;
};

/// An answer with its length, after which the connection closes.
[[nodiscard]] std::string HttpAnswer(const std::string& body,
                                     const std::string& type = "text/html; charset=utf-8",
                                     const std::string& status = "200 OK", const std::string& headers = "");

}  // namespace kivandra::testing
