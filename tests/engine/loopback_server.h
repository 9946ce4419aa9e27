// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <libsoup/soup.h>

#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace kivandra::testing {

/// What a request looked like.
struct Request {
  std::string method;
  std::string host;
  std::string path;
  std::map<std::string, std::string> headers;  // names in lower case
};

/// What the server answers.
struct Reply {
  std::string body;
  std::string type = "text/html";
  unsigned status = 200;
  std::vector<std::pair<std::string, std::string>> headers = {};
};

/// A web server on a free loopback port, in this process and on its main loop; every host name that is given
/// to it is one more name of itself.
class LoopbackServer {
 public:
  /// With `certificate`, a file that holds one and its key, it speaks https.
  explicit LoopbackServer(const std::string& certificate = "");
  ~LoopbackServer();
  LoopbackServer(const LoopbackServer&) = delete;
  LoopbackServer& operator=(const LoopbackServer&) = delete;

  void Serve(const std::string& path, Reply reply) {
    handlers_[path] = [reply](const Request&) { return reply; };
  }
  void Serve(const std::string& path, std::function<Reply(const Request&)> handler) {
    handlers_[path] = std::move(handler);
  }
  /// From now on whoever asks for the path waits for an answer in vain.
  void Hang(const std::string& path) { hanging_.insert(path); }
  [[nodiscard]] std::string Url(const std::string& path, const std::string& host = "127.0.0.1") const;
  [[nodiscard]] const std::vector<Request>& Requests() const { return requests_; }
  /// How often a path was asked for.
  [[nodiscard]] int Count(const std::string& path) const;
  [[nodiscard]] Request Last(const std::string& path) const;

 private:
  static void OnRequest(SoupServer* server, SoupServerMessage* message, const char* path, GHashTable* query,
                        gpointer self);

  SoupServer* server_;
  const char* scheme_;
  guint port_ = 0;
  std::set<std::string> hanging_;
  std::map<std::string, std::function<Reply(const Request&)>> handlers_;
  std::vector<Request> requests_;
};

}  // namespace kivandra::testing
