// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/mdi/mdi_area.h"

#include <algorithm>

#include "platform/gtk/guard.h"
#include "platform/gtk/mdi/mdi_layout.h"

namespace kivandra::gtk {

MdiArea::MdiArea() {
  g_object_set(gobj(), "accessible-role", GTK_ACCESSIBLE_ROLE_GROUP, nullptr);
  gtk_accessible_update_property(GTK_ACCESSIBLE(gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL, "Page windows", -1);
  add_css_class("kv-desk");
  set_overflow(Gtk::Overflow::HIDDEN);
  set_expand(true);
  signal_destroy().connect([this] {
    sizeChanged_.disconnect();
    while (Gtk::Widget* child = get_first_child()) {
      child->unparent();
    }
  });
}

MdiArea::~MdiArea() { sizeChanged_.disconnect(); }

bool MdiArea::Has(const MdiChild* child) const {
  return std::find(children_.begin(), children_.end(), child) != children_.end();
}

void MdiArea::Add(MdiChild& child) {
  child.set_visible(false);
  child.insert_at_end(*this);
  child.place_ = mdi::CascadePlace(RoomWidth(), RoomHeight(), made_++);
  children_.push_back(&child);
}

void MdiArea::Remove(MdiChild& child) {
  child.set_visible(false);
  std::erase(children_, &child);
  if (active_ == &child) {
    active_ = nullptr;  // it is gone: nobody tells it
    if (MdiChild* next = Following(&child)) {
      ActivateWithFocus(*next);
    } else {
      HoldFocus();
    }
  }
}

void MdiArea::HoldFocus() {
  // Left to itself the toolkit would give the focus to the next control in line, the frame's minimise button.
  set_focusable(true);
  grab_focus();
}

void MdiArea::Show(MdiChild& child, bool visible) {
  if (child.get_visible() == visible) {
    return;
  }
  child.set_visible(visible);
  if (visible) {
    ActivateWithFocus(child);
  } else if (active_ == &child) {
    Activate(Following(&child));
    if (active_ == nullptr) {
      HoldFocus();
    }
  }
}

void MdiArea::SetState(MdiChild& child, WindowState state) {
  if (child.state_ == state) {
    return;
  }
  const bool hadFocus = child.HasFocusInside();
  child.KeepFocus();
  child.ShowState(state);
  if (state == WindowState::Minimized) {
    child.iconSlot_ = child.iconSlot_ >= 0 ? child.iconSlot_ : FreeIconSlot();
    child.icon_ = IconPlace(child.iconSlot_);
  } else {
    child.iconSlot_ = -1;
  }
  queue_resize();
  if (child.get_visible() && state != WindowState::Minimized) {
    Activate(&child);
  } else if (active_ == &child) {
    MdiChild* next = Following(&child);
    Activate(next != nullptr ? next : &child);
  }
  if (hadFocus && active_ != nullptr) {
    active_->GiveFocus();
  }
  if (Has(&child)) {
    child.owner_.ChildResized();
  }
}

void MdiArea::Place(MdiChild& child, const Gdk::Rectangle& place) {
  const bool sized =
      place.get_width() != child.place_.get_width() || place.get_height() != child.place_.get_height();
  child.place_ = place;
  queue_allocate();
  if (sized) {
    child.owner_.ChildResized();
  }
}

void MdiArea::Activate(MdiChild* child) {
  if (child != nullptr && Has(child) && child->get_visible() && get_last_child() != child) {
    child->insert_at_end(*this);
  }
  MakeActive(child);
}

void MdiArea::ActivateWithFocus(MdiChild& child) {
  Activate(&child);
  if (active_ == &child) {
    child.GiveFocus();
  }
}

void MdiArea::MakeActive(MdiChild* child) {
  if (active_ == child || (child != nullptr && (!Has(child) || !child->get_visible()))) {
    return;
  }
  MdiChild* before = std::exchange(active_, child);
  if (before != nullptr) {
    before->KeepFocus();
    before->Dress(false);
    before->owner_.ChildDeactivated();
  }
  // The owner of the one before may have closed or activated others meanwhile.
  if (child != nullptr && active_ == child) {
    set_focusable(false);
    child->Dress(true);
    child->owner_.ChildActivated();
  }
}

void MdiArea::ActivateNext(bool backwards) {
  std::vector<MdiChild*> shown;
  std::copy_if(children_.begin(), children_.end(), std::back_inserter(shown),
               [](const MdiChild* each) { return each->get_visible(); });
  if (shown.empty()) {
    return;
  }
  const auto at = std::find(shown.begin(), shown.end(), active_);
  const std::size_t index = at == shown.end() ? 0 : static_cast<std::size_t>(at - shown.begin());
  const std::size_t step = backwards ? shown.size() - 1 : 1;
  ActivateWithFocus(*shown[(index + step) % shown.size()]);
}

MdiChild* MdiArea::Following(const MdiChild* leaving) const {
  MdiChild* minimised = nullptr;
  for (const Gtk::Widget* each = get_last_child(); each != nullptr; each = each->get_prev_sibling()) {
    auto* child = const_cast<MdiChild*>(dynamic_cast<const MdiChild*>(each));
    if (child == nullptr || child == leaving || !child->get_visible() || !Has(child)) {
      continue;
    }
    if (child->state_ != WindowState::Minimized) {
      return child;
    }
    minimised = minimised != nullptr ? minimised : child;
  }
  return minimised;
}

std::vector<MdiChild*> MdiArea::Shown(bool minimised) const {
  std::vector<MdiChild*> shown;
  for (const Gtk::Widget* each = get_first_child(); each != nullptr; each = each->get_next_sibling()) {
    auto* child = const_cast<MdiChild*>(dynamic_cast<const MdiChild*>(each));
    if (child != nullptr && child->get_visible() && Has(child) &&
        (child->state_ == WindowState::Minimized) == minimised) {
      shown.push_back(child);
    }
  }
  return shown;
}

void MdiArea::Restore(MdiChild& child) {
  if (child.state_ != WindowState::Normal) {
    child.ShowState(WindowState::Normal);
    queue_resize();
  }
}

void MdiArea::Cascade() {
  // From the back to the front, so that the active child ends as the last step.
  int step = 0;
  for (MdiChild* child : Shown(false)) {
    if (Has(child)) {  // an owner told before may have closed it
      Restore(*child);
      Place(*child, mdi::CascadePlace(RoomWidth(), RoomHeight(), step++));
    }
  }
  ArrangeIcons();
}

void MdiArea::Tile(bool horizontal) {
  std::vector<MdiChild*> shown = Shown(false);
  std::reverse(shown.begin(), shown.end());  // the active child first
  const bool icons = !Shown(true).empty();
  const auto places = mdi::Tiles(RoomWidth(), RoomHeight() - (icons ? mdi::kIconRow : 0),
                                 static_cast<int>(shown.size()), horizontal);
  for (std::size_t i = 0; i < shown.size(); ++i) {
    if (Has(shown[i])) {
      Restore(*shown[i]);
      Place(*shown[i], places[i]);
    }
  }
  ArrangeIcons();
}

void MdiArea::ArrangeIcons() {
  int slot = 0;
  for (MdiChild* child : children_) {
    if (child->get_visible() && child->state_ == WindowState::Minimized) {
      child->iconSlot_ = slot++;
    }
  }
  queue_allocate();
}

int MdiArea::FreeIconSlot() const {
  int slot = 0;
  const auto taken = [&](const MdiChild* each) {
    return each->state_ == WindowState::Minimized && each->iconSlot_ == slot;
  };
  while (std::any_of(children_.begin(), children_.end(), taken)) {
    ++slot;
  }
  return slot;
}

Gdk::Rectangle MdiArea::IconPlace(int slot) const { return mdi::IconPlace(RoomWidth(), RoomHeight(), slot); }

void MdiArea::MoveByHand(MdiChild& child, int x, int y) {
  constexpr int kInReach = 64;  // pixels of a title that stay inside
  const bool minimised = child.state_ == WindowState::Minimized;
  Gdk::Rectangle place = minimised ? child.icon_ : child.place_;
  place.set_x(std::clamp(x, std::min(0, kInReach - place.get_width()), std::max(0, RoomWidth() - kInReach)));
  place.set_y(std::clamp(y, 0, std::max(0, RoomHeight() - mdi::kIconHeight)));
  if (minimised) {
    child.icon_ = place;
    child.iconSlot_ = -1;
    queue_allocate();
  } else if (child.state_ == WindowState::Normal) {
    Place(child, place);
  }
}

void MdiArea::SizeByHand(MdiChild& child, const Gdk::Rectangle& place, int growX, int growY, bool atLeft,
                         bool atTop) {
  if (child.state_ != WindowState::Normal) {
    return;
  }
  const Gdk::Rectangle least = child.Smallest();
  const int width = std::max(place.get_width() + growX, least.get_width());
  int height = std::max(place.get_height() + growY, least.get_height());
  if (atTop) {
    height = std::min(height, std::max(least.get_height(), place.get_y() + place.get_height()));
  }
  Place(child,
        Gdk::Rectangle(atLeft ? place.get_x() + place.get_width() - width : place.get_x(),
                       atTop ? place.get_y() + place.get_height() - height : place.get_y(), width, height));
}

void MdiArea::LayOutUnshown() const {
  // Nobody sees the window yet: it is laid out here and now, so that places can be computed from its inner
  // size.
  auto* window = dynamic_cast<Gtk::Window*>(const_cast<Gtk::Root*>(get_root()));
  const bool laidOut = window != nullptr && window->get_mapped() && get_width() > 0;
  if (window == nullptr || laidOut || window->get_child() == nullptr) {
    return;
  }
  int width = 0;
  int height = 0;
  window->get_default_size(width, height);
  int least = 0;
  int natural = 0;
  int baseline = -1;
  if (Gtk::Widget* title = window->get_titlebar()) {
    title->measure(Gtk::Orientation::VERTICAL, -1, least, natural, baseline, baseline);
    height -= least;
  }
  Gtk::Widget* content = window->get_child();
  content->measure(Gtk::Orientation::HORIZONTAL, -1, least, natural, baseline, baseline);
  width = std::max(width, least);
  content->measure(Gtk::Orientation::VERTICAL, width, least, natural, baseline, baseline);
  height = std::max(height, least);
  content->size_allocate(Gtk::Allocation(0, 0, width, height), -1);
}

int MdiArea::RoomWidth() const { return LayOutUnshown(), get_width(); }

int MdiArea::RoomHeight() const { return LayOutUnshown(), get_height(); }

Gtk::SizeRequestMode MdiArea::get_request_mode_vfunc() const { return Gtk::SizeRequestMode::CONSTANT_SIZE; }

void MdiArea::measure_vfunc(Gtk::Orientation, int, int& minimum, int& natural, int& minimumBaseline,
                            int& naturalBaseline) const {
  // The area never asks for room: it must not force the frame wider than its screen.
  minimum = 0;
  natural = 0;
  minimumBaseline = -1;
  naturalBaseline = -1;
}

Gdk::Rectangle MdiArea::Visible(const MdiChild& child) const {
  switch (child.state_) {
    case WindowState::Maximized:
      return {0, 0, get_width(), get_height()};
    case WindowState::Minimized:
      return child.icon_;
    case WindowState::Normal:
      break;
  }
  return child.place_;
}

void MdiArea::size_allocate_vfunc(int width, int height, int) {
  for (Gtk::Widget* each = get_first_child(); each != nullptr; each = each->get_next_sibling()) {
    auto* child = dynamic_cast<MdiChild*>(each);
    if (child == nullptr || !child->should_layout()) {
      continue;
    }
    if (child->state_ == WindowState::Minimized && child->iconSlot_ >= 0) {
      child->icon_ = mdi::IconPlace(width, height, child->iconSlot_);
    }
    int leastWidth = 0;
    int leastHeight = 0;
    int natural = 0;
    int baseline = -1;
    child->measure(Gtk::Orientation::HORIZONTAL, -1, leastWidth, natural, baseline, baseline);
    child->measure(Gtk::Orientation::VERTICAL, -1, leastHeight, natural, baseline, baseline);
    const Gdk::Rectangle box = Visible(*child);
    const int rim = child->Rim();
    child->size_allocate(
        Gtk::Allocation(box.get_x() - rim, box.get_y() - rim, std::max(box.get_width() + 2 * rim, leastWidth),
                        std::max(box.get_height() + 2 * rim, leastHeight)),
        -1);
  }
  if ((width != lastWidth_ || height != lastHeight_) && get_mapped()) {
    lastWidth_ = width;
    lastHeight_ = height;
    // Owners may change the layout in return, so they hear of it when this one is done.
    sizeChanged_.disconnect();
    sizeChanged_ = Glib::signal_idle().connect(
        [this] {
          Guarded([this] { SizeChanged(); });
          return false;
        },
        Glib::PRIORITY_HIGH_IDLE);
  }
}

void MdiArea::SizeChanged() {
  const std::vector<MdiChild*> before = children_;
  for (MdiChild* child : before) {
    if (Has(child) && child->state_ == WindowState::Maximized) {
      child->owner_.ChildResized();
    }
  }
  Raise(resized_);
}

}  // namespace kivandra::gtk
