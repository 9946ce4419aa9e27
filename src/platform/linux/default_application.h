// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "platform/default_application.h"

namespace kivandra::linux_impl {

/// Registers a desktop entry of this program with the desktop.
class LinuxDefaultApplication final : public DefaultApplication {
 public:
  /// `programDirectory` is the folder of the executable.
  explicit LinuxDefaultApplication(std::string programDirectory);

  void Register() override;

 private:
  std::string programDirectory_;
};

}  // namespace kivandra::linux_impl
