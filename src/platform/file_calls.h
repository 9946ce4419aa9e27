// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace kivandra {

class FileCalls {
 public:
  virtual ~FileCalls() = default;

  /// Deletes a file; throws PlatformError if it is not there or can't be deleted.
  virtual void Kill(const std::string& path) = 0;
};

}  // namespace kivandra
