// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

#include <string>

#include "platform/bar_control.h"

namespace kivandra::gtk {

/// What a tool looks like: a button with its picture and its words.
struct ToolFace {
  Gtk::Button* button = nullptr;
  Gtk::Label* word = nullptr;  ///< null for a tool that is only a picture
};

/// The face of a tool on a bar or in the side bar. Managed.
[[nodiscard]] ToolFace NewBarFace(const ToolData& tool, const std::string& pictureFile);
/// The face of a tool in a drop-down: a row, or a drawn pill where the picture carries its own words.
/// Managed.
[[nodiscard]] ToolFace NewRowFace(const ToolData& tool, const std::string& pictureFile);
/// The line between tools; a separator with a picture shows that. Managed.
[[nodiscard]] Gtk::Widget* NewLine(const std::string& pictureFile, Gtk::Orientation orientation);

/// The name by which assistive tools know a tool: the words that are seen on it, else its tool tip.
[[nodiscard]] std::string AccessibleNameOf(const ToolData& tool, const std::string& pictureFile);
/// The name, and nothing beside it.
void SetAccessibleName(Gtk::Widget& widget, const std::string& name);
/// Tells that a widget opens a drop-down.
void MarkOpener(Gtk::Widget& widget);
/// Shows, and tells assistive tools, whether the drop-down of a widget is open.
void MarkOpen(Gtk::Widget& widget, bool open);

}  // namespace kivandra::gtk
