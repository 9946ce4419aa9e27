// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

#include <functional>
#include <memory>
#include <vector>

#include "platform/gtk/bars/bar_tool.h"

namespace kivandra::gtk {

using ToolViews = std::vector<std::shared_ptr<ToolView>>;

/// A band that opens below a tool of a bar, or beside a row of another drop-down: rows, lines and drawn
/// pills. It is built once and hangs on whichever tool opens it.
class DropDown {
 public:
  explicit DropDown(const ToolViews& tools);
  ~DropDown();
  DropDown(const DropDown&) = delete;
  DropDown& operator=(const DropDown&) = delete;

  /// Opens it; `intoRows`: the first row gets the keyboard.
  void Open(ToolView& opener, bool intoRows);
  /// Closes it; the keyboard goes back to the opener if it was in here.
  void Close();
  [[nodiscard]] bool IsOpen() const { return opener_ != nullptr; }
  /// The tool that it hangs on; null while it is closed.
  [[nodiscard]] ToolView* Opener() const { return opener_; }
  [[nodiscard]] bool Holds(const ToolView& tool) const;
  /// Called each time that it has closed, however that came about.
  void OnClosed(std::function<void()> handler) { closed_ = std::move(handler); }

  /// The first row that can be chosen gets the keyboard.
  void FocusFirst();
  [[nodiscard]] bool HasKeyboard() const;

 private:
  void HangOn(Gtk::Widget& anchor);
  void Closed();
  bool Key(unsigned keyval);
  void Step(int direction);
  void FocusFrom(int index, int direction);
  [[nodiscard]] int Focused() const;

  const ToolViews& tools_;
  std::unique_ptr<Gtk::Popover> popover_;
  Gtk::Box* rows_ = nullptr;
  ToolView* opener_ = nullptr;
  std::function<void()> closed_;
  sigc::connection anchorGone_;
};

}  // namespace kivandra::gtk
