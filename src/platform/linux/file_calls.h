// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "platform/file_calls.h"

namespace kivandra::linux_impl {

class LinuxFileCalls : public FileCalls {
 public:
  void Kill(const std::string& path) override;
};

}  // namespace kivandra::linux_impl
