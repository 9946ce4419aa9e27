// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/instance_calls.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/linux/percent_encoding.h"
#include "platform/linux/user_folders.h"
#include "platform/platform_error.h"

namespace kivandra::linux_impl {
namespace {

constexpr unsigned long kErrorAccessDenied = 5;  // winerror.h

/// The mutex's name as a file name in which every character but a plain one is encoded, so that no name can
/// leave the folder and two names never share a file.
std::string FileNameOf(const std::string& name) { return PercentEncode(name) + ".lock"; }

/// Opens, and makes if need be, the mutex's file in `folder`; -1 if that can't be.
int OpenIn(const std::string& folder, const std::string& file) {
  if (folder.empty()) {
    return -1;
  }
  return open((folder + "/" + file).c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR);
}

int OpenMutexFile(const std::string& file) {
  if (const int opened = OpenIn(RuntimeFolder(), file); opened >= 0) {
    return opened;
  }
  try {
    MakePrivateFolder(DataFolder());
  } catch (const PlatformError&) {
    return -1;
  }
  return OpenIn(DataFolder(), file);
}

// A handle is the file's number and one, since the number 0 is a file and the handle 0 is none.
Handle HandleOf(int file) { return static_cast<Handle>(file) + 1; }
int FileOf(Handle handle) { return static_cast<int>(handle - 1); }

}  // namespace

Handle LinuxInstanceCalls::CreateMutexA(const std::string& name, bool /*initialOwner*/) {
  lastError_ = 0;
  const int file = OpenMutexFile(FileNameOf(name));
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
