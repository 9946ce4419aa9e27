// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <gtkmm.h>

#include <cstdio>

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

}  // namespace

int main(int count, char** arguments) {
  testing::InitGoogleTest(&count, arguments);
  if (!kivandra::gtk::StartToolkit(KV_SOURCE_DIR "/assets")) {
    std::fputs("these tests need a display\n", stderr);
    return 2;
  }
  g_log_set_writer_func(FailOnWarning, nullptr, nullptr);
  return RUN_ALL_TESTS();
}
