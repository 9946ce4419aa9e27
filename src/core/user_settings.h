// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "platform/registry_calls.h"

namespace kivandra {

/// Stores a text of this user for an application, by section and key. It reads back as it is, whatever it
/// holds. Throws PlatformError if it can't be stored.
void SaveSetting(RegistryCalls& calls, const std::string& application, const std::string& section,
                 const std::string& key, const std::string& text);

/// The text that SaveSetting stored, or `otherwise` if there is none.
[[nodiscard]] std::string GetSetting(RegistryCalls& calls, const std::string& application,
                                     const std::string& section, const std::string& key,
                                     const std::string& otherwise = {});

}  // namespace kivandra
