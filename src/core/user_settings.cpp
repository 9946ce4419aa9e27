// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/user_settings.h"

#include <cstdint>

#include "core/key_closer.h"
#include "core/stored_value.h"
#include "platform/platform_error.h"

namespace kivandra {

namespace {

/// Below HKEY_CURRENT_USER.
std::string PathOf(const std::string& application, const std::string& section) {
  return "Software\\VB and VBA Program Settings\\" + application + "\\" + section;
}

}  // namespace

void SaveSetting(RegistryCalls& calls, const std::string& application, const std::string& section,
                 const std::string& key, const std::string& text) {
  HKEY opened = 0;
  std::uint32_t disposition = 0;
  const auto fail = [&] {
    throw PlatformError(kInvalidCall, "The setting " + key + " of " + application + " can't be stored");
  };
  if (calls.RegCreateKeyExA(HKEY_CURRENT_USER, PathOf(application, section), KEY_SET_VALUE, opened,
                            disposition) != ERROR_SUCCESS) {
    fail();
  }
  const KeyCloser closer(calls, opened);
  if (calls.RegSetValueExA(opened, key, REG_SZ, BytesOfText(text)) != ERROR_SUCCESS) {
    fail();
  }
}

std::string GetSetting(RegistryCalls& calls, const std::string& application, const std::string& section,
                       const std::string& key, const std::string& otherwise) {
  HKEY opened = 0;
  if (calls.RegOpenKeyExA(HKEY_CURRENT_USER, PathOf(application, section), KEY_QUERY_VALUE, opened) !=
      ERROR_SUCCESS) {
    return otherwise;
  }
  const KeyCloser closer(calls, opened);
  const auto stored = ReadStoredValue(calls, opened, key);
  if (!stored || stored->type != REG_SZ) {
    return otherwise;
  }
  return TextOfBytes(stored->bytes);
}

}  // namespace kivandra
