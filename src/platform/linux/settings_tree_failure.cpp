// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/settings_tree_failure.h"

#include <sqlite3.h>

#include <cerrno>
#include <new>
#include <system_error>

#include "platform/platform_error.h"

namespace kivandra::linux_impl {

namespace {

// Numbers that the original platform's language gives to failures of these kinds.
constexpr long kDeviceError = 57;
constexpr long kDiskFull = 61;
constexpr long kPermissionDenied = 70;
constexpr long kPathFileAccess = 75;
constexpr long kInvalidFileFormat = 321;

[[noreturn]] void Throw(long number, const std::string& path, const std::string& trouble,
                        const std::string& remedy) {
  throw PlatformError(number, "The file with Kivandra's settings " + trouble + ": " + path + "\n\n" + remedy);
}

[[noreturn]] void ThrowFull(const std::string& path) {
  Throw(kDiskFull, path, "can't be written, because the disk is full",
        "Nothing in it was changed. Please make some room on the disk, then try again.");
}

}  // namespace

void ThrowDamaged(const std::string& path) {
  Throw(kInvalidFileFormat, path, "is damaged",
        "Nothing in it was changed. Please put a good copy of it in its place, then start Kivandra again.");
}

void ThrowNewer(const std::string& path) {
  Throw(kInvalidFileFormat, path, "was written by a newer version of Kivandra",
        "Nothing in it was changed. Please install that version again, then start Kivandra.");
}

void ThrowMissing(const std::string& path, const std::string& journal) {
  Throw(kInvalidFileFormat, path, "is missing, though a part of it was left behind",
        "The part is " + journal +
            ". Please put a good copy of the missing file in its place, then start Kivandra again.");
}

void ThrowNoAccess(const std::string& path, int error) {
  if (error == ENOSPC || error == EDQUOT) {
    ThrowFull(path);
  }
  const std::string reason = error == 0 ? "" : " (" + std::generic_category().message(error) + ")";
  Throw(kPathFileAccess, path, "can't be opened for reading and writing" + reason,
        "Nothing in it was changed. Please see to it that you may read and change the file and the folder "
        "that it "
        "lies in, then start Kivandra again.");
}

void ThrowSqliteFailure(const std::string& path, int code) {
  switch (code & 0xFF) {
    case SQLITE_NOMEM:
      throw std::bad_alloc();
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_FORMAT:
    case SQLITE_SCHEMA:
    case SQLITE_ERROR:
      // Every statement is fixed and valid for a sound store, so a plain error too comes from what lies in
      // the file.
      ThrowDamaged(path);
    case SQLITE_FULL:
      ThrowFull(path);
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      Throw(kPermissionDenied, path, "is held by another program",
            "Nothing in it was changed. Please close the other program or wait a little, then try again.");
    case SQLITE_PERM:
    case SQLITE_READONLY:
    case SQLITE_CANTOPEN:
    case SQLITE_AUTH:
      ThrowNoAccess(path, 0);
    default:
      Throw(kDeviceError, path, "can't be read or written, because the disk reports a fault",
            "Please have the disk checked, then start Kivandra again. (Code " + std::to_string(code) + ")");
  }
}

}  // namespace kivandra::linux_impl
