// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/core_values.h"

namespace kivandra {

void ResetCoreValues() {
  SettingNames.fill({});
  SkinFile.clear();
  ParentPassword.clear();
  LogDayName.clear();
  WindowsDirectory.clear();
  InstanceMutex = 0;
  RunningFrameHandle = 0;
  UsePrevInstanceTest = false;
  SessionAllowGranted = false;
  PasswordOpen = false;
  OptionsOpen = false;
  NavigationOpen = false;
  TipOpen = false;
  FindDialogOpen = false;
}

}  // namespace kivandra
