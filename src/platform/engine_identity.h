// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace kivandra {

/// What the browser engine tells a server about itself, so that a fetch on the side can send the same.
class EngineIdentity {
 public:
  virtual ~EngineIdentity() = default;

  [[nodiscard]] virtual std::string UserAgent() const = 0;
  [[nodiscard]] virtual std::string Accept() const = 0;
  [[nodiscard]] virtual std::string AcceptLanguage() const = 0;
  /// The referrer that the engine will send with a navigation to `url` that is being judged; empty if it
  /// sends none.
  [[nodiscard]] virtual std::string Referrer(const std::string& url) const {
    (void)url;
    return {};
  }
  /// Asks for the text of the Cookie header that the engine would send to `url` (empty for none). `done`
  /// comes once, from the event loop, also if the engine has none or fails.
  virtual void CookieHeader(const std::string& url, std::function<void(std::string header)> done) = 0;
};

}  // namespace kivandra
