// SPDX-License-Identifier: GPL-3.0-or-later
// The part of cRegistry that writes the entries of classes of files.
#include <cstddef>
#include <utility>

#include "core/registry.h"
#include "platform/platform_error.h"

namespace kivandra {

namespace {

std::string InQuotationMarks(const std::string& path) {
  const bool opens = !path.empty() && path.front() == '"';
  const bool closes = !path.empty() && path.back() == '"';
  return (opens ? "" : "\"") + path + (closes ? "" : "\"");
}

}  // namespace

/// Writes the value under both roots at which classes can be found. kept on purpose: both are the same key,
/// and ClassKey stays HKEY_LOCAL_MACHINE.
void cRegistry::RunAssociation(const std::string& text, FirstFailure& failure) {
  const auto write = [&] {
    try {
      SetValue(text);
    } catch (const PlatformError& error) {
      if (!failure) {
        failure = error;
      }
    }
  };
  classKey_ = HKEY_CLASSES_ROOT;
  write();
  classKey_ = HKEY_LOCAL_MACHINE;
  const std::string section = std::exchange(sectionKey_, "SOFTWARE\\Classes\\" + sectionKey_);
  write();
  sectionKey_ = section;
}

void cRegistry::CreateEXEAssociation(const std::string& programPath, const std::string& className,
                                     const std::string& classDescription, const std::string& extension,
                                     const std::string& openVerb, bool supportPrint,
                                     const std::string& printVerb, bool supportNew,
                                     const std::string& newVerb, bool supportInstall,
                                     const std::string& installVerb, long iconIndex) {
  valueType_ = REG_SZ;
  valueKey_.clear();
  FirstFailure failure;
  const auto write = [&](const std::string& section, const std::string& text) {
    sectionKey_ = section;
    RunAssociation(text, failure);
  };
  // 1.
  const std::string path = InQuotationMarks(programPath);
  const auto writeVerb = [&](const std::string& name, const std::string& text, const std::string& usual,
                             const std::string& arguments) {
    write(className + "\\shell\\" + name, text.empty() ? usual : text);
    write(className + "\\shell\\" + name + "\\command", path + arguments);
  };
  // 2. and 3. The extension and the class.
  write("." + extension, className);
  write(className, classDescription);
  // 4. and 5.
  writeVerb("open", openVerb, "&Open", " \"%1\"");
  // 6.
  if (supportPrint) {
    writeVerb("print", printVerb, "&Print", " /p \"%1\"");
  }
  // 7.
  if (supportInstall) {
    writeVerb("add", installVerb, "&Install " + classDescription, " /a \"%1\"");
  }
  // 8.
  if (supportNew) {
    writeVerb("new", newVerb, "&New", " /n \"%1\"");
  }
  // 9.
  if (iconIndex != kNoIcon) {
    write(className + "\\DefaultIcon", path + "," + std::to_string(iconIndex));
  }
  if (failure) {
    throw PlatformError(*failure);
  }
}

void cRegistry::CreateAdditionalEXEAssociations(const std::string& sClassName,
                                                const std::vector<Variant>& vItems) {
  constexpr std::size_t kTriple = 3;
  if (vItems.size() % kTriple != 0) {
    Raise(kRegistryError,
          "Invalid parameter list passed to CreateAdditionalEXEAssociations - expected Name/Text/Command");
  }
  classKey_ = HKEY_CLASSES_ROOT;
  sectionKey_ = sClassName;
  if (!KeyExists()) {
    Raise(kRegistryError, "Error - attempt to create additional associations before class defined.");
  }
  valueType_ = REG_SZ;
  valueKey_.clear();
  FirstFailure failure;
  for (std::size_t item = 0; item < vItems.size(); item += kTriple) {
    const std::string verb = sClassName + "\\shell\\" + TextOf(vItems[item]);
    sectionKey_ = verb;
    RunAssociation(TextOf(vItems[item + 1]), failure);
    sectionKey_ = verb + "\\command";
    RunAssociation(TextOf(vItems[item + 2]), failure);
  }
  if (failure) {
    throw PlatformError(*failure);
  }
}

}  // namespace kivandra
