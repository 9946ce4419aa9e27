// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/session_bus.h"

#include <chrono>

#include "platform/linux/bus_connection.h"

namespace kivandra::linux_impl {

void SettleSessionBus() {
  // Kept for the life of the process: GLib has one connection for all, and the next who asks gets this one.
  if (ConnectToSessionBus(std::chrono::seconds(2)) == nullptr) {
    g_unsetenv("DBUS_SESSION_BUS_ADDRESS");
    g_setenv("GTK_A11Y", "none", TRUE);
  }
}

}  // namespace kivandra::linux_impl
