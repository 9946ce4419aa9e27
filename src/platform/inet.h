// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>

namespace kivandra {

/// What bounds the fetch of a file.
struct InetLimits {
  std::chrono::milliseconds silence{10000};            ///< without a byte; a start may wait for it
  std::chrono::milliseconds time{600000};              ///< from the call to the last byte
  std::size_t bytes = std::size_t{256} * 1024 * 1024;  ///< of the body
};

/// Fetches whole files, apart from the engine and without its cookies.
class Inet {
 public:
  virtual ~Inet() = default;

  /// The body of an http or https address, byte for byte. Waits for all of it; events run inside. After each
  /// of them `wanted` is asked, and the fetch ends once it says no; an empty one always says yes. Throws
  /// PlatformError if the fetch is not wanted any more, if the server can't be reached, gives up, answers
  /// with anything but 200, or goes beyond the limits.
  [[nodiscard]] virtual std::string OpenURL(const std::string& url, const InetLimits& limits,
                                            const std::function<bool()>& wanted) = 0;
};

}  // namespace kivandra
