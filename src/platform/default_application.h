// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace kivandra {

/// The desktop's list of which program opens what.
class DefaultApplication {
 public:
  virtual ~DefaultApplication() = default;

  /// Makes this program, for this user, the one that opens http and https addresses and HTML files, and reads
  /// back whether the desktop took it. Events may run inside. Throws PlatformError, with what is missing in
  /// its text, if it did not.
  virtual void Register() = 0;
};

}  // namespace kivandra
