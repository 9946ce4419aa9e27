// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <sys/types.h>

#include <functional>

namespace kivandra::fakes {

/// A process of its own that runs `work` and ends with its result. It is killed and waited for at the latest
/// when the object goes.
class ChildProcess {
 public:
  explicit ChildProcess(const std::function<int()>& work);
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  /// Ends the process in whatever it does.
  void Kill();
  /// Waits for its end: its result, or -1 if it was killed.
  int Wait();

 private:
  pid_t id_;
};

}  // namespace kivandra::fakes
