// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "platform/event_loop.h"
#include "platform/form.h"
#include "platform/message_box.h"
#include "platform/registry_calls.h"
#include "platform/system_info.h"

namespace kivandra {

/// The window that creates the parent's password on the first run.
class frmFirstLog : public FormEvents {
 public:
  frmFirstLog(Forms& forms, EventLoop& events, MessageBoxes& boxes, RegistryCalls& registry,
              const SystemInfo& system);
  ~frmFirstLog() override;
  frmFirstLog(const frmFirstLog&) = delete;
  frmFirstLog& operator=(const frmFirstLog&) = delete;

  /// Loads the window and shows it. Throws PlatformError if the filter can't be switched on.
  void Show();
  /// The same, and runs events until the window is gone.
  void ShowModal();

  void Form_Activate() override;
  void Form_QueryUnload(bool& cancel, UnloadMode mode) override;

 private:
  void Form_Load();
  void SkinButton1_Click();

  Forms& forms_;
  EventLoop& events_;
  MessageBoxes& boxes_;
  RegistryCalls& registry_;
  const SystemInfo& system_;
  std::shared_ptr<Form> form_;
};

}  // namespace kivandra
