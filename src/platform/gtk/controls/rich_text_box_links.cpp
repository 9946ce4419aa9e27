// SPDX-License-Identifier: GPL-3.0-or-later
// Links of a rich text box by mouse and by keyboard.
#include <algorithm>

#include "platform/gtk/controls/rich_text_box_control.h"
#include "platform/gtk/guard.h"

namespace kivandra::gtk {
namespace {

/// Where an event is, in pixels of the widget.
bool PlaceOf(GdkEvent* event, Gtk::Widget& widget, double& x, double& y) {
  GtkNative* native = gtk_widget_get_native(widget.gobj());
  double surfaceX = 0;
  double surfaceY = 0;
  if (native == nullptr || gdk_event_get_position(event, &x, &y) == FALSE) {
    return false;
  }
  gtk_native_get_surface_transform(native, &surfaceX, &surfaceY);
  return gtk_widget_translate_coordinates(GTK_WIDGET(native), widget.gobj(), x - surfaceX, y - surfaceY, &x,
                                          &y) != FALSE;
}

bool IsEnter(unsigned keyval) {
  return keyval == GDK_KEY_Return || keyval == GDK_KEY_KP_Enter || keyval == GDK_KEY_ISO_Enter;
}

}  // namespace

void RichTextBoxControl::WatchMouse(Gtk::TextView& view) {
  // Not a gesture: the toolkit's own one, which selects text, would take the click away from it.
  GtkEventController* events = gtk_event_controller_legacy_new();
  gtk_event_controller_set_propagation_phase(events, GTK_PHASE_CAPTURE);
  g_signal_connect(
      events, "event", G_CALLBACK(+[](GtkEventControllerLegacy*, GdkEvent* event, gpointer self) -> gboolean {
        return Guarded([&] { return static_cast<RichTextBoxControl*>(self)->MouseEvent(event); }) ? TRUE
                                                                                                  : FALSE;
      }),
      this);
  gtk_widget_add_controller(view.Gtk::Widget::gobj(), events);
  auto motion = Gtk::EventControllerMotion::create();
  motion->signal_motion().connect([this](double x, double y) {
    if (!gone_) {
      Guarded([&] { View().set_cursor(LinkUnder(x, y) ? "pointer" : "text"); });
    }
  });
  view.add_controller(motion);
}

bool RichTextBoxControl::MouseEvent(GdkEvent* event) {
  if (gone_) {
    return false;
  }
  const GdkEventType type = gdk_event_get_event_type(event);
  const bool down = type == GDK_BUTTON_PRESS || type == GDK_TOUCH_BEGIN;
  const bool up = type == GDK_BUTTON_RELEASE || type == GDK_TOUCH_END;
  double x = 0;
  double y = 0;
  if ((!down && !up) || !PlaceOf(event, View(), x, y)) {
    return false;
  }
  const bool touch = type == GDK_TOUCH_BEGIN || type == GDK_TOUCH_END;
  const guint button = touch ? GDK_BUTTON_PRIMARY : gdk_button_event_get_button(event);
  const auto link = LinkUnder(x, y);
  if (button == GDK_BUTTON_SECONDARY) {
    if (up && link) {
      Tell(WM_RBUTTONUP, *link);
    }
    return link.has_value();  // no menu over a link
  }
  if (button != GDK_BUTTON_PRIMARY) {
    return false;
  }
  if (down) {
    press_.reset();
    if (link) {
      press_ = Press{*link, x, y, View().get_buffer()->get_has_selection()};
      Tell(WM_LBUTTONDOWN, *link);
    }
    return false;
  }
  const auto press = std::exchange(press_, std::nullopt);
  if (!press || press->link != link) {
    return false;
  }
  const bool dragged = View().drag_check_threshold(static_cast<int>(press->x), static_cast<int>(press->y),
                                                   static_cast<int>(x), static_cast<int>(y)) ||
                       (!press->selected && View().get_buffer()->get_has_selection());
  if (!dragged) {
    Tell(WM_LBUTTONUP, *link);
  }
  return false;
}

void RichTextBoxControl::WatchKeys(Gtk::TextView& view) {
  auto keys = Gtk::EventControllerKey::create();
  keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
  keys->signal_key_pressed().connect(
      [this](unsigned keyval, unsigned, Gdk::ModifierType state) {
        const auto others =
            Gdk::ModifierType::CONTROL_MASK | Gdk::ModifierType::ALT_MASK | Gdk::ModifierType::SUPER_MASK;
        return (state & others) == Gdk::ModifierType{} && Guarded([&] { return KeyPressed(keyval); });
      },
      false);
  view.add_controller(keys);
  view.get_buffer()->signal_mark_set().connect(
      [this](const Gtk::TextIter&, const Glib::RefPtr<Gtk::TextMark>& mark) {
        Guarded([&] {
          if (!gone_ && mark == View().get_buffer()->get_insert()) {
            MarkCurrentLink();
          }
        });
      });
  view.property_has_focus().signal_changed().connect([this] { Guarded([this] { MarkCurrentLink(); }); });
}

bool RichTextBoxControl::KeyPressed(unsigned keyval) {
  if (gone_) {
    return false;
  }
  if (keyval == GDK_KEY_Tab || keyval == GDK_KEY_KP_Tab) {
    return GoToLink(true);
  }
  if (keyval == GDK_KEY_ISO_Left_Tab) {
    return GoToLink(false);
  }
  if (IsEnter(keyval)) {
    if (const auto link = LinkAtCursor()) {
      Tell(WM_LBUTTONUP, *link);
      return true;
    }
  }
  return false;
}

bool RichTextBoxControl::GoToLink(bool forward) {
  const int cursor = Cursor();
  const auto current = ShownAt(cursor);
  const auto behind = std::upper_bound(shown_.begin(), shown_.end(), cursor,
                                       [](int at, const ShownLink& link) { return at < link.begin; });
  auto next = static_cast<std::ptrdiff_t>(behind - shown_.begin());
  const auto count = static_cast<std::ptrdiff_t>(shown_.size());
  const auto link = [this](std::ptrdiff_t index) { return shown_[static_cast<std::size_t>(index)].link; };
  if (forward) {
    // A link that is broken over two lines of the buffer is one stop.
    while (current && next < count && link(next) == shown_[*current].link) {
      ++next;
    }
  } else {
    --next;
    while (current && next >= 0 && link(next) == shown_[*current].link) {
      --next;
    }
    while (next > 0 && link(next - 1) == link(next)) {
      --next;
    }
  }
  if (next < 0 || next >= count) {
    return false;
  }
  const auto buffer = View().get_buffer();
  buffer->place_cursor(buffer->get_iter_at_offset(shown_[static_cast<std::size_t>(next)].begin));
  View().scroll_to(buffer->get_insert());
  return true;
}

void RichTextBoxControl::MarkCurrentLink() {
  if (gone_) {
    return;
  }
  Gtk::TextView& view = View();
  const auto buffer = view.get_buffer();
  // The old place is remembered: looking for it in a long text would be felt.
  if (const auto old = std::exchange(marked_, std::nullopt)) {
    buffer->remove_tag(currentTag_, buffer->get_iter_at_offset(old->begin),
                       buffer->get_iter_at_offset(old->end));
  }
  if (const auto current = view.has_focus() ? ShownAt(Cursor()) : std::nullopt) {
    marked_ = shown_[*current];
    buffer->apply_tag(currentTag_, buffer->get_iter_at_offset(marked_->begin),
                      buffer->get_iter_at_offset(marked_->end));
  }
}

std::optional<std::size_t> RichTextBoxControl::ShownAt(int character) const {
  const auto after = std::upper_bound(shown_.begin(), shown_.end(), character,
                                      [](int at, const ShownLink& link) { return at < link.begin; });
  if (after == shown_.begin() || character >= std::prev(after)->end) {
    return std::nullopt;
  }
  return static_cast<std::size_t>(std::prev(after) - shown_.begin());
}

std::optional<std::size_t> RichTextBoxControl::LinkUnder(double x, double y) const {
  int bufferX = 0;
  int bufferY = 0;
  View().window_to_buffer_coords(Gtk::TextWindowType::WIDGET, static_cast<int>(x), static_cast<int>(y),
                                 bufferX, bufferY);
  Gtk::TextIter place;
  if (!View().get_iter_at_location(place, bufferX, bufferY)) {
    return std::nullopt;
  }
  const auto shown = ShownAt(place.get_offset());
  return shown ? std::optional(shown_[*shown].link) : std::nullopt;
}

std::optional<std::size_t> RichTextBoxControl::LinkAtCursor() const {
  const auto shown = ShownAt(Cursor());
  return shown ? std::optional(shown_[*shown].link) : std::nullopt;
}

void RichTextBoxControl::Tell(unsigned message, std::size_t link) {
  told_.emplace_back(message, content_->links[link]);
  if (!telling_.connected()) {
    telling_ = Glib::signal_idle().connect([this] { return TellNext(), false; }, Glib::PRIORITY_DEFAULT);
  }
}

void RichTextBoxControl::TellNext() {
  const auto [message, span] = told_.front();
  told_.pop_front();
  telling_.disconnect();
  if (!told_.empty()) {
    telling_ = Glib::signal_idle().connect([this] { return TellNext(), false; }, Glib::PRIORITY_DEFAULT);
  }
  Raise(link_, message, span);  // the window may be gone afterwards
}

}  // namespace kivandra::gtk
