// SPDX-License-Identifier: GPL-3.0-or-later
#include "filter/navigation_log.h"

#include <optional>

#include "core/core_values.h"
#include "core/settings.h"
#include "support/attempt.h"
#include "support/rich_text.h"

namespace kivandra {

namespace {

/// Tries for a free name beside a file; nobody needs more.
constexpr int kSetAsideNames = 1000;

/// Gives a file that is no log another name beside its own. False if it still stands where it was.
bool SetAside(FileCalls& files, const std::string& path) {
  for (int number = 1; number <= kSetAsideNames; ++number) {
    const std::string name = path + "." + std::to_string(number);
    bool taken = true;
    if (!attempt([&] { taken = !files.Dir(name).empty(); })) {
      return false;
    }
    if (!taken) {
      return attempt([&] { files.Name(path, name); });
    }
  }
  return false;
}

/// Reads the day's file into the buffer, which keeps what it had if that fails. True if the file may be
/// written now.
bool LoadDay(FileCalls& files, const std::string& path, std::string& LogURL) {
  std::optional<std::string> text;
  if (attempt([&] { text = ReadRichText(files.ReadFile(path)); }) && text) {
    LogURL = std::move(*text);
    return true;
  }
  bool there = true;
  if (!attempt([&] { there = !files.Dir(path).empty(); })) {
    return false;
  }
  return !there || SetAside(files, path);
}

}  // namespace

std::string LogFolder() { return WindowsDirectory + "/21/"; }

std::string LogFile(const std::string& day) { return LogFolder() + day + ".rtf"; }

void LogVisit(RegistryCalls& registry, FileCalls& files, const WebBrowser& browser, std::string& LogURL) {
  // 1. Only if the parent has switched it on.
  bool wanted = false;
  attempt([&] { wanted = Val(TextOf(ReadItem(registry, "R_N"))) == 1; });
  if (!wanted) {
    return;
  }
  // 2. The day of the program's start, also past midnight.
  const std::string path = LogFile(LogDayName);
  const bool mayWrite = LoadDay(files, path, LogURL);
  // 3. The newest in front, nothing between the entries but their own blanks.
  attempt([&] { LogURL = " ->" + browser.LocationName() + " URL " + browser.LocationURL() + "  " + LogURL; });
  // 4.
  if (mayWrite) {
    attempt([&] { files.WriteFile(path, WriteRichText(LogURL)); });
  }
}

}  // namespace kivandra
