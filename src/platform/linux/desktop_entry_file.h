// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace kivandra::linux_impl {

/// Name of this program's desktop entry.
inline constexpr const char* kDesktopEntryName = "org.kivandra.Kivandra.desktop";

/// A program's path as the beginning of an Exec line.
[[nodiscard]] std::string ExecCommand(const std::string& path);

/// Sees to it that the entry which the desktop finds starts `command`: the machine's own if it does, else one
/// written for this user. `icon` is the picture of the written one, or empty. Throws PlatformError if it
/// can't be written, or can't name the command.
void OfferDesktopEntry(const std::string& command, const std::string& icon);

}  // namespace kivandra::linux_impl
