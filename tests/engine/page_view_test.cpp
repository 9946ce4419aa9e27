// SPDX-License-Identifier: GPL-3.0-or-later
// The views of the program's own pages, before which no gate stands.
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "engine/desktop_input.h"
#include "engine/engine_test.h"
#include "platform/gtk/controls/page_view_control.h"

namespace kivandra::testing {
namespace {

using ::testing::Test;

WebKitWebView* FindView(GtkWidget* widget) {
  if (WEBKIT_IS_WEB_VIEW(widget)) return WEBKIT_WEB_VIEW(widget);
  for (GtkWidget* child = gtk_widget_get_first_child(widget); child != nullptr;
       child = gtk_widget_get_next_sibling(child)) {
    if (WebKitWebView* found = FindView(child); found != nullptr) return found;
  }
  return nullptr;
}

class PageViews : public Test {
 protected:
  LoopbackServer site;
  LoopbackServer elsewhere;
  Gtk::Window window;
  Gtk::Box place;
  std::unique_ptr<gtk::PageViewControl> control;

  PageViews() {
    window.set_child(place);
    window.set_default_size(400, 300);
    control = std::make_unique<gtk::PageViewControl>(place, Engine());
    window.present();
    elsewhere.Serve("/out", {"<title>out</title>out"});
  }
  WebKitWebView* View() { return FindView(GTK_WIDGET(place.gobj())); }
  [[nodiscard]] std::string Title() {
    const char* title = View() != nullptr ? webkit_web_view_get_title(View()) : nullptr;
    return title != nullptr ? title : "";
  }
  [[nodiscard]] bool Shows(const std::string& address, const std::string& title) {
    control->Navigate(address);
    return WaitUntil([&] { return Title() == title && webkit_web_view_is_loading(View()) == FALSE; });
  }
  void RunScript(const std::string& source) {
    webkit_web_view_evaluate_javascript(View(), source.c_str(), -1, nullptr, nullptr, nullptr, nullptr,
                                        nullptr);
  }
  /// Waits until what a script began has come to rest: two turns through the page's process.
  void WaitForRest() {
    for (int turn = 0; turn < 2; ++turn) {
      bool done = false;
      webkit_web_view_call_async_javascript_function(
          View(), "return new Promise((done) => setTimeout(() => setTimeout(done, 0), 0))", -1, nullptr,
          nullptr, nullptr, nullptr,
          [](GObject* view, GAsyncResult* result, gpointer flag) {
            JSCValue* value =
                webkit_web_view_call_async_javascript_function_finish(WEBKIT_WEB_VIEW(view), result, nullptr);
            g_clear_object(&value);
            *static_cast<bool*>(flag) = true;
          },
          &done);
      ASSERT_TRUE(WaitUntil([&] { return done && webkit_web_view_is_loading(View()) == FALSE; }));
    }
  }
};

struct WayOut {
  const char* name;
  const char* script;  // "OUT" stands for an address on another site
};

constexpr WayOut kWaysOut[] = {{"Link", "a.href='OUT'; a.click()"},
                               {"LinkForANewWindow", "a.href='OUT'; a.target='_blank'; a.click()"},
                               {"LinkForAFrame", "i.name='i'; a.href='OUT'; a.target='i'; a.click()"},
                               {"Script", "location.href='OUT'"},
                               {"NewWindow", "open('OUT')"},
                               {"EmptyNewWindow", "const w = open(''); if (w) w.location='OUT'"},
                               {"Form", "f.action='OUT'; f.submit()"},
                               {"PostedForm", "f.action='OUT'; f.method='post'; f.submit()"},
                               {"Frame", "i.src='OUT'"},
                               {"Redirect", "location.href='/hop'"},
                               {"RedirectOfAFrame", "i.src='/hop'"},
                               {"Refresh",
                                "document.head.insertAdjacentHTML('beforeend', "
                                "'<meta http-equiv=refresh content=\"0;url=OUT\">')"},
                               {"FrameWithAPageInIt", "i.srcdoc='<script>top.location=\"OUT\"</'+'script>'"},
                               {"Data", "location.href='data:text/html,<title>out</title>'"},
                               {"File", "location.href='file:///etc/hostname'"},
                               {"AnotherHostByName", "location.href='OUT'.replace('127.0.0.1', 'localhost')"},
                               {"SiteAsUserName", "location.href='OUT'.replace('//', '//127.0.0.1@')"}};

TEST_F(PageViews, NoWayLeadsOutOfTheSite) {
  site.Serve("/banner", {"<title>banner</title><a id=a>x</a><form id=f></form><iframe id=i></iframe>"});
  site.Serve("/hop", {"", "text/html", 302, {{"Location", elsewhere.Url("/out")}}});
  for (const WayOut& way : kWaysOut) {
    SCOPED_TRACE(way.name);
    ASSERT_TRUE(Shows(site.Url("/banner"), "banner"));
    WaitForRest();
    std::string script = way.script;
    for (std::size_t at; (at = script.find("OUT")) != std::string::npos;) {
      script.replace(at, 3, elsewhere.Url("/out"));
    }
    RunScript(script);
    WaitForRest();
    EXPECT_TRUE(elsewhere.Requests().empty());
    EXPECT_EQ(webkit_web_view_get_uri(View()), site.Url("/banner"));
    EXPECT_EQ(Title(), "banner");
  }
}

TEST_F(PageViews, AClickOnABannerOpensNothingOutsideTheSite) {
  site.Serve("/banner", {"<title>banner</title><body style='margin:0'><a href='" + elsewhere.Url("/out") +
                         "' onclick='document.title=\"clicked\"' style='display:block;height:300px'>x</a>"});
  ASSERT_TRUE(Shows(site.Url("/banner"), "banner"));
  DesktopInput input(GTK_WIDGET(View()));
  for (const int button : {1, 2}) input.Click(200, 150, button);
  ASSERT_TRUE(WaitUntil([&] { return Title() == "clicked"; }));
  WaitForRest();
  EXPECT_TRUE(elsewhere.Requests().empty());
  EXPECT_EQ(webkit_web_view_get_uri(View()), site.Url("/banner"));
}

TEST_F(PageViews, LinksWithinTheSiteWork) {
  site.Serve("/banner", {"<title>banner</title><a id=a href=/next>x</a>"});
  site.Serve("/next", {"<title>next</title>next"});
  ASSERT_TRUE(Shows(site.Url("/banner"), "banner"));
  RunScript("a.click()");
  EXPECT_TRUE(WaitUntil([&] { return Title() == "next"; }));
}

TEST_F(PageViews, APageThatIsNotThereShowsNothing) {
  std::string gone;
  {
    LoopbackServer closed;
    gone = closed.Url("/");
  }
  LoopbackServer untrusted(KV_TEST_DATA "/self_signed.pem");
  untrusted.Serve("/", {"<title>untrusted</title>"});
  for (const std::string& address : {gone, untrusted.Url("/"), std::string("/no/such/file.htm")}) {
    SCOPED_TRACE(address);
    control->Navigate(address);
    ASSERT_TRUE(WaitUntil([&] { return webkit_web_view_is_loading(View()) == FALSE; }));
    EXPECT_EQ(Title(), "");
  }
  EXPECT_TRUE(untrusted.Requests().empty());
}

class HelpFiles : public PageViews {
 protected:
  std::filesystem::path folder =
      std::filesystem::path(g_get_home_dir()) / "help #1 of 50%";  // as a person may name a folder

  void SetUp() override {
    std::filesystem::create_directories(folder / "help");
    Write("help/index.htm", "<title>help</title><a id=a href='more.HTML'>x</a>");
    Write("help/more.HTML", "<title>more</title>");
    Write("secret.htm", "<title>secret</title>");
  }
  void TearDown() override { std::filesystem::remove_all(folder); }
  void Write(const char* name, const char* text) const { std::ofstream(folder / name) << text; }
};

TEST_F(HelpFiles, AreShownAsPages) {
  ASSERT_TRUE(Shows(folder / "help/index.htm", "help"));
  RunScript("a.click()");
  EXPECT_TRUE(WaitUntil([&] { return Title() == "more"; }));
  EXPECT_TRUE(Shows(folder / "help/more.HTML", "more"));
}

TEST_F(HelpFiles, DoNotLeadOutOfTheirFolder) {
  ASSERT_TRUE(Shows(folder / "help/index.htm", "help"));
  for (const std::string& out :
       {std::string("../secret.htm"), std::string("%2e%2e/secret.htm"), std::string("..%2fsecret.htm"),
        std::string("file:///etc/hostname"), elsewhere.Url("/out")}) {
    SCOPED_TRACE(out);
    RunScript("a.href = '" + out + "'; a.click()");
    WaitForRest();
    EXPECT_EQ(Title(), "help");
  }
  EXPECT_TRUE(elsewhere.Requests().empty());
}

TEST_F(PageViews, PicturesAreNoPages) {
  control->Navigate(KIVANDRA_ASSETS "/smilestop.jpg");
  EXPECT_EQ(View(), nullptr);
  EXPECT_NE(gtk_widget_get_first_child(GTK_WIDGET(place.gobj())), nullptr);
}

}  // namespace
}  // namespace kivandra::testing
