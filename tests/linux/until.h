// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <glib.h>

#include <chrono>
#include <functional>

namespace kivandra::tests {

/// Handles events until `done` holds, at most ten seconds; tells whether it held. Sleeps between events.
inline bool Until(const std::function<bool()>& done) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  // A steady tick ends the sleep for conditions that no event announces.
  const guint tick = g_timeout_add(
      5, [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr);
  while (!done() && std::chrono::steady_clock::now() < end) {
    g_main_context_iteration(nullptr, TRUE);
  }
  g_source_remove(tick);
  return done();
}

}  // namespace kivandra::tests
