// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <utility>

#include "engine/desktop_input.h"
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
  kivandra::testing::DesktopInput& Hands(Gtk::Widget& widget) {
    if (!hands) {
      hands = std::make_unique<kivandra::testing::DesktopInput>(widget.gobj());
    }
    return *hands;
  }
  /// A place of a widget as the display counts it on the window.
  static std::pair<int, int> OnWindow(Gtk::Widget& widget, double x, double y) {
    GtkNative* native = gtk_widget_get_native(widget.gobj());
    double left = 0;
    double top = 0;
    gtk_widget_translate_coordinates(widget.gobj(), GTK_WIDGET(native), x, y, &x, &y);
    gtk_native_get_surface_transform(native, &left, &top);
    return {static_cast<int>(x + left), static_cast<int>(y + top)};
  }
  /// Waits until a widget has its place.
  void Laid(Gtk::Widget& widget) {
    ASSERT_TRUE(Until([&] { return widget.get_mapped() && widget.get_width() > 0; }));
  }
  void Click(Gtk::Widget& widget, int button = 1) {
    Laid(widget);
    const auto [x, y] = OnWindow(widget, widget.get_width() / 2.0, widget.get_height() / 2.0);
    Hands(widget).Click(x, y, button);
    Settle();
  }
  void Press(Gtk::Widget& widget, const std::vector<std::string>& keys) {
    Hands(widget).Press(keys);
    Settle();
  }
  /// Every widget below this one that passes the test.
  static std::vector<Gtk::Widget*> Below(Gtk::Widget& widget,
                                         const std::function<bool(Gtk::Widget&)>& wanted) {
    std::vector<Gtk::Widget*> found;
    for (Gtk::Widget* each = widget.get_first_child(); each != nullptr; each = each->get_next_sibling()) {
      if (wanted(*each)) {
        found.push_back(each);
      }
      const auto deeper = Below(*each, wanted);
      found.insert(found.end(), deeper.begin(), deeper.end());
    }
    return found;
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
  std::unique_ptr<kivandra::testing::DesktopInput> hands;
};

}  // namespace kivandra::gtk
