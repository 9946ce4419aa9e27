// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/controls/key_codes.h"

#include <array>

#include "platform/gtk/guard.h"

namespace kivandra::gtk {
namespace {

struct KeyName {
  unsigned keyval;
  int code;
};

constexpr std::array<KeyName, 21> kNamedKeys{{
    {GDK_KEY_BackSpace, 8},       {GDK_KEY_Tab, 9},       {GDK_KEY_ISO_Left_Tab, 9},
    {GDK_KEY_Return, kKeyReturn}, {GDK_KEY_KP_Enter, 13}, {GDK_KEY_ISO_Enter, 13},
    {GDK_KEY_Escape, 27},         {GDK_KEY_space, 32},    {GDK_KEY_Page_Up, 33},
    {GDK_KEY_Page_Down, 34},      {GDK_KEY_End, 35},      {GDK_KEY_Home, 36},
    {GDK_KEY_Left, 37},           {GDK_KEY_Up, 38},       {GDK_KEY_Right, 39},
    {GDK_KEY_Down, 40},           {GDK_KEY_Insert, 45},   {GDK_KEY_KP_Delete, 46},
    {GDK_KEY_KP_Space, 32},       {GDK_KEY_KP_Tab, 9},    {GDK_KEY_Delete, kKeyDelete},
}};

/// The part of an entry that the input method writes into, or null.
GtkWidget* TextOf(GtkWidget* widget) {
  for (GtkWidget* child = gtk_widget_get_first_child(widget); child != nullptr;
       child = gtk_widget_get_next_sibling(child)) {
    if (GTK_IS_TEXT(child)) {
      return child;
    }
    if (GtkWidget* inner = TextOf(child)) {
      return inner;
    }
  }
  return nullptr;
}

void NotePreedit(GtkText*, const char* preedit, gpointer composing) {
  *static_cast<bool*>(composing) = preedit != nullptr && *preedit != '\0';
}

}  // namespace

int KeyCodeOf(unsigned keyval) {
  for (const KeyName& key : kNamedKeys) {
    if (key.keyval == keyval) {
      return key.code;
    }
  }
  if (keyval >= GDK_KEY_F1 && keyval <= GDK_KEY_F24) {
    return kKeyF1 + static_cast<int>(keyval - GDK_KEY_F1);
  }
  const unsigned upper = gdk_keyval_to_upper(keyval);
  const bool letterOrDigit =
      (upper >= GDK_KEY_A && upper <= GDK_KEY_Z) || (upper >= GDK_KEY_0 && upper <= GDK_KEY_9);
  return letterOrDigit ? static_cast<int>(upper) : 0;
}

EntryKeys::EntryKeys(Gtk::Widget& entry) {
  auto keys = Gtk::EventControllerKey::create();
  keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
  keys->signal_key_pressed().connect(
      [this](unsigned keyval, unsigned, Gdk::ModifierType) {
        const int code = KeyCodeOf(keyval);
        return handler_ && code != 0 && !composing_ && Raise(handler_, code);
      },
      false);
  entry.add_controller(keys);
  if (GtkWidget* text = TextOf(entry.gobj())) {
    g_signal_connect(text, "preedit-changed", G_CALLBACK(NotePreedit), &composing_);
  }
}

void EntryKeys::SetHandler(KeyHandler handler) { handler_ = std::move(handler); }

}  // namespace kivandra::gtk
