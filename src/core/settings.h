// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

#include "core/variant.h"
#include "platform/registry_calls.h"

namespace kivandra {

// The program's keys below HKEY_CLASSES_ROOT, under a neutral name.
inline constexpr const char* kSettingsSection = "IXPR\\Drivers\\settings";
inline constexpr const char* kAllowedSection = "IXPR\\Drivers\\allowed";
inline constexpr const char* kDisallowedSection = "IXPR\\Drivers\\disallowed";

/// Reads the setting `name`: its text, or Empty if `name` is not in SettingNames or the value is missing. The
/// settings key is made if it is missing. Raises cRegistry's errors.
[[nodiscard]] Variant ReadItem(RegistryCalls& calls, const std::string& name);

/// Stores the setting `name`, which must be in SettingNames or be "skin"; for any other name the settings key
/// is made and nothing else happens. Raises cRegistry's errors. The result is Empty.
Variant SaveItem(RegistryCalls& calls, const std::string& name, const std::string& value);

/// The number that the leading decimal digits of a setting stand for; 0 if there are none. A number too large
/// for the type counts as the largest.
[[nodiscard]] long Val(std::string_view text);

/// Whether the program may play its sounds: a missing or empty setting means that it may.
[[nodiscard]] bool SoundEnabled(RegistryCalls& calls);

}  // namespace kivandra
