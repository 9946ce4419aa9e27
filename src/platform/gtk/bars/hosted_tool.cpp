// SPDX-License-Identifier: GPL-3.0-or-later
// The part of a tool that holds a control of the window.
#include <utility>

#include "platform/gtk/bars/bar_tool.h"
#include "platform/gtk/controls/widget_control.h"
#include "platform/platform_error.h"

namespace kivandra::gtk {
namespace {

void TakeOut(GtkWidget* widget) {
  GtkWidget* parent = gtk_widget_get_parent(widget);
  if (parent != nullptr && GTK_IS_BOX(parent)) {
    gtk_box_remove(GTK_BOX(parent), widget);
  } else if (parent != nullptr) {
    gtk_widget_unparent(widget);
  }
}

/// The part of a hosted list box that opens its list has no name of its own.
void NameListButton(GtkWidget* widget) {
  for (GtkWidget* child = gtk_widget_get_first_child(widget); child != nullptr;
       child = gtk_widget_get_next_sibling(child)) {
    if (GTK_IS_TOGGLE_BUTTON(child)) {
      gtk_accessible_update_property(GTK_ACCESSIBLE(child), GTK_ACCESSIBLE_PROPERTY_LABEL, "Show list", -1);
    }
    NameListButton(child);
  }
}

}  // namespace

void ToolView::Release() {
  if (hosted_ != nullptr) {
    TakeOut(hosted_);
    gtk_box_append(Host().Parking().gobj(), hosted_);
    g_object_unref(std::exchange(hosted_, nullptr));
    widget_->set_visible(false);
  }
}

void ToolView::SetCustom(Control* control) {
  (void)Host();
  if (data_.kind != ToolKind::Hosted || widget_ == nullptr) {
    throw PlatformError(kInvalidCall, "the tool " + data_.name + " can't hold a control");
  }
  Release();
  if (control == nullptr) {
    return;
  }
  auto* wrapper = dynamic_cast<WidgetControl*>(control);
  if (wrapper == nullptr) {
    throw PlatformError(kInvalidCall, "the control for the tool " + data_.name + " has no widget");
  }
  Gtk::Widget& widget = wrapper->Widget();
  hosted_ = GTK_WIDGET(g_object_ref(widget.gobj()));
  TakeOut(hosted_);
  gtk_box_append(GTK_BOX(widget_->gobj()), hosted_);
  widget.set_hexpand(true);
  widget.set_visible(true);
  widget_->set_visible(true);
  role_ = widget.has_css_class("kv-banner")   ? BarRow::Role::Banner
          : widget.has_css_class("kv-spacer") ? BarRow::Role::Filler
          : GTK_IS_COMBO_BOX(hosted_)         ? BarRow::Role::Stretch
                                              : BarRow::Role::Fixed;
  if (role_ == BarRow::Role::Stretch) {
    NameListButton(hosted_);
  }
  row_->SetRole(*widget_, role_);
}

}  // namespace kivandra::gtk
