// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/controls/file_choosers.h"

#include <gtk/gtk.h>

namespace kivandra::gtk {
namespace {

void Claim(GtkGesture* gesture) { gtk_gesture_set_state(gesture, GTK_EVENT_SEQUENCE_CLAIMED); }

gboolean IsMenuKey(GtkEventController* /*keys*/, guint keyval, guint /*keycode*/, GdkModifierType state) {
  return keyval == GDK_KEY_Menu || (keyval == GDK_KEY_F10 && (state & GDK_SHIFT_MASK) != 0) ? TRUE : FALSE;
}

/// Takes every wish for the chooser's own menu before the chooser sees it.
void ShutMenu(GtkWidget* chooser) {
  GtkGesture* click = gtk_gesture_click_new();
  gtk_gesture_single_set_button(GTK_GESTURE_SINGLE(click), GDK_BUTTON_SECONDARY);
  g_signal_connect(click, "pressed", G_CALLBACK(Claim), nullptr);
  GtkGesture* hold = gtk_gesture_long_press_new();
  g_signal_connect(hold, "pressed", G_CALLBACK(Claim), nullptr);
  GtkEventController* keys = gtk_event_controller_key_new();
  g_signal_connect(keys, "key-pressed", G_CALLBACK(IsMenuKey), nullptr);
  for (GtkEventController* each : {GTK_EVENT_CONTROLLER(click), GTK_EVENT_CONTROLLER(hold), keys}) {
    gtk_event_controller_set_propagation_phase(each, GTK_PHASE_CAPTURE);
    gtk_widget_add_controller(chooser, each);
  }
}

/// The bar of folders has arrows at its ends, which it gives a place only once it knows its folder; painted
/// before that, as happens on a slow disk or a busy machine, the toolkit complains of them. Until the bar
/// itself shows them they are out of sight.
void HideArrows(GtkWidget* below) {
  const bool isPathBar = g_strcmp0(G_OBJECT_TYPE_NAME(below), "GtkPathBar") == 0;
  for (GtkWidget* each = gtk_widget_get_first_child(below); each != nullptr;
       each = gtk_widget_get_next_sibling(each)) {
    if (isPathBar && gtk_widget_get_width(each) == 0) {
      gtk_widget_set_child_visible(each, FALSE);
    }
    HideArrows(each);
  }
}

/// The chooser tells in a box of its own that a folder can't be read: in the program's dress while the
/// chooser is open. One that was left while it still read tells that too, behind its back, and the box would
/// hold up the whole program: it goes.
void TidyBox(GtkWindow* box) {
  GtkWindow* owner = gtk_window_get_transient_for(box);
  if (owner != nullptr && !GTK_IS_FILE_CHOOSER(owner)) {
    return;
  }
  if (owner == nullptr || !gtk_widget_get_visible(GTK_WIDGET(owner))) {
    gtk_window_destroy(box);
  } else {
    gtk_widget_add_css_class(GTK_WIDGET(box), "kv-plain");
  }
}

void OnBoxShown(GtkWindow* box) {
  g_object_ref(box);
  g_idle_add_full(
      G_PRIORITY_HIGH,
      [](gpointer data) -> gboolean {
        TidyBox(GTK_WINDOW(data));
        return G_SOURCE_REMOVE;
      },
      box, g_object_unref);
}

void OnNewWindows(GListModel* windows, guint from, guint /*removed*/, guint added) {
  for (guint i = from; i < from + added; ++i) {
    auto* window = GTK_WINDOW(g_list_model_get_item(windows, i));
    if (GTK_IS_FILE_CHOOSER(window)) {
      ShutMenu(GTK_WIDGET(window));
      g_signal_connect(window, "map", G_CALLBACK(HideArrows), nullptr);
    } else if (GTK_IS_MESSAGE_DIALOG(window)) {
      // Its owner is not known before it is shown.
      g_signal_connect(window, "map", G_CALLBACK(OnBoxShown), nullptr);
    }
    g_object_unref(window);
  }
}

}  // namespace

void WatchFileChoosers() {
  g_signal_connect(gtk_window_get_toplevels(), "items-changed", G_CALLBACK(OnNewWindows), nullptr);
}

}  // namespace kivandra::gtk
