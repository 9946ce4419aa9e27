// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <glib.h>

#include <exception>
#include <type_traits>
#include <utility>

namespace kivandra::gtk {

/// Runs what a toolkit callback does: no exception may travel through the toolkit's C code. One that gets
/// here is a fault of the program, so it is said aloud; the callback then answers with its type's zero.
template <typename Work>
std::invoke_result_t<Work> Guarded(Work&& work) noexcept {
  try {
    return std::forward<Work>(work)();
  } catch (const std::exception& error) {
    g_warning("exception in a handler: %s", error.what());
  } catch (...) {
    g_warning("unknown exception in a handler");
  }
  if constexpr (!std::is_void_v<std::invoke_result_t<Work>>) {
    return {};
  }
}

/// Runs an event handler if there is one. The copy lives on while the handler runs, which may replace or
/// destroy the original.
template <typename Handler, typename... Arguments>
auto Raise(Handler handler, Arguments&&... arguments) noexcept {
  return Guarded([&]() -> decltype(handler(arguments...)) {
    if (!handler) {
      return decltype(handler(arguments...))();
    }
    return handler(std::forward<Arguments>(arguments)...);
  });
}

}  // namespace kivandra::gtk
