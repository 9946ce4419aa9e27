// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/bars/band_view.h"

#include <algorithm>

#include "platform/gtk/bars/tool_face.h"
#include "platform/gtk/controls/widget_control.h"

namespace kivandra::gtk {

BandView::BandView(ToolHost& host, const BandData& data)
    : data_{data.name, data.caption, data.kind, data.childBand, {}, data.row},
      visible_(data.kind != BandKind::SideBar) {
  for (const ToolData& tool : data.tools) {
    tools_.push_back(std::make_shared<ToolView>(host, tool, data.kind == BandKind::DropDown));
  }
}

Tool& BandView::Tools(const std::string& name) {
  for (const auto& tool : tools_) {
    if (tool->Name() == name) {
      return *tool;
    }
  }
  throw PlatformError(kInvalidCall, "the band " + data_.name + " has no tool " + name);
}

void BandView::SetVisible(bool visible) {
  visible_ = visible;
  if (widget_ != nullptr) {
    widget_->set_visible(visible);
  }
}

Twips BandView::Width() const {
  if (width_ >= 0 || widget_ == nullptr) {
    return width_;
  }
  int least = 0;
  int natural = 0;
  int baseline = -1;
  widget_->measure(Gtk::Orientation::HORIZONTAL, -1, least, natural, baseline, baseline);
  return kTwipsPerPixel * std::max(widget_->get_allocated_width(), natural);
}

Twips BandView::Height() const {
  if (widget_ == nullptr) {
    return 0;
  }
  int least = 0;
  int natural = 0;
  int baseline = -1;
  const int width = widget_->get_allocated_width();
  widget_->measure(Gtk::Orientation::VERTICAL, width > 0 ? width : -1, least, natural, baseline, baseline);
  return kTwipsPerPixel * std::max(widget_->get_allocated_height(), natural);
}

void BandView::DrawRow(Gtk::Box& top) {
  auto* row = Gtk::make_managed<BarRow>();
  for (const auto& tool : tools_) {
    tool->DrawInRow(*row);
  }
  row->OnCompact([this](bool compact) {
    for (const auto& tool : tools_) {
      tool->SetCompact(compact);
    }
  });
  SetAccessibleName(*row, data_.name);
  const bool large = std::any_of(tools_.begin(), tools_.end(), [](const auto& tool) {
    return tool->Data().display == ToolDisplay::ImageAboveText;
  });
  row->add_css_class(large ? "kv-main" : "kv-bonus");
  row->set_visible(visible_);
  top.append(*row);
  widget_ = row;
}

void BandView::DrawSide(Gtk::Box& side, const BandView* inside) {
  auto* tiles = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL);
  g_object_set(tiles->gobj(), "accessible-role", GTK_ACCESSIBLE_ROLE_TOOLBAR, nullptr);
  SetAccessibleName(*tiles, inside != nullptr ? inside->data_.name : data_.name);
  for (const BandView* band : {static_cast<const BandView*>(this), inside}) {
    if (band == nullptr) {
      continue;
    }
    for (const auto& tool : band->tools_) {
      tiles->append(*tool->DrawTile());
    }
  }
  auto* scroller = Gtk::make_managed<Gtk::ScrolledWindow>();
  scroller->add_css_class("kv-side");
  scroller->set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::EXTERNAL);
  scroller->set_vexpand(true);
  scroller->set_child(*tiles);
  scroller->set_visible(visible_);
  side.append(*scroller);
  widget_ = scroller;
}

DropDown& BandView::Menu() {
  if (menu_ == nullptr) {
    menu_ = std::make_unique<DropDown>(tools_);
  }
  return *menu_;
}

void BandView::LetGo() {
  menu_.reset();
  widget_ = nullptr;
  for (const auto& tool : tools_) {
    tool->LetGo();
  }
}

}  // namespace kivandra::gtk
