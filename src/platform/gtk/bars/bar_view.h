// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/bar_control.h"
#include "platform/gtk/bars/bar_row.h"
#include "platform/gtk/controls/widget_control.h"

namespace kivandra::gtk {

class BarView;

/// One tool; the bands that are not drawn have tools without a widget.
class ToolView : public Tool {
 public:
  ToolView(BarView& bars, ToolData data) : bars_(bars), data_(std::move(data)) {}

  [[nodiscard]] const std::string& Name() const override { return data_.name; }
  [[nodiscard]] const std::string& Caption() const override { return data_.caption; }
  [[nodiscard]] bool Enabled() const override { return data_.enabled; }
  void SetEnabled(bool enabled) override;
  /// The width that was set, or else the one that the tool takes by itself. A stretchy tool is drawn as wide
  /// as the bar's room allows, whatever its width here.
  [[nodiscard]] Twips Width() const override;
  void SetWidth(Twips width) override { data_.width = width; }
  [[nodiscard]] std::string Text() const override;
  void SetText(const std::string& text) override;
  void SetCustom(Control* control) override;

 private:
  friend class BarView;

  /// Builds the widget for a place in `row`.
  void Draw(BarRow& row);
  /// Builds the widget for the side bar; null for a tool that is a gap.
  [[nodiscard]] Gtk::Widget* DrawTile();
  Gtk::Widget* MakeButton();
  Gtk::Widget* MakeEdit();
  void Release();
  void SetCompact(bool compact);

  BarView& bars_;
  ToolData data_;
  BarRow* row_ = nullptr;
  Gtk::Widget* widget_ = nullptr;
  Gtk::Label* word_ = nullptr;
  Gtk::Entry* entry_ = nullptr;
  GtkWidget* hosted_ = nullptr;  // referenced
};

class BandView : public Band {
 public:
  BandView(BarView& bars, const BandData& data);

  Tool& Tools(const std::string& name) override;
  [[nodiscard]] bool Visible() const override { return visible_; }
  void SetVisible(bool visible) override;
  [[nodiscard]] Twips Width() const override;
  /// A tool bar is always as wide as the frame; the value is only kept.
  void SetWidth(Twips width) override { width_ = width; }
  [[nodiscard]] Twips Height() const override;

 private:
  friend class BarView;

  BandData data_;  // without the tools
  std::vector<std::unique_ptr<ToolView>> tools_;
  Gtk::Widget* widget_ = nullptr;
  bool visible_ = true;
  Twips width_ = -1;
};

/// Draws bands from their data: tool bars as rows in `top`, the side bar in `side`. Drop-down bands are kept
/// as data.
class BarView : public WidgetControl, public BarControl {
 public:
  BarView(Gtk::Box& top, Gtk::Box& side, const std::string& iconDirectory);
  ~BarView() override;

  void Lay(const std::vector<BandData>& bands) override;
  Band& Bands(const std::string& name) override;
  void OnToolClick(std::function<void(Tool&)> handler) override;
  void OnToolEntered(std::function<void(Tool&)> handler) override;
  void LetGo() override;

  // For the tools.
  void Clicked(ToolView& tool);
  void Entered(ToolView& tool);
  /// The picture file of a number, or an empty string.
  [[nodiscard]] std::string PictureFile(int number) const;
  /// Where hosted controls wait that no tool holds.
  [[nodiscard]] Gtk::Box& Parking();

 private:
  void LayRow(BandView& band);
  void LaySide(BandView& band);
  [[nodiscard]] BandView* Find(const std::string& name);

  Gtk::Box& top_;
  Gtk::Box& side_;
  Gtk::Box* parking_ = nullptr;
  std::map<int, std::string> pictures_;
  std::vector<std::unique_ptr<BandView>> bands_;
  std::function<void(Tool&)> click_;
  std::function<void(Tool&)> entered_;
};

}  // namespace kivandra::gtk
