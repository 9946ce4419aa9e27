// SPDX-License-Identifier: GPL-3.0-or-later
// When the signs of a running load end, though a frame's load does not end as loads do.
#include "engine/engine_test.h"

namespace kivandra::testing {
namespace {

/// A page is there, and in a frame of it a page whose picture never comes.
class FrameLoads : public ::testing::Test {
 protected:
  LoopbackServer server;
  TestWindow window;

  void SetUp() override {
    server.Serve("/a", {"<iframe id=f></iframe>a"});
    server.Serve("/slow", {"slow<img src=/never>"});
    server.Serve("/good", {"good"});
    server.Serve("/bad", {"bad"});
    server.Hang("/never");
    window.judge = [](const auto& navigation) {
      if (navigation->Url().find("bad") != std::string::npos) {
        navigation->Refuse();
      } else {
        navigation->Allow();
      }
    };
    ASSERT_TRUE(window.Load(server.Url("/a")));
    ASSERT_TRUE(window.WaitFor("DownloadComplete"));
    window.journal.clear();
  }
  void BeginSlowFrame() {
    window.RunScript("f.src = '/slow'");
    ASSERT_TRUE(window.WaitFor("NavigateComplete2 frame " + server.Url("/slow")));
    ASSERT_TRUE(WaitUntil([&] { return server.Count("/never") == 1; }));
    EXPECT_EQ(window.Count("DownloadBegin"), 1);
    EXPECT_EQ(window.Count("DownloadComplete"), 0);
  }
  void ExpectTheEnd() {
    EXPECT_TRUE(window.WaitFor("DownloadComplete"));
    EXPECT_TRUE(WaitUntil([&] { return !window.Browser().Busy(); }));
    window.WaitForScripts();
    EXPECT_EQ(window.Count("DownloadBegin"), window.Count("DownloadComplete"));
  }
};

TEST_F(FrameLoads, ARefusedFrameOfANewPageHoldsNothingUp) {
  server.Serve("/b", {"b<iframe src=/bad></iframe><iframe src=/good></iframe>"});
  ASSERT_TRUE(window.Load(server.Url("/b")));
  EXPECT_EQ(window.Count("BeforeNavigate2 " + server.Url("/bad")), 1);
  ExpectTheEnd();
}

TEST_F(FrameLoads, ARefusedStepOfAFrameBeginsNothing) {
  window.RunScript("f.src = '/bad'");
  ASSERT_TRUE(window.WaitFor("BeforeNavigate2 " + server.Url("/bad")));
  window.WaitForScripts();
  EXPECT_FALSE(window.Browser().Busy());
  EXPECT_EQ(window.Count("DownloadBegin"), 0);
}

TEST_F(FrameLoads, EndWhenTheFrameIsStopped) {
  BeginSlowFrame();
  window.Browser().Stop();
  ExpectTheEnd();
}

TEST_F(FrameLoads, EndWhenThePageTakesTheFrameAway) {
  BeginSlowFrame();
  window.RunScript("f.remove()");
  ExpectTheEnd();
}

TEST_F(FrameLoads, EndWhenTheFrameGoesToAnotherPage) {
  BeginSlowFrame();
  window.RunScript("f.src = '/good'");
  ASSERT_TRUE(window.WaitFor("DocumentComplete frame " + server.Url("/good")));
  ExpectTheEnd();
}

TEST_F(FrameLoads, EndWhenTheFrameIsRefusedItsNextPageAndStopped) {
  BeginSlowFrame();
  window.RunScript("f.src = '/bad'");
  ASSERT_TRUE(window.WaitFor("BeforeNavigate2 " + server.Url("/bad")));
  window.WaitForScripts();
  window.Browser().Stop();
  ExpectTheEnd();
}

TEST_F(FrameLoads, EndWhenThePageIsRefusedItsNextPageAndStopped) {
  BeginSlowFrame();
  window.RunScript("location.href = '/bad'");
  ASSERT_TRUE(window.WaitFor("BeforeNavigate2 " + server.Url("/bad")));
  window.WaitForScripts();
  window.Browser().Stop();
  ExpectTheEnd();
}

TEST_F(FrameLoads, EndWhenARefusedTypedAddressIsFollowedByAStop) {
  BeginSlowFrame();
  window.Browser().Navigate(server.Url("/bad"));
  window.Browser().Stop();
  ExpectTheEnd();
}

TEST_F(FrameLoads, EndWhenTheWholePageGoesOn) {
  BeginSlowFrame();
  ASSERT_TRUE(window.Load(server.Url("/good")));
  ExpectTheEnd();
}

TEST_F(FrameLoads, EndWhenThePagesProcessEnds) {
  BeginSlowFrame();
  webkit_web_view_terminate_web_process(window.View());
  ASSERT_TRUE(window.WaitFor("TitleChange This page has stopped"));
  ExpectTheEnd();
}

}  // namespace
}  // namespace kivandra::testing
