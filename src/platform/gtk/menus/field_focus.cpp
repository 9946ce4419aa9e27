// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/menus/field_focus.h"

#include <utility>

#include "platform/gtk/guard.h"

namespace kivandra::gtk {
namespace {

void SetWeak(GtkWidget*& place, GtkWidget* widget) { g_set_weak_pointer(&place, widget); }

bool IsField(GtkWidget* widget) {
  return GTK_IS_TEXT(widget) || GTK_IS_TEXT_VIEW(widget) || GTK_IS_EDITABLE(widget);
}

}  // namespace

FieldFocus::FieldFocus(Gtk::Widget& menus) : menus_(menus.gobj()) {
  GtkRoot* root = gtk_widget_get_root(menus_);
  if (root == nullptr || !GTK_IS_WINDOW(root)) {
    return;
  }
  SetWeak(window_, GTK_WIDGET(root));
  changed_ = g_signal_connect_swapped(root, "notify::focus-widget", G_CALLBACK(OnFocusChanged), this);
  Remember(gtk_window_get_focus(GTK_WINDOW(window_)));
}

FieldFocus::~FieldFocus() {
  if (window_ != nullptr) {
    g_signal_handler_disconnect(window_, changed_);
  }
  SetWeak(window_, nullptr);
  SetWeak(outside_, nullptr);
}

void FieldFocus::OnFocusChanged(FieldFocus* self) {
  Guarded([self] { self->Remember(gtk_window_get_focus(GTK_WINDOW(self->window_))); });
}

void FieldFocus::Remember(GtkWidget* focus) {
  if (!held_ && focus != nullptr && !gtk_widget_is_ancestor(focus, menus_)) {
    SetWeak(outside_, focus);
  }
}

bool FieldFocus::InMenus() const {
  GtkWidget* focus = window_ != nullptr ? gtk_window_get_focus(GTK_WINDOW(window_)) : nullptr;
  return focus != nullptr && gtk_widget_is_ancestor(focus, menus_);
}

GtkWidget* FieldFocus::Field() const {
  GtkWidget* focus = window_ == nullptr   ? nullptr
                     : held_ || InMenus() ? outside_
                                          : gtk_window_get_focus(GTK_WINDOW(window_));
  return focus != nullptr && gtk_widget_get_mapped(focus) && IsField(focus) ? focus : nullptr;
}

void FieldFocus::Restore() {
  const bool held = std::exchange(held_, false);
  if (window_ == nullptr || outside_ == nullptr || !gtk_widget_get_mapped(outside_)) {
    return;
  }
  GtkWidget* focus = gtk_window_get_focus(GTK_WINDOW(window_));
  if (!held && focus != nullptr && !gtk_widget_is_ancestor(focus, menus_)) {
    return;  // it has gone somewhere of its own
  }
  if (GTK_IS_TEXT(outside_)) {
    gtk_text_grab_focus_without_selecting(GTK_TEXT(outside_));
  } else {
    gtk_widget_grab_focus(outside_);
  }
}

}  // namespace kivandra::gtk
