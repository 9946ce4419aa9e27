// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

#include "platform/system_info.h"

namespace kivandra {

/// Full path of a file that lies beside the program.
inline std::string ProgramFile(const SystemInfo& system, std::string_view name) {
  return system.ProgramDirectory() + "/" + std::string(name);
}

inline constexpr std::string_view kDefaultSkin = "winaqua.skn";

}  // namespace kivandra
