// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/core_values.h"

namespace kivandra {

void FillSettingNames() {
  SettingNames = {"D_B",  "D_EM", "F_C", "No_Sw", "O_RA",  "P_IE",    "P_NS",     "R_N",
                  "T_OD", "T_PW", "B_B", "POP",   "Sound", "Sidebar", "FirstTime"};
}

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
