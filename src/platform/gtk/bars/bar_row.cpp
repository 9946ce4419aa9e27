// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/bars/bar_row.h"

#include <algorithm>

#include "platform/gtk/guard.h"

namespace kivandra::gtk {
namespace {

constexpr int kFiller = 12;
constexpr int kStretch = 120;
constexpr int kBannerWidth = 887;
constexpr int kBannerHeight = 89;
constexpr int kNarrowBannerWidth = 320;
constexpr int kNarrowBannerHeight = 68;
constexpr int kGap = 8;           // behind a stretchy tool
constexpr int kLeastWidth = 400;  // the bar is cut at its right edge rather than force the frame wider

int NaturalWidth(const Gtk::Widget& widget) {
  int least = 0;
  int natural = 0;
  int baseline = -1;
  widget.measure(Gtk::Orientation::HORIZONTAL, -1, least, natural, baseline, baseline);
  return natural;
}

}  // namespace

BarRow::BarRow() {
  g_object_set(gobj(), "accessible-role", GTK_ACCESSIBLE_ROLE_TOOLBAR, nullptr);
  add_css_class("kv-bar");
  set_overflow(Gtk::Overflow::HIDDEN);
  property_root().signal_changed().connect([this] { WatchFocus(); });
  signal_destroy().connect([this] {
    items_.clear();
    while (Gtk::Widget* child = get_first_child()) {
      child->unparent();
    }
  });
}

BarRow::~BarRow() {
  idle_.disconnect();
  focus_.disconnect();
}

void BarRow::WatchFocus() {
  focus_.disconnect();
  if (auto* window = dynamic_cast<Gtk::Window*>(get_root())) {
    focus_ =
        window->property_focus_widget().signal_changed().connect([this, window] { ShowFocused(*window); });
  }
}

void BarRow::ShowFocused(Gtk::Window& window) {
  Gtk::Widget* focus = window.get_focus();
  const int width = get_width();
  if (focus == nullptr || width <= 0 || !focus->is_ancestor(*this)) {
    return;
  }
  const auto spans = Spread(width);
  for (std::size_t i = 0; i < items_.size(); ++i) {
    if (focus != items_[i].widget && !focus->is_ancestor(*items_[i].widget)) {
      continue;
    }
    const int right = spans[i].x + spans[i].width;
    // The left edge comes last: of a tool that is wider than the bar the beginning is shown.
    const int offset = std::min(std::max(offset_, right - width + kGap), std::max(0, spans[i].x - kGap));
    if (offset != offset_) {
      offset_ = offset;
      queue_allocate();
    }
  }
}

void BarRow::Append(Gtk::Widget& tool, Role role) {
  tool.insert_at_end(*this);
  items_.push_back({&tool, role});
}

void BarRow::SetRole(Gtk::Widget& tool, Role role) {
  for (Item& item : items_) {
    if (item.widget == &tool) {
      item.role = role;
    }
  }
  queue_resize();
}

std::vector<BarRow::Span> BarRow::Spread(int width) const {
  std::vector<Span> spans(items_.size());
  int fixed = 0;
  int fillers = 0;
  int stretches = 0;
  int banners = 0;
  for (std::size_t i = 0; i < items_.size(); ++i) {
    const Item& item = items_[i];
    if (!item.widget->get_visible()) {
      continue;
    }
    switch (item.role) {
      case Role::Fixed:
        spans[i].width = NaturalWidth(*item.widget);
        fixed += spans[i].width;
        break;
      case Role::Filler:
        ++fillers;
        break;
      case Role::Stretch:
        ++stretches;
        fixed += kGap;
        break;
      case Role::Banner:
        ++banners;
        fixed += kGap;
        break;
    }
  }
  int over = width - fixed - fillers * kFiller - stretches * kStretch;
  const int banner = banners == 0 ? 0 : std::min(kBannerWidth, over / banners);
  over -= banner >= kNarrowBannerWidth ? banner * banners : 0;
  const int share = std::max(0, over) / std::max(1, fillers + stretches);
  int x = 0;
  for (std::size_t i = 0; i < items_.size(); ++i) {
    if (!items_[i].widget->get_visible()) {
      continue;
    }
    spans[i].x = x;
    if (items_[i].role == Role::Filler) {
      spans[i].width = kFiller + share;
    } else if (items_[i].role == Role::Stretch) {
      spans[i].width = kStretch + share;
    } else if (items_[i].role == Role::Banner) {
      spans[i].width = banner >= kNarrowBannerWidth ? banner : 0;
    }
    const bool gap = items_[i].role == Role::Stretch || items_[i].role == Role::Banner;
    x += spans[i].width + (gap ? kGap : 0);
  }
  return spans;
}

int BarRow::HeightOf(const Item& item, int width) const {
  int least = 0;
  int natural = 0;
  int baseline = -1;
  item.widget->measure(Gtk::Orientation::VERTICAL, width, least, natural, baseline, baseline);
  if (item.role == Role::Banner) {
    return std::max(least, width >= kBannerWidth ? kBannerHeight : kNarrowBannerHeight);
  }
  return std::max(least, natural);
}

Gtk::SizeRequestMode BarRow::get_request_mode_vfunc() const { return Gtk::SizeRequestMode::HEIGHT_FOR_WIDTH; }

void BarRow::measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                           int& minimumBaseline, int& naturalBaseline) const {
  minimum = 0;
  if (orientation == Gtk::Orientation::HORIZONTAL) {
    minimum = kLeastWidth;
  } else {
    const auto spans = Spread(forSize < 0 ? kLeastWidth : forSize);
    for (std::size_t i = 0; i < items_.size(); ++i) {
      if (spans[i].width > 0) {
        minimum = std::max(minimum, HeightOf(items_[i], spans[i].width));
      }
    }
  }
  natural = minimum;
  minimumBaseline = -1;
  naturalBaseline = -1;
}

void BarRow::size_allocate_vfunc(int width, int height, int) {
  const auto spans = Spread(width);
  const int whole = spans.empty() ? 0 : spans.back().x + spans.back().width;
  offset_ = std::clamp(offset_, 0, std::max(0, whole - width + kGap));
  offset_ = whole <= width ? 0 : offset_;
  for (std::size_t i = 0; i < items_.size(); ++i) {
    Gtk::Widget& widget = *items_[i].widget;
    if (!widget.get_visible()) {
      continue;
    }
    widget.set_child_visible(spans[i].width > 0);
    if (spans[i].width == 0) {
      continue;
    }
    const bool fills = dynamic_cast<Gtk::Separator*>(&widget) != nullptr;
    int least = 0;
    int natural = 0;
    int baseline = -1;
    widget.measure(Gtk::Orientation::HORIZONTAL, -1, least, natural, baseline, baseline);
    const int itemHeight = fills ? height : std::min(height, HeightOf(items_[i], spans[i].width));
    widget.size_allocate(Gtk::Allocation(spans[i].x - offset_, (height - itemHeight) / 2,
                                         std::max(least, spans[i].width), itemHeight),
                         -1);
    if (items_[i].role == Role::Stretch) {
      WatchWords(spans[i].width - std::max(0, whole - width));
    }
  }
}

void BarRow::WatchWords(int stretched) {
  if (!compact_) {
    return;
  }
  const bool compact = isCompact_ ? stretched < kStretch + wordsWidth_ : stretched < kStretch;
  if (compact == isCompact_ || idle_.connected()) {
    return;
  }
  // Tools change their size by this, which must not happen while they are laid out.
  idle_ = Glib::signal_idle().connect(
      [this, compact] {
        int before = 0;
        int after = 0;
        for (const Item& item : items_) {
          before += item.role == Role::Fixed ? NaturalWidth(*item.widget) : 0;
        }
        isCompact_ = compact;
        Raise(compact_, compact);
        for (const Item& item : items_) {
          after += item.role == Role::Fixed ? NaturalWidth(*item.widget) : 0;
        }
        wordsWidth_ = compact ? before - after : wordsWidth_;
        return false;
      },
      Glib::PRIORITY_HIGH_IDLE);
}

}  // namespace kivandra::gtk
