// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <exception>
#include <functional>
#include <stdexcept>
#include <utility>

namespace kivandra::fakes {

/// A process of its own that runs `work` and ends with its result. It is killed and waited for at the latest
/// when the object goes.
class ChildProcess {
 public:
  explicit ChildProcess(const std::function<int()>& work) : id_(::fork()) {
    if (id_ < 0) throw std::runtime_error("no child process");
    if (id_ > 0) return;
    int result = 101;
    try {
      result = work();
    } catch (const std::exception& error) {
      if (::write(STDERR_FILENO, error.what(), std::strlen(error.what())) < 0) result = 102;
    }
    ::_exit(result);
  }
  ~ChildProcess() {
    if (id_ > 0) Kill();
  }
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  /// Ends the process in whatever it does.
  void Kill() {
    ::kill(id_, SIGKILL);
    (void)Wait();
  }
  /// Waits for its end: its result, or -1 if it was killed.
  int Wait() {
    int status = 0;
    const pid_t id = std::exchange(id_, -1);
    while (::waitpid(id, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

 private:
  pid_t id_;
};

}  // namespace kivandra::fakes
