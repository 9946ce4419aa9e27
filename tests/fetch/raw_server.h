// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gio/gio.h>

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
  /// `secure` is the secret channel over the socket, or null.
  Connection(int socket, GIOStream* secure) : socket_(socket), secure_(secure) {}

  /// The request up to its empty line; empty if the other side has gone.
  std::string ReadRequest();
  /// False once the other side has gone.
  bool Send(const std::string& bytes);
  /// Closes so that the other side sees a broken connection and not an end.
  void Reset();
  /// Waits until the other side has gone.
  void WaitForEnd();

 private:
  bool ReadByte(char& byte);

  int socket_;
  GIOStream* secure_;
};

/// A server on a free loopback port that answers each request by hand, so that it can misbehave in every way.
class RawServer {
 public:
  using Handler = std::function<void(Connection& connection, const std::string& request)>;

  /// With `certificate`, a file that holds one and its key, it speaks https.
  explicit RawServer(Handler handler, const std::string& certificate = "");
  ~RawServer();
  RawServer(const RawServer&) = delete;
  RawServer& operator=(const RawServer&) = delete;

  [[nodiscard]] std::string Url(const std::string& path, const std::string& host = "127.0.0.1") const;
  /// Every request so far.
  [[nodiscard]] std::vector<std::string> Requests() const;
  /// How many connections came, whether they asked for anything or not.
  [[nodiscard]] int Callers() const { return callers_; }

 private:
  void Serve();
  void Talk(int socket);

  Handler handler_;
  GTlsCertificate* certificate_ = nullptr;
  std::atomic<int> callers_ = 0;
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
