// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/registry.h"

#include <array>
#include <cstddef>
#include <utility>

#include "core/key_closer.h"
#include "core/stored_value.h"
#include "platform/platform_error.h"
#include "support/attempt.h"

namespace kivandra {

namespace {

/// Code of a value that has no way of being written: type mismatch.
constexpr long kTypeMismatch = 13;

/// Whether the text has a "%" and another one at least two characters further on.
bool HoldsVariable(const std::string& text) {
  const std::size_t first = text.find('%');
  return first != std::string::npos && text.find('%', first + 2) != std::string::npos;
}

std::int32_t NumberOf(const std::array<std::uint8_t, 4>& bytes) {
  std::uint32_t number = 0;
  for (std::size_t i = bytes.size(); i-- > 0;) {
    number = number << 8U | bytes[i];
  }
  return static_cast<std::int32_t>(number);
}

Bytes BytesOf(std::int32_t number) {
  const auto bits = static_cast<std::uint32_t>(number);
  Bytes bytes;
  for (unsigned shift = 0; shift < 32; shift += 8) {
    bytes.push_back(static_cast<std::uint8_t>(bits >> shift));
  }
  return bytes;
}

/// The number with its four bytes in reverse order.
std::int32_t SwapLong(std::int32_t number) {
  const auto bits = static_cast<std::uint32_t>(number);
  return static_cast<std::int32_t>(bits >> 24U | (bits >> 8U & 0xFF00U) | (bits << 8U & 0xFF0000U) |
                                   bits << 24U);
}

}  // namespace

cRegistry::cRegistry(RegistryCalls& calls, std::string programFileName)
    : calls_(calls), programFileName_(std::move(programFileName)) {}

bool cRegistry::KeyExists() {
  HKEY key = 0;
  if (calls_.RegOpenKeyExA(classKey_, sectionKey_, KEY_QUERY_VALUE, key) != ERROR_SUCCESS) {
    return false;
  }
  const KeyCloser closer(calls_, key);
  return true;
}

bool cRegistry::CreateKey() {
  HKEY key = 0;
  std::uint32_t disposition = 0;
  if (calls_.RegCreateKeyExA(classKey_, sectionKey_, KEY_ALL_SIX, key, disposition) != ERROR_SUCCESS) {
    Raise(kRegistryError, "Failed to create registry Key: '" + sectionKey_);
  }
  const KeyCloser closer(calls_, key);
  return true;
}

bool cRegistry::DeleteKey() {
  if (calls_.RegDeleteKeyA(classKey_, sectionKey_) != ERROR_SUCCESS) {
    Raise(kRegistryError, "Failed to delete registry Key: '" + sectionKey_ + "',Section: '" + Root());
  }
  return true;
}

bool cRegistry::DeleteValue() {
  HKEY key = 0;
  if (calls_.RegOpenKeyExA(classKey_, sectionKey_, KEY_ALL_SIX, key) != ERROR_SUCCESS) {
    Raise(kRegistryError,
          "Failed to open key '" + Root() + "',Section: '" + sectionKey_ + "' for delete access");
  }
  const KeyCloser closer(calls_, key);
  if (calls_.RegDeleteValueA(key, valueKey_) != ERROR_SUCCESS) {
    Raise(kRegistryError, "Failed to delete registry Key: '" + valueKey_ + "',Section: '" + Root() +
                              "',Key: '" + sectionKey_);
  }
  return true;
}

Variant cRegistry::Value() {
  // 1. kept on purpose: the key stays open until the process ends; a handle costs nothing.
  HKEY key = 0;
  if (calls_.RegOpenKeyExA(classKey_, sectionKey_, KEY_QUERY_VALUE, key) != ERROR_SUCCESS) {
    return default_;
  }
  // 2. Type and size.
  std::array<std::uint8_t, 4> buffer{};
  std::uint32_t type = 0;
  std::size_t size = buffer.size();
  const long code = calls_.RegQueryValueExA(key, valueKey_, type, buffer.data(), size);
  if (code != ERROR_SUCCESS && code != ERROR_MORE_DATA) {
    return default_;
  }
  // 3.
  valueType_ = type;
  // 4. By type.
  if (type == REG_DWORD) {
    return NumberOf(buffer);
  }
  if (type == REG_DWORD_BIG_ENDIAN) {
    return SwapLong(NumberOf(buffer));
  }
  auto stored = ReadStoredValue(calls_, key, valueKey_);
  if (!stored) {
    return default_;
  }
  if (type == REG_SZ || type == REG_MULTI_SZ) {
    return TextOfBytes(stored->bytes);
  }
  if (type == REG_EXPAND_SZ) {
    return ExpandEnvStr(TextOfBytes(stored->bytes));
  }
  return std::move(stored->bytes);
}

void cRegistry::SetValue(Variant value) {
  // 1.
  HKEY key = 0;
  std::uint32_t disposition = 0;
  if (calls_.RegCreateKeyExA(classKey_, sectionKey_, KEY_ALL_SIX, key, disposition) != ERROR_SUCCESS) {
    Raise(kRegistryError, SetFailure(value));
  }
  // 4. On every way out.
  const KeyCloser closer(calls_, key);
  // 2 and 3.
  if (Write(key, value) != ERROR_SUCCESS) {
    Raise(kRegistryWriteError, SetFailure(value));
  }
  value_ = std::move(value);
}

long cRegistry::Write(HKEY key, const Variant& value) {
  switch (valueType_) {
    case REG_SZ:
    case REG_EXPAND_SZ: {
      const std::string text = TextOf(value);
      // kept on purpose: a text with two percent signs apart is changed by the next reading.
      const std::uint32_t type = HoldsVariable(text) ? REG_EXPAND_SZ : REG_SZ;
      return calls_.RegSetValueExA(key, valueKey_, type, BytesOfText(text));
    }
    case REG_BINARY: {
      const auto* bytes = std::get_if<Bytes>(&value);
      if (bytes == nullptr) {
        Raise(kRegistryError, SetFailure(value));
      }
      // kept on purpose: the last two bytes are not written. Fewer than two can't be.
      if (bytes->size() < 2) {
        return ERROR_INVALID_PARAMETER;
      }
      return calls_.RegSetValueExA(key, valueKey_, REG_BINARY, Bytes(bytes->begin(), bytes->end() - 2));
    }
    case REG_DWORD:
    case REG_DWORD_BIG_ENDIAN:
      // kept on purpose: always type 4, and anything but these two kinds of number writes nothing, with
      // success.
      if (const auto* number = std::get_if<std::int16_t>(&value)) {
        return calls_.RegSetValueExA(key, valueKey_, REG_DWORD, BytesOf(*number));
      }
      if (const auto* number = std::get_if<std::int32_t>(&value)) {
        return calls_.RegSetValueExA(key, valueKey_, REG_DWORD, BytesOf(*number));
      }
      return ERROR_SUCCESS;
    default:
      return kTypeMismatch;
  }
}

bool cRegistry::EnumerateValues(std::vector<std::string>& names, long& count) {
  names.clear();
  count = 0;
  HKEY key = 0;
  if (calls_.RegOpenKeyExA(classKey_, sectionKey_, KEY_QUERY_VALUE, key) != ERROR_SUCCESS) {
    return true;
  }
  const KeyCloser closer(calls_, key);
  std::uint32_t subKeys = 0;
  std::uint32_t values = 0;
  std::size_t longestSubKey = 0;
  std::size_t longestValue = 0;
  if (calls_.RegQueryInfoKeyA(key, subKeys, longestSubKey, values, longestValue) != ERROR_SUCCESS) {
    return true;
  }
  std::string name;
  for (std::uint32_t index = 0; calls_.RegEnumValueA(key, index, name, longestValue + 1) == ERROR_SUCCESS;
       ++index) {
    names.resize(static_cast<std::size_t>(++count) + 1);
    names.back() = name;
  }
  return true;
}

bool cRegistry::EnumerateSections(std::vector<std::string>& names, long& count) {
  names.clear();
  count = 0;
  return attempt([&] {
    HKEY key = 0;
    if (calls_.RegOpenKeyExA(classKey_, sectionKey_, KEY_ENUMERATE_SUB_KEYS, key) != ERROR_SUCCESS) {
      return;
    }
    const KeyCloser closer(calls_, key);
    constexpr std::size_t kRoom = 255;
    std::string name;
    for (std::uint32_t index = 0; calls_.RegEnumKeyA(key, index, name, kRoom) == ERROR_SUCCESS; ++index) {
      names.resize(static_cast<std::size_t>(++count) + 1);
      names.back() = name.substr(0, name.find('\0'));
    }
  });
}

std::string cRegistry::ExpandEnvStr(const std::string& text) {
  std::string expanded;
  const std::size_t size = calls_.ExpandEnvironmentStringsA(text, expanded, 0);
  calls_.ExpandEnvironmentStringsA(text, expanded, size);
  return expanded;
}

std::string cRegistry::Root() const { return std::to_string(static_cast<std::int32_t>(classKey_)); }

std::string cRegistry::SetFailure(const Variant& value) const {
  return "Failed to set registry value Key: '" + Root() + "',Section: '" + sectionKey_ + "',Key: '" +
         valueKey_ + "' to value: '" + TextOf(value) + "'";
}

void cRegistry::Raise(long number, const std::string& description) const {
  throw PlatformError(number, description, programFileName_ + ".cRegistry");
}

}  // namespace kivandra
