// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace kivandra::linux_impl {

/// The folders in which desktop entries lie, the user's own first: an entry there hides one of the same name
/// behind it.
[[nodiscard]] std::vector<std::string> ApplicationFolders();

/// Name of the desktop entry that opens a type by the desktop's shared lists (mimeapps.list), empty if they
/// name none that is there.
[[nodiscard]] std::string DefaultFor(const std::string& type);

/// Writes an entry into the user's lists as the first one for each type; what stood there before stays behind
/// it. A list that can't be read as one, or can't be written, stays as it is and keeps no other from being
/// written; the first such error is thrown at the end (PlatformError).
void SetDefaultFor(const std::vector<std::string>& types, const std::string& entry);

}  // namespace kivandra::linux_impl
