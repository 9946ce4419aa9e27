// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace kivandra::gtk {

/// Starts the program file at an absolute path, without arguments and on its own: it outlives this program
/// and holds none of its open files, its locks among them. Returns at once. Throws PlatformError if the file
/// is missing, may not be run or is no program.
void StartProgramFile(const std::string& path);

}  // namespace kivandra::gtk
