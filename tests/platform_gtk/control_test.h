// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform_gtk/hands.h"
#include "platform_gtk/window_test.h"

namespace kivandra::gtk {

/// Controls of one window under a real mouse and keyboard.
class ControlTest : public WindowTest {
 protected:
  /// Loads the form and shows it.
  void Show(const std::string& name) {
    form = forms.Load(name);
    form->SetVisible(true);
    Settle();
  }
  static Gtk::Widget& WidgetOf(Control& control) { return dynamic_cast<WidgetControl&>(control).Widget(); }
  static Gtk::Window& WindowOf(Gtk::Widget& widget) { return dynamic_cast<Gtk::Window&>(*widget.get_root()); }
  Hands& HandsOn(Gtk::Widget& widget) {
    if (!hands) {
      hands = std::make_unique<Hands>(WindowOf(widget));
    }
    return *hands;
  }
  /// Waits until a widget has its place.
  void Laid(Gtk::Widget& widget) {
    ASSERT_TRUE(Until([&] { return widget.get_mapped() && widget.get_width() > 0; }));
  }
  void Click(Gtk::Widget& widget, int button = 1) {
    Laid(widget);
    HandsOn(widget).Click(widget, button);
    Settle();
  }
  void Press(Gtk::Widget& widget, const std::vector<std::string>& keys) {
    HandsOn(widget).Press(keys);
    Settle();
  }
  static bool HasName(Gtk::Widget& widget) {
    auto* accessible = GTK_ACCESSIBLE(widget.gobj());
    return gtk_test_accessible_has_property(accessible, GTK_ACCESSIBLE_PROPERTY_LABEL) != FALSE ||
           gtk_test_accessible_has_relation(accessible, GTK_ACCESSIBLE_RELATION_LABELLED_BY) != FALSE;
  }
  static bool IsNamed(Gtk::Widget& widget, const char* name) {
    char* wrong = gtk_test_accessible_check_property(GTK_ACCESSIBLE(widget.gobj()),
                                                     GTK_ACCESSIBLE_PROPERTY_LABEL, name);
    g_free(wrong);
    return wrong == nullptr;
  }

  std::shared_ptr<Form> form;
  std::unique_ptr<Hands> hands;
};

}  // namespace kivandra::gtk
