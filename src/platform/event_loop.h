// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace kivandra {

/// The one user-interface thread's events.
class EventLoop {
 public:
  virtual ~EventLoop() = default;

  /// Handles every event that waits already; returns at once if there is none.
  virtual void DoEvents() = 0;
  /// Sleeps until at least one event has been handled: the body of every waiting loop, so that a wait costs
  /// no processor. Windows may close and handlers may re-enter inside.
  virtual void WaitForEvents() = 0;
  /// Ends the process at once: no window is asked, no closing step runs. Does not return in the real program;
  /// a fake returns, so a caller leaves its routine behind the call.
  virtual void EndProgram() = 0;
};

}  // namespace kivandra
