// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>

#include "platform/engine_identity.h"
#include "platform/page_fetch.h"

namespace kivandra::linux_impl {

/// What bounds a fetch.
struct FetchLimits {
  std::chrono::milliseconds time{30000};              ///< from the call to the last byte
  std::size_t bytes = std::size_t{32} * 1024 * 1024;  ///< of the unpacked source
  int redirects = 20;
};

/// Fetches pages on GLib's main loop, apart from the engine, but looking like it to the server.
///
/// Each step of a redirect asks the engine anew which cookies it would send there, and sends no others; what
/// a server wants to set is dropped.
class SoupPageFetch final : public PageFetch {
 public:
  explicit SoupPageFetch(EngineIdentity& identity, FetchLimits limits = {});
  ~SoupPageFetch() override;
  SoupPageFetch(const SoupPageFetch&) = delete;
  SoupPageFetch& operator=(const SoupPageFetch&) = delete;

  [[nodiscard]] std::unique_ptr<FetchTicket> FetchPage(const std::string& url, Done done) override;

 private:
  class Connections;
  class Fetch;
  class Ticket;

  EngineIdentity& identity_;
  FetchLimits limits_;
  std::shared_ptr<Connections> connections_;
};

}  // namespace kivandra::linux_impl
