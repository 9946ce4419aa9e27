// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/variant.h"
#include "platform/platform_error.h"
#include "platform/registry_calls.h"

namespace kivandra {

// Errors that cRegistry raises.
inline constexpr long kRegistryError = 26001;
inline constexpr long kRegistryWriteError = static_cast<std::int32_t>(0x800469A9);

/// The one wrapper around the registry: a cursor. Set where (ClassKey, SectionKey, ValueKey) and of which
/// type (ValueType), then read or set Value or call a key operation. It keeps no key open between calls; make
/// one for the work at hand.
///
/// What an operation can't do it raises as PlatformError with the number 26001 (a failing write of a value:
/// 0x800469A9), a text that names the key, and the program's file name joined with ".cRegistry" as source. A
/// store that fails as a whole raises its own PlatformError, through reads too.
class cRegistry {
 public:
  /// `programFileName` is the program file's name without its path; it stands in the source of errors.
  explicit cRegistry(RegistryCalls& calls, std::string programFileName = "kivandra");

  // Where, and of which type.
  [[nodiscard]] HKEY ClassKey() const { return classKey_; }
  void SetClassKey(HKEY root) { classKey_ = root; }
  [[nodiscard]] const std::string& SectionKey() const { return sectionKey_; }
  void SetSectionKey(std::string path) { sectionKey_ = std::move(path); }
  [[nodiscard]] const std::string& ValueKey() const { return valueKey_; }
  /// The empty name is the key's default value.
  void SetValueKey(std::string name) { valueKey_ = std::move(name); }
  [[nodiscard]] std::uint32_t ValueType() const { return valueType_; }
  void SetValueType(std::uint32_t type) { valueType_ = type; }
  /// What a read gives when the value does not exist.
  [[nodiscard]] const Variant& Default() const { return default_; }
  void SetDefault(Variant value) { default_ = std::move(value); }

  /// Whether the key can be opened for reading.
  [[nodiscard]] bool KeyExists();
  /// Makes the key with all keys above it, or finds it there; true.
  bool CreateKey();
  /// Deletes the key, which must have no subkeys; true.
  bool DeleteKey();
  bool DeleteValue();

  /// Reads the value and sets ValueType to the type found; a missing key or value gives Default and leaves
  /// ValueType. Types 1 and 7 give text, 2 text with its environment variables expanded, 4 and 5 a number,
  /// others bytes. It leaves one handle open.
  [[nodiscard]] Variant Value();
  /// Makes the key if need be and stores `value` by ValueType:
  /// 1 and 2: as text, with type 2 if it has a "%" and another at least two characters on, otherwise with
  /// type 1; 3: bytes without their last two, at least two must be given; 4 and 5: a 16 or 32 bit number as
  /// type 4, nothing for any other value.
  void SetValue(Variant value);
  /// The value that was last set with success.
  [[nodiscard]] const Variant& LastValue() const { return value_; }

  /// Names of the key's values. The names stand from index 1; the array is empty if there are none. True also
  /// for a key that can't be opened.
  bool EnumerateValues(std::vector<std::string>& names, long& count);
  /// Names of the key's subkeys, in the same way; the walk ends at a name above 254 bytes. False if the store
  /// failed.
  bool EnumerateSections(std::vector<std::string>& names, long& count);

  /// Icon index of CreateEXEAssociation that writes no icon.
  static constexpr long kNoIcon = -1;

  /// Writes the entries of a class of files and of its extension (without the dot), each under both roots of
  /// classes; a write that fails does not keep the others back, and is raised at the end. An empty verb text
  /// gets its default. ClassKey is HKEY_LOCAL_MACHINE afterwards, ValueType 1, ValueKey empty.
  void CreateEXEAssociation(const std::string& programPath, const std::string& className,
                            const std::string& classDescription, const std::string& extension,
                            const std::string& openVerb = {}, bool supportPrint = false,
                            const std::string& printVerb = {}, bool supportNew = false,
                            const std::string& newVerb = {}, bool supportInstall = false,
                            const std::string& installVerb = {}, long iconIndex = kNoIcon);
  /// Adds verbs to a class that is there: `vItems` holds triples of name, text and command.
  void CreateAdditionalEXEAssociations(const std::string& sClassName, const std::vector<Variant>& vItems);

 private:
  /// What went wrong first in a run of writes that go on after a failure.
  using FirstFailure = std::optional<PlatformError>;
  void RunAssociation(const std::string& text, FirstFailure& failure);
  std::string ExpandEnvStr(const std::string& text);
  /// The code of writing `value`; raises for a type 3 value that is not bytes.
  long Write(HKEY key, const Variant& value);
  [[nodiscard]] std::string Root() const;
  [[nodiscard]] std::string SetFailure(const Variant& value) const;
  [[noreturn]] void Raise(long number, const std::string& description) const;

  RegistryCalls& calls_;
  std::string programFileName_;
  HKEY classKey_ = 0;
  std::string sectionKey_;
  std::string valueKey_;
  Variant value_;
  std::uint32_t valueType_ = 0;
  Variant default_;
};

}  // namespace kivandra
