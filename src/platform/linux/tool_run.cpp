// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/tool_run.h"

#include <gio/gio.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>

namespace kivandra::linux_impl {
namespace {

struct Running {
  GSubprocess* process;
  GCancellable* cancel;
  pid_t group;  ///< 0 if the tool had ended before it could be asked
  ToolResult result;
  bool late = false;
  bool over = false;
};

gboolean TooLate(gpointer data) {
  auto* running = static_cast<Running*>(data);
  running->late = true;
  if (running->group > 0) {  // 0 would be this program's own group
    kill(-running->group, SIGKILL);
  }
  g_cancellable_cancel(running->cancel);
  return G_SOURCE_CONTINUE;
}

void Ended(GObject*, GAsyncResult* result, gpointer data) {
  auto* running = static_cast<Running*>(data);
  GBytes* bytes = nullptr;
  if (g_subprocess_communicate_finish(running->process, result, &bytes, nullptr, nullptr) == TRUE &&
      !running->late) {
    running->result.good = g_subprocess_get_successful(running->process) == TRUE;
    gsize size = 0;
    if (const auto* text = static_cast<const char*>(g_bytes_get_data(bytes, &size))) {
      running->result.output.assign(text, size);
    }
    while (running->result.output.ends_with('\n')) {
      running->result.output.pop_back();
    }
  }
  if (bytes != nullptr) {
    g_bytes_unref(bytes);
  }
  running->over = true;
}

}  // namespace

ToolResult RunTool(const std::vector<std::string>& words, std::chrono::milliseconds most) {
  std::vector<const gchar*> pointers;
  pointers.reserve(words.size() + 1);
  for (const std::string& word : words) {
    pointers.push_back(word.c_str());
  }
  pointers.push_back(nullptr);
  GSubprocessLauncher* launcher = g_subprocess_launcher_new(
      static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_PIPE | G_SUBPROCESS_FLAGS_STDERR_SILENCE));
  // A group of its own, so that what a script has started ends with it.
  g_subprocess_launcher_set_child_setup(
      launcher, [](gpointer) { (void)setpgid(0, 0); }, nullptr, nullptr);
  GSubprocess* process = g_subprocess_launcher_spawnv(launcher, pointers.data(), nullptr);
  g_object_unref(launcher);
  if (process == nullptr) {
    return {};
  }
  const gchar* id = g_subprocess_get_identifier(process);
  Running running{process, g_cancellable_new(), id == nullptr ? 0 : std::atoi(id), {}};
  running.result.found = true;
  const guint alarm = g_timeout_add(static_cast<guint>(most.count()), &TooLate, &running);
  g_subprocess_communicate_async(process, nullptr, running.cancel, &Ended, &running);
  while (!running.over) {
    g_main_context_iteration(nullptr, TRUE);
  }
  g_source_remove(alarm);
  g_object_unref(running.cancel);
  g_object_unref(process);
  return running.result;
}

}  // namespace kivandra::linux_impl
