// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace kivandra::linux_impl {

// What is wrong with the store, told to a parent: each throws PlatformError with a text that names the file,
// says what can be done, and is true: the file was left as it is.

/// The file is no settings store, or parts of it are missing or changed.
[[noreturn]] void ThrowDamaged(const std::string& path);
/// The file comes from a later version of the program.
[[noreturn]] void ThrowNewer(const std::string& path);
/// The store is gone, but the journal of an unfinished write lies where it was.
[[noreturn]] void ThrowMissing(const std::string& path, const std::string& journal);
/// The file or its folder can't be read, changed or made; `error` is an errno, or 0.
[[noreturn]] void ThrowNoAccess(const std::string& path, int error);
/// Whatever a result code of SQLite stands for.
[[noreturn]] void ThrowSqliteFailure(const std::string& path, int code);

}  // namespace kivandra::linux_impl
