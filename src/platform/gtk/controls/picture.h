// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtk/gtk.h>

#include <string>

namespace kivandra::gtk {

/// Registers `KvPicture`, a widget that shows one picture file, sharp at every scale, inside its size request
/// and in its own proportions. Its property `file` is a path; a relative one counts from `assetsDirectory`.
void RegisterPictureType(const std::string& assetsDirectory);
/// A new picture of the given size in pixels; -1 for a size that the surroundings give. Assistive tools pass
/// it by: what it stands in has the name.
[[nodiscard]] GtkWidget* NewPicture(const std::string& file, int width = -1, int height = -1);
/// Shows another file; an animated one moves until it is stopped, and stands still while the desktop wants
/// less motion. A file that can't be read shows nothing.
void ShowPicture(GtkWidget* picture, const std::string& file);
/// An animated picture stands still on the frame that it has reached.
void StopPicture(GtkWidget* picture);

}  // namespace kivandra::gtk
