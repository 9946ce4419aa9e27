// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>

#include "fakes/journal.h"
#include "platform/inet.h"
#include "platform/platform_error.h"
#include "version.h"

namespace kivandra::fakes {

/// Whole files by address. The version file on the product's site names this very version unless a test says
/// otherwise; what is in neither is not there.
class FakeInet : public Inet {
 public:
  explicit FakeInet(Journal& journal) : journal_(journal) {}
  [[nodiscard]] std::string OpenURL(const std::string& url, const InetLimits& limits,
                                    const std::function<bool()>& wanted) override {
    asked[url] = limits;
    journal_.Call("OpenURL " + Quoted(url));
    // Taken out: what happens meanwhile may fetch again.
    if (const auto event = std::exchange(meanwhile, nullptr)) {
      event();
    }
    if (wanted && !wanted()) {
      throw PlatformError(kInvalidCall, "not wanted any more");
    }
    if (const auto found = files.find(url); found != files.end()) {
      return found->second;
    }
    if (url.ends_with("/BrowserVer.dat")) {
      return version;
    }
    throw PlatformError(kInvalidCall, "404 Not Found");
  }
  std::string version{kOwnVersion};
  std::map<std::string, std::string> files;
  std::map<std::string, InetLimits> asked;  // by address
  std::function<void()> meanwhile;          // runs once, while a fetch waits

 private:
  Journal& journal_;
};

}  // namespace kivandra::fakes
