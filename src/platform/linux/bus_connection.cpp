// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/bus_connection.h"

namespace kivandra::linux_impl {
namespace {

struct Answer {
  GDBusConnection* bus = nullptr;
  bool over = false;
};

}  // namespace

GDBusConnection* ConnectToSessionBus(std::chrono::seconds most) {
  GCancellable* cancel = g_cancellable_new();
  const guint alarm = g_timeout_add_seconds(
      static_cast<guint>(most.count()),
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
  if (answer.bus != nullptr) {
    g_dbus_connection_set_exit_on_close(answer.bus, FALSE);
  }
  return answer.bus;
}

}  // namespace kivandra::linux_impl
