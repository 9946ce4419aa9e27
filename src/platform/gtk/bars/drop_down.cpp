// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/bars/drop_down.h"

#include <algorithm>

#include "platform/gtk/bars/tool_face.h"

namespace kivandra::gtk {
namespace {

constexpr int kGap = 2;   // between an opener and what it opens
constexpr int kEdge = 7;  // from a row to the outer edge of its drop-down: padding and line

}  // namespace

DropDown::DropDown(const ToolViews& tools) : tools_(tools), popover_(std::make_unique<Gtk::Popover>()) {
  rows_ = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL);
  g_object_set(rows_->gobj(), "accessible-role", GTK_ACCESSIBLE_ROLE_MENU, nullptr);
  for (const auto& tool : tools_) {
    rows_->append(*tool->DrawMenuRow());
  }
  popover_->set_child(*rows_);
  popover_->set_has_arrow(false);
  popover_->add_css_class("kv-drop-down");
  popover_->signal_closed().connect([this] { Closed(); });
  auto keys = Gtk::EventControllerKey::create();
  keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
  keys->signal_key_pressed().connect(
      [this](unsigned keyval, unsigned, Gdk::ModifierType) { return Key(keyval); }, false);
  popover_->add_controller(keys);
}

DropDown::~DropDown() {
  closed_ = nullptr;
  opener_ = nullptr;
  anchorGone_.disconnect();
  if (popover_->get_parent() != nullptr) {
    popover_->unparent();
  }
}

void DropDown::HangOn(Gtk::Widget& anchor) {
  if (popover_->get_parent() == &anchor) {
    return;
  }
  anchorGone_.disconnect();
  if (popover_->get_parent() != nullptr) {
    popover_->unparent();
  }
  popover_->set_parent(anchor);
  anchorGone_ = anchor.signal_destroy().connect([this] {
    anchorGone_.disconnect();
    opener_ = nullptr;
    popover_->unparent();
  });
}

void DropDown::Open(ToolView& opener, bool intoRows) {
  if (opener.Widget() == nullptr) {
    return;
  }
  HangOn(*opener.Widget());
  const bool beside = opener.InDropDown();
  popover_->set_position(beside ? Gtk::PositionType::RIGHT : Gtk::PositionType::BOTTOM);
  popover_->set_halign(beside ? Gtk::Align::FILL : Gtk::Align::START);
  popover_->set_valign(beside ? Gtk::Align::START : Gtk::Align::FILL);
  popover_->set_offset(beside ? kEdge + kGap : 0, beside ? -kEdge : kGap);
  // The outermost one alone catches clicks beside it: so a click on another row of it counts at once.
  popover_->set_autohide(!beside);
  SetAccessibleName(*rows_, AccessibleNameOf(opener.Data(), {}));
  opener_ = &opener;
  opener.ShowOpen(true);
  popover_->popup();
  if (intoRows) {
    FocusFirst();
  }
}

void DropDown::Close() {
  if (opener_ != nullptr) {
    popover_->popdown();
  }
}

void DropDown::Closed() {
  ToolView* opener = std::exchange(opener_, nullptr);
  if (opener == nullptr) {
    return;
  }
  opener->ShowOpen(false);
  auto* window = dynamic_cast<Gtk::Window*>(popover_->get_root());
  Gtk::Widget* place = opener->KeyboardPlace();
  if (window != nullptr && place != nullptr && (HasKeyboard() || window->get_focus() == nullptr)) {
    place->grab_focus();
  }
  if (closed_) {
    closed_();
  }
}

bool DropDown::Holds(const ToolView& tool) const {
  return std::any_of(tools_.begin(), tools_.end(), [&](const auto& each) { return each.get() == &tool; });
}

bool DropDown::HasKeyboard() const {
  auto* window = dynamic_cast<Gtk::Window*>(popover_->get_root());
  Gtk::Widget* focus = window != nullptr ? window->get_focus() : nullptr;
  return focus != nullptr && (focus == popover_.get() || focus->is_ancestor(*popover_));
}

int DropDown::Focused() const {
  for (std::size_t i = 0; i < tools_.size(); ++i) {
    if (tools_[i]->Widget() != nullptr && tools_[i]->Widget()->has_focus()) {
      return static_cast<int>(i);
    }
  }
  return -1;
}

void DropDown::FocusFirst() { FocusFrom(0, 1); }

void DropDown::FocusFrom(int index, int direction) {
  const int count = static_cast<int>(tools_.size());
  for (int tried = 0; tried < count; ++tried, index += direction) {
    Gtk::Widget* row = tools_[static_cast<std::size_t>(((index % count) + count) % count)]->Widget();
    if (row != nullptr && row->get_focusable() && row->is_sensitive()) {
      row->grab_focus();
      return;
    }
  }
}

void DropDown::Step(int direction) {
  const int focused = Focused();
  if (focused < 0) {
    FocusFrom(direction > 0 ? 0 : -1, direction);
  } else {
    FocusFrom(focused + direction, direction);
  }
}

bool DropDown::Key(unsigned keyval) {
  const bool nested = opener_ != nullptr && opener_->InDropDown();
  switch (keyval) {
    case GDK_KEY_Down:
    case GDK_KEY_KP_Down:
    case GDK_KEY_Tab:
      Step(1);
      return true;
    case GDK_KEY_Up:
    case GDK_KEY_KP_Up:
    case GDK_KEY_ISO_Left_Tab:
      Step(-1);
      return true;
    case GDK_KEY_Home:
    case GDK_KEY_KP_Home:
      FocusFrom(0, 1);
      return true;
    case GDK_KEY_End:
    case GDK_KEY_KP_End:
      FocusFrom(-1, -1);
      return true;
    case GDK_KEY_Right:
    case GDK_KEY_KP_Right:
      if (const int row = Focused(); row >= 0) {
        tools_[static_cast<std::size_t>(row)]->Open(false);
      }
      return true;
    case GDK_KEY_Left:
    case GDK_KEY_KP_Left:
      if (nested) {
        Close();
      }
      return true;
    case GDK_KEY_Escape:
      Close();
      return true;
    default:
      return false;
  }
}

}  // namespace kivandra::gtk
