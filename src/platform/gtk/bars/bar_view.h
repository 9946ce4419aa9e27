// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/bar_control.h"
#include "platform/gtk/bars/band_view.h"
#include "platform/gtk/bars/tool_pictures.h"
#include "platform/gtk/controls/widget_control.h"

namespace kivandra::gtk {

/// Draws bands from their data: tool bars as rows in `top`, the side bar in `side`, drop-downs where a tool
/// opens them.
class BarView : public WidgetControl, public BarControl, public ToolHost {
 public:
  BarView(Gtk::Box& top, Gtk::Box& side, const std::string& iconDirectory);
  ~BarView() override;

  void Lay(const std::vector<BandData>& bands) override;
  Band& Bands(const std::string& name) override;
  /// The click on a tool of a bar is raised at once; on a row of a drop-down, or on a tool that opens one,
  /// from the event loop.
  void OnToolClick(std::function<void(Tool&)> handler) override;
  void OnToolEntered(std::function<void(Tool&)> handler) override;
  void LetGo() override;

 private:
  /// A drop-down that stands open.
  struct Opened {
    DropDown* menu;
    bool told;  // its opener's click was raised
  };

  void Chosen(ToolView& tool) override;
  void Entered(ToolView& tool) override;
  void OpenDropDown(ToolView& tool, bool asClick, bool intoRows) override;
  void Pointed(ToolView& tool) override;
  [[nodiscard]] std::string PictureFile(int number) const override { return pictures_.File(number); }
  [[nodiscard]] Gtk::Box& Parking() override;

  [[nodiscard]] BandView* Find(const std::string& name);
  /// How many of the open drop-downs stay when a tool is used: those that it stands in.
  [[nodiscard]] std::size_t Around(const ToolView& tool) const;
  void CloseDropDowns(std::size_t remaining = 0);
  void ClickLater(ToolView& tool);
  void RaiseClick(const std::shared_ptr<ToolView>& tool);
  void SettleAccessKeys();
  /// A page that arrives takes the keyboard; while a drop-down is open it comes back to that.
  void KeepKeyboard();

  Gtk::Box& top_;
  Gtk::Box& side_;
  Gtk::Box* parking_ = nullptr;
  ToolPictures pictures_;
  std::vector<std::unique_ptr<BandView>> bands_;
  std::vector<Opened> opened_;  // the outermost first
  std::function<void(Tool&)> click_;
  std::function<void(Tool&)> entered_;
  std::shared_ptr<BarView*> self_;  // what waits for the event loop looks here whether it still stands
  sigc::connection mapped_;
  sigc::connection focus_;
};

}  // namespace kivandra::gtk
