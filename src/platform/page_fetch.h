// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <string>

namespace kivandra {

/// A fetch on its way; destroying it drops the fetch, and its answer then never comes. It may be destroyed
/// inside its own answer.
class FetchTicket {
 public:
  virtual ~FetchTicket() = default;
};

/// `Inet1`: fetches a page's source on the side, apart from the engine.
class PageFetch {
 public:
  virtual ~PageFetch() = default;

  using Done = std::function<void(std::string source)>;

  /// Asks for the page with what the engine would send (cookies, user agent, language, TLS rules), follows
  /// redirects, takes the bodies of error pages too, and gives the whole raw source decoded to UTF-8. A fetch
  /// that fails, lasts longer than 30 s, is larger than 32 MiB unpacked, or whose address is neither http nor
  /// https gives the empty string. `done` is called once, from the event loop, never inside this call. Throws
  /// PlatformError if it can't even begin.
  [[nodiscard]] virtual std::unique_ptr<FetchTicket> FetchPage(const std::string& url, Done done) = 0;
};

}  // namespace kivandra
