// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/instance_lock.h"

#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>

#include "platform/linux/percent_encoding.h"
#include "platform/linux/user_folders.h"

namespace kivandra::linux_impl {
namespace {

/// The file as the kernel's list of locks names it; empty if there is none.
std::string NameInListOfLocks(const std::string& path) {
  struct stat file {};
  if (stat(path.c_str(), &file) != 0) {
    return {};
  }
  std::array<char, 64> name{};
  (void)std::snprintf(name.data(), name.size(), " %02x:%02x:%lu ", major(file.st_dev), minor(file.st_dev),
                      static_cast<unsigned long>(file.st_ino));
  return name.data();
}

}  // namespace

std::vector<std::string> MutexFiles(const std::string& name) {
  // Every character but a plain one is encoded, so that no name can leave the folder and two names never
  // share a file.
  const std::string file = "/" + PercentEncode(name) + ".lock";
  std::vector<std::string> files;
  if (const std::string folder = RuntimeFolder(); !folder.empty()) {
    files.push_back(folder + file);
  }
  files.push_back(DataFolder() + file);
  return files;
}

bool MutexIsHeld(const std::string& name) {
  std::vector<std::string> wanted;
  for (const std::string& path : MutexFiles(name)) {
    if (std::string file = NameInListOfLocks(path); !file.empty()) {
      wanted.push_back(std::move(file));
    }
  }
  std::ifstream locks("/proc/locks");
  for (std::string line; std::getline(locks, line);) {
    if (line.find(" FLOCK ") != std::string::npos &&
        std::any_of(wanted.begin(), wanted.end(),
                    [&](const std::string& file) { return line.find(file) != std::string::npos; })) {
      return true;
    }
  }
  return false;
}

}  // namespace kivandra::linux_impl
