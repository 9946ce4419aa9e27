// SPDX-License-Identifier: GPL-3.0-or-later
#include <gio/gio.h>

#include "platform/gtk/web/web_engine.h"

namespace kivandra::gtk {

void PrepareEngineEnvironment() {
  // Each of these would open the engine or the toolkit to a debugger.
  for (const char* name :
       {"WEBKIT_INSPECTOR_SERVER", "WEBKIT_INSPECTOR_HTTP_SERVER", "GTK_DEBUG", "GTK_MODULES"}) {
    g_unsetenv(name);
  }
#ifndef KIVANDRA_TEST_BUILD
  g_unsetenv("WEBKIT_DISABLE_SANDBOX_THIS_IS_DANGEROUS");
#endif
  // Pages reach the screen through plain memory: some graphics drivers leave the view blank otherwise.
  g_setenv("WEBKIT_DMABUF_RENDERER_FORCE_SHM", "1", FALSE);
}

std::string SandboxProblem() {
  if (g_getenv("WEBKIT_DISABLE_SANDBOX_THIS_IS_DANGEROUS") != nullptr) return {};
  const char* const command[] = {"bwrap", "--ro-bind", "/", "/", "--unshare-all", "true", nullptr};
  GError* error = nullptr;
  GSubprocess* probe = g_subprocess_newv(
      command,
      static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_SILENCE | G_SUBPROCESS_FLAGS_STDERR_SILENCE),
      &error);
  if (probe == nullptr) {
    g_error_free(error);
    return "Kivandra can't find the program bwrap, which shuts web pages in. Please install the package "
           "bubblewrap.";
  }
  const bool works = g_subprocess_wait_check(probe, nullptr, nullptr) != FALSE;
  g_object_unref(probe);
  if (works) return {};
  return "This system doesn't let Kivandra shut web pages in. Please ask whoever looks after this computer "
         "to allow "
         "unprivileged user namespaces.";
}

}  // namespace kivandra::gtk
