// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

#include "core/session_grant.h"
#include "platform/file_calls.h"
#include "platform/instance_calls.h"
#include "platform/system_info.h"

namespace kivandra {

struct SubMainServices {
  FileCalls& files;
  InstanceCalls& instance;
  const SystemInfo& system;
  SessionGrant& grant;
  std::function<void()> startApplication;  ///< makes the Application visible, which is the whole of start-up
};

/// The program's entry. In the first instance it returns when the frame is up (events run inside); in a later
/// one at once, with nothing shown. Failing steps are passed over.
void SubMain(const SubMainServices& services);

}  // namespace kivandra
