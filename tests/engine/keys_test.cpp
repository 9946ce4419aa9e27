// SPDX-License-Identifier: GPL-3.0-or-later
// Keys that are the program's while a page has the focus.
#include <algorithm>
#include <vector>

#include "engine/desktop_input.h"
#include "engine/engine_test.h"
#include "platform/gtk/keyboard_hook.h"

namespace kivandra::testing {
namespace {

using ::testing::Test;

class Keys : public Test {
 protected:
  LoopbackServer server;
  TestWindow window;

  /// A page with the focus, which sees every key in `seen`.
  void SetUp() override {
    server.Serve("/a", {"<script>let seen = []; onkeydown = (e) => seen.push(e.key)</script>a"});
    ASSERT_TRUE(window.Load(server.Url("/a")));
  }
  /// Presses the keys in the page and one letter more: when the page has seen that, all before it are dealt
  /// with.
  void Press(std::vector<std::string> keys) {
    DesktopInput input(GTK_WIDGET(window.View()));
    window.Browser().SetFocus();
    ASSERT_TRUE(WaitUntil([&] { return window.Script("return document.hasFocus()") == "true"; }));
    keys.emplace_back("z");
    input.Press(keys);
    ASSERT_TRUE(WaitUntil([&] { return window.Script("return seen.includes('z')") == "true"; }));
    window.WaitForScripts();
    window.WaitForScripts();
  }
};

TEST_F(Keys, ReachTheHookOnceForEachPressAndRelease) {
  std::vector<int> down;
  std::vector<int> up;
  gtk::GtkKeyboardHook hook;
  const auto handle = hook.Install([&](int /*code*/, int key, bool isUp, int /*shift*/) {
    (isUp ? up : down).push_back(key);
    return false;
  });
  Press({"F1", "F12", "F1"});
  hook.Remove(handle);
  const auto times = [](const std::vector<int>& all, int code) {
    return std::count(all.begin(), all.end(), code);
  };
  EXPECT_EQ(times(down, 112), 2);
  EXPECT_EQ(times(down, 123), 1);
  EXPECT_EQ(times(up, 112), 2);
  EXPECT_EQ(times(up, 123), 1);
}

TEST_F(Keys, AnAcceleratorOfTheWindowCountsOnceWhileThePageHasTheFocus) {
  int found = 0;
  GtkEventController* keys = gtk_shortcut_controller_new();
  gtk_event_controller_set_propagation_phase(keys, GTK_PHASE_CAPTURE);
  gtk_shortcut_controller_set_scope(GTK_SHORTCUT_CONTROLLER(keys), GTK_SHORTCUT_SCOPE_GLOBAL);
  gtk_shortcut_controller_add_shortcut(
      GTK_SHORTCUT_CONTROLLER(keys),
      gtk_shortcut_new(gtk_shortcut_trigger_parse_string("<Control>f"),
                       gtk_callback_action_new(
                           [](GtkWidget*, GVariant*, gpointer count) -> gboolean {
                             ++*static_cast<int*>(count);
                             return TRUE;
                           },
                           &found, nullptr)));
  gtk_widget_add_controller(GTK_WIDGET(gtk_widget_get_root(GTK_WIDGET(window.View()))), keys);
  Press({"ctrl+f"});
  EXPECT_EQ(found, 1);
  EXPECT_EQ(window.Script("return seen.includes('f')"), "false");
}

}  // namespace
}  // namespace kivandra::testing
