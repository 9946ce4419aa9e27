// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>

namespace kivandra {

/// Fetches whole files, apart from the engine and without its cookies.
class Inet {
 public:
  virtual ~Inet() = default;

  /// The body of an http or https address, byte for byte. Waits for all of it; events run inside. After each
  /// of them `wanted` is asked, and the fetch ends once it says no; an empty one always says yes. Throws
  /// PlatformError if the fetch is not wanted any more, if the server can't be reached, gives up, answers
  /// with anything but 200, or takes longer than 10 s without a byte or 10 minutes in all; and if the body is
  /// larger than 256 MiB.
  [[nodiscard]] virtual std::string OpenURL(const std::string& url, const std::function<bool()>& wanted) = 0;
};

}  // namespace kivandra
