// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/hand_over.h"

#include <gio/gio.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

#include "platform/linux/automation_names.h"
#include "platform/platform_error.h"

namespace kivandra::linux_impl {
namespace {

constexpr guint kConnectSeconds = 10;
/// A call may run the whole start of the program, with its splash.
constexpr int kCallMilliseconds = 60'000;
/// How often to look for what no event tells: another instance's end.
constexpr guint kLookMilliseconds = 500;

using Error = std::unique_ptr<GError, decltype(&g_error_free)>;

/// Wakes a waiting loop now and then, as long as it lives.
class Ticks {
 public:
  explicit Ticks(guint milliseconds)
      : source_(g_timeout_add(
            milliseconds, [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr)) {}
  ~Ticks() { g_source_remove(source_); }
  Ticks(const Ticks&) = delete;
  Ticks& operator=(const Ticks&) = delete;

 private:
  guint source_;
};

/// What the object answered.
enum class Answer { kTaken, kNotThere, kNoWindow, kRefused };

/// The session bus and the object on it.
class Bus {
 public:
  Bus() {
    GCancellable* cancel = g_cancellable_new();
    struct Connecting {
      GDBusConnection* connection = nullptr;
      bool over = false;
    } connecting;
    const guint alarm = g_timeout_add_seconds(
        kConnectSeconds,
        [](gpointer data) -> gboolean {
          g_cancellable_cancel(static_cast<GCancellable*>(data));
          return G_SOURCE_CONTINUE;
        },
        cancel);
    g_bus_get(
        G_BUS_TYPE_SESSION, cancel,
        [](GObject*, GAsyncResult* result, gpointer data) {
          auto& state = *static_cast<Connecting*>(data);
          state.connection = g_bus_get_finish(result, nullptr);
          state.over = true;
        },
        &connecting);
    while (!connecting.over) {
      g_main_context_iteration(nullptr, TRUE);
    }
    g_source_remove(alarm);
    g_object_unref(cancel);
    connection_ = connecting.connection;
    if (connection_ != nullptr) {
      g_dbus_connection_set_exit_on_close(connection_, FALSE);
    }
  }
  ~Bus() { g_clear_object(&connection_); }
  Bus(const Bus&) = delete;
  Bus& operator=(const Bus&) = delete;

  [[nodiscard]] bool There() const { return connection_ != nullptr; }
  [[nodiscard]] GDBusConnection* Connection() const { return connection_; }
  /// In words, why the object refused its last call.
  [[nodiscard]] const std::string& Words() const { return words_; }

  /// Shows the frame if it is hidden, opens the address, and brings the frame to the front.
  Answer Open(const std::string& address) {
    bool visible = false;
    Answer answer = ReadVisible(visible);
    if (answer == Answer::kTaken && !visible) {
      answer = Call("org.freedesktop.DBus.Properties", "Set",
                    g_variant_new("(ssv)", kAutomationInterface, "Visible", g_variant_new_boolean(TRUE)));
    }
    if (answer == Answer::kTaken && !address.empty()) {
      answer = Navigate(address);
      if (answer == Answer::kNoWindow) {
        answer = Call(kAutomationInterface, "NewWindow", nullptr);
        answer = answer == Answer::kTaken ? Navigate(address) : answer;
      }
    }
    if (answer == Answer::kTaken) {
      (void)Call(kFrameInterface, "Present", nullptr);
    }
    return answer;
  }

 private:
  Answer Navigate(const std::string& address) {
    return Call(kAutomationInterface, "Navigate", g_variant_new("(s)", address.c_str()));
  }

  Answer ReadVisible(bool& visible) {
    GVariant* reply = nullptr;
    const Answer answer = Call("org.freedesktop.DBus.Properties", "Get",
                               g_variant_new("(ss)", kAutomationInterface, "Visible"), &reply);
    if (reply != nullptr) {
      GVariant* value = nullptr;
      g_variant_get(reply, "(v)", &value);
      visible = g_variant_is_of_type(value, G_VARIANT_TYPE_BOOLEAN) && g_variant_get_boolean(value) == TRUE;
      g_variant_unref(value);
      g_variant_unref(reply);
    }
    return answer;
  }

  Answer Call(const char* interface, const char* method, GVariant* arguments, GVariant** reply = nullptr) {
    GError* error = nullptr;
    GVariant* answer = g_dbus_connection_call_sync(
        connection_, kAutomationBusName, kAutomationPath, interface, method, arguments, nullptr,
        G_DBUS_CALL_FLAGS_NO_AUTO_START, kCallMilliseconds, nullptr, &error);
    if (answer == nullptr) {
      return Refusal(Error(error, &g_error_free));
    }
    if (reply != nullptr) {
      *reply = answer;
    } else {
      g_variant_unref(answer);
    }
    return Answer::kTaken;
  }

  Answer Refusal(const Error& error) {
    gchar* name = g_dbus_error_get_remote_error(error.get());
    const std::string remote = name == nullptr ? "" : name;
    g_free(name);
    g_dbus_error_strip_remote_error(error.get());
    words_ = error->message;
    // NoReply: the program went while it was asked.
    for (const char* gone :
         {kAutomationNotReady, "org.freedesktop.DBus.Error.ServiceUnknown",
          "org.freedesktop.DBus.Error.NameHasNoOwner", "org.freedesktop.DBus.Error.UnknownMethod",
          "org.freedesktop.DBus.Error.NoReply"}) {
      if (remote == gone) {
        return Answer::kNotThere;
      }
    }
    return remote == kAutomationError + std::to_string(kObjectNotSet) ? Answer::kNoWindow : Answer::kRefused;
  }

  GDBusConnection* connection_ = nullptr;
  std::string words_;
};

/// The program as a child of this process; it lives on when this process ends.
class Child {
 public:
  Child() = default;
  ~Child() {
    if (watch_ != 0) {
      g_source_remove(watch_);
    }
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  /// Gives an empty text, or why it does not start.
  std::string Start(const std::string& program) {
    std::string path = program;
    char* words[] = {path.data(), nullptr};
    GPid id = 0;
    GError* error = nullptr;
    // In a session of its own, so that the end of a terminal or of this process takes nothing from it.
    const auto ownSession = [](gpointer) { (void)setsid(); };
    if (g_spawn_async(nullptr, words, nullptr, G_SPAWN_DO_NOT_REAP_CHILD, ownSession, nullptr, &id, &error) ==
        FALSE) {
      const Error owned(error, &g_error_free);
      return owned->message;
    }
    started_ = true;
    runs_ = true;
    watch_ = g_child_watch_add(
        id,
        [](GPid, int status, gpointer data) {
          auto* self = static_cast<Child*>(data);
          self->runs_ = false;
          self->watch_ = 0;
          self->failed_ = !WIFEXITED(status) || WEXITSTATUS(status) != 0;
        },
        this);
    return {};
  }
  [[nodiscard]] bool Started() const { return started_; }
  [[nodiscard]] bool Runs() const { return runs_; }
  [[nodiscard]] bool Failed() const { return failed_; }

 private:
  bool started_ = false;
  bool runs_ = false;
  bool failed_ = false;
  guint watch_ = 0;
};

}  // namespace

std::string AddressOf(const std::string& word) {
  gchar* scheme = g_uri_parse_scheme(word.c_str());
  const bool address = scheme != nullptr;
  g_free(scheme);
  std::error_code error;
  const bool path = word.starts_with('/') || (!address && std::filesystem::exists(word, error));
  if (word.empty() || !path) {
    return word;
  }
  GFile* file = g_file_new_for_path(word.c_str());
  gchar* uri = g_file_get_uri(file);
  std::string result = uri;
  g_free(uri);
  g_object_unref(file);
  return result;
}

std::string HandOver(const std::string& address, const HandOverPlan& plan) {
  Bus bus;
  Child child;
  if (!bus.There()) {
    const std::string problem = plan.runs() ? std::string() : child.Start(plan.program);
    return problem.empty() && !address.empty()
               ? "There is no session bus, so the address can't be handed over."
               : problem;
  }
  const Ticks ticks(kLookMilliseconds);
  const auto wake = [](GDBusConnection*, const gchar*, const gchar*, gpointer) {};
  const guint watch = g_bus_watch_name_on_connection(
      bus.Connection(), kAutomationBusName, G_BUS_NAME_WATCHER_FLAGS_NONE, wake, nullptr, nullptr, nullptr);
  std::string problem;
  // Another instance was there when ours looked, so ours ended at once.
  bool other = false;
  for (;;) {
    const Answer answer = bus.Open(address);
    if (answer == Answer::kTaken) {
      break;
    }
    if (answer != Answer::kNotThere) {
      problem = bus.Words();
      break;
    }
    if (child.Failed()) {
      problem = "The program has ended before it could open the address.";
      break;
    }
    if (!child.Runs()) {
      if (plan.runs()) {
        other = true;
      } else if (child.Started() && !other) {
        problem = "The program was closed before it could open the address.";
        break;
      } else {
        other = false;
        problem = child.Start(plan.program);
        if (!problem.empty()) {
          break;
        }
      }
    }
    g_main_context_iteration(nullptr, TRUE);
  }
  g_bus_unwatch_name(watch);
  return problem;
}

}  // namespace kivandra::linux_impl
