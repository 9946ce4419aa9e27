// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kivandra {

/// A root (0x80000000 and up) or the number of an open key.
using HKEY = std::uint32_t;

inline constexpr HKEY HKEY_CLASSES_ROOT = 0x80000000;
inline constexpr HKEY HKEY_CURRENT_USER = 0x80000001;
inline constexpr HKEY HKEY_LOCAL_MACHINE = 0x80000002;
inline constexpr HKEY HKEY_USERS = 0x80000003;

// Value types and result codes carry the numbers of winnt.h and winerror.h.
inline constexpr std::uint32_t REG_SZ = 1;
inline constexpr std::uint32_t REG_EXPAND_SZ = 2;
inline constexpr std::uint32_t REG_BINARY = 3;
inline constexpr std::uint32_t REG_DWORD = 4;
inline constexpr std::uint32_t REG_DWORD_BIG_ENDIAN = 5;
inline constexpr std::uint32_t REG_MULTI_SZ = 7;

inline constexpr std::uint32_t KEY_QUERY_VALUE = 1;
inline constexpr std::uint32_t KEY_ENUMERATE_SUB_KEYS = 8;
inline constexpr std::uint32_t KEY_ALL_SIX = 0x3F;  // the six specific rights of a key together

inline constexpr long ERROR_SUCCESS = 0;
inline constexpr long ERROR_FILE_NOT_FOUND = 2;
inline constexpr long ERROR_ACCESS_DENIED = 5;
inline constexpr long ERROR_INVALID_HANDLE = 6;
inline constexpr long ERROR_INVALID_PARAMETER = 87;
inline constexpr long ERROR_MORE_DATA = 234;
inline constexpr long ERROR_NO_MORE_ITEMS = 259;

using Bytes = std::vector<std::uint8_t>;

/// The system calls on the settings tree, under the names that they have on the platform that the tree imitates.
/// Key and value names are UTF-8, ignore case (accented letters too) and keep their first spelling; path parts are
/// parted by a backslash. A call returns a result code and never throws because of its arguments. If the store
/// itself can't be used (unreadable, damaged, full disk, locked for longer than the store's patience) the call throws
/// PlatformError with a text for a person. No events run inside a call. Every writing call is durable and atomic on
/// its own: after a crash the tree has all of it or nothing.
class RegistryCalls {
 public:
  virtual ~RegistryCalls() = default;

  /// Opens a key that exists; `result` is the new handle on success and untouched otherwise.
  virtual long RegOpenKeyExA(HKEY key, const std::string& path, std::uint32_t access, HKEY& result) = 0;
  /// Opens or creates the key with all keys above it. `disposition` is 1 for a new key, 2 for an existing one.
  virtual long RegCreateKeyExA(HKEY key, const std::string& path, std::uint32_t access, HKEY& result,
                               std::uint32_t& disposition) = 0;
  /// Reads a value. `size` holds the room of `data` in bytes on entry (data may be null: size query) and the value's
  /// size on return; ERROR_MORE_DATA if the room is too small, and then `data` is not written.
  virtual long RegQueryValueExA(HKEY key, const std::string& name, std::uint32_t& type, std::uint8_t* data,
                                std::size_t& size) = 0;
  virtual long RegSetValueExA(HKEY key, const std::string& name, std::uint32_t type, const Bytes& data) = 0;
  virtual long RegCloseKey(HKEY key) = 0;
  /// Deletes a key without subkeys (ERROR_ACCESS_DENIED if it has some) and its values.
  virtual long RegDeleteKeyA(HKEY key, const std::string& path) = 0;
  virtual long RegDeleteValueA(HKEY key, const std::string& name) = 0;
  /// Name of the subkey at `index` from 0. `size` is the room in bytes with the closing zero.
  virtual long RegEnumKeyA(HKEY key, std::uint32_t index, std::string& name, std::size_t size) = 0;
  /// Name of the value at `index` from 0. `size` is the room in bytes with the closing zero.
  virtual long RegEnumValueA(HKEY key, std::uint32_t index, std::string& name, std::size_t size) = 0;
  /// Counts, and the longest names in bytes without the closing zero.
  virtual long RegQueryInfoKeyA(HKEY key, std::uint32_t& subKeys, std::size_t& maxSubKeyLength,
                                std::uint32_t& values, std::size_t& maxValueNameLength) = 0;
  /// Expands %NAME% by the process's environment; an unknown name keeps its percent signs and text. Returns the size
  /// in bytes with the closing zero that the whole result needs; writes `result` only if that is at most `size`.
  virtual std::size_t ExpandEnvironmentStringsA(const std::string& source, std::string& result,
                                                std::size_t size) = 0;
};

}  // namespace kivandra
