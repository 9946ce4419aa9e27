// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <fstream>
#include <string>

#include "platform_gtk/window_test.h"

namespace kivandra::gtk {

/// A folder of assets with forms of the test's own beside the program's style sheets.
class OwnForms {
 public:
  OwnForms() {
    EXPECT_NE(g_mkdtemp(folder_.data()), nullptr);
    std::filesystem::create_directory(folder_ + "/forms");
    std::filesystem::create_directory_symlink(kAssets + "/css", folder_ + "/css");
  }
  ~OwnForms() { std::filesystem::remove_all(folder_); }
  OwnForms(const OwnForms&) = delete;
  OwnForms& operator=(const OwnForms&) = delete;

  /// Writes a form: one window with the objects in `objects` before it and the widgets in `inside`.
  void Write(const std::string& name, const std::string& objects, const std::string& inside) const {
    std::ofstream(folder_ + "/forms/" + name + ".ui")
        << "<interface>" << objects << "<object class='GtkWindow' id='" << name << "'><property name='title'>"
        << name << "</property><style><class name='kv-skin'/></style>"
        << "<child><object class='GtkBox'><property name='orientation'>vertical</property>" << inside
        << "</object></child></object></interface>";
  }
  [[nodiscard]] const std::string& Folder() const { return folder_; }

 private:
  std::string folder_ = (std::filesystem::temp_directory_path() / "forms-XXXXXX").string();
};

/// The shown window whose title is `title`, or null.
inline Gtk::Window* ShownWindow(const std::string& title) {
  for (Gtk::Window* window : Gtk::Window::list_toplevels()) {
    if (window->get_visible() && window->get_title().raw() == title) {
      return window;
    }
  }
  return nullptr;
}

}  // namespace kivandra::gtk
