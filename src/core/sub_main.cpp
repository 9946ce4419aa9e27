// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/sub_main.h"

#include "core/core_values.h"
#include "core/instance.h"
#include "core/program_files.h"
#include "support/attempt.h"

namespace kivandra {

void SubMain(const SubMainServices& services) {
  // 1.
  services.grant.ClearSessionAllowPending();
  FindDialogOpen = false;
  // 2. Left by an earlier update. A later instance does this too, since the instance test comes after it.
  attempt([&] { services.files.Kill(ProgramFile(services.system, "browser_update.exe")); });
  // 3.
  PasswordOpen = false;
  OptionsOpen = false;
  NavigationOpen = false;
  TipOpen = false;
  // 4.
  FillSettingNames();
  // 5.
  bool first = true;
  attempt([&] { first = IsFirstInstance(services.instance, kInstanceMutexName); });
  if (first) {
    // 6.
    attempt([&] { services.startApplication(); });
  } else {
    // 7.
    attempt([&] { HandOverToRunningFrame(services.instance, services.system); });
  }
}

}  // namespace kivandra
