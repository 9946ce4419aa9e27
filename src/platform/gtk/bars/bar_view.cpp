// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/bars/bar_view.h"

#include <algorithm>
#include <filesystem>

#include "platform/gtk/guard.h"

namespace kivandra::gtk {
namespace {

/// The numbered pictures of a folder: "051-back.svg" has the number 51.
std::map<int, std::string> NumberedPictures(const std::string& directory) {
  std::map<int, std::string> pictures;
  std::error_code error;
  for (const auto& file : std::filesystem::directory_iterator(directory, error)) {
    const std::string name = file.path().filename().string();
    if (name.size() > 4 && g_ascii_isdigit(name[0]) && name[3] == '-') {
      pictures[std::atoi(name.substr(0, 3).c_str())] = file.path().string();
    }
  }
  return pictures;
}

}  // namespace

BandView::BandView(BarView& bars, const BandData& data)
    : data_{data.name, data.caption, data.kind, data.childBand, {}, data.row},
      visible_(data.kind != BandKind::SideBar) {
  for (const ToolData& tool : data.tools) {
    tools_.push_back(std::make_unique<ToolView>(bars, tool));
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
  return kTwipsPerPixel * std::max(widget_->get_width(), natural);
}

Twips BandView::Height() const {
  if (widget_ == nullptr) {
    return 0;
  }
  int least = 0;
  int natural = 0;
  int baseline = -1;
  widget_->measure(Gtk::Orientation::VERTICAL, std::max(-1, widget_->get_width() - 1), least, natural,
                   baseline, baseline);
  return kTwipsPerPixel * std::max(widget_->get_height(), natural);
}

BarView::BarView(Gtk::Box& top, Gtk::Box& side, const std::string& iconDirectory)
    : WidgetControl(top), top_(top), side_(side), pictures_(NumberedPictures(iconDirectory)) {}

BarView::~BarView() = default;

Gtk::Box& BarView::Parking() {
  if (parking_ == nullptr) {
    parking_ = Gtk::make_managed<Gtk::Box>();
    parking_->set_visible(false);
    top_.append(*parking_);
  }
  return *parking_;
}

void BarView::Lay(const std::vector<BandData>& bands) {
  Alive();
  for (const BandData& band : bands) {
    bands_.push_back(std::make_unique<BandView>(*this, band));
  }
  std::vector<BandView*> rows;
  for (const auto& band : bands_) {
    if (band->data_.kind == BandKind::ToolBar) {
      rows.push_back(band.get());
    } else if (band->data_.kind == BandKind::SideBar) {
      LaySide(*band);
    }
  }
  std::stable_sort(rows.begin(), rows.end(), [](const BandView* one, const BandView* other) {
    return one->data_.row < other->data_.row;
  });
  for (BandView* band : rows) {
    LayRow(*band);
  }
}

void BarView::LayRow(BandView& band) {
  auto* row = Gtk::make_managed<BarRow>();
  for (const auto& tool : band.tools_) {
    tool->Draw(*row);
  }
  row->OnCompact([&band](bool compact) {
    for (const auto& tool : band.tools_) {
      tool->SetCompact(compact);
    }
  });
  gtk_accessible_update_property(GTK_ACCESSIBLE(row->gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                 band.data_.name.c_str(), -1);
  const bool large = std::any_of(band.tools_.begin(), band.tools_.end(), [](const auto& tool) {
    return tool->data_.display == ToolDisplay::ImageAboveText;
  });
  row->add_css_class(large ? "kv-main" : "kv-bonus");
  top_.append(*row);
  band.widget_ = row;
}

void BarView::LaySide(BandView& band) {
  constexpr int kTileGap = 12;
  auto* tiles = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, kTileGap);
  BandView* inside = band.data_.childBand.empty() ? nullptr : Find(band.data_.childBand);
  for (BandView* each : {&band, inside}) {
    if (each == nullptr) {
      continue;
    }
    for (const auto& tool : each->tools_) {
      if (Gtk::Widget* tile = tool->DrawTile()) {
        tiles->append(*tile);
      }
    }
  }
  auto* scroller = Gtk::make_managed<Gtk::ScrolledWindow>();
  scroller->add_css_class("kv-side");
  scroller->set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::EXTERNAL);
  scroller->set_vexpand(true);
  scroller->set_child(*tiles);
  scroller->set_visible(band.visible_);
  side_.append(*scroller);
  band.widget_ = scroller;
}

BandView* BarView::Find(const std::string& name) {
  const auto found =
      std::find_if(bands_.begin(), bands_.end(), [&](const auto& band) { return band->data_.name == name; });
  return found == bands_.end() ? nullptr : found->get();
}

Band& BarView::Bands(const std::string& name) {
  Alive();
  if (BandView* band = Find(name)) {
    return *band;
  }
  throw PlatformError(kInvalidCall, "there is no band " + name);
}

void BarView::OnToolClick(std::function<void(Tool&)> handler) { Alive(), click_ = std::move(handler); }

void BarView::OnToolEntered(std::function<void(Tool&)> handler) { Alive(), entered_ = std::move(handler); }

void BarView::LetGo() {
  click_ = nullptr;
  entered_ = nullptr;
  WidgetControl::LetGo();
}

void BarView::Clicked(ToolView& tool) { Raise(click_, static_cast<Tool&>(tool)); }

void BarView::Entered(ToolView& tool) { Raise(entered_, static_cast<Tool&>(tool)); }

std::string BarView::PictureFile(int number) const {
  const auto found = pictures_.find(number);
  return found == pictures_.end() ? std::string() : found->second;
}

}  // namespace kivandra::gtk
