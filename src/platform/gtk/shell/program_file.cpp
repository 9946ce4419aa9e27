// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/shell/program_file.h"

#include <glib.h>
#include <spawn.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>

#include "platform/gtk/shell/desktop_programs.h"
#include "platform/platform_error.h"

namespace kivandra::gtk {
namespace {

constexpr long kFileNotFound = 53;
constexpr long kPermissionDenied = 70;
constexpr int kFirstOwnFile = 3;  // behind the three standard ones

long NumberOf(int error) {
  switch (error) {
    case ENOENT:
    case ENOTDIR:
      return kFileNotFound;
    case EACCES:
    case EPERM:
      return kPermissionDenied;
    default:
      return kInvalidCall;
  }
}

/// How the new process differs from this one; freed at the end of the scope.
class FreshStart {
 public:
  FreshStart() {
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addclosefrom_np(&files, kFirstOwnFile);
    posix_spawnattr_init(&attributes);
    // Away from the terminal, whose Ctrl+C is meant for this program; and what this program ignores is
    // nothing to the other.
    posix_spawnattr_setflags(&attributes,
                             POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    sigset_t signals{};
    sigemptyset(&signals);
    posix_spawnattr_setsigmask(&attributes, &signals);
    sigaddset(&signals, SIGPIPE);
    sigaddset(&signals, SIGXFSZ);
    posix_spawnattr_setsigdefault(&attributes, &signals);
  }
  ~FreshStart() {
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
  }
  FreshStart(const FreshStart&) = delete;
  FreshStart& operator=(const FreshStart&) = delete;

  posix_spawn_file_actions_t files{};
  posix_spawnattr_t attributes{};
};

/// The environment without what tells how this program itself was started.
char** CleanEnvironment() {
  char** environment = g_get_environ();
  for (const char* name : kOwnStart) {
    environment = g_environ_unsetenv(environment, name);
  }
  return environment;
}

}  // namespace

void StartProgramFile(const std::string& path) {
  const FreshStart fresh;
  std::string name = path;
  const std::array<char*, 2> arguments{name.data(), nullptr};
  char** environment = CleanEnvironment();
  pid_t started = 0;
  // Not by a shell, nor by a call that falls back on one: an empty file would then count as a program.
  const int error =
      posix_spawn(&started, path.c_str(), &fresh.files, &fresh.attributes, arguments.data(), environment);
  g_strfreev(environment);
  if (error != 0) {
    throw PlatformError(NumberOf(error), "Cannot start " + path + ": " + std::strerror(error));
  }
}

}  // namespace kivandra::gtk
