// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/desktop_entry_file.h"

#include <glib.h>

#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>

#include "desktop_entry.h"
#include "platform/linux/mime_defaults.h"
#include "platform/linux/user_folders.h"
#include "platform/platform_error.h"

namespace kivandra::linux_impl {
namespace {

constexpr const char* kGroup = "Desktop Entry";

/// A text as a value of an entry.
std::string Value(std::string_view text) {
  std::string value;
  for (const char c : text) {
    switch (c) {
      case '\\':
        value += "\\\\";
        break;
      case '\n':
        value += "\\n";
        break;
      case '\t':
        value += "\\t";
        break;
      case '\r':
        value += "\\r";
        break;
      default:
        value += c;
    }
  }
  return value;
}

void Replace(std::string& text, std::string_view old, const std::string& with) {
  if (const std::size_t at = text.find(old); at != std::string::npos) {
    text.replace(at, old.size(), with);
  }
}

/// The program that an entry starts; empty if it starts none.
std::string CommandOf(const std::string& path) {
  const std::unique_ptr<GKeyFile, decltype(&g_key_file_unref)> file(g_key_file_new(), &g_key_file_unref);
  if (g_key_file_load_from_file(file.get(), path.c_str(), G_KEY_FILE_NONE, nullptr) == FALSE ||
      g_key_file_get_boolean(file.get(), kGroup, "Hidden", nullptr) == TRUE) {
    return {};
  }
  gchar* line = g_key_file_get_string(file.get(), kGroup, "Exec", nullptr);
  gchar** words = nullptr;
  std::string command;
  if (line != nullptr && g_shell_parse_argv(line, nullptr, &words, nullptr) == TRUE) {
    const bool behindEnv = std::string_view(words[0]) == "env" && words[1] != nullptr;
    command = words[behindEnv ? 1 : 0];
    for (std::size_t at = 0; (at = command.find("%%", at)) != std::string::npos; ++at) {
      command.erase(at, 1);
    }
    gchar* found = g_find_program_in_path(command.c_str());
    command = found == nullptr ? "" : found;
    g_free(found);
  }
  g_strfreev(words);
  g_free(line);
  return command;
}

/// Whether the entry that the desktop finds starts `command`.
bool Starts(const std::string& command) {
  std::error_code none;
  for (const std::string& folder : ApplicationFolders()) {
    const std::string path = folder + "/" + kDesktopEntryName;
    if (std::filesystem::exists(path, none)) {
      const std::string found = CommandOf(path);
      return !found.empty() && std::filesystem::equivalent(found, command, none);
    }
  }
  return false;
}

}  // namespace

std::string ExecCommand(const std::string& path) {
  constexpr std::string_view kPlain =
      "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/._+:@,-%";
  const bool plain = path.find_first_not_of(kPlain) == std::string::npos;
  std::string word;
  for (const char c : path) {
    if (c == '%') {
      word += '%';
    } else if (std::string_view("\"`$\\").find(c) != std::string_view::npos) {
      word += '\\';
    }
    word += c;
  }
  // Some desktops look for an entry's program before they read the doubled percent sign: there it stands
  // behind a program that they find.
  const char* before = path.find('%') == std::string::npos ? "" : "env ";
  return before + Value(plain ? word : '"' + word + '"');
}

void OfferDesktopEntry(const std::string& command, const std::string& icon) {
  if (Starts(command)) {
    return;
  }
  std::string text(kDesktopEntry);
  Replace(text, "@KIVANDRA_OPEN@", ExecCommand(command));
  if (!icon.empty()) {
    Replace(text, "Icon=kivandra", "Icon=" + Value(icon));
  }
  const std::string folder = ApplicationFolders().front();
  MakePrivateFolder(folder);
  const std::string path = folder + "/" + kDesktopEntryName;
  GError* error = nullptr;
  if (g_file_set_contents(path.c_str(), text.c_str(), static_cast<gssize>(text.size()), &error) == FALSE) {
    const std::unique_ptr<GError, decltype(&g_error_free)> owned(error, &g_error_free);
    throw PlatformError(kInvalidCall, "Cannot write " + path + ": " + error->message);
  }
  if (!Starts(command)) {
    throw PlatformError(kInvalidCall, "No desktop entry can start " + command);
  }
}

}  // namespace kivandra::linux_impl
