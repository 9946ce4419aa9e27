// SPDX-License-Identifier: GPL-3.0-or-later
// Pages that fail, and what pages may not do to the person before them.
#include <gmock/gmock.h>

#include "engine/engine_test.h"

namespace kivandra::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Test;

class Unloading : public Test {
 protected:
  LoopbackServer server;
  TestWindow window;
};

TEST_F(Unloading, HandlersOfPageAndFramesAreTakenAway) {
  server.Serve("/a",
               {"<body onunload=\"navigator.sendBeacon('/left-page')\">a<iframe src=/f></iframe></body>"});
  server.Serve("/f", {"<body onunload=\"navigator.sendBeacon('/left-frame')\">f</body>"});
  server.Serve("/b", {"b"});
  window.onNavigated = [](PageFrame& frame) { frame.ClearUnloadHandler(); };
  ASSERT_TRUE(window.Load(server.Url("/a")));
  ASSERT_TRUE(window.Load(server.Url("/b")));
  EXPECT_EQ(server.Count("/left-page"), 0);
  EXPECT_EQ(server.Count("/left-frame"), 0);
  // The same pages are heard when nobody takes their handlers away.
  window.onNavigated = [](PageFrame&) {};
  ASSERT_TRUE(window.Load(server.Url("/a")));
  ASSERT_TRUE(window.Load(server.Url("/b")));
  EXPECT_TRUE(WaitUntil([&] { return server.Count("/left-page") == 1 && server.Count("/left-frame") == 1; }));
}

TEST_F(Unloading, APageNeverHoldsItsWindow) {
  server.Serve("/a", {"<body onclick=1 onbeforeunload=\"event.preventDefault(); return 'stay'\">a</body>"});
  server.Serve("/b", {"b"});
  ASSERT_TRUE(window.Load(server.Url("/a")));
  window.RunScript("document.body.click()");
  EXPECT_TRUE(window.Load(server.Url("/b")));
}

class Troubles : public Test {
 protected:
  LoopbackServer server;
  TestWindow window;
};

TEST_F(Troubles, APageThatCannotBeOpenedSaysSoInPlainWords) {
  std::string url;
  {
    LoopbackServer gone;
    url = gone.Url("/<b>?x='\"&y");
  }
  ASSERT_TRUE(window.Load(url));
  EXPECT_EQ(window.Browser().LocationName(), "This page could not be opened");
  EXPECT_EQ(window.Count("BeforeNavigate2"), 1);
  EXPECT_EQ(window.Count("DownloadBegin"), 1);
  EXPECT_EQ(window.Count("DownloadComplete"), 1);
  EXPECT_EQ(window.Script("return document.querySelectorAll('b').length"), "0");
  window.RunScript("document.querySelector('a').click()");
  EXPECT_TRUE(window.WaitFor("BeforeNavigate2", 2));
}

TEST_F(Troubles, ABlockedPageShowsNothing) {
  window.judge = [](const auto& navigation) { navigation->Refuse(); };
  window.Browser().Navigate(server.Url("/a"));
  EXPECT_EQ(window.Count("NavigateComplete2"), 0);
  EXPECT_EQ(window.Browser().LocationURL(), "");
}

TEST_F(Troubles, APageWhoseProcessEndsIsSaidToHaveStopped) {
  server.Serve("/a", {"a"});
  ASSERT_TRUE(window.Load(server.Url("/a")));
  std::shared_ptr<Navigation> held;
  webkit_web_view_terminate_web_process(window.View());
  ASSERT_TRUE(window.WaitFor("TitleChange This page has stopped"));
  ASSERT_TRUE(WaitUntil([&] { return !window.Browser().Busy(); }));
  window.journal.clear();
  window.Browser().Refresh();
  ASSERT_TRUE(window.WaitFor("DocumentComplete top " + server.Url("/a")));
  EXPECT_EQ(window.Script("return document.body.textContent"), "a");
}

TEST_F(Troubles, AQuestionIsDroppedWhenThePagesProcessEnds) {
  server.Serve("/a", {"a<iframe src=/f></iframe>"});
  std::shared_ptr<Navigation> held;
  bool dropped = false;
  window.judge = [&](const auto& navigation) {
    if (navigation->Url().ends_with("/f")) {
      held = navigation;
      navigation->OnDropped([&] { dropped = true; });
    } else {
      navigation->Allow();
    }
  };
  window.Browser().Navigate(server.Url("/a"));
  ASSERT_TRUE(WaitUntil([&] { return held != nullptr; }));
  webkit_web_view_terminate_web_process(window.View());
  ASSERT_TRUE(WaitUntil([&] { return dropped; }));
  held->Allow();
  ASSERT_TRUE(window.WaitFor("TitleChange This page has stopped"));
  EXPECT_EQ(server.Count("/f"), 0);
}

TEST_F(Troubles, APagesQuestionsAreAnsweredForIt) {
  server.Serve("/a", {"a"});
  ASSERT_TRUE(window.Load(server.Url("/a")));
  EXPECT_EQ(window.Script("return prompt('Password?')"), "null");
  EXPECT_EQ(window.Script("window.print(); return 'went on'"), "went on");
  EXPECT_THAT(window.Script("return await navigator.clipboard.readText()"), HasSubstr("error"));
  EXPECT_EQ(window.Script(
                "return typeof Notification + typeof navigator.mediaDevices + !!document.fullscreenEnabled"),
            "undefinedundefinedfalse");
}

TEST_F(Troubles, ABoxOfAPageHoldsNothingUp) {
  server.Serve("/a", {"a"});
  server.Serve("/b", {"b"});
  ASSERT_TRUE(window.Load(server.Url("/a")));
  window.RunScript("alert('hello')");
  EXPECT_EQ(window.Script("return confirm('sure?')"), "false");
  EXPECT_TRUE(window.Load(server.Url("/b")));
  EXPECT_EQ(window.Script("return document.body.textContent"), "b");
}

}  // namespace
}  // namespace kivandra::testing
