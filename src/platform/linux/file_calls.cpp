// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/file_calls.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "platform/platform_error.h"

namespace kivandra::linux_impl {
namespace {

constexpr long kFileNotFound = 53;
constexpr long kPermissionDenied = 70;
constexpr long kPathFileAccess = 75;

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

}  // namespace

void LinuxFileCalls::Kill(const std::string& path) {
  if (unlink(path.c_str()) != 0) {
    const int error = errno;
    throw PlatformError(NumberOf(error), "Cannot delete " + path + ": " + std::strerror(error));
  }
}

}  // namespace kivandra::linux_impl
