// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/bars/access_keys.h"

#include <string>

namespace kivandra::gtk {
namespace {

void Collect(GtkWidget* widget, bool inMenuBar, std::set<unsigned>& letters) {
  const bool inside = inMenuBar || std::string(gtk_widget_get_css_name(widget)) == "menubar";
  if (inside && GTK_IS_LABEL(widget)) {
    letters.insert(gdk_keyval_to_lower(gtk_label_get_mnemonic_keyval(GTK_LABEL(widget))));
  }
  if (GTK_IS_POPOVER(widget)) {
    return;  // what is inside a menu has no access key while the menu is closed
  }
  for (GtkWidget* child = gtk_widget_get_first_child(widget); child != nullptr;
       child = gtk_widget_get_next_sibling(child)) {
    Collect(child, inside, letters);
  }
}

}  // namespace

std::set<unsigned> MenuLetters(Gtk::Widget& widget) {
  std::set<unsigned> letters;
  Collect(widget.gobj(), false, letters);
  letters.erase(gdk_keyval_to_lower(GDK_KEY_VoidSymbol));
  return letters;
}

}  // namespace kivandra::gtk
