// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/file_calls.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/linux/user_folders.h"
#include "platform/platform_error.h"

namespace kivandra::linux_impl {
namespace {

constexpr long kFileNotFound = 53;
constexpr long kPermissionDenied = 70;
constexpr long kPathFileAccess = 75;

/// A file is held in memory whole; far more than anything that the program reads.
constexpr off_t kLargestFile = 256 * 1024 * 1024;

long NumberOf(int error) {
  switch (error) {
    case ENOENT:
    case ENOTDIR:
      return kFileNotFound;
    case EACCES:
    case EPERM:
    case EROFS:
      return kPermissionDenied;
    default:
      return kPathFileAccess;  // a folder among others: unlink never takes one
  }
}

[[noreturn]] void Fail(const char* what, const std::string& path, int error) {
  throw PlatformError(NumberOf(error), std::string(what) + path + ": " + std::strerror(error));
}

/// An open file, closed at the end of the scope.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() {
    if (number_ >= 0) {
      close(number_);
    }
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  [[nodiscard]] int Number() const { return number_; }
  [[nodiscard]] bool Close() { return close(std::exchange(number_, -1)) == 0; }

 private:
  int number_;
};

bool WriteAll(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(file, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) {
      continue;
    }
    if (written <= 0) {
      return false;
    }
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

bool IsThere(const std::string& path) {
  struct stat entry {};
  return lstat(path.c_str(), &entry) == 0;
}

/// Puts an entry of an open folder where it belongs in the listing.
void Place(int folder, const dirent& entry, FolderListing& listing) {
  // Most file systems tell the kind with the name; asking for each of many entries would take its time.
  if (entry.d_type == DT_REG) {
    listing.files.emplace_back(entry.d_name);
    return;
  }
  if (entry.d_type == DT_DIR) {
    listing.folders.push_back({entry.d_name, false});
    return;
  }
  struct stat own {};
  struct stat target {};
  if (fstatat(folder, entry.d_name, &own, AT_SYMLINK_NOFOLLOW) != 0 ||
      fstatat(folder, entry.d_name, &target, 0) != 0) {
    return;
  }
  if (S_ISDIR(target.st_mode)) {
    listing.folders.push_back({entry.d_name, S_ISLNK(own.st_mode)});
  } else if (S_ISREG(target.st_mode)) {
    listing.files.emplace_back(entry.d_name);
  }
}

}  // namespace

void LinuxFileCalls::Kill(const std::string& path) {
  if (unlink(path.c_str()) != 0) {
    Fail("Cannot delete ", path, errno);
  }
}

std::string LinuxFileCalls::Dir(const std::string& path) const {
  struct stat entry {};
  if (stat(path.c_str(), &entry) != 0 || !S_ISREG(entry.st_mode)) {
    return {};
  }
  return path.substr(path.rfind('/') + 1);
}

void LinuxFileCalls::Name(const std::string& path, const std::string& newPath) {
  // rename would take the place of a file of the new name without a word.
  if (renameat2(AT_FDCWD, path.c_str(), AT_FDCWD, newPath.c_str(), RENAME_NOREPLACE) == 0) {
    return;
  }
  const int error = errno;
  // Some file systems don't know the flag.
  if (error != EINVAL || IsThere(newPath) || std::rename(path.c_str(), newPath.c_str()) != 0) {
    Fail("Cannot rename ", path, error);
  }
}

std::string LinuxFileCalls::ReadFile(const std::string& path) const {
  // A pipe or a device in the file's place must not hold the program up.
  const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  struct stat entry {};
  if (file.Number() < 0 || fstat(file.Number(), &entry) != 0) {
    Fail("Cannot read ", path, errno);
  }
  if (!S_ISREG(entry.st_mode)) {
    throw PlatformError(kPathFileAccess, "Cannot read " + path + ": it is not a file");
  }
  if (entry.st_size > kLargestFile) {
    throw PlatformError(kPathFileAccess, "Cannot read " + path + ": it is too large");
  }
  std::string bytes(static_cast<std::size_t>(entry.st_size), '\0');
  std::size_t filled = 0;
  while (true) {
    if (filled == bytes.size()) {
      bytes.resize(filled + 4096);  // the file may grow meanwhile
    }
    const ssize_t got = read(file.Number(), bytes.data() + filled, bytes.size() - filled);
    if (got < 0 && errno == EINTR) {
      continue;
    }
    if (got < 0) {
      Fail("Cannot read ", path, errno);
    }
    if (got == 0) {
      break;
    }
    filled += static_cast<std::size_t>(got);
  }
  bytes.resize(filled);
  return bytes;
}

void LinuxFileCalls::WriteFile(const std::string& path, const std::string& bytes) {
  // A new file takes the old one's place only when all of it is on the disk.
  const std::string fresh = path + ".new";
  Descriptor file(open(fresh.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0600));
  if (file.Number() < 0) {
    Fail("Cannot write ", path, errno);
  }
  if (!WriteAll(file.Number(), bytes) || fsync(file.Number()) != 0 || !file.Close() ||
      std::rename(fresh.c_str(), path.c_str()) != 0) {
    const int error = errno;
    unlink(fresh.c_str());
    Fail("Cannot write ", path, error);
  }
}

FolderListing LinuxFileCalls::ListFolder(const std::string& path) const {
  const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir(path.c_str()), &closedir);
  if (!folder) {
    Fail("Cannot read the folder ", path, errno);
  }
  FolderListing listing;
  while (true) {
    errno = 0;
    const dirent* entry = readdir(folder.get());
    if (entry == nullptr) {
      break;
    }
    const std::string name = entry->d_name;
    if (name == "." || name == "..") {
      continue;
    }
    Place(dirfd(folder.get()), *entry, listing);
  }
  if (errno != 0) {
    Fail("Cannot read the folder ", path, errno);
  }
  return listing;
}

void LinuxFileCalls::MakeFolder(const std::string& path) { MakePrivateFolder(path); }

void LinuxFileCalls::DeleteFolder(const std::string& path) {
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::symlink_status(path, error);
  if (!std::filesystem::is_directory(status) && !std::filesystem::is_symlink(status)) {
    Fail("Cannot delete the folder ", path, ENOENT);
  }
  // Never through a link.
  std::filesystem::remove_all(path, error);
  if (error) {
    Fail("Cannot delete the folder ", path, error.value());
  }
}

}  // namespace kivandra::linux_impl
