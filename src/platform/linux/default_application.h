// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "platform/default_application.h"

namespace kivandra::linux_impl {

/// Registers a desktop entry of this program for this user: the machine's if it is there, else one written
/// for the user. The desktop's own tool is asked first (xdg-settings); what it leaves out goes into the
/// shared lists. A tool that hangs is ended.
class LinuxDefaultApplication final : public DefaultApplication {
 public:
  /// `programDirectory` is the folder of the executable.
  explicit LinuxDefaultApplication(std::string programDirectory);

  void Register() override;

 private:
  std::string programDirectory_;
  bool running_ = false;
};

}  // namespace kivandra::linux_impl
