// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gio/gio.h>

#include <array>
#include <memory>
#include <stdexcept>
#include <string>

#include "linux/temporary_folder.h"
#include "linux/until.h"

namespace kivandra::tests {

/// A session bus of its own for one test; what asks for the session's bus meanwhile finds this one.
class PrivateBus {
 public:
  PrivateBus() : server_(Start()), address_("DBUS_SESSION_BUS_ADDRESS", ReadAddress()) {}
  ~PrivateBus() {
    // GLib keeps one connection for all; what still waits in the loop would hold it for the next test.
    while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
    }
    Stop();
  }
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;

  [[nodiscard]] std::string Address() const { return text_; }
  /// Ends the bus at once, as an accident would.
  void Stop() {
    if (server_ != nullptr) {
      g_subprocess_force_exit(server_);
      g_subprocess_wait(server_, nullptr, nullptr);
      g_clear_object(&server_);
    }
  }

 private:
  static GSubprocess* Start() {
    GSubprocess* server = g_subprocess_new(
        static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_PIPE | G_SUBPROCESS_FLAGS_STDERR_SILENCE),
        nullptr, "dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address=1", nullptr);
    if (server == nullptr) {
      throw std::runtime_error("no dbus-daemon");
    }
    return server;
  }
  std::string ReadAddress() {
    GInputStream* out = g_subprocess_get_stdout_pipe(server_);
    for (char c = 0; g_input_stream_read(out, &c, 1, nullptr, nullptr) == 1 && c != '\n';) {
      text_ += c;
    }
    return text_;
  }

  GSubprocess* server_;
  std::string text_;
  Environment address_;
};

/// Another program on a bus.
class BusClient {
 public:
  explicit BusClient(const PrivateBus& bus)
      : connection_(g_dbus_connection_new_for_address_sync(
            bus.Address().c_str(),
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
            nullptr, nullptr, nullptr)) {
    if (connection_ == nullptr) {
      throw std::runtime_error("no connection to the bus");
    }
  }
  ~BusClient() { g_object_unref(connection_); }
  BusClient(const BusClient&) = delete;
  BusClient& operator=(const BusClient&) = delete;

  /// Calls and handles events until the answer is there. Gives it as text, or the name of the error behind
  /// "error " and its words in `words`.
  std::string Call(const std::string& owner, const std::string& path, const std::string& interface,
                   const std::string& method, const char* arguments = "()") {
    GVariant* parameters = g_variant_new_parsed(arguments);
    bool over = false;
    answer_.clear();
    words.clear();
    std::pair<BusClient*, bool*> waiting{this, &over};
    g_dbus_connection_call(
        connection_, owner.c_str(), path.c_str(), interface.c_str(), method.c_str(), parameters, nullptr,
        G_DBUS_CALL_FLAGS_NO_AUTO_START, 20'000, nullptr,
        [](GObject* source, GAsyncResult* result, gpointer data) {
          const auto& [self, ended] = *static_cast<std::pair<BusClient*, bool*>*>(data);
          self->Finish(source, result);
          *ended = true;
        },
        &waiting);
    if (!Until([&] { return over; })) {
      throw std::runtime_error("no answer on the bus");
    }
    return answer_;
  }
  /// Whether somebody has this name.
  bool Has(const std::string& name) {
    return Call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "NameHasOwner",
                ("('" + name + "',)").c_str()) == "(true,)";
  }
  /// Takes a name for itself.
  void Take(const std::string& name) {
    (void)Call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
               ("('" + name + "', uint32 4)").c_str());
  }

  std::string words;

 private:
  void Finish(GObject* source, GAsyncResult* result) {
    GError* error = nullptr;
    GVariant* reply = g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, &error);
    if (reply == nullptr) {
      gchar* name = g_dbus_error_get_remote_error(error);
      answer_ = std::string("error ") + (name == nullptr ? "" : name);
      g_free(name);
      g_dbus_error_strip_remote_error(error);
      words = error->message;
      g_error_free(error);
      return;
    }
    gchar* text = g_variant_print(reply, FALSE);
    answer_ = text;
    g_free(text);
    g_variant_unref(reply);
  }

  GDBusConnection* connection_;
  std::string answer_;
};

}  // namespace kivandra::tests
