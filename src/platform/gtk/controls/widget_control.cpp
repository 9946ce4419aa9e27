// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/controls/widget_control.h"

#include <cmath>

namespace kivandra::gtk {
namespace {

/// The box that a control's place counts from: its window's content, or the child window's.
Gtk::Widget& Origin(Gtk::Widget& widget) {
  Gtk::Widget* origin = &widget;
  while (Gtk::Widget* parent = origin->get_parent()) {
    origin = parent;
    if (origin->has_css_class("kv-form")) {
      break;
    }
  }
  return *origin;
}

/// Length along one axis; what the control asks for while its window has not been laid out yet.
Twips Length(Gtk::Widget& widget, Gtk::Orientation orientation) {
  int pixels = orientation == Gtk::Orientation::HORIZONTAL ? widget.get_allocated_width()
                                                           : widget.get_allocated_height();
  if (pixels <= 0) {
    int minimum = 0;
    int baseline = -1;
    widget.measure(orientation, -1, minimum, pixels, baseline, baseline);
  }
  return kTwipsPerPixel * pixels;
}

}  // namespace

WidgetControl::WidgetControl(Gtk::Widget& widget) : widget_(&widget) {
  destroyed_ = widget.signal_destroy().connect([this] { widget_ = nullptr; });
}

WidgetControl::~WidgetControl() { destroyed_.disconnect(); }

void WidgetControl::LetGo() {
  destroyed_.disconnect();
  widget_ = nullptr;
}

Gtk::Widget& WidgetControl::Widget() const {
  if (widget_ == nullptr) {
    throw PlatformError(kObjectNotSet, "the control's window is gone");
  }
  return *widget_;
}

bool WidgetControl::Enabled() const { return Widget().get_sensitive(); }

void WidgetControl::SetEnabled(bool enabled) { Widget().set_sensitive(enabled); }

bool WidgetControl::Visible() const { return Widget().get_visible(); }

void WidgetControl::SetVisible(bool visible) { Widget().set_visible(visible); }

void WidgetControl::SetFocus() { Widget().grab_focus(); }

Twips WidgetControl::Left() const {
  double x = 0;
  double y = 0;
  Gtk::Widget& widget = Widget();
  widget.translate_coordinates(Origin(widget), 0, 0, x, y);
  return kTwipsPerPixel * std::lround(x);
}

Twips WidgetControl::Top() const {
  double x = 0;
  double y = 0;
  Gtk::Widget& widget = Widget();
  widget.translate_coordinates(Origin(widget), 0, 0, x, y);
  return kTwipsPerPixel * std::lround(y);
}

Twips WidgetControl::Width() const { return Length(Widget(), Gtk::Orientation::HORIZONTAL); }

Twips WidgetControl::Height() const { return Length(Widget(), Gtk::Orientation::VERTICAL); }

void WidgetControl::Move(Twips left, Twips top, Twips width, Twips height) {
  Gtk::Widget& widget = Widget();
  auto* fixed = dynamic_cast<Gtk::Fixed*>(widget.get_parent());
  if (fixed == nullptr) {
    return;  // the form file lays this control out
  }
  fixed->move(widget, static_cast<double>(left) / kTwipsPerPixel, static_cast<double>(top) / kTwipsPerPixel);
  widget.set_size_request(static_cast<int>(width / kTwipsPerPixel),
                          static_cast<int>(height / kTwipsPerPixel));
}

}  // namespace kivandra::gtk
