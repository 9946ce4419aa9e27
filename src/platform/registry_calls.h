// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kivandra {

/// A root (0x80000000 and up) or the number of an open key.
using HKEY = std::uint32_t;

inline constexpr HKEY HKEY_CLASSES_ROOT = 0x80000000;  // is SOFTWARE\Classes below HKEY_LOCAL_MACHINE
inline constexpr HKEY HKEY_CURRENT_USER = 0x80000001;
inline constexpr HKEY HKEY_LOCAL_MACHINE = 0x80000002;
inline constexpr HKEY HKEY_USERS = 0x80000003;
inline constexpr HKEY HKEY_CURRENT_CONFIG = 0x80000005;

// Value types and result codes carry the numbers of winnt.h and winerror.h.
inline constexpr std::uint32_t REG_SZ = 1;
inline constexpr std::uint32_t REG_EXPAND_SZ = 2;
inline constexpr std::uint32_t REG_BINARY = 3;
inline constexpr std::uint32_t REG_DWORD = 4;
inline constexpr std::uint32_t REG_DWORD_BIG_ENDIAN = 5;
inline constexpr std::uint32_t REG_MULTI_SZ = 7;

inline constexpr std::uint32_t KEY_QUERY_VALUE = 1;
inline constexpr std::uint32_t KEY_SET_VALUE = 2;
inline constexpr std::uint32_t KEY_CREATE_SUB_KEY = 4;
inline constexpr std::uint32_t KEY_ENUMERATE_SUB_KEYS = 8;
inline constexpr std::uint32_t KEY_ALL_SIX = 0x3F;  // the six specific rights of a key together

inline constexpr std::uint32_t REG_CREATED_NEW_KEY = 1;
inline constexpr std::uint32_t REG_OPENED_EXISTING_KEY = 2;

inline constexpr long ERROR_SUCCESS = 0;
inline constexpr long ERROR_FILE_NOT_FOUND = 2;
inline constexpr long ERROR_ACCESS_DENIED = 5;
inline constexpr long ERROR_INVALID_HANDLE = 6;
inline constexpr long ERROR_INVALID_PARAMETER = 87;
inline constexpr long ERROR_BAD_PATHNAME = 161;
inline constexpr long ERROR_MORE_DATA = 234;
inline constexpr long ERROR_NO_MORE_ITEMS = 259;
inline constexpr long ERROR_KEY_DELETED = 1018;

using Bytes = std::vector<std::uint8_t>;

/// The system calls on the settings tree, under the names that they have on the platform that the tree
/// imitates.
///
/// Names. Key and value names are UTF-8 and end at their first zero byte. They ignore case (accented letters
/// too) and keep their first spelling. Path parts are parted by a backslash; empty parts count for nothing,
/// but a path that begins with a backslash is ERROR_BAD_PATHNAME. A key's name has at most 255 characters, a
/// value's at most 16383; a longer one is ERROR_INVALID_PARAMETER when it is to be made. The empty value name
/// is the key's default value.
///
/// Handles. A root needs no opening and has every right. A handle that is neither a root nor open is
/// ERROR_INVALID_HANDLE; one without the right that a call needs is ERROR_ACCESS_DENIED; one whose key has
/// been deleted meanwhile, by this process or another, is ERROR_KEY_DELETED. A handle that is never closed
/// costs no more than a number: opening the same key again with the same rights may give the same handle,
/// which then stays open until it has been closed as often as it was opened.
///
/// Failures. A call returns a result code and never throws because of its arguments. If the store itself
/// can't be used (unreadable, damaged, full disk, locked for longer than the store's patience) the call
/// throws PlatformError with a text for a person, and the store is left as it is. A missing store is an empty
/// tree, and nothing else is.
///
/// Every writing call is durable and atomic on its own (or with its RegistryBatch): after a crash the tree
/// has all of it or nothing. Writing what is stored already writes nothing. No events run inside a call.
class RegistryCalls {
 public:
  virtual ~RegistryCalls() = default;

  /// Opens a key that exists; `result` is the new handle on success and untouched otherwise.
  virtual long RegOpenKeyExA(HKEY key, const std::string& path, std::uint32_t access, HKEY& result) = 0;
  /// Opens or creates the key with all keys above it. `disposition` is REG_CREATED_NEW_KEY or
  /// REG_OPENED_EXISTING_KEY. A key is made only below a handle with KEY_CREATE_SUB_KEY.
  virtual long RegCreateKeyExA(HKEY key, const std::string& path, std::uint32_t access, HKEY& result,
                               std::uint32_t& disposition) = 0;
  /// Reads a value; needs KEY_QUERY_VALUE. `size` holds the room of `data` in bytes on entry (data may be
  /// null: size query) and the value's size on return; ERROR_MORE_DATA if the room is too small, and then
  /// `data` is not written. ERROR_FILE_NOT_FOUND leaves `type` and `size` as they are.
  virtual long RegQueryValueExA(HKEY key, const std::string& name, std::uint32_t& type, std::uint8_t* data,
                                std::size_t& size) = 0;
  /// Makes or replaces a value; needs KEY_SET_VALUE. The bytes are stored as they are, whatever the type.
  virtual long RegSetValueExA(HKEY key, const std::string& name, std::uint32_t type, const Bytes& data) = 0;
  virtual long RegCloseKey(HKEY key) = 0;
  /// Deletes a key and its values. ERROR_ACCESS_DENIED if it has subkeys, or is a root or SOFTWARE\Classes.
  virtual long RegDeleteKeyA(HKEY key, const std::string& path) = 0;
  /// Needs KEY_SET_VALUE.
  virtual long RegDeleteValueA(HKEY key, const std::string& name) = 0;
  /// Name of the subkey at `index` from 0; needs KEY_ENUMERATE_SUB_KEYS. `size` is the room in bytes with the
  /// closing zero. The order is steady as long as no key is made or deleted.
  virtual long RegEnumKeyA(HKEY key, std::uint32_t index, std::string& name, std::size_t size) = 0;
  /// Name of the value at `index` from 0; needs KEY_QUERY_VALUE. `size` is the room in bytes with the closing
  /// zero.
  virtual long RegEnumValueA(HKEY key, std::uint32_t index, std::string& name, std::size_t size) = 0;
  /// Counts, and the longest names in bytes without the closing zero; needs KEY_QUERY_VALUE.
  virtual long RegQueryInfoKeyA(HKEY key, std::uint32_t& subKeys, std::size_t& maxSubKeyLength,
                                std::uint32_t& values, std::size_t& maxValueNameLength) = 0;
  /// Expands %NAME% by the process's environment (names ignore case; one of the exact spelling goes first),
  /// up to the first zero byte of `source`. An unknown name keeps its percent signs and text, and the scan
  /// goes on behind them;
  /// "%%" stays. Returns the size in bytes with the closing zero that the whole result needs; writes `result`
  /// (without the zero) only if that is at most `size`.
  virtual std::size_t ExpandEnvironmentStringsA(const std::string& source, std::string& result,
                                                std::size_t size) = 0;

  /// Begins and ends a batch; RegistryBatch calls them. Batches don't nest: beginning a second throws
  /// PlatformError.
  virtual void BeginBatch() = 0;
  /// With `keep` everything written since BeginBatch becomes durable at once; otherwise nothing of it
  /// remains, and the call never throws.
  virtual void EndBatch(bool keep) = 0;
};

/// Many writes as one: they are as cheap as a single write, and after a crash the tree has all of them or
/// none. Meant for long rows of writes with nothing between them, since other processes can't write until the
/// batch ends; let no events run inside. What it wrote is gone again if it ends without Commit.
class RegistryBatch {
 public:
  explicit RegistryBatch(RegistryCalls& calls) : calls_(calls) { calls_.BeginBatch(); }
  ~RegistryBatch() {
    if (open_) {
      calls_.EndBatch(false);
    }
  }
  RegistryBatch(const RegistryBatch&) = delete;
  RegistryBatch& operator=(const RegistryBatch&) = delete;

  /// Throws PlatformError if the store can't take the writes; nothing of them remains then.
  void Commit() {
    open_ = false;
    calls_.EndBatch(true);
  }

 private:
  RegistryCalls& calls_;
  bool open_ = true;
};

}  // namespace kivandra
