// SPDX-License-Identifier: GPL-3.0-or-later
// What keys, the mouse and things dropped on a page can do.
#include <gmock/gmock.h>

#include <set>

#include "engine/desktop_input.h"
#include "engine/engine_test.h"

namespace kivandra::testing {
namespace {

using ::testing::Test;

class Hands : public Test {
 protected:
  LoopbackServer server;
  TestWindow window;
  std::unique_ptr<DesktopInput> input;

  /// The page counts every key that it sees in `seen`, and every press of the mouse in `pressed`.
  void Open(const std::string& path, const std::string& body) {
    server.Serve(path, {"<body style='margin:0'><script>let seen = [], pressed = 0, over = 0;"
                        "onkeydown = (e) => seen.push(e.key); onmousedown = () => ++pressed;"
                        "ondragenter = () => ++over</script>" +
                        body});
    ASSERT_TRUE(window.Load(server.Url(path)));
    if (!input) input = std::make_unique<DesktopInput>(GTK_WIDGET(window.View()));
    window.Browser().SetFocus();
    ASSERT_TRUE(WaitUntil([&] { return window.Script("return document.hasFocus()") == "true"; }));
  }
  /// Presses the keys and one letter more: when the page has seen that, all before it are dealt with.
  void Press(std::vector<std::string> keys) {
    const std::string before = window.Script("return seen.filter((key) => key == 'z').length");
    keys.emplace_back("z");
    input->Press(keys);
    ASSERT_TRUE(
        WaitUntil([&] { return window.Script("return seen.filter((key) => key == 'z').length") != before; }));
    window.WaitForScripts();
  }
  static int Windows() { return static_cast<int>(g_list_model_get_n_items(gtk_window_get_toplevels())); }
};

TEST_F(Hands, NoKeyOpensAnInspectorOrThePagesSource) {
  Open("/a", "a");
  const int windows = Windows();
  Press(
      {"ctrl+shift+i", "ctrl+shift+d", "ctrl+shift+c", "ctrl+shift+j", "F12", "ctrl+u", "ctrl+s", "ctrl+o"});
  EXPECT_EQ(Windows(), windows);
  WebKitWebInspector* inspector = webkit_web_view_get_inspector(window.View());
  EXPECT_EQ(webkit_web_inspector_get_web_view(inspector), nullptr);
  EXPECT_EQ(window.Count("BeforeNavigate2"), 1);
  EXPECT_EQ(window.Count("NewWindow2"), 0);
  EXPECT_EQ(window.Browser().LocationURL(), server.Url("/a"));
}

TEST_F(Hands, NoKeyOrSideButtonGoesBackOrForwardUnjudged) {
  Open("/a", "a");
  Open("/b", "b");
  Open("/c", "c");
  window.Browser().GoBack();
  ASSERT_TRUE(window.WaitFor("DocumentComplete top " + server.Url("/b"), 2));
  window.judge = [](const auto& navigation) { navigation->Refuse(); };
  window.journal.clear();
  const std::size_t requests = server.Requests().size();
  Press({"alt+Left", "alt+Right", "alt+KP_Left", "BackSpace", "shift+BackSpace", "XF86Back", "XF86Forward",
         "F5", "ctrl+r", "XF86Reload", "XF86HomePage"});
  for (const int button : {8, 9}) input->Click(400, 300, button);
  Press({});
  EXPECT_EQ(window.Count("NavigateComplete2"), 0);
  EXPECT_EQ(window.Browser().LocationURL(), server.Url("/b"));
  EXPECT_EQ(server.Requests().size(), requests);
}

struct Place {
  const char* name;
  const char* body;
  bool menu;  // whether editing entries are left
};

class Menus : public Hands, public ::testing::WithParamInterface<Place> {};

/// Counts every menu of any page that is asked for, also those that never come to be.
gboolean OnMenuAsked(GSignalInvocationHint*, guint, const GValue*, gpointer count) {
  ++*static_cast<int*>(count);
  return TRUE;
}

TEST_P(Menus, HoldNothingButEditing) {
  Open("/a", GetParam().body);
  int asked = 0;
  const guint signal = g_signal_lookup("context-menu", WEBKIT_TYPE_WEB_VIEW);
  const gulong hook = g_signal_add_emission_hook(signal, 0, OnMenuAsked, &asked, nullptr);
  std::set<int> shown;
  // This one comes behind the program's own, which has the say, so it sees what is left.
  g_signal_connect(
      window.View(), "context-menu",
      G_CALLBACK(+[](WebKitWebView*, WebKitContextMenu* menu, WebKitHitTestResult*, gpointer set) {
        for (GList* item = webkit_context_menu_get_items(menu); item != nullptr; item = item->next) {
          auto* entry = WEBKIT_CONTEXT_MENU_ITEM(item->data);
          static_cast<std::set<int>*>(set)->insert(webkit_context_menu_item_get_submenu(entry) != nullptr
                                                       ? -1
                                                       : webkit_context_menu_item_get_stock_action(entry));
        }
        return TRUE;  // nothing pops up in the test
      }),
      &shown);
  input->Click(100, 60, 3);
  const bool came = WaitUntil([&] { return asked > 0; });
  g_signal_remove_emission_hook(signal, hook);
  ASSERT_TRUE(came);
  EXPECT_EQ(!shown.empty(), GetParam().menu);
  const std::set<int> editing{WEBKIT_CONTEXT_MENU_ACTION_COPY, WEBKIT_CONTEXT_MENU_ACTION_CUT,
                              WEBKIT_CONTEXT_MENU_ACTION_PASTE, WEBKIT_CONTEXT_MENU_ACTION_DELETE,
                              WEBKIT_CONTEXT_MENU_ACTION_SELECT_ALL};
  for (const int entry : shown) EXPECT_EQ(editing.count(entry), 1U) << entry;
  EXPECT_EQ(window.Count("BeforeNavigate2"), 1);
  EXPECT_EQ(window.Count("NewWindow2"), 0);
}

INSTANTIATE_TEST_SUITE_P(
    All, Menus,
    ::testing::Values(Place{"Page", "", false},
                      Place{"Link", "<a href=/b style='font-size:150px'>link</a>", false},
                      Place{"Picture",
                            "<img width=300 height=200 src='data:image/gif;base64,"
                            "R0lGODlhAQABAAAAACH5BAEKAAEALAAAAAABAAEAAAICTAEAOw=='>",
                            false},
                      Place{"Film", "<video width=300 height=200 controls src=/film></video>", false},
                      Place{"Text", "<p style='font-size:150px;margin:0'>words</p>", false},
                      Place{"ChosenText",
                            "<p style='font-size:150px;margin:0'>words</p>"
                            "<script>getSelection().selectAllChildren(document.body)</script>",
                            true},
                      Place{"Field", "<input value=words style='width:300px;height:200px;font-size:60px'>",
                            true},
                      Place{"Frame", "<iframe srcdoc='x' width=300 height=200></iframe>", false}),
    [](const auto& row) { return std::string(row.param.name); });

/// Something beside the page that can be dragged onto it.
class Dropping : public Hands {
 protected:
  bool ended = false;

  void Drag(GdkContentProvider* content) {
    auto* place = GTK_BOX(gtk_widget_get_parent(GTK_WIDGET(window.View())));
    GtkWidget* thing = gtk_label_new("thing");
    gtk_widget_set_size_request(thing, 100, 100);
    gtk_box_append(place, thing);
    GtkDragSource* source = gtk_drag_source_new();
    gtk_drag_source_set_actions(source, GDK_ACTION_COPY);
    gtk_drag_source_set_content(source, content);
    g_object_unref(content);
    bool begun = false;
    ended = false;
    g_signal_connect(source, "drag-begin", G_CALLBACK(+[](GtkDragSource*, GdkDrag*, gpointer flag) {
                       *static_cast<bool*>(flag) = true;
                     }),
                     &begun);
    g_signal_connect(source, "drag-end", G_CALLBACK(+[](GtkDragSource*, GdkDrag*, gboolean, gpointer flag) {
                       *static_cast<bool*>(flag) = true;
                     }),
                     &ended);
    gtk_widget_add_controller(thing, GTK_EVENT_CONTROLLER(source));
    ASSERT_TRUE(WaitUntil([&] {
      return gtk_widget_get_width(thing) > 0 && gtk_widget_get_width(GTK_WIDGET(window.View())) < 750;
    }));
    input->MoveTo(750, 300);
    input->ButtonDown();
    for (int x = 740; x >= 300 && !begun; x -= 10) input->MoveTo(x, 300);
    ASSERT_TRUE(WaitUntil([&] { return begun; }));
    // A drop that the page has not been told of before would not count.
    ASSERT_TRUE(WaitUntil([&] {
      input->MoveTo(300, 300);
      input->MoveTo(310, 300);
      return window.Script("return over > 0") == "true";
    }));
    input->ButtonUp();
    ASSERT_TRUE(WaitUntil([&] { return ended; }));
    window.WaitForScripts();
    gtk_box_remove(place, thing);
  }
  static GdkContentProvider* Offer(const char* type, const std::string& text) {
    GBytes* bytes = g_bytes_new(text.data(), text.size());
    GdkContentProvider* content = gdk_content_provider_new_for_bytes(type, bytes);
    g_bytes_unref(bytes);
    return content;
  }
};

TEST_F(Dropping, ALinkThatIsRefusedLeavesThePage) {
  server.Serve("/bad", {"bad"});
  Open("/a", "a");
  window.judge = [](const auto& navigation) { navigation->Refuse(); };
  Drag(Offer("text/uri-list", server.Url("/bad") + "\r\n"));
  EXPECT_EQ(window.Count("BeforeNavigate2 " + server.Url("/bad")), 1);
  EXPECT_EQ(server.Count("/bad"), 0);
  EXPECT_EQ(window.Browser().LocationURL(), server.Url("/a"));
  EXPECT_FALSE(window.Browser().Busy());
}

TEST_F(Dropping, ALinkIsJudgedBeforeItLoads) {
  server.Serve("/b", {"b"});
  Open("/a", "a");
  Drag(Offer("text/uri-list", server.Url("/b") + "\r\n"));
  ASSERT_TRUE(window.WaitFor("DocumentComplete top " + server.Url("/b")));
  EXPECT_EQ(window.Count("BeforeNavigate2 " + server.Url("/b")), 1);
}

struct Thing {
  const char* name;
  const char* type;
  const char* text;
};

constexpr Thing kThings[] = {

    {"File", "text/uri-list", "file:///etc/hostname\r\n"},
    {"Script", "text/uri-list", "javascript:document.body.innerText='ran'\r\n"},
    {"Mail", "text/uri-list", "mailto:a@b.example\r\n"},
    {"EnginePage", "text/uri-list", "webkit://gpu\r\n"},
    {"Text", "text/plain;charset=utf-8", "words"},
    {"ScriptAsText", "text/plain;charset=utf-8", "javascript:document.body.innerText='ran'"},
    {"CommentAndScript", "text/uri-list", "#x\r\njavascript:document.body.innerText='ran'\r\n"},
    {"OldKindOfLink", "_NETSCAPE_URL", "javascript:document.body.innerText='ran'\nx"},
    {"Data", "text/uri-list", "data:text/html,ran\r\n"},
    {"Empty", "text/uri-list", ""},
    {"AddressAsText", "text/plain;charset=utf-8", "file:///etc/hostname"},
    {"Html", "text/html", "<a href='file:///etc/hostname'>x</a><script>document.title='ran'</script>"}};

TEST_F(Dropping, NothingButWebAddressesLoadsEvenIfAllIsAllowed) {
  Open("/a", "a");
  const std::size_t requests = server.Requests().size();
  for (const Thing& thing : kThings) {
    SCOPED_TRACE(thing.name);
    window.RunScript("over = 0");
    ASSERT_NO_FATAL_FAILURE(Drag(Offer(thing.type, thing.text)));
    EXPECT_EQ(window.Browser().LocationURL(), server.Url("/a"));
    EXPECT_EQ(window.Script("return document.body.innerText"), "a");
    EXPECT_EQ(window.Count("NavigateComplete2"), 1);
    EXPECT_EQ(server.Requests().size(), requests);
    EXPECT_FALSE(window.Browser().Busy());
  }
}

TEST_F(Dropping, AThingOfThePageCanBeDroppedOnThePageItself) {
  Open("/a",
       "<a id=x href=/b draggable=true style='display:block;width:200px;height:200px'>x</a>"
       "<div id=t style='width:600px;height:300px'>t</div><script>"
       "t.ondragover = (e) => e.preventDefault(); let dropped = '';"
       "t.ondrop = (e) => { e.preventDefault(); dropped = e.dataTransfer.getData('text/uri-list'); "
       "}</script>");
  input->MoveTo(20, 20);
  input->ButtonDown();
  ASSERT_TRUE(WaitUntil([&] {
    input->MoveTo(100, 300);
    input->MoveTo(100, 310);
    return window.Script("return over > 0") == "true";
  }));
  input->ButtonUp();
  ASSERT_TRUE(WaitUntil([&] { return window.Script("return dropped") != ""; }));
  EXPECT_EQ(window.Script("return dropped"), server.Url("/b"));
  EXPECT_EQ(window.Count("BeforeNavigate2"), 1);
}

/// What is dragged from one page to another.
class DroppingBetweenPages : public Dropping {
 protected:
  std::unique_ptr<WebBrowser> other;

  void DragLink(const std::string& target) {
    server.Serve("/link", {"<body style='margin:0'><a href=\"" + target +
                           "\" style='display:block;height:600px'>link</a>"});
    Open("/a", "a");
    auto* place = GTK_BOX(gtk_widget_get_parent(GTK_WIDGET(window.View())));
    other = Engine().MakeBrowser(*Glib::wrap(place));
    other->SetEvents(&window);
    other->Navigate(server.Url("/link"));
    ASSERT_TRUE(window.WaitFor("DocumentComplete top " + server.Url("/link")));
    ASSERT_TRUE(WaitUntil([&] { return gtk_widget_get_width(GTK_WIDGET(window.View())) == 400; }));
    bool dropped = false;
    GtkEventController* watcher = gtk_event_controller_legacy_new();
    gtk_event_controller_set_propagation_phase(watcher, GTK_PHASE_CAPTURE);
    g_signal_connect(watcher, "event",
                     G_CALLBACK(+[](GtkEventController*, GdkEvent* event, gpointer flag) -> gboolean {
                       if (gdk_event_get_event_type(event) == GDK_DROP_START)
                         *static_cast<bool*>(flag) = true;
                       return FALSE;
                     }),
                     &dropped);
    GtkWidget* top = GTK_WIDGET(gtk_widget_get_root(GTK_WIDGET(place)));
    gtk_widget_add_controller(top, watcher);
    input->MoveTo(600, 20);
    input->ButtonDown();
    ASSERT_TRUE(WaitUntil([&] {
      input->MoveTo(200, 300);
      input->MoveTo(200, 310);
      return window.Script("return over > 0") == "true";
    }));
    input->ButtonUp();
    ASSERT_TRUE(WaitUntil([&] { return dropped; }));
    gtk_widget_remove_controller(top, watcher);
    window.WaitForScripts();
  }
};

TEST_F(DroppingBetweenPages, ALinkIsJudged) {
  window.judge = [](const auto& navigation) {
    if (navigation->Url().ends_with("/bad")) {
      navigation->Refuse();
    } else {
      navigation->Allow();
    }
  };
  DragLink("/bad");
  ASSERT_TRUE(window.WaitFor("BeforeNavigate2 " + server.Url("/bad")));
  window.WaitForScripts();
  EXPECT_EQ(server.Count("/bad"), 0);
}

TEST_F(DroppingBetweenPages, AScriptDoesNotRun) {
  DragLink("javascript:document.body.innerText='ran'");
  EXPECT_EQ(window.Script("return document.body.innerText"), "a");
  EXPECT_EQ(window.Count("BeforeNavigate2"), 2);
}

TEST_F(Dropping, TextGoesIntoAFieldOfThePage) {
  Open("/a", "<textarea id=t style='width:600px;height:500px'></textarea>");
  Drag(Offer("text/plain;charset=utf-8", "words"));
  EXPECT_EQ(window.Script("return t.value"), "words");
  EXPECT_EQ(window.Count("BeforeNavigate2"), 1);
}

}  // namespace
}  // namespace kivandra::testing
