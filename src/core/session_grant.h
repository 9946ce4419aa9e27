// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace kivandra {

/// What the password prompt and the entry ask of the filter.
class SessionGrant {
 public:
  virtual ~SessionGrant() = default;

  /// Whether the gate's last run ended in a block.
  [[nodiscard]] virtual bool SessionAllowPending() const = 0;
  virtual void ClearSessionAllowPending() = 0;
  /// Stores the blocked address (while the session lock asks about one, that one) in the first empty row of
  /// the allowed table, in memory only. Throws PlatformError when every row is taken.
  virtual void AllowBlockedURL() = 0;
};

}  // namespace kivandra
