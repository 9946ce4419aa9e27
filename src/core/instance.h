// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "platform/instance_calls.h"
#include "platform/system_info.h"

namespace kivandra {

inline constexpr const char* kInstanceMutexName = "KVDBROWSERAPP_APPLICATION_MUTEX";
inline constexpr const char* kRunningFrameProperty = "KVDBROWSERAPP_APPLICATION";

/// Takes the named mutex into InstanceMutex and tells whether this process is the first to hold it.
bool IsFirstInstance(InstanceCalls& calls, const std::string& name);

/// Looks for the window that bears the running frame's mark; its handle goes into RunningFrameHandle, which
/// keeps its value if there is none.
void FindRunningFrame(InstanceCalls& calls);

/// Restores the window if it is minimised and brings it to the front.
void ActivateWindow(InstanceCalls& calls, Handle window);

/// What a later instance does: finds the first one's frame and hands it the command line, or brings it to the
/// front. kept on purpose: no window ever bears the mark, so a second start ends without a word.
void HandOverToRunningFrame(InstanceCalls& calls, const SystemInfo& system);

}  // namespace kivandra
