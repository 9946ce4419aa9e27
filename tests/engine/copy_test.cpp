// SPDX-License-Identifier: GPL-3.0-or-later
// What is selected on a page, on its way to the clipboard.
#include <chrono>

#include "engine/engine_test.h"
#include "platform/gtk/gtk_clipboard.h"

namespace kivandra::testing {
namespace {

using ::testing::Test;

class Copying : public Test {
 protected:
  LoopbackServer server;
  TestWindow window;
  gtk::GtkClipboard clipboard;

  void SetUp() override {
    server.Serve("/a",
                 {"<meta charset=utf-8><p id=one>blue whale</p><p id=other>Grüne Ñandú 鯨</p><p>the rest</p>"
                  "<input id=field value=typed>"});
    ASSERT_TRUE(window.Load(server.Url("/a")));
  }
  void Select(const std::string& name) { window.Script("getSelection().selectAllChildren(" + name + ")"); }
  void Copy() { window.Browser().ExecWB(OLECMDID_COPY, 0); }
};

TEST_F(Copying, ThePagesTextIsThereWhenTheCommandReturns) {
  for (int times = 0; times < 5; ++times) {
    clipboard.Clear();
    Select("one");
    Copy();
    EXPECT_EQ(clipboard.GetText(), "blue whale");
    Select("other");
    Copy();
    EXPECT_EQ(clipboard.GetText(), "Grüne Ñandú 鯨");
  }
}

TEST_F(Copying, CuttingInAFieldTakesItsTextAway) {
  window.Script("field.focus(); field.select()");
  window.Browser().ExecWB(OLECMDID_CUT, 0);
  EXPECT_EQ(clipboard.GetText(), "typed");
  EXPECT_EQ(window.Script("return field.value"), "");
}

TEST_F(Copying, WithNothingSelectedTheClipboardKeepsWhatItHeld) {
  for (const int command : {OLECMDID_COPY, OLECMDID_CUT}) {
    Select("one");
    Copy();
    window.Script("getSelection().removeAllRanges()");
    window.Browser().ExecWB(command, 0);
    EXPECT_EQ(clipboard.GetText(), "blue whale");
    clipboard.Clear();
    window.Browser().ExecWB(command, 0);
    EXPECT_EQ(clipboard.GetText(), "");
  }
}

TEST_F(Copying, WithNothingSelectedAPictureOnTheClipboardStaysToo) {
  GdkClipboard* desktop = gdk_display_get_clipboard(gdk_display_get_default());
  GBytes* bytes = g_bytes_new_static("picture", 7);
  GdkContentProvider* picture = gdk_content_provider_new_for_bytes("image/png", bytes);
  gdk_clipboard_set_content(desktop, picture);
  Copy();
  EXPECT_EQ(gdk_clipboard_get_content(desktop), picture);
  g_object_unref(picture);
  g_bytes_unref(bytes);
}

TEST_F(Copying, APageThatHangsIsNotWaitedForLong) {
  clipboard.Clear();
  window.RunScript("const end = Date.now() + 4000; while (Date.now() < end);");
  const auto begin = std::chrono::steady_clock::now();
  Copy();
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(3));
  EXPECT_EQ(window.Script("return 1"), "1");  // it goes on when the page does
}

TEST_F(Copying, ItsWindowMayCloseMeanwhile) {
  Select("one");
  const auto timer = Glib::signal_timeout().connect([this] { return window.CloseWindow(), false; }, 0);
  EXPECT_NO_THROW(Copy());
}

}  // namespace
}  // namespace kivandra::testing
