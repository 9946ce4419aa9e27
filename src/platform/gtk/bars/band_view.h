// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

#include <memory>
#include <string>

#include "platform/bar_control.h"
#include "platform/gtk/bars/drop_down.h"

namespace kivandra::gtk {

/// One band: a bar, the side bar with the band inside it, or a drop-down.
class BandView : public Band {
 public:
  BandView(ToolHost& host, const BandData& data);

  Tool& Tools(const std::string& name) override;
  [[nodiscard]] bool Visible() const override { return visible_; }
  void SetVisible(bool visible) override;
  /// As drawn; for a tool bar what was set, since it is always as wide as the frame.
  [[nodiscard]] Twips Width() const override;
  void SetWidth(Twips width) override { width_ = width; }
  [[nodiscard]] Twips Height() const override;

  /// The band's data without its tools.
  [[nodiscard]] const BandData& Data() const { return data_; }
  [[nodiscard]] const ToolViews& Views() const { return tools_; }
  void DrawRow(Gtk::Box& top);
  /// `inside`: the band whose tools stand in this one too, or null.
  void DrawSide(Gtk::Box& side, const BandView* inside);
  /// The band as a drop-down; made at its first use.
  [[nodiscard]] DropDown& Menu();
  void LetGo();

 private:
  BandData data_;
  ToolViews tools_;
  std::unique_ptr<DropDown> menu_;
  Gtk::Widget* widget_ = nullptr;
  bool visible_ = true;
  Twips width_ = -1;
};

}  // namespace kivandra::gtk
