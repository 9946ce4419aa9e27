// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace kivandra::linux_impl {

/// The program's own folder for this user, `kivandra` below $XDG_DATA_HOME; no closing slash. Not made here.
[[nodiscard]] std::string DataFolder();

/// What every program keeps for this user: $XDG_DATA_HOME, and $XDG_CONFIG_HOME; no closing slash.
[[nodiscard]] std::string UserDataFolder();
[[nodiscard]] std::string UserConfigFolder();
/// The same of the machine, $XDG_DATA_DIRS and $XDG_CONFIG_DIRS, the first before the others.
[[nodiscard]] std::vector<std::string> SystemDataFolders();
[[nodiscard]] std::vector<std::string> SystemConfigFolders();

/// $XDG_RUNTIME_DIR, the session's own folder, or empty if the session has none.
[[nodiscard]] std::string RuntimeFolder();

/// Makes a folder with all folders above it, for this user alone (mode 0700); one that exists keeps its mode.
/// Throws PlatformError if that fails.
void MakePrivateFolder(const std::string& path);

}  // namespace kivandra::linux_impl
