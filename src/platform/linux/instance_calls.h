// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "platform/instance_calls.h"

namespace kivandra::linux_impl {

/// The named mutex is a locked file in the session's runtime folder, or in the program's data folder if there
/// is none. The lock belongs to the open file, so the kernel frees it when the process ends, however it ends,
/// and no started program inherits it. The file itself stays: only its lock says anything.
///
/// The desktop shows no program the windows of another, so no window is ever found and the calls on windows
/// do nothing.
class LinuxInstanceCalls : public InstanceCalls {
 public:
  /// The caller has the mutex from this call until CloseHandle, whatever `initialOwner` says. A handle that
  /// came with ERROR_ALREADY_EXISTS holds nothing.
  Handle CreateMutexA(const std::string& name, bool initialOwner) override;
  [[nodiscard]] unsigned long GetLastError() const override { return lastError_; }
  void CloseHandle(Handle handle) override;
  [[nodiscard]] bool PrevInstance() override { return false; }

  void EnumWindows(const std::function<bool(Handle)>& /*each*/) override {}
  [[nodiscard]] Handle GetPropA(Handle /*window*/, const std::string& /*name*/) override { return 0; }
  [[nodiscard]] bool IsWindowVisible(Handle /*window*/) override { return false; }
  [[nodiscard]] bool IsIconic(Handle /*window*/) override { return false; }
  void SendMessageA(Handle /*window*/, unsigned /*message*/, unsigned /*wParam*/, long /*lParam*/) override {}
  void SendMessageTimeoutA(Handle /*window*/, unsigned /*message*/, unsigned /*wParam*/,
                           const CopyData& /*data*/, unsigned /*flags*/, unsigned /*timeout*/) override {}
  void SetForegroundWindow(Handle /*window*/) override {}

 private:
  unsigned long lastError_ = 0;
};

}  // namespace kivandra::linux_impl
