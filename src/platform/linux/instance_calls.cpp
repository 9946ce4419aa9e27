// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/instance_calls.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <vector>

#include "platform/linux/instance_lock.h"
#include "platform/linux/user_folders.h"
#include "platform/platform_error.h"

namespace kivandra::linux_impl {
namespace {

constexpr unsigned long kErrorAccessDenied = 5;  // winerror.h

/// Opens, and makes if need be, a mutex's file; -1 if that can't be.
int Open(const std::string& path) {
  return open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR);
}

int OpenMutexFile(const std::string& name) {
  const std::vector<std::string> files = MutexFiles(name);
  if (const int opened = Open(files.front()); opened >= 0) {
    return opened;
  }
  try {
    MakePrivateFolder(DataFolder());
  } catch (const PlatformError&) {
    return -1;
  }
  return Open(files.back());
}

// A handle is the file's number and one, since the number 0 is a file and the handle 0 is none.
Handle HandleOf(int file) { return static_cast<Handle>(file) + 1; }
int FileOf(Handle handle) { return static_cast<int>(handle - 1); }

}  // namespace

Handle LinuxInstanceCalls::CreateMutexA(const std::string& name, bool /*initialOwner*/) {
  lastError_ = 0;
  const int file = OpenMutexFile(name);
  if (file < 0) {
    lastError_ = kErrorAccessDenied;
    return 0;
  }
  int locked = 0;
  do {
    locked = flock(file, LOCK_EX | LOCK_NB);
  } while (locked != 0 && errno == EINTR);
  if (locked == 0) {
    return HandleOf(file);
  }
  if (errno == EWOULDBLOCK) {
    lastError_ = ERROR_ALREADY_EXISTS;
    return HandleOf(file);
  }
  close(file);
  lastError_ = kErrorAccessDenied;
  return 0;
}

void LinuxInstanceCalls::CloseHandle(Handle handle) {
  if (handle != 0) {
    close(FileOf(handle));
  }
}

}  // namespace kivandra::linux_impl
