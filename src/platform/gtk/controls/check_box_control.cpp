// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/controls/check_box_control.h"

#include "platform/gtk/guard.h"

namespace kivandra::gtk {

CheckBoxControl::CheckBoxControl(Gtk::CheckButton& box) : WidgetControl(box) {
  box.signal_toggled().connect([this] { Raise(click_); });
  TakeLabels(box);
}

void CheckBoxControl::TakeLabels(Gtk::CheckButton& box) {
  GList* labels = gtk_widget_list_mnemonic_labels(box.Gtk::Widget::gobj());
  for (GList* each = labels; each != nullptr; each = each->next) {
    if (!GTK_IS_LABEL(each->data)) {
      continue;
    }
    // The name itself in the place of the pointer to the label: with both, it would be read out twice.
    auto* accessible = GTK_ACCESSIBLE(box.Gtk::Widget::gobj());
    gtk_accessible_reset_relation(accessible, GTK_ACCESSIBLE_RELATION_LABELLED_BY);
    gtk_accessible_update_property(accessible, GTK_ACCESSIBLE_PROPERTY_LABEL,
                                   gtk_label_get_text(GTK_LABEL(each->data)), -1);
    auto click = Gtk::GestureClick::create();
    click->set_button(GDK_BUTTON_PRIMARY);
    click->signal_released().connect([this, label = GTK_WIDGET(each->data)](int, double x, double y) {
      // A finger that has left the label before it is lifted has thought better of it.
      if (gtk_widget_contains(label, x, y) != FALSE) {
        Guarded([this] { Box().activate(); });
      }
    });
    Glib::wrap(GTK_WIDGET(each->data))->add_controller(click);
  }
  g_list_free(labels);
}

Gtk::CheckButton& CheckBoxControl::Box() const { return dynamic_cast<Gtk::CheckButton&>(Widget()); }

int CheckBoxControl::Value() const { return Box().get_active() ? 1 : 0; }

void CheckBoxControl::SetValue(int value) { Box().set_active(value != 0); }

void CheckBoxControl::OnClick(std::function<void()> handler) { Alive(), click_ = std::move(handler); }

void CheckBoxControl::LetGo() {
  click_ = nullptr;
  WidgetControl::LetGo();
}

}  // namespace kivandra::gtk
