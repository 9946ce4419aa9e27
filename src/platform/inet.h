// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace kivandra {

/// Fetches whole files, apart from the engine and without its cookies.
class Inet {
 public:
  virtual ~Inet() = default;

  /// The body of an http or https address, byte for byte. Waits for all of it; events run inside. Throws
  /// PlatformError if the server can't be reached, gives up, answers with anything but 200, or takes longer
  /// than 30 s without a byte or 10 minutes in all; and if the body is larger than 256 MiB.
  [[nodiscard]] virtual std::string OpenURL(const std::string& url) = 0;
};

}  // namespace kivandra
