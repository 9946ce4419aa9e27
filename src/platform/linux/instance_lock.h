// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace kivandra::linux_impl {

/// Where the file of a named mutex may lie, the place that is tried first at the front.
[[nodiscard]] std::vector<std::string> MutexFiles(const std::string& name);

/// Whether a process holds the named mutex. Only looks: trying the lock would, for that moment, take it from
/// a program that is just starting.
[[nodiscard]] bool MutexIsHeld(const std::string& name);

}  // namespace kivandra::linux_impl
