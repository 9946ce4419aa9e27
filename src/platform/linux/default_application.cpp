// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/default_application.h"

#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/linux/desktop_entry_file.h"
#include "platform/linux/mime_defaults.h"
#include "platform/linux/tool_run.h"
#include "platform/platform_error.h"

namespace kivandra::linux_impl {
namespace {

constexpr std::chrono::seconds kMostOfATool{10};

const std::vector<std::string>& Types() {
  static const std::vector<std::string> kTypes{"x-scheme-handler/http", "x-scheme-handler/https", "text/html",
                                               "application/xhtml+xml"};
  return kTypes;
}

/// The types for which the desktop's lists name another entry or none.
std::vector<std::string> OthersTypes() {
  std::vector<std::string> types;
  for (const std::string& type : Types()) {
    if (DefaultFor(type) != kDesktopEntryName) {
      types.push_back(type);
    }
  }
  return types;
}

/// What the desktop does not open with this program, for the reader of an error; empty if it opens all.
std::string Missing() {
  std::string missing;
  for (const std::string& type : OthersTypes()) {
    const std::string entry = DefaultFor(type);
    missing += (missing.empty() ? "" : ", ") + type + " (" + (entry.empty() ? "nothing" : entry) + ")";
  }
  // What a desktop keeps elsewhere only its own tool can tell.
  const ToolResult told = RunTool({"xdg-settings", "get", "default-web-browser"}, kMostOfATool);
  if (told.found && told.output != kDesktopEntryName) {
    missing += (missing.empty() ? "" : ", ") + std::string("web pages by xdg-settings (") +
               (told.output.empty() ? "no answer" : told.output) + ")";
  }
  return missing;
}

}  // namespace

LinuxDefaultApplication::LinuxDefaultApplication(std::string programDirectory)
    : programDirectory_(std::move(programDirectory)) {}

void LinuxDefaultApplication::Register() {
  if (running_) {
    throw PlatformError(kInvalidCall, "The desktop is being asked already.");
  }
  struct Turn {
    explicit Turn(bool& flag) : running(flag) { running = true; }
    ~Turn() { running = false; }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;
    bool& running;
  };
  const Turn turn(running_);
  const std::string command = programDirectory_ + "/kivandra-open";
  if (access(command.c_str(), X_OK) != 0) {
    throw PlatformError(kInvalidCall, "There is no program " + command);
  }
  const std::string icon = programDirectory_ + "/icons/hicolor/scalable/apps/kivandra.svg";
  std::error_code none;
  OfferDesktopEntry(command, std::filesystem::exists(icon, none) ? icon : "");
  (void)RunTool({"update-desktop-database", "-q", ApplicationFolders().front()}, kMostOfATool);
  (void)RunTool({"xdg-settings", "set", "default-web-browser", kDesktopEntryName}, kMostOfATool);
  // Without that tool, or for what it leaves out.
  if (const std::vector<std::string> types = OthersTypes(); !types.empty()) {
    SetDefaultFor(types, kDesktopEntryName);
  }
  if (const std::string missing = Missing(); !missing.empty()) {
    throw PlatformError(kInvalidCall, "The desktop opens with another program: " + missing);
  }
}

}  // namespace kivandra::linux_impl
