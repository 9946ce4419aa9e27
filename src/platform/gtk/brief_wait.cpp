// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/brief_wait.h"

#include <glib.h>

namespace kivandra::gtk {
namespace {

constexpr guint kPatience = 1000;  // milliseconds

gboolean GiveUp(gpointer late) {
  *static_cast<bool*>(late) = true;
  return G_SOURCE_REMOVE;
}

}  // namespace

void WaitBriefly(const bool& done) {
  bool late = false;
  const guint timer = g_timeout_add(kPatience, GiveUp, &late);
  while (!done && !late) {
    g_main_context_iteration(nullptr, TRUE);
  }
  if (!late) {
    g_source_remove(timer);
  }
}

}  // namespace kivandra::gtk
