// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <map>
#include <string>

#include "fakes/journal.h"
#include "platform/inet.h"
#include "version.h"

namespace kivandra::fakes {

/// Whole files by address. The version file on the product's site names this very version unless a test says
/// otherwise; what is in neither is not there.
class FakeInet : public Inet {
 public:
  explicit FakeInet(Journal& journal);
  ~FakeInet() override;
  [[nodiscard]] std::string OpenURL(const std::string& url, const InetLimits& limits,
                                    const std::function<bool()>& wanted) override;
  std::string version{kOwnVersion};
  std::map<std::string, std::string> files;
  std::map<std::string, InetLimits> asked;  // by address
  std::function<void()> meanwhile;          // runs once, while a fetch waits

 private:
  Journal& journal_;
};

}  // namespace kivandra::fakes
