// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "platform/event_loop.h"
#include "platform/form.h"
#include "platform/message_box.h"
#include "platform/system_info.h"

namespace kivandra {

/// The day's log name from a date of the form day/month/year. Throws PlatformError if the text has not two
/// slashes. kept on purpose: days that read alike without separators share one name.
std::string LogDayNameOf(const std::string& date);

/// The engine's version as text: major, ".", minor.
std::string EngineVersion(const SystemInfo& system);

/// Whether the program can run on an engine of this version: as decimal numbers, so 5.100 is older than 5.50.
bool EngineIsRecentEnough(const std::string& version);

/// The picture that greets for 2.5 seconds. Its load also fixes the day's log name and tests the engine.
class frmSplash : public FormEvents {
 public:
  frmSplash(Forms& forms, EventLoop& events, MessageBoxes& boxes, const SystemInfo& system);
  ~frmSplash() override;
  frmSplash(const frmSplash&) = delete;
  frmSplash& operator=(const frmSplash&) = delete;

  /// Loads and shows the window. False if the engine is too old: the program has then been told to end.
  /// Throws PlatformError if the date can't be cut.
  bool Show();
  /// Starts SplashTimer and runs events until it has switched itself off.
  void WaitForSplashTimer();
  void Unload();

  void Form_Unload() override;

 private:
  bool Form_Load();

  Forms& forms_;
  EventLoop& events_;
  MessageBoxes& boxes_;
  const SystemInfo& system_;
  std::shared_ptr<Form> form_;
};

}  // namespace kivandra
