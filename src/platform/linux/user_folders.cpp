// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/user_folders.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <sstream>

#include "platform/platform_error.h"

namespace kivandra::linux_impl {
namespace {

/// An environment variable that names a folder. A relative path counts as not set: it would mean another
/// folder with every working directory.
std::string AbsoluteFolder(const char* variable) {
  const char* value = std::getenv(variable);
  if (value == nullptr || value[0] != '/') {
    return {};
  }
  std::string folder = value;
  while (folder.size() > 1 && folder.back() == '/') {
    folder.pop_back();
  }
  return folder;
}

std::string HomeFolder() {
  std::string home = AbsoluteFolder("HOME");
  if (home.empty()) {
    if (const passwd* user = getpwuid(getuid()); user != nullptr && user->pw_dir != nullptr) {
      home = user->pw_dir;
    }
  }
  return home;
}

bool IsFolder(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::string FolderOr(const char* variable, const char* inHome) {
  const std::string folder = AbsoluteFolder(variable);
  return folder.empty() ? HomeFolder() + inHome : folder;
}

/// The absolute folders of a list with colons.
std::vector<std::string> FoldersOr(const char* variable, const char* usual) {
  const char* value = std::getenv(variable);
  std::istringstream list(value == nullptr || *value == '\0' ? usual : value);
  std::vector<std::string> folders;
  for (std::string folder; std::getline(list, folder, ':');) {
    if (folder.starts_with('/')) {
      folders.push_back(folder);
    }
  }
  return folders;
}

}  // namespace

std::string UserDataFolder() { return FolderOr("XDG_DATA_HOME", "/.local/share"); }

std::string UserConfigFolder() { return FolderOr("XDG_CONFIG_HOME", "/.config"); }

std::vector<std::string> SystemDataFolders() {
  return FoldersOr("XDG_DATA_DIRS", "/usr/local/share:/usr/share");
}

std::vector<std::string> SystemConfigFolders() { return FoldersOr("XDG_CONFIG_DIRS", "/etc/xdg"); }

std::string DataFolder() { return UserDataFolder() + "/kivandra"; }

std::string RuntimeFolder() { return AbsoluteFolder("XDG_RUNTIME_DIR"); }

void MakePrivateFolder(const std::string& path) {
  if (path.empty() || IsFolder(path)) {
    return;
  }
  MakePrivateFolder(path.substr(0, path.rfind('/')));
  // Another process of this user may make the same folder at the same moment: that is as good.
  if (mkdir(path.c_str(), S_IRWXU) != 0 && !(errno == EEXIST && IsFolder(path))) {
    throw PlatformError(75, "Cannot make the folder " + path + ": " + std::strerror(errno));
  }
}

}  // namespace kivandra::linux_impl
