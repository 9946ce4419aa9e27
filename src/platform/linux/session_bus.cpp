// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/session_bus.h"

#include <gio/gio.h>

namespace kivandra::linux_impl {
namespace {

constexpr guint kMostSeconds = 2;

struct Answer {
  GDBusConnection* bus = nullptr;
  bool over = false;
};

GDBusConnection* Connect() {
  GCancellable* cancel = g_cancellable_new();
  const guint alarm = g_timeout_add_seconds(
      kMostSeconds,
      [](gpointer data) -> gboolean {
        g_cancellable_cancel(static_cast<GCancellable*>(data));
        return G_SOURCE_CONTINUE;
      },
      cancel);
  Answer answer;
  g_bus_get(
      G_BUS_TYPE_SESSION, cancel,
      [](GObject*, GAsyncResult* result, gpointer data) {
        auto* waiting = static_cast<Answer*>(data);
        waiting->bus = g_bus_get_finish(result, nullptr);
        waiting->over = true;
      },
      &answer);
  while (!answer.over) {
    g_main_context_iteration(nullptr, TRUE);
  }
  g_source_remove(alarm);
  g_object_unref(cancel);
  return answer.bus;
}

}  // namespace

void SettleSessionBus() {
  // Kept for the life of the process: GLib has one connection for all, and the next who asks gets this one.
  GDBusConnection* bus = Connect();
  if (bus == nullptr) {
    g_unsetenv("DBUS_SESSION_BUS_ADDRESS");
    g_setenv("GTK_A11Y", "none", TRUE);
    return;
  }
  g_dbus_connection_set_exit_on_close(bus, FALSE);
}

}  // namespace kivandra::linux_impl
