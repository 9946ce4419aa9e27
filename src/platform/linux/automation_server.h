// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>

#include "platform/script_object.h"

namespace kivandra::linux_impl {

/// Offers the automation object to other programs on the session bus, under the names in automation_names.h.
/// Without a bus, with the name taken or the bus lost, there is none, and nobody is told.
class AutomationServer {
 public:
  struct Program {
    /// The object that is offered, or null while nothing may be asked of the program; asked at every call.
    std::function<ScriptObject*()> object;
    /// Brings the frame to the front.
    std::function<void()> present;
  };

  /// Begins to connect and returns at once, however the bus is. Once connected and once there is an object,
  /// the name is taken; calls then come from the event loop.
  explicit AutomationServer(Program program);
  /// Takes the object off the bus.
  ~AutomationServer();
  AutomationServer(const AutomationServer&) = delete;
  AutomationServer& operator=(const AutomationServer&) = delete;

  /// Whether other programs find the object.
  [[nodiscard]] bool Offered() const;

 private:
  class Connection;
  std::shared_ptr<Connection> connection_;
};

}  // namespace kivandra::linux_impl
