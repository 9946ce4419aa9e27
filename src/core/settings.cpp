// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/settings.h"

#include <limits>

#include "core/core_values.h"
#include "core/registry.h"

namespace kivandra {

namespace {

/// Goes to a value of the settings key, which is made if it is missing.
void GoToSettings(cRegistry& registry) {
  registry.SetSectionKey(kSettingsSection);
  registry.CreateKey();
}

void GoToValue(cRegistry& registry, const std::string& name) {
  registry.SetValueKey(name);
  registry.SetValueType(REG_SZ);
}

}  // namespace

Variant ReadItem(RegistryCalls& calls, const std::string& name) {
  // 1.
  cRegistry registry(calls);
  registry.SetClassKey(HKEY_CLASSES_ROOT);
  Variant result;
  // 2. kept on purpose: every round makes the key, and a hit does not end the loop.
  for (const std::string& entry : SettingNames) {
    GoToSettings(registry);
    // 3.
    if (name == entry) {
      GoToValue(registry, entry);
      result = registry.Value();
    }
  }
  // 4.
  return result;
}

Variant SaveItem(RegistryCalls& calls, const std::string& name, const std::string& value) {
  // 1.
  cRegistry registry(calls);
  registry.SetClassKey(HKEY_CLASSES_ROOT);
  // 2. kept on purpose: this name is not in the table, and ReadItem does not know it.
  if (name == "skin") {
    GoToSettings(registry);
    GoToValue(registry, "skin");
    registry.SetValue(value);
    return {};
  }
  // 3. As in ReadItem. 4. A name that is not in the table ends here, with nothing but the key made.
  for (const std::string& entry : SettingNames) {
    GoToSettings(registry);
    if (name == entry) {
      GoToValue(registry, entry);
      registry.SetValue(value);
    }
  }
  return {};
}

long Val(std::string_view text) {
  constexpr long kLargest = std::numeric_limits<long>::max();
  long number = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') {
      break;
    }
    const long digit = c - '0';
    if (number > (kLargest - digit) / 10) {
      return kLargest;
    }
    number = number * 10 + digit;
  }
  return number;
}

bool SoundEnabled(RegistryCalls& calls) { return Val(TextOf(ReadItem(calls, "Sound"))) == 0; }

}  // namespace kivandra
