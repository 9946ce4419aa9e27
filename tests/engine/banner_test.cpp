// SPDX-License-Identifier: GPL-3.0-or-later
// The frame's banner: a browser that is a part of the frame.
#include <gmock/gmock.h>

#include "engine/desktop_input.h"
#include "engine/engine_test.h"
#include "platform/gtk/web/find_bar.h"
#include "platform/gtk/web/web_browser_control.h"

namespace kivandra::testing {
namespace {

using ::testing::Test;

class Banner : public Test {
 protected:
  LoopbackServer server;
  TestWindow child;
  Gtk::Window window;
  Gtk::Box border;
  Gtk::Box place;
  TestWindow notes;  // takes the banner's events
  std::unique_ptr<WebBrowser> banner;

  Banner() {
    border.add_css_class("kv-banner");
    border.append(place);
    window.set_child(border);
    window.set_default_size(600, 100);
    banner = Engine().MakeBrowser(place);
    banner->SetEvents(&notes);
    window.present();
    server.Serve("/b", {"<title>b</title><body style='margin:0'><a id=a target=_blank href=/p draggable=true "
                        "style='display:block;height:100px'>x</a>"});
    server.Serve("/p", {"<title>p</title>p"});
    server.Serve("/i", {"<title>i</title><img src=/i.svg>"});
    server.Serve("/i.svg",
                 {"<svg xmlns='http://www.w3.org/2000/svg' width='7' height='7'/>", "image/svg+xml"});
  }
  void SetUp() override { ASSERT_TRUE(Load("/b")); }
  void TearDown() override { Engine().SetImagesShown(true); }
  bool Load(const std::string& path) {
    notes.journal.clear();
    banner->Navigate(server.Url(path));
    return notes.WaitFor("DownloadComplete");
  }
  WebKitWebView* View() { return dynamic_cast<gtk::WebBrowserControl&>(*banner).View()->Widget(); }
  void RunScript(const std::string& source) {
    webkit_web_view_evaluate_javascript(View(), source.c_str(), -1, nullptr, nullptr, nullptr, nullptr,
                                        nullptr);
  }
  bool Arrives(TestWindow& at) { return at.WaitFor("DocumentComplete top " + server.Url("/p")); }
};

TEST_F(Banner, ANewWindowLandsInTheChildThatIsThere) {
  notes.newWindow = [this](WebBrowser*& ppDisp, bool&) { ppDisp = &child.Browser(); };
  for (const char* way : {"a.click()", "open('/p')"}) {
    SCOPED_TRACE(way);
    child.journal.clear();
    RunScript(way);
    ASSERT_TRUE(Arrives(child));
    EXPECT_EQ(child.Count("BeforeNavigate2 " + server.Url("/p")), 1);
    EXPECT_EQ(banner->LocationURL(), server.Url("/b"));
  }
}

TEST_F(Banner, ANewWindowMadeForItTakesThePage) {
  std::unique_ptr<TestWindow> made;
  notes.newWindow = [&](WebBrowser*& ppDisp, bool&) {
    made = std::make_unique<TestWindow>();
    ppDisp = &made->Browser();
  };
  RunScript("a.click()");
  ASSERT_TRUE(WaitUntil([&] { return made != nullptr; }));
  EXPECT_TRUE(Arrives(*made));
}

TEST_F(Banner, AWindowMadeForItAndNotGivenIsAWindowLikeAnyOther) {
  std::unique_ptr<TestWindow> made;
  notes.newWindow = [&](WebBrowser*& ppDisp, bool&) {
    made = std::make_unique<TestWindow>();
    ppDisp = &child.Browser();
  };
  RunScript("a.click()");
  ASSERT_TRUE(Arrives(child));
  EXPECT_TRUE(made->Load(server.Url("/p")));
}

/// A browser that is no control of this engine.
class Stranger : public gtk::WidgetControl, public WebBrowser {
 public:
  explicit Stranger(Gtk::Widget& widget) : WidgetControl(widget) {}
  void Navigate(const std::string&) override { ADD_FAILURE() << "nothing opens in it"; }
  void Stop() override {}
  void SetEvents(WebBrowserEvents*) override {}
  void GoBack() override {}
  void GoForward() override {}
  void Refresh() override {}
  [[nodiscard]] std::string LocationURL() const override { return {}; }
  [[nodiscard]] std::string LocationName() const override { return {}; }
  [[nodiscard]] bool Busy() const override { return false; }
  void ExecWB(int, int, int) override {}
  [[nodiscard]] int QueryStatusWB(int) const override { return 0; }
  void SetRegisterAsBrowser(bool) override {}
  void SetScriptObject(const std::string&, ScriptObject*) override {}
};

TEST_F(Banner, NothingOpensInABrowserThatIsGoneOrForeignOrAbsent) {
  Gtk::Box box;
  Stranger stranger(box);
  TestWindow gone;
  gone.CloseWindow();
  std::unique_ptr<TestWindow> closing;
  const std::vector<std::function<void(WebBrowser*&)>> answers{
      [&](WebBrowser*& ppDisp) { ppDisp = &stranger; },
      [&](WebBrowser*& ppDisp) { ppDisp = &gone.Browser(); }, [](WebBrowser*&) {},
      [&](WebBrowser*& ppDisp) {
        closing = std::make_unique<TestWindow>();
        ppDisp = &closing->Browser();
        closing->CloseWindow();
      }};
  for (const auto& answer : answers) {
    const int before = notes.Count("NewWindow2");
    notes.newWindow = [&](WebBrowser*& ppDisp, bool&) { answer(ppDisp); };
    for (const char* way : {"open('/p')", "a.click()", "open('')"}) RunScript(way);
    ASSERT_TRUE(notes.WaitFor("NewWindow2", before + 3));
  }
  ASSERT_TRUE(Load("/b"));
  EXPECT_EQ(server.Count("/p"), 0);
}

TEST_F(Banner, MayBeSentItsOwnNewWindow) {
  notes.newWindow = [this](WebBrowser*& ppDisp, bool&) { ppDisp = banner.get(); };
  RunScript("open('/p')");
  EXPECT_TRUE(Arrives(notes));
}

TEST_F(Banner, HasNoMenuAndNoSearch) {
  gboolean handled = FALSE;
  WebKitContextMenu* menu = webkit_context_menu_new();
  g_signal_emit_by_name(View(), "context-menu", menu, nullptr, &handled);
  EXPECT_TRUE(handled);
  g_object_unref(menu);
  EXPECT_FALSE(gtk::ShowFindBar(GTK_WIDGET(View())));
}

TEST_F(Banner, ShowsItsPicturesWhateverPagesDo) {
  Engine().SetImagesShown(false);
  ASSERT_TRUE(Load("/i"));
  EXPECT_EQ(server.Count("/i.svg"), 1);
}

TEST_F(Banner, NothingCanBeDraggedOutOfIt) {
  int drags = 0;
  notes.onNavigated = [](PageFrame&) {};
  server.Serve("/d", {"<body style='margin:0'><a href=/p style='display:block;height:100px'>x</a><script>"
                      "ondragstart = () => fetch('/dragged'); onmouseup = () => fetch('/up')</script>"});
  ASSERT_TRUE(Load("/d"));
  notes.judge = [&](const auto& navigation) {
    ++drags;
    navigation->Refuse();
  };
  DesktopInput input(GTK_WIDGET(View()));
  input.MoveTo(100, 50);
  input.ButtonDown();
  for (int x = 110; x < 400; x += 20) input.MoveTo(x, 50);
  input.ButtonUp();
  ASSERT_TRUE(WaitUntil([&] { return server.Count("/up") == 1; }));
  EXPECT_EQ(server.Count("/dragged"), 0);
}

}  // namespace
}  // namespace kivandra::testing
