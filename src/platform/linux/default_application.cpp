// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/default_application.h"

#include <utility>

#include "platform/platform_error.h"

namespace kivandra::linux_impl {

LinuxDefaultApplication::LinuxDefaultApplication(std::string programDirectory)
    : programDirectory_(std::move(programDirectory)) {}

void LinuxDefaultApplication::Register() {
  throw PlatformError(kInvalidCall, "There is no desktop entry in " + programDirectory_);
}

}  // namespace kivandra::linux_impl
