// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <glib-object.h>

#include "platform/gtk/controls/absent_control.h"
#include "platform/timer.h"

namespace kivandra::gtk {

/// Registers `KvTimer`, a plain object of form files with the properties `interval` (milliseconds) and
/// `enabled`: the design-time data of a timer.
void RegisterTimerType();
[[nodiscard]] bool IsTimer(GObject* object);

/// A timer of a form. It takes its design-time data over once and ticks until its form goes.
class TimerControl : public AbsentControl, public Timer {
 public:
  explicit TimerControl(GObject* designed);
  ~TimerControl() override;

  void SetEnabled(bool enabled) override;
  [[nodiscard]] int Interval() const override;
  void OnTimer(std::function<void()> handler) override;
  void LetGo() override;

 private:
  void Start();
  void Stop();
  static gboolean Tick(gpointer data);

  int interval_;
  std::function<void()> handler_;
  guint source_ = 0;
};

}  // namespace kivandra::gtk
