// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "platform/file_calls.h"

namespace kivandra {

/// Writes `key` = `value` into a section of an initialisation file, which is made if it is missing; the rest
/// of the file stays as it is, byte for byte. The first section of that name counts and the first such key in
/// it; both are told apart without regard to the case of the letters a to z. A new key stands behind the last
/// line of its section that is not empty, a new section at the file's end. False if the file can't be read or
/// written, or is in UTF-16; it is then what it was.
bool WritePrivateProfileStringA(FileCalls& files, const std::string& section, const std::string& key,
                                const std::string& value, const std::string& file);

}  // namespace kivandra
