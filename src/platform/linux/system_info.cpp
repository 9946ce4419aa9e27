// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/system_info.h"

#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

#include "platform/linux/user_folders.h"
#include "platform/platform_error.h"

namespace kivandra::linux_impl {
namespace {

constexpr std::string_view kLogFolder = "/21";
constexpr std::string_view kFavoritesFolder = "/Favorites";

/// The program's file. An upgrade that replaces it while it runs makes the kernel add a mark to the name.
std::filesystem::path ProgramFile() {
  constexpr std::string_view kReplaced = " (deleted)";
  std::error_code error;
  std::string file = std::filesystem::read_symlink("/proc/self/exe", error).string();
  if (error) {
    throw PlatformError(kInvalidCall, "Cannot tell where the program lies: " + error.message());
  }
  if (file.ends_with(kReplaced) && !std::filesystem::exists(file, error)) {
    file.resize(file.size() - kReplaced.size());
  }
  return file;
}

/// One run of the same letter of a date pattern.
std::string DatePart(char letter, std::size_t length, const std::tm& today) {
  std::string number;
  switch (letter) {
    case 'd':
      number = std::to_string(today.tm_mday);
      break;
    case 'm':
      number = std::to_string(today.tm_mon + 1);
      break;
    case 'y':
      number = std::to_string(today.tm_year + 1900);
      if (length == 2) {
        number = number.substr(number.size() - 2);
      }
      break;
    default:
      number.assign(length, letter);
      break;
  }
  return number.size() < length ? std::string(length - number.size(), '0') + number : number;
}

}  // namespace

std::string JoinArguments(std::string_view processArguments) {
  const std::size_t nameEnd = processArguments.find('\0');
  if (nameEnd == std::string_view::npos) {
    return {};
  }
  std::string joined(processArguments.substr(nameEnd + 1));
  if (joined.ends_with('\0')) {
    joined.pop_back();
  }
  for (char& c : joined) {
    if (c == '\0') {
      c = ' ';
    }
  }
  return joined;
}

LinuxSystemInfo::LinuxSystemInfo(DllVersionInfo engine, Clock clock)
    : engine_(engine), clock_(std::move(clock)) {}

void LinuxSystemInfo::SetUp() const { MakePrivateFolder(GetWindowsDirectoryA().append(kLogFolder)); }

std::string LinuxSystemInfo::ProgramDirectory() const { return ProgramFile().parent_path().string(); }

std::string LinuxSystemInfo::ProgramFileName() const { return ProgramFile().filename().string(); }

std::string LinuxSystemInfo::CommandLine() const {
  std::ifstream file("/proc/self/cmdline", std::ios::binary);
  const std::string arguments{std::istreambuf_iterator<char>(file), {}};
  return JoinArguments(arguments);
}

std::string LinuxSystemInfo::GetWindowsDirectoryA() const { return DataFolder(); }

std::string LinuxSystemInfo::SHGetSpecialFolderPathA(int folder) const {
  if (folder != CSIDL_FAVORITES) {
    throw PlatformError(kInvalidCall, "No special folder " + std::to_string(folder));
  }
  return DataFolder().append(kFavoritesFolder);
}

std::string LinuxSystemInfo::FormatToday(const std::string& pattern) const {
  const std::time_t now = std::chrono::system_clock::to_time_t(clock_());
  std::tm today{};
  localtime_r(&now, &today);
  std::string text;
  for (std::size_t at = 0; at < pattern.size();) {
    const std::size_t next = pattern.find_first_not_of(pattern[at], at);
    const std::size_t length = (next == std::string::npos ? pattern.size() : next) - at;
    text += DatePart(pattern[at], length, today);
    at += length;
  }
  return text;
}

}  // namespace kivandra::linux_impl
