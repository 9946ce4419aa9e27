// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <gtkmm.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "platform/gtk/gtk_start.h"

namespace {

/// A warning of the toolkit is a fault of a window.
GLogWriterOutput FailOnWarning(GLogLevelFlags level, const GLogField* fields, gsize count, gpointer) {
  constexpr int kBad = G_LOG_LEVEL_WARNING | G_LOG_LEVEL_CRITICAL | G_LOG_LEVEL_ERROR;
  if ((level & kBad) != 0) {
    char* line = g_log_writer_format_fields(level, fields, count, FALSE);
    ADD_FAILURE() << line;
    g_free(line);
  }
  return G_LOG_WRITER_HANDLED;
}

/// A desktop without programs of its own, beside everything else that the machine has: the tests put programs
/// into its folder of programs.
class EmptyDesktop {
 public:
  EmptyDesktop() {
    namespace fs = std::filesystem;
    if (g_mkdtemp(folder_.data()) == nullptr) {
      std::abort();
    }
    fs::create_directories(folder_ + "/share");
    for (const auto& each : fs::directory_iterator("/usr/share")) {
      if (each.path().filename() != "applications") {
        fs::create_symlink(each.path(), folder_ + "/share/" + each.path().filename().string());
      }
    }
    fs::create_directories(folder_ + "/data/applications");
    g_setenv("XDG_DATA_DIRS", (folder_ + "/share").c_str(), TRUE);
    g_setenv("XDG_DATA_HOME", (folder_ + "/data").c_str(), TRUE);
    g_setenv("XDG_CONFIG_HOME", (folder_ + "/config").c_str(), TRUE);
    g_setenv("XDG_CONFIG_DIRS", (folder_ + "/config").c_str(), TRUE);
    g_unsetenv("XDG_CURRENT_DESKTOP");
  }
  ~EmptyDesktop() { std::filesystem::remove_all(folder_); }
  EmptyDesktop(const EmptyDesktop&) = delete;
  EmptyDesktop& operator=(const EmptyDesktop&) = delete;

 private:
  std::string folder_ = (std::filesystem::temp_directory_path() / "desktop-XXXXXX").string();
};

}  // namespace

int main(int count, char** arguments) {
  const EmptyDesktop desktop;  // before anything asks for the machine's folders
  testing::InitGoogleTest(&count, arguments);
  if (!kivandra::gtk::StartToolkit(KV_SOURCE_DIR "/assets")) {
    std::fputs("these tests need a display\n", stderr);
    return 2;
  }
  g_log_set_writer_func(FailOnWarning, nullptr, nullptr);
  return RUN_ALL_TESTS();
}
