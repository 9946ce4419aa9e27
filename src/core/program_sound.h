// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

#include "platform/registry_calls.h"
#include "platform/sound.h"
#include "platform/system_info.h"

namespace kivandra {

/// Begins to play a sound file that lies beside the program, if the setting allows sounds and a device
/// exists. A missing file stays silent. Throws PlatformError if the settings can't be read.
void PlayProgramSound(RegistryCalls& registry, Sound& sound, const SystemInfo& system, std::string_view name);

}  // namespace kivandra
