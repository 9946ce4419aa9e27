// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/instance.h"

#include "core/core_values.h"

namespace kivandra {

bool IsFirstInstance(InstanceCalls& calls, const std::string& name) {
  // 1. kept on purpose: the flag is never set, so this branch stays dead in the product.
  if (UsePrevInstanceTest) {
    return !calls.PrevInstance();
  }
  // 2. The mutex, owned at once.
  InstanceMutex = calls.CreateMutexA(name, true);
  // 3. Somebody has it: InstanceMutex keeps the closed handle's number, the process ends soon after.
  if (calls.GetLastError() == ERROR_ALREADY_EXISTS) {
    calls.CloseHandle(InstanceMutex);
    return false;
  }
  // 4. Held until the frame closes.
  return true;
}

void FindRunningFrame(InstanceCalls& calls) {
  calls.EnumWindows([&calls](Handle window) {
    if (calls.GetPropA(window, kRunningFrameProperty) == 1) {
      RunningFrameHandle = window;
      return false;
    }
    return true;
  });
}

void ActivateWindow(InstanceCalls& calls, Handle window) {
  if (calls.IsIconic(window)) {
    calls.SendMessageA(window, WM_SYSCOMMAND, SC_RESTORE, 0);
  }
  calls.SetForegroundWindow(window);
}

void HandOverToRunningFrame(InstanceCalls& calls, const SystemInfo& system) {
  FindRunningFrame(calls);
  if (RunningFrameHandle == 0) {
    return;
  }
  const std::string commandLine = system.CommandLine();
  if (!commandLine.empty() || !calls.IsWindowVisible(RunningFrameHandle)) {
    CopyData data;
    data.bytes = commandLine.empty() ? std::string(1, '\0') : commandLine;
    constexpr unsigned kTimeoutMilliseconds = 5000;
    calls.SendMessageTimeoutA(RunningFrameHandle, WM_COPYDATA, 0, data, SMTO_NORMAL, kTimeoutMilliseconds);
  } else {
    ActivateWindow(calls, RunningFrameHandle);
  }
}

}  // namespace kivandra
