// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace kivandra {

struct DllVersionInfo {
  unsigned major = 0;
  unsigned minor = 0;
};

/// Number of the folder of favourites among the special folders, as in shlobj.h.
inline constexpr int CSIDL_FAVORITES = 6;

class SystemInfo {
 public:
  virtual ~SystemInfo() = default;

  /// Folder of the program and of the files beside it; no closing slash.
  [[nodiscard]] virtual std::string ProgramDirectory() const = 0;
  /// The program file's name without its path.
  [[nodiscard]] virtual std::string ProgramFileName() const = 0;
  /// What stands behind the program's name on its command line, joined with blanks.
  [[nodiscard]] virtual std::string CommandLine() const = 0;
  /// Root of the program's own data, where the log folder lies; no closing slash.
  [[nodiscard]] virtual std::string GetWindowsDirectoryA() const = 0;
  [[nodiscard]] virtual std::string GetSystemDirectoryA() const = 0;
  /// A special folder of this user by its number; no closing slash. It may not be there yet. Throws
  /// PlatformError for a number other than CSIDL_FAVORITES.
  [[nodiscard]] virtual std::string SHGetSpecialFolderPathA(int folder) const = 0;
  /// Version of the browser engine.
  [[nodiscard]] virtual DllVersionInfo DllGetVersion() const = 0;
  /// Today's date by a pattern of d, m, yyyy and the separator "/", which becomes the system's own date
  /// separator.
  [[nodiscard]] virtual std::string FormatToday(const std::string& pattern) const = 0;
};

}  // namespace kivandra
