// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

#include <array>

namespace kivandra::gtk {

/// Names in the environment that tell how this program itself was started, and mean nothing to another.
inline constexpr std::array kOwnStart{"DESKTOP_STARTUP_ID", "XDG_ACTIVATION_TOKEN", "GSK_RENDERER",
                                      "GTK_A11Y"};

/// The outside programs that the menus and tools offer.
enum class DesktopProgram { Notepad, Wordpad, Calculator, Volume };

/// What this desktop has for it, or null. The first that fits, in this order:
///   - notepad, word pad: the desktop's default for the file type (plain text; rich text, then the office
///     text types), then any other that opens it, then those of the category (TextEditor; WordProcessor);
///   - calculator: category Calculator, then the general name "Calculator";
///   - volume: category Mixer, then categories Audio and Settings, then the general name "Volume Control".
/// Among equals the first in the order of their file names.
///
/// A program must be no way round the filter: one that shows pages or files, opens a terminal or runs in one,
/// or is made for developers is passed over, and so is one that the desktop hides.
[[nodiscard]] Glib::RefPtr<Gio::AppInfo> FindDesktopProgram(DesktopProgram program);

/// Starts it, without a file and with nothing of how this program itself was started. Throws PlatformError if
/// it does not start.
void StartDesktopProgram(const Glib::RefPtr<Gio::AppInfo>& program);

}  // namespace kivandra::gtk
