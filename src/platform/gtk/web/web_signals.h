// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <glib-object.h>

#include <utility>
#include <vector>

namespace kivandra::gtk {

/// Joins the engine's signals to member functions of an object that is held by a std::shared_ptr. The object
/// stays alive while one of its functions runs, so a handler may close the window that it belongs to.
class SignalConnections {
 public:
  SignalConnections() = default;
  SignalConnections(const SignalConnections&) = delete;
  SignalConnections& operator=(const SignalConnections&) = delete;
  ~SignalConnections() { Cut(); }

  /// Calls `receiver->Function(arguments...)` at every `signal`; the signal's first argument, the instance,
  /// is left out.
  template <auto Function, typename T>
  void Connect(gpointer instance, const char* signal, T* receiver) {
    const gulong id =
        g_signal_connect(instance, signal, reinterpret_cast<GCallback>(&Trampoline<Function>::Run), receiver);
    connections_.emplace_back(G_OBJECT(g_object_ref(instance)), id);
  }

  void Cut() {
    for (auto& [instance, id] : std::exchange(connections_, {})) {
      g_signal_handler_disconnect(instance, id);
      g_object_unref(instance);
    }
  }

 private:
  template <auto Function>
  struct Trampoline;
  template <typename T, typename R, typename... A, R (T::*Function)(A...)>
  struct Trampoline<Function> {
    static R Run(gpointer /*instance*/, A... arguments, gpointer receiver) {
      const auto alive = static_cast<T*>(receiver)->shared_from_this();
      return (static_cast<T*>(receiver)->*Function)(arguments...);
    }
  };

  std::vector<std::pair<GObject*, gulong>> connections_;
};

}  // namespace kivandra::gtk
