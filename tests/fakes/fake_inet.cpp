// SPDX-License-Identifier: GPL-3.0-or-later
#include "fakes/fake_inet.h"

#include <utility>

#include "platform/platform_error.h"

namespace kivandra::fakes {

FakeInet::FakeInet(Journal& journal) : journal_(journal) {}

FakeInet::~FakeInet() = default;

std::string FakeInet::OpenURL(const std::string& url, const InetLimits& limits,
                              const std::function<bool()>& wanted) {
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

}  // namespace kivandra::fakes
