// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/gtk_start.h"

#include <gtkmm.h>
#include <gtkmm/init.h>

#include "platform/gtk/controls/common_dialog.h"
#include "platform/gtk/controls/picture.h"
#include "platform/gtk/controls/skin_control.h"
#include "platform/gtk/controls/skin_sheet.h"
#include "platform/gtk/controls/timer_control.h"

namespace kivandra::gtk {
namespace {

// The toolkit's inspector can change every widget of a running program: a child must not reach it, neither by
// the environment nor by Ctrl+Shift+I or Ctrl+Shift+D.

void ShutInspector() {
  for (const char* name : {"GTK_DEBUG", "GTK_MODULES", "GTK_INSPECTOR_DISPLAY", "GTK_INSPECTOR_RENDERER",
                           "GDK_DEBUG", "GTK_PATH", "GTK_EXE_PREFIX", "GTK_DATA_PREFIX", "GTK_THEME"}) {
    g_unsetenv(name);
  }
}

void ShutInspectorKeys() {
  // The key binding ends in this class function; the reference keeps the changed class for the process's
  // life.
  auto* windows = static_cast<GtkWindowClass*>(g_type_class_ref(GTK_TYPE_WINDOW));
  windows->enable_debugging = [](GtkWindow*, gboolean) -> gboolean { return FALSE; };
}

}  // namespace

bool StartToolkit(const std::string& assets) {
  ShutInspector();
  g_set_prgname("kivandra");
  g_set_application_name("Kivandra");
  if (!gtk_init_check()) {
    return false;
  }
  Gtk::init_gtkmm_internals();
  ShutInspectorKeys();
  RegisterPictureType(assets);
  RegisterTimerType();
  RegisterSkinType();
  RegisterCommonDialogType();

  auto theme = Gtk::IconTheme::get_for_display(Gdk::Display::get_default());
  theme->add_search_path(assets + "/icons");
  Gtk::Window::set_default_icon_name("kivandra");

  LoadProgramSheet(assets + "/css/structure.css", ProgramSheet::DefaultDress);
  LoadProgramSheet(assets + "/winaqua.skn", ProgramSheet::DefaultDress);
  LoadProgramSheet(assets + "/css/fixed.css", ProgramSheet::Fixed);
  return true;
}

}  // namespace kivandra::gtk
