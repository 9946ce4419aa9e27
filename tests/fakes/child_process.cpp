// SPDX-License-Identifier: GPL-3.0-or-later
#include "fakes/child_process.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <exception>
#include <stdexcept>
#include <utility>

namespace kivandra::fakes {

ChildProcess::ChildProcess(const std::function<int()>& work) : id_(::fork()) {
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

ChildProcess::~ChildProcess() {
  if (id_ > 0) Kill();
}

void ChildProcess::Kill() {
  ::kill(id_, SIGKILL);
  (void)Wait();
}

int ChildProcess::Wait() {
  int status = 0;
  const pid_t id = std::exchange(id_, -1);
  while (::waitpid(id, &status, 0) < 0 && errno == EINTR) {
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace kivandra::fakes
