// SPDX-License-Identifier: GPL-3.0-or-later
// What the program or a page asks for while something else is still on its way.
#include <chrono>

#include "engine/engine_test.h"

namespace kivandra::testing {
namespace {

/// A script that keeps its page, and so the page's process, from everything else.
constexpr const char* kBusy = "for (const end = Date.now() + 500; Date.now() < end;);";

class OverlappingLoads : public ::testing::Test {
 protected:
  LoopbackServer server;
};

TEST_F(OverlappingLoads, APageThatComesWhileTheNextIsAskedForIsToldByItsOwnAddress) {
  constexpr int kDelays = 12;  // in milliseconds: somewhere among them the first page is just arriving
  TestWindow window;
  for (int round = 0; round < 3 * kDelays; ++round) {
    const std::string first = "/first" + std::to_string(round);
    const std::string next = "/next" + std::to_string(round);
    server.Serve(next, {"<title>" + next + "</title>next"});
    server.Serve(first, [&](const Request&) {
      Glib::signal_timeout().connect_once([&, next] { window.Browser().Navigate(server.Url(next)); },
                                          static_cast<unsigned>(round % kDelays));
      return Reply{"<title>" + first + "</title>" + std::string(6000, 'x')};
    });
    window.Browser().Navigate(server.Url(first));
    ASSERT_TRUE(window.WaitFor("TitleChange " + next)) << round;
    ASSERT_TRUE(WaitUntil([&] { return !window.Browser().Busy(); })) << round;
    EXPECT_EQ(window.Browser().LocationURL(), server.Url(next));
    EXPECT_EQ(window.Count("NavigateComplete2 top " + server.Url(next)), 1) << round;
    EXPECT_EQ(window.Count("BeforeNavigate2 " + server.Url(next)), 1) << round;
  }
}

TEST_F(OverlappingLoads, TheNextLoadIsNotLostIfThePageBeforeItComesFirst) {
  TestWindow window;
  for (int round = 0; round < 3; ++round) {
    const std::string old = "/old" + std::to_string(round);
    const std::string first = "/first" + std::to_string(round);
    const std::string next = "/next" + std::to_string(round);
    server.Serve(old, {"old"});
    server.Serve(next, {"<title>" + next + "</title>next"});
    // The page on the screen is too busy to ask about the next load; a page of another site needs no leave of
    // it to come.
    server.Serve(first, [&](const Request&) {
      window.RunScript(kBusy);
      window.Browser().Navigate(server.Url(next));
      return Reply{"<title>" + first + "</title>first"};
    });
    ASSERT_TRUE(window.Load(server.Url(old)));
    window.Browser().Navigate(server.Url(first, "localhost"));
    ASSERT_TRUE(window.WaitFor("TitleChange " + next)) << round;
    ASSERT_TRUE(WaitUntil([&] { return !window.Browser().Busy(); })) << round;
    EXPECT_EQ(window.Browser().LocationURL(), server.Url(next));
    EXPECT_EQ(window.Count("NavigateComplete2 top " + server.Url(next)), 1) << round;
    EXPECT_EQ(window.Count("BeforeNavigate2 " + server.Url(next)), 1) << round;
    EXPECT_EQ(server.Count(next), 1) << round;
  }
}

TEST_F(OverlappingLoads, TheNextLoadIsNotLostWhileAPageOfAnotherSiteIsComing) {
  // Between the page's request and the next load: somewhere among them the page is just arriving.
  constexpr std::chrono::microseconds kStep(200);
  constexpr int kRounds = 60;
  TestWindow window;
  server.Serve("/old", {"old"});
  for (int round = 0; round < kRounds; ++round) {
    const std::string next = "/next" + std::to_string(round);
    server.Serve(next, {"<title>" + next + "</title>next"});
    server.Serve("/first", [&, next](const Request&) {
      const auto moment = std::chrono::steady_clock::now() + round * kStep;
      Glib::signal_idle().connect([&, next, moment] {
        if (std::chrono::steady_clock::now() < moment) return true;
        window.Browser().Navigate(server.Url(next));
        return false;
      });
      return Reply{"<title>first</title>first"};
    });
    ASSERT_TRUE(window.Load(server.Url("/old")));
    window.Browser().Navigate(server.Url("/first", "localhost"));
    ASSERT_TRUE(window.WaitFor("TitleChange " + next)) << round;
    ASSERT_TRUE(WaitUntil([&] { return !window.Browser().Busy(); })) << round;
    EXPECT_EQ(window.Browser().LocationURL(), server.Url(next));
    EXPECT_EQ(window.Count("NavigateComplete2 top " + server.Url(next)), 1) << round;
    EXPECT_EQ(window.Count("BeforeNavigate2 " + server.Url(next)), 1) << round;
  }
}

TEST_F(OverlappingLoads, AStepBackIsNotLostIfThePageBeforeItComesFirst) {
  TestWindow window;
  server.Serve("/far", {"<title>far</title>far"});
  server.Serve("/old", {"<title>old</title>old"});
  for (int round = 0; round < 3; ++round) {
    const std::string first = "/first" + std::to_string(round);
    server.Serve(first, [&](const Request&) {
      window.RunScript(kBusy);
      window.Browser().GoBack();
      return Reply{"<title>" + first + "</title>first"};
    });
    ASSERT_TRUE(window.Load(server.Url("/far")));
    ASSERT_TRUE(window.Load(server.Url("/old")));
    ASSERT_TRUE(window.WaitFor("CommandStateChange 2 true"));
    window.journal.clear();
    window.Browser().Navigate(server.Url(first, "localhost"));
    ASSERT_TRUE(window.WaitFor("TitleChange far")) << round;
    ASSERT_TRUE(WaitUntil([&] { return !window.Browser().Busy(); })) << round;
    EXPECT_EQ(window.Browser().LocationURL(), server.Url("/far"));
    EXPECT_EQ(window.Count("BeforeNavigate2 " + server.Url("/far")), 1) << round;
    EXPECT_LE(window.Count("NavigateComplete2 top " + server.Url("/far")), 1) << round;
  }
}

TEST_F(OverlappingLoads, ALoadThatFailsBehindTheNextTakesNothingFromIt) {
  TestWindow window;
  for (int round = 0; round < 12; ++round) {
    const std::string first = "/first" + std::to_string(round);
    const std::string next = "/next" + std::to_string(round);
    server.Serve(next, {"<title>" + next + "</title>next"});
    server.Serve(first, [&, next](const Request&) {
      window.Browser().Navigate(server.Url(next));
      return Reply{"no page", "application/x-nothing-to-show"};
    });
    window.Browser().Navigate(server.Url(first));
    ASSERT_TRUE(window.WaitFor("TitleChange " + next)) << round;
    ASSERT_TRUE(WaitUntil([&] { return !window.Browser().Busy(); })) << round;
    EXPECT_EQ(window.Browser().LocationURL(), server.Url(next));
  }
}

TEST_F(OverlappingLoads, ALoadAskedForAsATroublePageComesIsNotLost) {
  constexpr int kDelays = 12;  // in milliseconds: somewhere among them the page of the trouble is coming
  TestWindow window;
  for (int round = 0; round < 3 * kDelays; ++round) {
    const std::string next = "/next" + std::to_string(round);
    server.Serve(next, {"<title>" + next + "</title>next"});
    Glib::signal_timeout().connect_once([&, next] { window.Browser().Navigate(server.Url(next)); },
                                        static_cast<unsigned>(round % kDelays));
    window.Browser().Navigate("http://127.0.0.1:1/");
    ASSERT_TRUE(window.WaitFor("TitleChange " + next)) << round;
    ASSERT_TRUE(WaitUntil([&] { return !window.Browser().Busy(); })) << round;
    EXPECT_EQ(window.Browser().LocationURL(), server.Url(next));
  }
}

TEST_F(OverlappingLoads, ARefreshOfThePageThatIsLeftLeadsBackToIt) {
  TestWindow window;
  server.Serve("/old", {"<title>old</title>old"});
  server.Serve("/first", [&](const Request&) {
    window.RunScript(kBusy);
    window.Browser().Refresh();
    return Reply{"<title>first</title>first"};
  });
  ASSERT_TRUE(window.Load(server.Url("/old")));
  ASSERT_TRUE(window.WaitFor("TitleChange old"));
  window.journal.clear();
  window.Browser().Navigate(server.Url("/first", "localhost"));
  ASSERT_TRUE(window.WaitFor("DocumentComplete top " + server.Url("/old")));
  ASSERT_TRUE(WaitUntil([&] { return !window.Browser().Busy(); }));
  EXPECT_EQ(window.Browser().LocationURL(), server.Url("/old"));
  EXPECT_EQ(window.Count("BeforeNavigate2 " + server.Url("/old")), 1);
  EXPECT_EQ(server.Count("/first"), 1);
}

TEST_F(OverlappingLoads, APageProcessThatDiesTakesNoLoadWithIt) {
  TestWindow window;
  server.Serve("/old", {"old"});
  server.Serve("/next", {"<title>next</title>next"});
  ASSERT_TRUE(window.Load(server.Url("/old")));
  window.RunScript(kBusy);
  window.Browser().Navigate(server.Url("/next"));
  webkit_web_view_terminate_web_process(window.View());
  ASSERT_TRUE(window.WaitFor("TitleChange next"));
  EXPECT_EQ(window.Browser().LocationURL(), server.Url("/next"));
  EXPECT_EQ(window.Count("BeforeNavigate2 " + server.Url("/next")), 1);
}

TEST_F(OverlappingLoads, AStepBackInsideAPageIsOverWhenItIsDone) {
  TestWindow window;
  server.Serve("/a", {"a"});
  server.Serve("/b", {"<title>b</title>b"});
  server.Serve("/c", {"<script>history.pushState(0, '', '/step')</script>c"});
  ASSERT_TRUE(window.Load(server.Url("/a")));
  window.RunScript("history.pushState({}, '')");
  ASSERT_TRUE(window.WaitFor("CommandStateChange 2 true"));
  window.Browser().GoBack();
  window.WaitForScripts();
  ASSERT_TRUE(WaitUntil([&] { return !window.Browser().Busy(); }));
  window.RunScript("location.href = '" + server.Url("/b", "localhost") + "'");
  ASSERT_TRUE(window.WaitFor("TitleChange b"));
  window.RunScript("location.href = '/c'");
  ASSERT_TRUE(window.WaitFor("NavigateComplete2 top " + server.Url("/step", "localhost")));
  EXPECT_EQ(window.Count("BeforeNavigate2 " + server.Url("/step", "localhost")), 1);
  EXPECT_EQ(window.Count("BeforeNavigate2 " + server.Url("/a")), 2);
  EXPECT_EQ(server.Count("/a"), 1);
}

TEST_F(OverlappingLoads, AStepOfThePageIsJudgedThoughTheProgramsLoadIsToCome) {
  TestWindow window;
  server.Serve("/old", {"old"});
  server.Serve("/next", {"<title>next</title>next"});
  for (int round = 1; round <= 3; ++round) {
    ASSERT_TRUE(window.Load(server.Url("/old")));
    window.journal.clear();
    window.RunScript(std::string(kBusy) + "history.replaceState(0, '', '/step')");
    window.Browser().Navigate(server.Url("/next"));
    ASSERT_TRUE(window.WaitFor("TitleChange next"));
    ASSERT_TRUE(WaitUntil([&] { return !window.Browser().Busy(); }));
    EXPECT_EQ(window.Browser().LocationURL(), server.Url("/next"));
    EXPECT_EQ(window.Count("BeforeNavigate2 " + server.Url("/next")), 1);
    EXPECT_LE(window.Count("NavigateComplete2 top " + server.Url("/step")),
              window.Count("BeforeNavigate2 " + server.Url("/step")));
  }
}

TEST_F(OverlappingLoads, AStepOfThePageIsJudgedThoughItsNextPageNeverComes) {
  TestWindow window;
  server.Serve("/old", {"old"});
  server.Serve("/nothing", [&](const Request&) {
    window.RunScript("history.pushState(0, '', '/step')");
    window.WaitForScripts();
    return Reply{"", "text/html", 204};
  });
  ASSERT_TRUE(window.Load(server.Url("/old")));
  window.RunScript("location.href = '/nothing'");
  ASSERT_TRUE(window.WaitFor("BeforeNavigate2 " + server.Url("/step")));
  ASSERT_TRUE(window.WaitFor("NavigateComplete2 top " + server.Url("/step")));
  EXPECT_EQ(window.Browser().LocationURL(), server.Url("/step"));
}

TEST_F(OverlappingLoads, AStepThatIsStillBeingJudgedTakesNoLoadAway) {
  TestWindow window;
  server.Serve("/old", {"old"});
  server.Serve("/next", {"<title>next</title>next"});
  ASSERT_TRUE(window.Load(server.Url("/old")));
  std::shared_ptr<Navigation> held;
  window.judge = [&](const auto& navigation) {
    if (navigation->Url() == server.Url("/step")) {
      held = navigation;
    } else {
      navigation->Allow();
    }
  };
  window.RunScript("history.pushState(0, '', '/step')");
  ASSERT_TRUE(WaitUntil([&] { return held != nullptr; }));
  window.Browser().Navigate(server.Url("/next"));
  ASSERT_TRUE(window.WaitFor("TitleChange next"));
  ASSERT_TRUE(WaitUntil([&] { return !window.Browser().Busy(); }));
  window.WaitForScripts();
  EXPECT_EQ(window.Browser().LocationURL(), server.Url("/next"));
  EXPECT_EQ(window.Count("NavigateComplete2 top about:blank"), 0);
}

}  // namespace
}  // namespace kivandra::testing
