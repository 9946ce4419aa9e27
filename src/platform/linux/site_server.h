// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace kivandra::linux_impl {

/// Serves the folder of the shipped site, and its search forwarders (`forwarders.tsv` in it), on this
/// machine's own addresses 127.0.0.1 and ::1, from the event loop of the thread that made it. It answers GET
/// and HEAD for its hosts alone, with at most one label before them: a page of another site whose name was
/// pointed at this machine gets nothing. The label chooses a folder of the site, or a row of the forwarders.
class SiteServer {
 public:
  /// `hosts` are names without a port.
  SiteServer(const std::string& folder, std::vector<std::string> hosts);
  ~SiteServer();
  SiteServer(const SiteServer&) = delete;
  SiteServer& operator=(const SiteServer&) = delete;

  /// Begins to listen; 0 lets the system choose the port. Empty if it listens, else the reason in words. A
  /// port that another program has (another user's Kivandra, most likely) is tried again every two seconds.
  [[nodiscard]] std::string Start(unsigned short port);
  /// The port, 0 before it listens.
  [[nodiscard]] unsigned short Port() const;

 private:
  class Listener;
  std::unique_ptr<Listener> listener_;
};

}  // namespace kivandra::linux_impl
