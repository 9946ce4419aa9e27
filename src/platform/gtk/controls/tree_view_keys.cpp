// SPDX-License-Identifier: GPL-3.0-or-later
// The keyboard of a tree. Walking up and down is the toolkit's own.
#include <algorithm>

#include "platform/gtk/controls/tree_view_control.h"
#include "platform/gtk/guard.h"
#include "platform/gtk/utf8_text.h"

namespace kivandra::gtk {
namespace {

constexpr gint64 kTypingPause = 1'000'000;  // microseconds; behind it a new word begins

bool Chooses(unsigned keyval) {
  return keyval == GDK_KEY_Return || keyval == GDK_KEY_KP_Enter || keyval == GDK_KEY_ISO_Enter ||
         keyval == GDK_KEY_space || keyval == GDK_KEY_KP_Space;
}

}  // namespace

void TreeViewControl::WatchKeys(Gtk::ListView& list) {
  auto keys = Gtk::EventControllerKey::create();
  keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
  connections_.emplace_back(keys->signal_key_pressed().connect(
      [this](unsigned keyval, unsigned, Gdk::ModifierType state) {
        const auto others =
            Gdk::ModifierType::ALT_MASK | Gdk::ModifierType::SUPER_MASK | Gdk::ModifierType::CONTROL_MASK;
        return (state & others) == Gdk::ModifierType{} && Guarded([&] { return KeyPressed(keyval); });
      },
      false));
  list.add_controller(keys);
}

/// The node whose row has the keyboard.
int TreeViewControl::Cursor() const {
  GtkWidget* around = gtk_widget_get_focus_child(Widget().gobj());
  const auto* row =
      around == nullptr ? nullptr : dynamic_cast<TreeRow*>(Glib::wrap(gtk_widget_get_first_child(around)));
  return row != nullptr && row->Node() != 0 ? row->Node() : selected_;
}

bool TreeViewControl::KeyPressed(unsigned keyval) {
  if (waiting_.connected()) {
    ShowChanges();
  }
  const int node = Cursor();
  if (node == 0) {
    return false;
  }
  if (keyval == GDK_KEY_space && !typed_.empty() && Typed(keyval, node)) {
    return true;  // inside of a name
  }
  if (Chooses(keyval)) {
    typed_.clear();
    lastClicked_ = node;
    if (Go(node) && Open(node, !nodes_.Of(node).expanded)) {
      Raise(click_, node);
    }
    return true;
  }
  return Walk(keyval, node) || Typed(keyval, node);
}

bool TreeViewControl::Walk(unsigned keyval, int node) {
  const TreeNodes::Node& found = nodes_.Of(node);
  const bool open = found.expanded && !found.children.empty();
  switch (keyval) {
    case GDK_KEY_Right:
    case GDK_KEY_KP_Right:
      if (open) {
        Go(nodes_.ShownBelow(node).front());
      } else {
        Open(node, true);
      }
      return true;
    case GDK_KEY_Left:
    case GDK_KEY_KP_Left:
      if (open) {
        Open(node, false);
      } else {
        Go(found.parent);
      }
      return true;
    case GDK_KEY_BackSpace:
      Go(found.parent);
      return true;
    case GDK_KEY_plus:
    case GDK_KEY_KP_Add:
      Open(node, true);
      return true;
    case GDK_KEY_minus:
    case GDK_KEY_KP_Subtract:
      Open(node, false);
      return true;
    case GDK_KEY_asterisk:
    case GDK_KEY_KP_Multiply:
      OpenBelow(node);
      return true;
    default:
      return false;
  }
}

/// Goes to the next node whose text starts with what was typed.
bool TreeViewControl::Typed(unsigned keyval, int node) {
  const gunichar letter = gdk_keyval_to_unicode(keyval);
  if (letter == 0 || g_unichar_iscntrl(letter) != FALSE) {
    return false;
  }
  const gint64 now = g_get_monotonic_time();
  if (now - typedAt_ > kTypingPause) {
    typed_.clear();
    if (letter == U' ') {
      return false;
    }
  }
  typedAt_ = now;
  const std::string typed = Glib::ustring(1, letter).casefold().raw();
  // Who types on may stay where he is; a letter that leads nowhere begins a new word.
  const int further = typed_.empty() ? 0 : NodeStarting(typed_ + typed, PlaceOf(node));
  typed_ = further != 0 ? typed_ + typed : typed;
  const int found = further != 0 ? further : NodeStarting(typed_, PlaceOf(node) + 1);
  if (found != 0) {
    Go(found);  // nothing of this object behind it, since it may be gone
  }
  return true;
}

/// The first shown node from this place on, and round from the top, whose text starts so; 0 if none does.
int TreeViewControl::NodeStarting(const std::string& folded, int place) const {
  const std::size_t count = shown_.size();
  for (std::size_t step = 0; step < count; ++step) {
    const int node = shown_[(static_cast<std::size_t>(std::max(0, place)) + step) % count];
    if (ShownText(nodes_.Of(node).text).casefold().raw().starts_with(folded)) {
      return node;
    }
  }
  return 0;
}

}  // namespace kivandra::gtk
