// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <string_view>

#include "platform/system_info.h"

namespace kivandra::linux_impl {

/// What a process was started with, as the kernel tells it (each text closed by a zero byte, the program's
/// name first), without that name and joined with blanks.
[[nodiscard]] std::string JoinArguments(std::string_view processArguments);

class LinuxSystemInfo : public SystemInfo {
 public:
  using Clock = std::function<std::chrono::system_clock::time_point()>;

  /// `engine` is the version that DllGetVersion tells.
  explicit LinuxSystemInfo(DllVersionInfo engine, Clock clock = &std::chrono::system_clock::now);

  /// Makes the data folder and the log folder in it, for this user alone: no routine of the program makes
  /// them. Throws PlatformError if they can't be made.
  void SetUp() const;

  [[nodiscard]] std::string ProgramDirectory() const override;
  [[nodiscard]] std::string ProgramFileName() const override;
  [[nodiscard]] std::string CommandLine() const override;
  [[nodiscard]] std::string GetWindowsDirectoryA() const override;
  /// The same folder: this system has no second one.
  [[nodiscard]] std::string GetSystemDirectoryA() const override { return GetWindowsDirectoryA(); }
  /// The folder `Favorites` of the program's own data.
  [[nodiscard]] std::string SHGetSpecialFolderPathA(int folder) const override;
  [[nodiscard]] DllVersionInfo DllGetVersion() const override { return engine_; }
  /// Local time. The date separator of this platform is "/" in every language.
  [[nodiscard]] std::string FormatToday(const std::string& pattern) const override;

 private:
  DllVersionInfo engine_;
  Clock clock_;
};

}  // namespace kivandra::linux_impl
