// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/bars/bar_view.h"

#include <algorithm>

#include "platform/gtk/bars/access_keys.h"
#include "platform/gtk/guard.h"

namespace kivandra::gtk {
namespace {

/// Calls back when a window appears, for as long as it lives.
class WindowWatch {
 public:
  explicit WindowWatch(std::function<void()> appeared) : appeared_(std::move(appeared)) {
    hook_ = g_signal_add_emission_hook(signal_, 0, Mapped, this, nullptr);
  }
  ~WindowWatch() { g_signal_remove_emission_hook(signal_, hook_); }
  WindowWatch(const WindowWatch&) = delete;
  WindowWatch& operator=(const WindowWatch&) = delete;

 private:
  static gboolean Mapped(GSignalInvocationHint*, guint, const GValue* values, gpointer data) {
    if (GTK_IS_WINDOW(g_value_get_object(values))) {
      static_cast<WindowWatch*>(data)->appeared_();
    }
    return TRUE;
  }

  const guint signal_ = g_signal_lookup("map", GTK_TYPE_WIDGET);
  gulong hook_ = 0;
  std::function<void()> appeared_;
};

}  // namespace

BarView::BarView(Gtk::Box& top, Gtk::Box& side, const std::string& iconDirectory)
    : WidgetControl(top),
      top_(top),
      side_(side),
      pictures_(iconDirectory),
      self_(std::make_shared<BarView*>(this)) {}

BarView::~BarView() {
  mapped_.disconnect();
  focus_.disconnect();
}

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
    if (band->Data().kind == BandKind::ToolBar) {
      rows.push_back(band.get());
    } else if (band->Data().kind == BandKind::SideBar) {
      band->DrawSide(side_, Find(band->Data().childBand));
    }
  }
  std::stable_sort(rows.begin(), rows.end(), [](const BandView* one, const BandView* other) {
    return one->Data().row < other->Data().row;
  });
  for (BandView* band : rows) {
    band->DrawRow(top_);
  }
  // The menus are laid by now, whichever came first.
  mapped_ = top_.signal_map().connect([this] { SettleAccessKeys(); });
}

void BarView::SettleAccessKeys() {
  auto* window = dynamic_cast<Gtk::Widget*>(top_.get_root());
  if (window == nullptr) {
    return;
  }
  const auto taken = MenuLetters(*window);
  for (const auto& band : bands_) {
    for (const auto& tool : band->Views()) {
      tool->SetAccessKey([&](unsigned keyval) { return taken.count(keyval) != 0; });
    }
  }
}

BandView* BarView::Find(const std::string& name) {
  const auto found =
      std::find_if(bands_.begin(), bands_.end(), [&](const auto& band) { return band->Data().name == name; });
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
  self_.reset();
  mapped_.disconnect();
  focus_.disconnect();
  opened_.clear();
  for (const auto& band : bands_) {
    band->LetGo();
  }
  WidgetControl::LetGo();
}

void BarView::Entered(ToolView& tool) { Raise(entered_, static_cast<Tool&>(tool)); }

void BarView::Chosen(ToolView& tool) {
  CloseDropDowns();
  if (tool.InDropDown()) {
    ClickLater(tool);  // the drop-downs have to be gone before the handler opens a window or waits
  } else {
    RaiseClick(tool.shared_from_this());
  }
}

void BarView::ClickLater(ToolView& tool) {
  Glib::signal_idle().connect_once([self = std::weak_ptr<BarView*>(self_), tool = tool.shared_from_this()] {
    if (const auto bars = self.lock()) {
      (*bars)->RaiseClick(tool);
    }
  });
}

void BarView::RaiseClick(const std::shared_ptr<ToolView>& tool) {
  const auto hold = tool;
  const std::weak_ptr<BarView*> self = self_;
  {
    // A box would stand below an open drop-down and could not be clicked.
    const WindowWatch watch([self] {
      if (const auto bars = self.lock()) {
        (*bars)->CloseDropDowns();
      }
    });
    Raise(click_, static_cast<Tool&>(*hold));
  }
}

void BarView::KeepKeyboard() {
  focus_.disconnect();
  auto* window = dynamic_cast<Gtk::Window*>(top_.get_root());
  if (window == nullptr) {
    return;
  }
  focus_ = window->property_focus_widget().signal_changed().connect([this] {
    // Not at once: whoever moves the keyboard is still at it.
    Glib::signal_idle().connect_once([self = std::weak_ptr<BarView*>(self_)] {
      const auto bars = self.lock();
      if (bars == nullptr || (*bars)->opened_.empty()) {
        return;
      }
      const auto& opened = (*bars)->opened_;
      if (std::none_of(opened.begin(), opened.end(),
                       [](const Opened& each) { return each.menu->HasKeyboard(); })) {
        opened.back().menu->FocusFirst();
      }
    });
  });
}

std::size_t BarView::Around(const ToolView& tool) const {
  for (std::size_t i = 0; i < opened_.size(); ++i) {
    if (opened_[i].menu->Holds(tool)) {
      return i + 1;
    }
  }
  return 0;
}

void BarView::CloseDropDowns(std::size_t remaining) {
  while (opened_.size() > remaining) {
    DropDown* menu = opened_.back().menu;
    opened_.pop_back();
    menu->Close();
  }
}

void BarView::OpenDropDown(ToolView& tool, bool asClick, bool intoRows) {
  BandView* band = Find(tool.Data().subBand);
  if (band == nullptr) {
    if (asClick) {
      Chosen(tool);
    }
    return;
  }
  DropDown& menu = band->Menu();
  const auto open =
      std::find_if(opened_.begin(), opened_.end(), [&](const Opened& each) { return each.menu == &menu; });
  if (open != opened_.end() && menu.Opener() != &tool) {
    return;  // a band can't open inside itself
  }
  if (open == opened_.end()) {
    CloseDropDowns(Around(tool));
    menu.OnClosed([this, &menu] {
      const auto gone = std::find_if(opened_.begin(), opened_.end(),
                                     [&](const Opened& each) { return each.menu == &menu; });
      if (gone != opened_.end()) {
        const auto index = static_cast<std::size_t>(gone - opened_.begin());
        CloseDropDowns(index + 1);
        opened_.pop_back();
      }
    });
    opened_.push_back({&menu, false});
    KeepKeyboard();
    menu.Open(tool, intoRows);
  } else if (intoRows) {
    menu.FocusFirst();
  }
  if (asClick && !opened_.empty() && opened_.back().menu == &menu &&
      !std::exchange(opened_.back().told, true)) {
    ClickLater(tool);
  }
}

void BarView::Pointed(ToolView& tool) {
  if (tool.Data().subBand.empty() || !tool.Enabled()) {
    CloseDropDowns(std::max<std::size_t>(1, Around(tool)));
  } else {
    OpenDropDown(tool, false, false);
  }
}

}  // namespace kivandra::gtk
