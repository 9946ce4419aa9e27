// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/main_events.h"

#include <glib.h>

#include <cstdlib>

namespace kivandra::gtk {

void MainEvents::DoEvents() {
  // Bounded: something that is always ready must not keep the caller here.
  constexpr int kMost = 1000;
  for (int i = 0; i < kMost && g_main_context_iteration(nullptr, FALSE); ++i) {
  }
}

void MainEvents::WaitForEvents() { g_main_context_iteration(nullptr, TRUE); }

void MainEvents::EndProgram() { std::_Exit(EXIT_SUCCESS); }

}  // namespace kivandra::gtk
