// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "engine/engine_test.h"
#include "platform/platform_error.h"

namespace kivandra::testing {
namespace {

using ::testing::Test;

class Loading : public Test {
 protected:
  LoopbackServer server;
};

std::vector<std::string> WithoutNoise(const std::vector<std::string>& journal) {
  std::vector<std::string> lines;
  for (const std::string& line : journal) {
    if (!line.starts_with("CommandStateChange") && !line.starts_with("StatusTextChange"))
      lines.push_back(line);
  }
  return lines;
}

TEST_F(Loading, TellsOfAPageInTheOrderInWhichItComes) {
  server.Serve("/a", {"<title>A</title>hello"});
  TestWindow window;
  ASSERT_TRUE(window.Load(server.Url("/a")));
  ASSERT_TRUE(window.WaitFor("TitleChange A"));
  std::vector<std::string> lines = WithoutNoise(window.journal);
  lines.erase(std::remove(lines.begin(), lines.end(), "TitleChange A"), lines.end());
  EXPECT_EQ(lines,
            (std::vector<std::string>{"BeforeNavigate2 " + server.Url("/a"), "DownloadBegin",
                                      "NavigateComplete2 top " + server.Url("/a"),
                                      "DocumentComplete top " + server.Url("/a"), "DownloadComplete"}));
  EXPECT_EQ(window.Browser().LocationURL(), server.Url("/a"));
  EXPECT_EQ(window.Browser().LocationName(), "A");
  EXPECT_FALSE(window.Browser().Busy());
}

TEST_F(Loading, AsksInsideTheCallAndOnlyOnce) {
  server.Serve("/a", {"a"});
  TestWindow window;
  window.Browser().Navigate(server.Url("/a"));
  EXPECT_EQ(window.Count("BeforeNavigate2"), 1);
  EXPECT_TRUE(window.Browser().Busy());
  ASSERT_TRUE(window.WaitFor("DownloadComplete"));
  EXPECT_EQ(window.Count("BeforeNavigate2"), 1);
}

TEST_F(Loading, GivesTheAddressAsTypedWhereOnlyASlashIsMissing) {
  server.Serve("/", {"root"});
  TestWindow window;
  ASSERT_TRUE(window.Load(server.Url("")));
  EXPECT_EQ(window.Last("BeforeNavigate2"), "BeforeNavigate2 " + server.Url(""));
  EXPECT_EQ(window.Count("BeforeNavigate2"), 1);
  EXPECT_EQ(window.Browser().LocationURL(), server.Url("/"));
}

TEST_F(Loading, LoadsNothingThatIsRefused) {
  server.Serve("/a", {"a"});
  server.Serve("/b", {"b"});
  TestWindow window;
  ASSERT_TRUE(window.Load(server.Url("/a")));
  window.judge = [](const auto& navigation) { navigation->Refuse(); };
  window.Browser().Navigate(server.Url("/b"));
  EXPECT_FALSE(window.Browser().Busy());
  window.RunScript("location.href = '/b'");
  ASSERT_TRUE(window.WaitFor("BeforeNavigate2 " + server.Url("/b"), 2));
  EXPECT_EQ(window.Script("return document.body.textContent"), "a");
  EXPECT_EQ(server.Count("/b"), 0);
  EXPECT_EQ(window.Browser().LocationURL(), server.Url("/a"));
}

TEST_F(Loading, AQuestionThatNobodyAnswersIsRefused) {
  server.Serve("/a", {"a"});
  server.Serve("/b", {"b"});
  TestWindow window;
  ASSERT_TRUE(window.Load(server.Url("/a")));
  window.judge = [](const auto&) {};
  window.RunScript("location.href = '/b'");
  ASSERT_TRUE(window.WaitFor("BeforeNavigate2 " + server.Url("/b")));
  EXPECT_EQ(window.Script("return document.body.textContent"), "a");
  EXPECT_EQ(server.Count("/b"), 0);
}

TEST_F(Loading, ABrowserWithoutAnOwnerLoadsNothing) {
  server.Serve("/a", {"a"});
  TestWindow window;
  window.Browser().SetEvents(nullptr);
  window.Browser().Navigate(server.Url("/a"));
  EXPECT_FALSE(window.Browser().Busy());
  EXPECT_EQ(server.Count("/a"), 0);
}

TEST_F(Loading, WaitsForAVerdictAndLoadsThen) {
  server.Serve("/a", {"a"});
  TestWindow window;
  std::shared_ptr<Navigation> held;
  window.judge = [&](const auto& navigation) { held = navigation; };
  window.Browser().Navigate(server.Url("/a"));
  Settle();
  EXPECT_TRUE(held->Pending());
  EXPECT_TRUE(window.Browser().Busy());
  EXPECT_EQ(server.Count("/a"), 0);
  held->Allow();
  EXPECT_FALSE(held->Pending());
  ASSERT_TRUE(window.WaitFor("DocumentComplete top " + server.Url("/a")));
  EXPECT_EQ(window.Count("BeforeNavigate2"), 1);
}

TEST_F(Loading, TheFirstAnswerCounts) {
  server.Serve("/a", {"a"});
  server.Serve("/b", {"b"});
  TestWindow window;
  window.judge = [](const auto& navigation) {
    navigation->Refuse();
    navigation->Allow();
  };
  window.Browser().Navigate(server.Url("/a"));
  EXPECT_FALSE(window.Browser().Busy());
  window.judge = [](const auto& navigation) {
    navigation->Allow();
    navigation->Refuse();
  };
  ASSERT_TRUE(window.Load(server.Url("/b")));
  EXPECT_EQ(server.Count("/a"), 0);
}

TEST_F(Loading, EachStepOfARedirectIsAsked) {
  server.Serve("/1", {"", "text/html", 302, {{"Location", "/2"}}});
  server.Serve("/2", {"", "text/html", 307, {{"Location", "/3"}}});
  server.Serve("/3", {"third"});
  TestWindow window;
  ASSERT_TRUE(window.Load(server.Url("/1")));
  EXPECT_EQ(window.Count("BeforeNavigate2"), 3);
  EXPECT_EQ(window.Browser().LocationURL(), server.Url("/3"));
}

TEST_F(Loading, ARefusedRedirectKeepsThePage) {
  server.Serve("/a", {"a"});
  server.Serve("/1", {"", "text/html", 302, {{"Location", "/bad"}}});
  server.Serve("/bad", {"bad"});
  TestWindow window;
  ASSERT_TRUE(window.Load(server.Url("/a")));
  window.judge = [](const auto& navigation) {
    if (navigation->Url().ends_with("/bad")) {
      navigation->Refuse();
    } else {
      navigation->Allow();
    }
  };
  window.Browser().Navigate(server.Url("/1"));
  ASSERT_TRUE(window.WaitFor("BeforeNavigate2 " + server.Url("/bad")));
  ASSERT_TRUE(WaitUntil([&] { return !window.Browser().Busy(); }));
  EXPECT_EQ(server.Count("/bad"), 0);
  EXPECT_EQ(window.Browser().LocationURL(), server.Url("/a"));
  EXPECT_EQ(window.Count("NavigateComplete2"), 1);
  EXPECT_EQ(window.Count("DownloadBegin"), window.Count("DownloadComplete"));
}

TEST_F(Loading, StopDropsWhatIsBeingJudged) {
  server.Serve("/a", {"a"});
  server.Serve("/b", {"b"});
  TestWindow window;
  ASSERT_TRUE(window.Load(server.Url("/a")));
  std::shared_ptr<Navigation> held;
  int dropped = 0;
  window.judge = [&](const auto& navigation) {
    held = navigation;
    navigation->OnDropped([&] { ++dropped; });
  };
  window.RunScript("location.href = '/b'");
  ASSERT_TRUE(WaitUntil([&] { return held != nullptr; }));
  EXPECT_TRUE(window.Browser().Busy());
  window.Browser().Stop();
  EXPECT_EQ(dropped, 1);
  EXPECT_FALSE(held->Pending());
  held->Allow();
  EXPECT_FALSE(window.Browser().Busy());
  EXPECT_EQ(window.Script("return document.body.textContent"), "a");
  EXPECT_EQ(server.Count("/b"), 0);
}

TEST_F(Loading, ANewerLoadDropsTheOlderQuestion) {
  server.Serve("/a", {"a"});
  server.Serve("/b", {"b"});
  TestWindow window;
  std::shared_ptr<Navigation> held;
  int dropped = 0;
  window.judge = [&](const auto& navigation) {
    held = navigation;
    navigation->OnDropped([&] { ++dropped; });
  };
  window.Browser().Navigate(server.Url("/a"));
  window.judge = [](const auto& navigation) { navigation->Allow(); };
  ASSERT_TRUE(window.Load(server.Url("/b")));
  EXPECT_EQ(dropped, 1);
  held->Allow();
  EXPECT_FALSE(window.Browser().Busy());
  EXPECT_EQ(server.Count("/a"), 0);
}

TEST_F(Loading, AnAnswerAfterTheWindowHasGoneIsHarmless) {
  server.Serve("/a", {"a"});
  server.Serve("/b", {"b"});
  std::vector<std::shared_ptr<Navigation>> held;
  int dropped = 0;
  {
    TestWindow window;
    ASSERT_TRUE(window.Load(server.Url("/a")));
    window.judge = [&](const auto& navigation) {
      held.push_back(navigation);
      navigation->OnDropped([&] { ++dropped; });
    };
    window.RunScript("location.href = '/b'");
    ASSERT_TRUE(WaitUntil([&] { return !held.empty(); }));
    window.Browser().Navigate(server.Url("/b"));
  }
  EXPECT_EQ(dropped, 2);
  for (const auto& navigation : held) navigation->Allow();
  Settle();
  EXPECT_EQ(server.Count("/b"), 0);
}

TEST_F(Loading, AWindowMayCloseInsideAnyEvent) {
  server.Serve("/a", {"<title>t</title><iframe src=/f></iframe>"});
  server.Serve("/f", {"f"});
  for (const char* event : {"BeforeNavigate2", "NavigateComplete2", "DocumentComplete", "DownloadBegin",
                            "DownloadComplete", "TitleChange", "StatusTextChange", "CommandStateChange"}) {
    SCOPED_TRACE(event);
    struct Closing : TestWindow {
      std::string when;
      bool closed = false;
      void Note(const std::string& name) {
        if (name != when || closed) return;
        closed = true;
        CloseWindow();
        Owned().reset();
      }
      void BeforeNavigate2(std::shared_ptr<Navigation> navigation) override {
        navigation->Allow();
        Note("BeforeNavigate2");
      }
      void NavigateComplete2(PageFrame&, const std::string&) override { Note("NavigateComplete2"); }
      void DocumentComplete(PageFrame&, const std::string&) override { Note("DocumentComplete"); }
      void DownloadBegin() override { Note("DownloadBegin"); }
      void DownloadComplete() override { Note("DownloadComplete"); }
      void TitleChange(const std::string&) override { Note("TitleChange"); }
      void StatusTextChange(const std::string&) override { Note("StatusTextChange"); }
      void CommandStateChange(long, bool) override { Note("CommandStateChange"); }
    } window;
    window.when = event;
    window.Browser().Navigate(server.Url("/a"));
    EXPECT_TRUE(WaitUntil([&] { return window.closed; }));
    Settle();
  }
}

TEST_F(Loading, AnOperationOnAWindowThatHasGoneSaysSo) {
  TestWindow window;
  window.CloseWindow();
  EXPECT_THROW(window.Browser().Navigate("about:blank"), PlatformError);
  EXPECT_THROW(window.Browser().Stop(), PlatformError);
  EXPECT_THROW((void)window.Browser().LocationURL(), PlatformError);
  EXPECT_THROW(window.Browser().SetFocus(), PlatformError);
}

}  // namespace
}  // namespace kivandra::testing
