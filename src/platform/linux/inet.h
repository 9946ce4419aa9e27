// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>

#include "platform/inet.h"

namespace kivandra::linux_impl {

/// Fetches files on GLib's main loop, which it runs until the file is there: the program's own site server
/// lives on the same loop. Follows redirects; keeps no cookies and stores nothing.
class SoupInet final : public Inet {
 public:
  [[nodiscard]] std::string OpenURL(const std::string& url, const InetLimits& limits,
                                    const std::function<bool()>& wanted) override;

 private:
  class Fetch;
};

}  // namespace kivandra::linux_impl
