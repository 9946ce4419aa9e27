// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>

#include "core/session_grant.h"
#include "platform/form.h"
#include "platform/message_box.h"
#include "platform/registry_calls.h"
#include "platform/sound.h"
#include "platform/system_info.h"

namespace kivandra {

/// The window that asks for the parent's password: the way into the panel and, after a block, the way to let
/// the blocked address through for the session. Which of the two it does hangs on the gate's last run alone,
/// not on who opened it: kept on purpose.
class frmPassword : public FormEvents {
 public:
  struct Services {
    Forms& forms;
    MessageBoxes& boxes;
    RegistryCalls& registry;
    Sound& sound;
    const SystemInfo& system;
    SessionGrant& grant;
    std::function<void()> showOptions;  ///< opens the parent's panel; may be empty
  };
  explicit frmPassword(Services services);
  ~frmPassword() override;
  frmPassword(const frmPassword&) = delete;
  frmPassword& operator=(const frmPassword&) = delete;

  /// Shows the window; one that is open already comes to the front. Throws PlatformError if it can't be
  /// loaded.
  void Show();
  /// Shows the window and runs events until it is closed.
  void ShowModal();

  void Form_Unload() override;

 private:
  void Form_Load();
  void cmdOK_Click();
  void cmdCancel_Click();

  Services services_;
  std::shared_ptr<Form> form_;
};

}  // namespace kivandra
