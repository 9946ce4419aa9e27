// SPDX-License-Identifier: GPL-3.0-or-later
// The strip in which a person searches a page.
#include "platform/gtk/web/find_bar.h"

#include <gmock/gmock.h>

#include "engine/desktop_input.h"
#include "engine/engine_test.h"

namespace kivandra::testing {
namespace {

using ::testing::Test;

class FindBars : public Test {
 protected:
  LoopbackServer server;
  TestWindow window;

  void SetUp() override {
    server.Serve("/a", {"<title>a</title><p>Cat and dog.</p><p>A CAT, a concat<b>enation</b>.</p>"
                        "<p style='margin-top:3000px'>the last cat</p>"});
    server.Serve("/b", {"<title>b</title><p>One cat.</p>"});
    ASSERT_TRUE(window.Load(server.Url("/a")));
  }
  [[nodiscard]] GtkWidget* Place() { return gtk_widget_get_parent(GTK_WIDGET(window.View())); }
  [[nodiscard]] static GtkWidget* Find(GtkWidget* widget, const char* name) {
    for (GtkWidget* child = gtk_widget_get_first_child(widget); child != nullptr;
         child = gtk_widget_get_next_sibling(child)) {
      if (gtk_widget_has_css_class(child, name) != FALSE) return child;
      if (GtkWidget* found = Find(child, name); found != nullptr) return found;
    }
    return nullptr;
  }
  [[nodiscard]] GtkWidget* Bar() { return Find(Place(), "kv-find"); }
  [[nodiscard]] GtkWidget* Entry() { return gtk_widget_get_first_child(Bar()); }
  [[nodiscard]] std::string Count() { return gtk_label_get_text(GTK_LABEL(Find(Bar(), "kv-find-count"))); }
  void Type(const std::string& text) { gtk_editable_set_text(GTK_EDITABLE(Entry()), text.c_str()); }
  [[nodiscard]] bool WaitForCount(const std::string& count) {
    return WaitUntil([&] { return Count() == count; });
  }
  [[nodiscard]] std::string Selected() {
    return window.Script(
        "const s = getSelection(); if (!s.rangeCount) return ''; const r = s.getRangeAt(0);"
        "const all = document.createRange(); all.setStart(document.body, 0);"
        "all.setEnd(r.startContainer, r.startOffset); return s + '@' + all.toString().length");
  }
  [[nodiscard]] bool WaitForSelected(const std::string& place) {
    return WaitUntil([&] { return Selected() == place; });
  }
};

TEST_F(FindBars, OpensAboveThePageWithTheFocusInItsField) {
  EXPECT_EQ(Bar(), nullptr);
  ASSERT_TRUE(gtk::ShowFindBar(GTK_WIDGET(window.View())));
  ASSERT_NE(Bar(), nullptr);
  EXPECT_EQ(gtk_widget_get_first_child(Place()), Bar());
  GtkWidget* focus = gtk_root_get_focus(gtk_widget_get_root(Place()));
  ASSERT_NE(focus, nullptr);
  EXPECT_TRUE(gtk_widget_is_ancestor(focus, Entry()));
}

TEST_F(FindBars, ThereIsOneAViewHoweverOftenItIsAskedFor) {
  for (int i = 0; i < 5; ++i) ASSERT_TRUE(gtk::ShowFindBar(Place()));
  EXPECT_EQ(Find(Bar(), "kv-find"), nullptr);
  EXPECT_EQ(gtk_widget_get_next_sibling(Bar()), GTK_WIDGET(window.View()));
}

TEST_F(FindBars, NothingOpensWhereThereIsNoPage) {
  Gtk::Box alone;
  EXPECT_FALSE(gtk::ShowFindBar(GTK_WIDGET(alone.gobj())));
  EXPECT_FALSE(gtk::ShowFindBar(nullptr));
}

TEST_F(FindBars, CountsWithoutRegardToCaseAndGoesRoundThePage) {
  ASSERT_TRUE(gtk::ShowFindBar(Place()));
  DesktopInput input(Place());
  for (const char* key : {"c", "A", "t"}) input.Press({key});
  ASSERT_TRUE(WaitForCount("4 found"));
  ASSERT_TRUE(WaitForSelected("Cat@0"));
  input.Press({"Return"});
  ASSERT_TRUE(WaitForSelected("CAT@14"));
  input.Press({"Return"});
  ASSERT_TRUE(WaitForSelected("cat@24"));
  input.Press({"KP_Enter"});
  ASSERT_TRUE(WaitUntil([&] { return window.Script("return scrollY > 1000") == "true"; }));
  input.Press({"Return"});
  ASSERT_TRUE(WaitForSelected("Cat@0"));
  input.Press({"shift+Return"});
  ASSERT_TRUE(WaitUntil([&] { return window.Script("return scrollY > 1000") == "true"; }));
}

TEST_F(FindBars, EscapeClosesItAndGivesThePageTheFocus) {
  ASSERT_TRUE(gtk::ShowFindBar(Place()));
  DesktopInput input(Place());
  input.Press({"Escape"});
  ASSERT_TRUE(WaitUntil([&] { return Bar() == nullptr; }));
  EXPECT_EQ(gtk_root_get_focus(gtk_widget_get_root(Place())), GTK_WIDGET(window.View()));
  ASSERT_TRUE(gtk::ShowFindBar(Place()));
  EXPECT_NE(Bar(), nullptr);
}

TEST_F(FindBars, ItsButtonsGoOnAndBackAndClose) {
  ASSERT_TRUE(gtk::ShowFindBar(Place()));
  Type("cat");
  ASSERT_TRUE(WaitForSelected("Cat@0"));
  GtkWidget* previous = gtk_widget_get_next_sibling(Entry());
  GtkWidget* next = gtk_widget_get_next_sibling(previous);
  g_signal_emit_by_name(next, "clicked");
  ASSERT_TRUE(WaitForSelected("CAT@14"));
  g_signal_emit_by_name(previous, "clicked");
  ASSERT_TRUE(WaitForSelected("Cat@0"));
  g_signal_emit_by_name(gtk_widget_get_last_child(Bar()), "clicked");
  EXPECT_EQ(Bar(), nullptr);
}

TEST_F(FindBars, EveryButtonHasANameAndIsReachedByTab) {
  ASSERT_TRUE(gtk::ShowFindBar(Place()));
  int buttons = 0;
  for (GtkWidget* part = gtk_widget_get_first_child(Bar()); part != nullptr;
       part = gtk_widget_get_next_sibling(part)) {
    if (!GTK_IS_BUTTON(part)) continue;
    ++buttons;
    EXPECT_TRUE(gtk_widget_get_focusable(part));
    EXPECT_NE(gtk_widget_get_tooltip_text(part), nullptr);
  }
  EXPECT_EQ(buttons, 3);
}

TEST_F(FindBars, WordsThatAreNotThereAreSaidNotToBe) {
  ASSERT_TRUE(gtk::ShowFindBar(Place()));
  Type("walrus");
  ASSERT_TRUE(WaitForCount("Not on this page"));
  Type("");
  EXPECT_EQ(Count(), "");
  for (const std::string& odd : {std::string(10000, 'x'), std::string("\"'\\<%"), std::string("\u2028ñ")}) {
    Type(odd);
    ASSERT_TRUE(WaitForCount("Not on this page"));
    Type("");
  }
}

TEST_F(FindBars, StaysWithItsWordsOnTheNextPage) {
  ASSERT_TRUE(gtk::ShowFindBar(Place()));
  Type("cat");
  ASSERT_TRUE(WaitForCount("4 found"));
  ASSERT_TRUE(window.Load(server.Url("/b")));
  ASSERT_TRUE(WaitForCount("1 found"));
  g_signal_emit_by_name(gtk_widget_get_next_sibling(gtk_widget_get_next_sibling(Entry())), "clicked");
  ASSERT_TRUE(WaitForSelected("cat@4"));
}

TEST_F(FindBars, GoesWithItsWindow) {
  ASSERT_TRUE(gtk::ShowFindBar(Place()));
  Type("cat");
  gpointer bar = Bar();
  g_object_add_weak_pointer(G_OBJECT(bar), &bar);
  window.CloseWindow();
  EXPECT_TRUE(WaitUntil([&] { return bar == nullptr; }));
}

}  // namespace
}  // namespace kivandra::testing
