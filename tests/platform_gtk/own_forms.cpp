// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform_gtk/own_forms.h"

#include <fstream>

namespace kivandra::gtk {

OwnForms::OwnForms() {
  EXPECT_NE(g_mkdtemp(folder_.data()), nullptr);
  std::filesystem::create_directory(folder_ + "/forms");
  std::filesystem::create_directory_symlink(kAssets + "/css", folder_ + "/css");
}

OwnForms::~OwnForms() { std::filesystem::remove_all(folder_); }

void OwnForms::Write(const std::string& name, const std::string& objects, const std::string& inside) const {
  std::ofstream(folder_ + "/forms/" + name + ".ui")
      << "<interface>" << objects << "<object class='GtkWindow' id='" << name << "'><property name='title'>"
      << name << "</property><style><class name='kv-skin'/></style>"
      << "<child><object class='GtkBox'><property name='orientation'>vertical</property>" << inside
      << "</object></child></object></interface>";
}

const std::string& OwnForms::Folder() const { return folder_; }

Gtk::Window* ShownWindow(const std::string& title) {
  for (Gtk::Window* window : Gtk::Window::list_toplevels()) {
    if (window->get_visible() && window->get_title().raw() == title) {
      return window;
    }
  }
  return nullptr;
}

}  // namespace kivandra::gtk
