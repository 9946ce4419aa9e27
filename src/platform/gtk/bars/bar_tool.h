// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

#include <functional>
#include <memory>
#include <string>

#include "platform/bar_control.h"
#include "platform/gtk/bars/bar_row.h"

namespace kivandra::gtk {

class ToolView;

/// What tools ask of the control that they stand in.
class ToolHost {
 public:
  virtual ~ToolHost() = default;

  /// A person has chosen a tool that opens nothing; raises the click.
  virtual void Chosen(ToolView& tool) = 0;
  /// A person has gone into an edit tool; raises the event.
  virtual void Entered(ToolView& tool) = 0;
  /// Opens the drop-down of a tool beside it. `asClick`: the opening counts as a click on the tool, which is
  /// raised from the event loop once the drop-down stands. `intoRows`: the first row gets the keyboard.
  virtual void OpenDropDown(ToolView& tool, bool asClick, bool intoRows) = 0;
  /// The pointer rests on a row of a drop-down.
  virtual void Pointed(ToolView& tool) = 0;
  [[nodiscard]] virtual std::string PictureFile(int number) const = 0;
  /// Where hosted controls wait that no tool holds.
  [[nodiscard]] virtual Gtk::Box& Parking() = 0;
};

/// One tool. Its events may outlive the control, so it is shared; every operation on the widget throws
/// PlatformError once it is let go.
class ToolView : public Tool, public std::enable_shared_from_this<ToolView> {
 public:
  ToolView(ToolHost& host, ToolData data, bool inDropDown)
      : host_(&host), data_(std::move(data)), inDropDown_(inDropDown) {}
  ~ToolView() override;

  [[nodiscard]] const std::string& Name() const override { return data_.name; }
  [[nodiscard]] const std::string& Caption() const override { return data_.caption; }
  [[nodiscard]] bool Enabled() const override { return data_.enabled; }
  void SetEnabled(bool enabled) override;
  /// The real width of a tool that keeps its own; for a stretchy one what was set, or else what is drawn. A
  /// stretchy tool is drawn as wide as the bar's room allows, whatever its width here.
  [[nodiscard]] Twips Width() const override;
  void SetWidth(Twips width) override;
  [[nodiscard]] std::string Text() const override;
  void SetText(const std::string& text) override;
  void SetCustom(Control* control) override;

  [[nodiscard]] const ToolData& Data() const { return data_; }
  [[nodiscard]] bool InDropDown() const { return inDropDown_; }
  /// The widget that a drop-down hangs on; null while the tool isn't drawn.
  [[nodiscard]] Gtk::Widget* Widget() const { return widget_; }
  /// What gets the keyboard when the tool's drop-down closes.
  [[nodiscard]] Gtk::Widget* KeyboardPlace() const;
  /// Shows that the tool's drop-down is open or closed.
  void ShowOpen(bool open);

  /// Builds the widget for a place in a bar.
  void DrawInRow(BarRow& row);
  /// Builds the widget for the side bar.
  [[nodiscard]] Gtk::Widget* DrawTile();
  /// Builds the widget for a drop-down.
  [[nodiscard]] Gtk::Widget* DrawMenuRow();
  /// Opens the tool's drop-down, if it has one, and gives its first row the keyboard.
  void Open(bool asClick);
  /// Drops the word beside the picture, or brings it back.
  void SetCompact(bool compact);
  /// A letter that a menu has isn't offered by the tool as well.
  void SetAccessKey(const std::function<bool(unsigned keyval)>& taken);
  void LetGo();

 private:
  [[nodiscard]] ToolHost& Host() const;
  Gtk::Widget* MakeButton();
  Gtk::Widget* MakeEdit();
  void WatchEdit();
  void FocusMoved(Gtk::Window& window);
  void WatchPointer(Gtk::Widget& widget);
  void Activated();
  void Release();

  ToolHost* host_;  // null once let go
  ToolData data_;
  bool inDropDown_;
  bool widthSet_ = false;
  BarRow* row_ = nullptr;
  BarRow::Role role_ = BarRow::Role::Fixed;
  Gtk::Widget* widget_ = nullptr;
  Gtk::Label* word_ = nullptr;
  Gtk::Entry* entry_ = nullptr;
  Gtk::Button* chevron_ = nullptr;
  bool entered_ = false;         // a person is in the edit tool, its drop-down included
  GtkWidget* hosted_ = nullptr;  // referenced
  sigc::connection focus_;
  sigc::connection rest_;
};

}  // namespace kivandra::gtk
