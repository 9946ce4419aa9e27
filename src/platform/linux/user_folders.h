// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace kivandra::linux_impl {

/// The program's own folder for this user, `kivandra` below $XDG_DATA_HOME; no closing slash. Not made here.
[[nodiscard]] std::string DataFolder();

/// $XDG_RUNTIME_DIR, the session's own folder, or empty if the session has none.
[[nodiscard]] std::string RuntimeFolder();

/// Makes a folder with all folders above it, for this user alone (mode 0700); one that exists keeps its mode.
/// Throws PlatformError if that fails.
void MakePrivateFolder(const std::string& path);

}  // namespace kivandra::linux_impl
