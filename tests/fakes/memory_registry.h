// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "fakes/journal.h"
#include "platform/registry_calls.h"

namespace kivandra::fakes {

/// The settings tree in memory, for tests that need some tree and no file. Reads and writes of values go into
/// the journal, if there is one ("Read T_PW", "Write T_PW = abc"), and fail when the journal says so. With
/// `failAt` n the n-th call of any kind throws. It folds the case of the letters of
/// code page 1252 (but Y with diaeresis).
class MemoryRegistry : public RegistryCalls {
 public:
  explicit MemoryRegistry(Journal* journal = nullptr);
  ~MemoryRegistry() override;

  long calls = 0;
  long failAt = 0;  // 0: never

  // For a test's own use; never counted, recorded or failed.

  void Put(HKEY root, const std::string& path, const std::string& name, const std::string& text);
  [[nodiscard]] bool Has(HKEY root, const std::string& path) const;
  /// Text of a value of the types 1, 2 and 7; nothing if there is no such value.
  [[nodiscard]] std::optional<std::string> Text(HKEY root, const std::string& path,
                                                const std::string& name) const;
  void PutSetting(const std::string& name, const std::string& text);
  [[nodiscard]] std::optional<std::string> Setting(const std::string& name) const;
  /// Number of handles that are open.
  [[nodiscard]] std::size_t OpenHandles() const;

  // RegistryCalls.

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
  struct Value {
    std::string name;
    std::uint32_t type;
    Bytes data;
  };
  struct Key;
  using KeyPointer = std::shared_ptr<Key>;
  struct Contents {
    std::map<std::string, KeyPointer> subKeys;  // by folded name
    std::map<std::string, Value> values;        // by folded name
  };
  struct Key : Contents {
    std::string name;
    std::weak_ptr<Key> parent;
    bool deleted = false;
  };
  struct OpenKey {
    KeyPointer key;
    std::uint32_t access;
  };
  using Snapshot = std::map<KeyPointer, Contents>;

  static std::string Cut(const std::string& text);
  static std::string TextOfBytes(const Bytes& bytes);
  static std::string Fold(const std::string& name);
  static std::size_t Characters(const std::string& text);
  static std::vector<std::string> Split(const std::string& path);
  static long CheckPath(const std::string& path);
  static long Give(const std::string& found, std::string& name, std::size_t size);
  static KeyPointer Find(KeyPointer key, const std::string& path);
  static KeyPointer Make(KeyPointer key, const std::string& path);
  static std::optional<std::string> Variable(const std::string& name);

  void Count();
  void Record(const std::string& line);
  [[nodiscard]] KeyPointer RootKey(HKEY root) const;
  long Resolve(HKEY handle, std::uint32_t needed, KeyPointer& key) const;
  HKEY NewHandle(const KeyPointer& key, std::uint32_t access);
  void Save(const KeyPointer& key);

  Journal* journal_;
  std::map<HKEY, KeyPointer> roots_;
  KeyPointer classes_;
  std::map<HKEY, OpenKey> open_;
  HKEY lastHandle_ = 0;
  std::unique_ptr<Snapshot> before_;
};

}  // namespace kivandra::fakes
