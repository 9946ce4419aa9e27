// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/calendar.h"
#include "platform/gtk/controls/widget_control.h"

namespace kivandra::gtk {

/// Over a `GtkCalendar`. Its own signal for a chosen day also comes when the month is turned, so clicks and
/// keys are watched here. The arrow keys walk from day to day, Page Up and Page Down from month to month
/// (with Control from year to year), Home and End to the ends of the month; Enter or the space bar choose the
/// day.
class CalendarControl : public WidgetControl, public Calendar {
 public:
  explicit CalendarControl(Gtk::Calendar& calendar);

  [[nodiscard]] int Day() const override;
  [[nodiscard]] int Month() const override;
  [[nodiscard]] int Year() const override;
  void Today() override;
  void OnClick(std::function<void()> handler) override;
  void LetGo() override;

 private:
  [[nodiscard]] Gtk::Calendar& Days() const;
  void WatchMouse(Gtk::Calendar& calendar);
  void WatchKeys(Gtk::Calendar& calendar);
  bool KeyPressed(unsigned keyval, bool control);

  std::function<void()> click_;
  bool pressedOnDay_ = false;
};

}  // namespace kivandra::gtk
