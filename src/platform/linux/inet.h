// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>

#include "platform/inet.h"

namespace kivandra::linux_impl {

/// What bounds the fetch of a file.
struct InetLimits {
  std::chrono::milliseconds silence{10000};            ///< without a byte; a start may wait for it
  std::chrono::milliseconds time{600000};              ///< from the call to the last byte
  std::size_t bytes = std::size_t{256} * 1024 * 1024;  ///< of the body
};

/// Fetches files on GLib's main loop, which it runs until the file is there: the program's own site server
/// lives on the same loop. Follows redirects; keeps no cookies and stores nothing.
class SoupInet final : public Inet {
 public:
  explicit SoupInet(InetLimits limits = {}) : limits_(limits) {}

  [[nodiscard]] std::string OpenURL(const std::string& url, const std::function<bool()>& wanted) override;

 private:
  class Fetch;

  InetLimits limits_;
};

}  // namespace kivandra::linux_impl
