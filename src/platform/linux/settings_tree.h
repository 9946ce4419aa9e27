// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/settings_tree_store.h"
#include "platform/registry_calls.h"

namespace kivandra::linux_impl {

/// The settings tree on an SQLite file. Nothing is opened by making one: the file is opened, or made, by the
/// first call that needs it, and a file that can't be used makes every such call throw PlatformError. One
/// thread; several processes may use the same file, and wait up to 5 seconds for each other. Not to be
/// carried across a fork.
class SettingsTree : public RegistryCalls {
 public:
  /// `path` is that of the file. Its folder is made, for this user alone, with the file.
  explicit SettingsTree(std::string path) : store_(std::move(path)) {}

  long RegOpenKeyExA(HKEY key, const std::string& path, std::uint32_t access, HKEY& result) override;
  long RegCreateKeyExA(HKEY key, const std::string& path, std::uint32_t access, HKEY& result,
                       std::uint32_t& disposition) override;
  long RegQueryValueExA(HKEY key, const std::string& name, std::uint32_t& type, std::uint8_t* data,
                        std::size_t& size) override;
  long RegSetValueExA(HKEY key, const std::string& name, std::uint32_t type, const Bytes& data) override;
  long RegCloseKey(HKEY key) override;
  long RegDeleteKeyA(HKEY key, const std::string& path) override;
  long RegDeleteValueA(HKEY key, const std::string& name) override;
  long RegEnumKeyA(HKEY key, std::uint32_t index, std::string& name, std::size_t size) override;
  long RegEnumValueA(HKEY key, std::uint32_t index, std::string& name, std::size_t size) override;
  long RegQueryInfoKeyA(HKEY key, std::uint32_t& subKeys, std::size_t& maxSubKeyLength, std::uint32_t& values,
                        std::size_t& maxValueNameLength) override;
  std::size_t ExpandEnvironmentStringsA(const std::string& source, std::string& result,
                                        std::size_t size) override;
  void BeginBatch() override;
  void EndBatch(bool keep) override;

 private:
  using KeyId = std::int64_t;

  /// What a handle stands for. Openings of one key with the same rights share a handle.
  struct OpenKey {
    KeyId id = 0;
    std::uint32_t access = 0;
    std::uint64_t openings = 0;  // 0: the handle is free
  };

  /// Gets the key behind a handle; the code is ERROR_INVALID_HANDLE or, without all rights in `needed`,
  /// ERROR_ACCESS_DENIED.
  long Resolve(HKEY handle, std::uint32_t needed, KeyId& id) const;
  HKEY NewHandle(KeyId id, std::uint32_t access);
  bool KeyIsThere(KeyId id);
  std::optional<KeyId> FindSubKey(KeyId parent, std::string_view name);
  /// Code of walking down from `id`, which becomes the key at the path's end.
  long Walk(KeyId& id, const std::vector<std::string_view>& path);
  KeyId AddSubKey(KeyId parent, std::string_view name);
  /// Gives the name in row `index` of what `statement` lists below an open key.
  long NthName(HKEY key, std::uint32_t right, Statement& statement, std::uint32_t index, std::string& name,
               std::size_t size);
  bool SameValueIsThere(KeyId id, const std::string& folded, std::uint32_t type, const Bytes& data);
  /// Throws if a batch has lost its transaction: what follows must not be written apart from it.
  void CheckBatch() const;

  Store store_;
  std::vector<OpenKey> openKeys_;  // handle 1 is the first
  bool batch_ = false;

  Statement findKey_{store_, "SELECT 1 FROM key WHERE id = ?"};
  Statement findSubKey_{store_, "SELECT id FROM key WHERE parent = ? AND folded = ?"};
  Statement addSubKey_{store_, "INSERT INTO key(parent, name, folded) VALUES(?, ?, ?) RETURNING id"};
  Statement findAnySubKey_{store_, "SELECT 1 FROM key WHERE parent = ? LIMIT 1"};
  Statement deleteKey_{store_, "DELETE FROM key WHERE id = ?"};
  Statement deleteValues_{store_, "DELETE FROM value WHERE key = ?"};
  Statement nthSubKey_{store_, "SELECT name FROM key WHERE parent = ? ORDER BY folded LIMIT 1 OFFSET ?"};
  Statement findValue_{store_, "SELECT type, data FROM value WHERE key = ? AND folded = ?"};
  Statement setValue_{store_,
                      "INSERT INTO value(key, folded, name, type, data) VALUES(?, ?, ?, ?, ?) "
                      "ON CONFLICT(key, folded) DO UPDATE SET type = excluded.type, data = excluded.data"};
  Statement deleteValue_{store_, "DELETE FROM value WHERE key = ? AND folded = ? RETURNING 1"};
  Statement nthValue_{store_, "SELECT name FROM value WHERE key = ? ORDER BY folded LIMIT 1 OFFSET ?"};
  Statement countSubKeys_{
      store_, "SELECT count(*), ifnull(max(length(CAST(name AS BLOB))), 0) FROM key WHERE parent = ?"};
  Statement countValues_{
      store_, "SELECT count(*), ifnull(max(length(CAST(name AS BLOB))), 0) FROM value WHERE key = ?"};
};

}  // namespace kivandra::linux_impl
