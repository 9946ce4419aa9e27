// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/mdi/mdi_keys.h"

#include "platform/gtk/guard.h"
#include "platform/gtk/mdi/mdi_area.h"

namespace kivandra::gtk {
namespace {

const Gdk::ModifierType kKeyModifiers =
    Gdk::ModifierType::CONTROL_MASK | Gdk::ModifierType::SHIFT_MASK | Gdk::ModifierType::ALT_MASK;

/// Moving or sizing the active child by the arrow keys, between Ctrl+F7 or Ctrl+F8 and Enter or Escape.
class KeyboardDrag {
 public:
  explicit KeyboardDrag(MdiArea& area) : area_(area) {}

  void Begin(bool sizing) {
    child_ = area_.Active();
    if (child_ == nullptr || child_->State() != WindowState::Normal) {
      child_ = nullptr;
      return;
    }
    sizing_ = sizing;
    before_ = child_->Place();
  }

  /// True if the key was meant for the drag.
  bool Key(unsigned keyval, Gdk::ModifierType modifiers) {
    if (child_ == nullptr) {
      return false;
    }
    if (area_.Active() != child_ || child_->State() != WindowState::Normal) {
      child_ = nullptr;  // something else came between
      return false;
    }
    const int step =
        (modifiers & Gdk::ModifierType::CONTROL_MASK) == Gdk::ModifierType::CONTROL_MASK ? 1 : 10;
    switch (keyval) {
      case GDK_KEY_Left:
        return Change(-step, 0);
      case GDK_KEY_Right:
        return Change(step, 0);
      case GDK_KEY_Up:
        return Change(0, -step);
      case GDK_KEY_Down:
        return Change(0, step);
      case GDK_KEY_Escape:
        area_.Place(*std::exchange(child_, nullptr), before_);
        return true;
      case GDK_KEY_Return:
      case GDK_KEY_KP_Enter:
        child_ = nullptr;
        return true;
      case GDK_KEY_Control_L:
      case GDK_KEY_Control_R:
        return false;
      default:
        child_ = nullptr;  // any other key keeps the place and does its own work
        return false;
    }
  }

 private:
  bool Change(int x, int y) {
    const Gdk::Rectangle place = child_->Place();
    if (sizing_) {
      area_.SizeByHand(*child_, place, x, y, false, false);
    } else {
      area_.MoveByHand(*child_, place.get_x() + x, place.get_y() + y);
    }
    return true;
  }

  MdiArea& area_;
  MdiChild* child_ = nullptr;  // compared with the area's active child before every use
  bool sizing_ = false;
  Gdk::Rectangle before_;
};

bool HandleKey(MdiArea& area, KeyboardDrag& drag, unsigned keyval, Gdk::ModifierType state) {
  const Gdk::ModifierType modifiers = state & kKeyModifiers;
  if (drag.Key(keyval, modifiers)) {
    return true;
  }
  const bool shifted = modifiers == (Gdk::ModifierType::CONTROL_MASK | Gdk::ModifierType::SHIFT_MASK);
  MdiChild* active = area.Active();
  if (active == nullptr ||
      (modifiers != Gdk::ModifierType::CONTROL_MASK && !(shifted && keyval == GDK_KEY_F6))) {
    return false;
  }
  switch (keyval) {
    case GDK_KEY_F4:
      active->GetOwner().ChildCloses();
      return true;
    case GDK_KEY_F5:
      area.SetState(*active, WindowState::Normal);
      return true;
    case GDK_KEY_F6:
      area.ActivateNext(shifted);
      return true;
    case GDK_KEY_F7:
      drag.Begin(false);
      return true;
    case GDK_KEY_F8:
      drag.Begin(true);
      return true;
    case GDK_KEY_F9:
      area.SetState(*active, WindowState::Minimized);
      return true;
    case GDK_KEY_F10:
      area.SetState(*active, WindowState::Maximized);
      return true;
    default:
      return false;
  }
}

}  // namespace

void AddMdiKeys(Gtk::Window& frame, MdiArea& area) {
  auto drag = std::make_shared<KeyboardDrag>(area);
  auto keys = Gtk::EventControllerKey::create();
  keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
  keys->signal_key_pressed().connect(
      [&area, drag](unsigned keyval, unsigned, Gdk::ModifierType state) {
        return Guarded([&] { return HandleKey(area, *drag, keyval, state); });
      },
      false);
  frame.add_controller(keys);

  auto tab = Gtk::EventControllerKey::create();
  tab->signal_key_pressed().connect(
      [&area](unsigned keyval, unsigned, Gdk::ModifierType state) {
        const bool isTab = keyval == GDK_KEY_Tab || keyval == GDK_KEY_ISO_Left_Tab;
        const bool control = (state & Gdk::ModifierType::CONTROL_MASK) == Gdk::ModifierType::CONTROL_MASK;
        if (!isTab || !control || area.Active() == nullptr) {
          return false;
        }
        const bool shift = (state & Gdk::ModifierType::SHIFT_MASK) == Gdk::ModifierType::SHIFT_MASK;
        Guarded([&] { area.ActivateNext(shift); });
        return true;
      },
      false);
  frame.add_controller(tab);
}

}  // namespace kivandra::gtk
