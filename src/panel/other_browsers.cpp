// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/other_browsers.h"

#include "core/registry.h"
#include "core/settings.h"
#include "support/attempt.h"

namespace kivandra {
namespace {

/// Where another browser's program file is found, and how its hidden name is told.
struct OtherBrowser {
  const char* setting;
  HKEY root;
  const char* section;
  bool inCommandLine;  ///< the value is a command line: a quoted path and " %1"
  const char* marker;  ///< part of the name of the hidden file, exact in its case
};

constexpr OtherBrowser kInternetExplorer{
    "P_IE", HKEY_CLASSES_ROOT, R"(Applications\iexplore.exe\shell\open\command)", true, "iexplore.exeX"};
// kept on purpose: this marker has no "X" at its end.
constexpr OtherBrowser kNetscape{"P_NS", HKEY_LOCAL_MACHINE,
                                 R"(Software\Microsoft\Windows\CurrentVersion\App Paths\Netscp6.exe)", false,
                                 "netscp6.exe"};

/// The path inside a command line: without its first character and its last four. A line too short for that
/// has none.
std::string PathInCommandLine(const std::string& line) {
  constexpr std::size_t kBefore = 1;
  constexpr std::size_t kAround = 5;
  return line.size() < kAround ? std::string() : line.substr(kBefore, line.size() - kAround);
}

void Prevent(const OtherBrowser& browser, const OtherBrowserServices& services) {
  // 1. and 2.
  std::string path;
  attempt([&] {
    cRegistry registry(services.registry, services.programFileName);
    registry.SetClassKey(browser.root);
    registry.SetSectionKey(browser.section);
    registry.SetValueType(REG_SZ);
    path = TextOf(registry.Value());
  });
  if (browser.inCommandLine) {
    path = PathInCommandLine(path);
  }
  const std::string hidden = path + "X";
  // 3.
  std::string found;
  attempt([&] { found = services.files.Dir(hidden); });
  // 4. The file first gets its own name back, whatever is wanted.
  if (found.find(browser.marker) != std::string::npos) {
    attempt([&] { services.files.Name(hidden, path); });
  }
  // 5.
  bool prevent = false;
  attempt([&] { prevent = Val(TextOf(ReadItem(services.registry, browser.setting))) == 1; });
  // 6. and 7. The way back is also for a hidden file that the marker did not match; mostly it fails here.
  attempt([&] {
    if (prevent) {
      services.files.Name(path, hidden);
    } else {
      services.files.Name(hidden, path);
    }
  });
}

}  // namespace

void PreventInternetExplorer(const OtherBrowserServices& services) { Prevent(kInternetExplorer, services); }

void PreventNetscape(const OtherBrowserServices& services) { Prevent(kNetscape, services); }

}  // namespace kivandra
