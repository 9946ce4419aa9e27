// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "platform/script_object.h"

namespace kivandra::linux_impl {

/// Offers the automation object to other programs on the session bus: name org.kivandra.Kivandra, object
/// /org/kivandra/Application, interface org.kivandra.Application. Without a bus, or with the name taken,
/// there is none, and nobody is told.
class AutomationServer {
 public:
  AutomationServer();
  /// Takes the object off the bus.
  ~AutomationServer();
  AutomationServer(const AutomationServer&) = delete;
  AutomationServer& operator=(const AutomationServer&) = delete;

  /// From now on calls reach `object`, which outlives this one. A further call changes nothing.
  void Offer(ScriptObject& object);

 private:
  struct Connection;
  std::unique_ptr<Connection> connection_;
};

}  // namespace kivandra::linux_impl
