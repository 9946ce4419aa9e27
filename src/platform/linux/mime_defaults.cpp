// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/mime_defaults.h"

#include <glib.h>

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <memory>
#include <sstream>
#include <system_error>

#include "platform/linux/user_folders.h"
#include "platform/platform_error.h"

namespace kivandra::linux_impl {
namespace {

constexpr const char* kDefaults = "Default Applications";
constexpr const char* kListName = "mimeapps.list";

using KeyFile = std::unique_ptr<GKeyFile, decltype(&g_key_file_unref)>;
using Error = std::unique_ptr<GError, decltype(&g_error_free)>;

/// The names that a list may have, the one of the desktop in use before the common one.
std::vector<std::string> ListNames() {
  const char* value = std::getenv("XDG_CURRENT_DESKTOP");
  std::istringstream desktops(value == nullptr ? "" : value);
  std::vector<std::string> names;
  for (std::string desktop; std::getline(desktops, desktop, ':');) {
    for (char& c : desktop) {
      c = g_ascii_tolower(c);
    }
    if (!desktop.empty() && desktop.find('/') == std::string::npos) {
      names.push_back(desktop + "-" + kListName);
    }
  }
  names.emplace_back(kListName);
  return names;
}

std::vector<std::string> Lists(const std::vector<std::string>& folders) {
  std::vector<std::string> lists;
  for (const std::string& folder : folders) {
    for (const std::string& name : ListNames()) {
      lists.push_back(std::string(folder).append("/").append(name));
    }
  }
  return lists;
}

/// Gives an empty list for a file that is not there; throws PlatformError for one that is no list.
KeyFile Load(const std::string& path) {
  KeyFile file(g_key_file_new(), &g_key_file_unref);
  GError* error = nullptr;
  if (g_key_file_load_from_file(
          file.get(), path.c_str(),
          static_cast<GKeyFileFlags>(G_KEY_FILE_KEEP_COMMENTS | G_KEY_FILE_KEEP_TRANSLATIONS),
          &error) == FALSE) {
    const Error owned(error, &g_error_free);
    if (!g_error_matches(error, G_FILE_ERROR, G_FILE_ERROR_NOENT)) {
      throw PlatformError(kInvalidCall, "Cannot read " + path + ": " + error->message);
    }
  }
  return file;
}

void Save(const KeyFile& file, const std::string& path) {
  std::error_code none;
  // A list that is a link stays one.
  const std::filesystem::path real = std::filesystem::weakly_canonical(path, none);
  const std::string target = none ? path : real.string();
  MakePrivateFolder(target.substr(0, target.rfind('/')));
  GError* error = nullptr;
  if (g_key_file_save_to_file(file.get(), target.c_str(), &error) == FALSE) {
    const Error owned(error, &g_error_free);
    throw PlatformError(kInvalidCall, "Cannot write " + path + ": " + error->message);
  }
}

std::vector<std::string> Entries(const KeyFile& file, const std::string& type) {
  gchar** names = g_key_file_get_string_list(file.get(), kDefaults, type.c_str(), nullptr, nullptr);
  std::vector<std::string> entries;
  for (gchar** name = names; name != nullptr && *name != nullptr; ++name) {
    entries.emplace_back(*name);
  }
  g_strfreev(names);
  return entries;
}

/// The places inside a folder of entries that a name may mean: a "-" of it may stand for a folder, so that
/// "kde4-x.desktop" is also "kde4/x.desktop".
std::vector<std::string> PlacesOf(std::string entry) {
  if (entry.empty() || entry.find('/') != std::string::npos) {
    return {};
  }
  std::vector<std::string> places{entry};
  for (std::size_t at = entry.find('-'); at != std::string::npos; at = entry.find('-', at)) {
    entry[at] = '/';
    places.push_back(entry);
  }
  return places;
}

bool IsThere(const std::string& entry) {
  std::error_code none;
  for (const std::string& folder : ApplicationFolders()) {
    for (const std::string& place : PlacesOf(entry)) {
      if (std::filesystem::is_regular_file(std::string(folder).append("/").append(place), none)) {
        return true;
      }
    }
  }
  return false;
}

/// Puts an entry before the others that the list has for a type.
void PutFirst(const KeyFile& file, const std::string& type, const std::string& entry) {
  std::vector<std::string> entries{entry};
  for (const std::string& each : Entries(file, type)) {
    if (!each.empty() && std::find(entries.begin(), entries.end(), each) == entries.end()) {
      entries.push_back(each);
    }
  }
  std::vector<const gchar*> texts;
  texts.reserve(entries.size());
  for (const std::string& each : entries) {
    texts.push_back(each.c_str());
  }
  g_key_file_set_string_list(file.get(), kDefaults, type.c_str(), texts.data(), texts.size());
}

void SetInList(const std::string& path, const std::vector<std::string>& types, const std::string& entry) {
  const KeyFile file = Load(path);
  bool changed = false;
  for (const std::string& type : types) {
    // A list of one desktop is changed only where it stands in the way.
    if (path.ends_with(std::string("/") + kListName) || !Entries(file, type).empty()) {
      PutFirst(file, type, entry);
      changed = true;
    }
  }
  if (changed) {
    Save(file, path);
  }
}

}  // namespace

std::vector<std::string> ApplicationFolders() {
  std::vector<std::string> folders{UserDataFolder() + "/applications"};
  for (const std::string& folder : SystemDataFolders()) {
    folders.push_back(folder + "/applications");
  }
  return folders;
}

std::string DefaultFor(const std::string& type) {
  std::vector<std::string> folders{UserConfigFolder()};
  for (const auto& more : {SystemConfigFolders(), ApplicationFolders()}) {
    folders.insert(folders.end(), more.begin(), more.end());
  }
  for (const std::string& path : Lists(folders)) {
    try {
      for (const std::string& entry : Entries(Load(path), type)) {
        if (IsThere(entry)) {
          return entry;
        }
      }
    } catch (const PlatformError&) {
      continue;  // nobody can read this one
    }
  }
  return {};
}

void SetDefaultFor(const std::vector<std::string>& types, const std::string& entry) {
  std::exception_ptr first;
  for (const std::string& path : Lists({UserConfigFolder()})) {
    try {
      SetInList(path, types, entry);
    } catch (const PlatformError&) {
      // One list that can't be changed keeps no other from it.
      if (first == nullptr) {
        first = std::current_exception();
      }
    }
  }
  if (first != nullptr) {
    std::rethrow_exception(first);
  }
}

}  // namespace kivandra::linux_impl
