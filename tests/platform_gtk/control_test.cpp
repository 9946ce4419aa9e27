// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform_gtk/control_test.h"

namespace kivandra::gtk {

ControlTest::ControlTest() = default;

ControlTest::~ControlTest() = default;

void ControlTest::Show(const std::string& name) {
  form = forms.Load(name);
  form->SetVisible(true);
  Settle();
}

Gtk::Widget& ControlTest::WidgetOf(Control& control) {
  return dynamic_cast<WidgetControl&>(control).Widget();
}

Gtk::Window& ControlTest::WindowOf(Gtk::Widget& widget) {
  return dynamic_cast<Gtk::Window&>(*widget.get_root());
}

Hands& ControlTest::HandsOn(Gtk::Widget& widget) {
  if (!hands) {
    hands = std::make_unique<Hands>(WindowOf(widget));
  }
  return *hands;
}

void ControlTest::Laid(Gtk::Widget& widget) {
  ASSERT_TRUE(Until([&] { return widget.get_mapped() && widget.get_width() > 0; }));
}

void ControlTest::Click(Gtk::Widget& widget, int button) {
  Laid(widget);
  HandsOn(widget).Click(widget, button);
  Settle();
}

void ControlTest::Press(Gtk::Widget& widget, const std::vector<std::string>& keys) {
  HandsOn(widget).Press(keys);
  Settle();
}

bool ControlTest::HasName(Gtk::Widget& widget) {
  auto* accessible = GTK_ACCESSIBLE(widget.gobj());
  return gtk_test_accessible_has_property(accessible, GTK_ACCESSIBLE_PROPERTY_LABEL) != FALSE ||
         gtk_test_accessible_has_relation(accessible, GTK_ACCESSIBLE_RELATION_LABELLED_BY) != FALSE;
}

bool ControlTest::IsNamed(Gtk::Widget& widget, const char* name) {
  char* wrong =
      gtk_test_accessible_check_property(GTK_ACCESSIBLE(widget.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL, name);
  g_free(wrong);
  return wrong == nullptr;
}

}  // namespace kivandra::gtk
