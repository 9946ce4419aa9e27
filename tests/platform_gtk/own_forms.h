// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

#include <filesystem>
#include <string>

#include "platform_gtk/window_test.h"

namespace kivandra::gtk {

/// A folder of assets with forms of the test's own beside the program's style sheets.
class OwnForms {
 public:
  OwnForms();
  ~OwnForms();
  OwnForms(const OwnForms&) = delete;
  OwnForms& operator=(const OwnForms&) = delete;

  /// Writes a form: one window with the objects in `objects` before it and the widgets in `inside`.
  void Write(const std::string& name, const std::string& objects, const std::string& inside) const;
  [[nodiscard]] const std::string& Folder() const;

 private:
  std::string folder_ = (std::filesystem::temp_directory_path() / "forms-XXXXXX").string();
};

/// The shown window whose title is `title`, or null.
Gtk::Window* ShownWindow(const std::string& title);

}  // namespace kivandra::gtk
