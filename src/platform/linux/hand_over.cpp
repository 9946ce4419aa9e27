// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/hand_over.h"

#include <gio/gio.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>

#include "platform/linux/automation_client.h"
#include "platform/linux/automation_names.h"
#include "platform/linux/percent_encoding.h"

namespace kivandra::linux_impl {
namespace {

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

/// Other texts than UTF-8 can't travel on the bus: in such an address every byte beyond ASCII is escaped.
std::string OnTheBus(const std::string& address) {
  if (g_utf8_validate(address.data(), static_cast<gssize>(address.size()), nullptr) == TRUE) {
    return address;
  }
  std::string escaped;
  for (const char c : address) {
    escaped += static_cast<unsigned char>(c) < 0x80 ? std::string(1, c) : PercentEncode({&c, 1});
  }
  return escaped;
}

}  // namespace

std::string AddressOf(const std::string& word) {
  gchar* scheme = g_uri_parse_scheme(word.c_str());
  const bool address = scheme != nullptr;
  g_free(scheme);
  std::error_code error;
  const bool path = word.starts_with('/') || (!address && std::filesystem::exists(word, error));
  if (word.empty() || !path) {
    return OnTheBus(word);
  }
  GFile* file = g_file_new_for_path(word.c_str());
  gchar* uri = g_file_get_uri(file);
  std::string result = uri;
  g_free(uri);
  g_object_unref(file);
  return result;
}

std::string HandOver(const std::string& address, const HandOverPlan& plan) {
  AutomationClient bus;
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
  using Clock = std::chrono::steady_clock;
  std::optional<Clock::time_point> otherSince;
  for (;;) {
    const AutomationClient::Answer answer = bus.Open(address);
    if (answer == AutomationClient::Answer::kTaken) {
      break;
    }
    if (answer != AutomationClient::Answer::kNotThere) {
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
        if (!otherSince) {
          otherSince = Clock::now();
        } else if (Clock::now() - *otherSince >= plan.mostForAnother) {
          problem = "The running program can't be reached on this session bus.";
          break;
        }
      } else if (child.Started() && !other) {
        problem = "The program was closed before it could open the address.";
        break;
      } else {
        other = false;
        otherSince.reset();
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
