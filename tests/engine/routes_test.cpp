// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "engine/engine_test.h"
#include "platform/platform_error.h"

namespace kivandra::testing {
namespace {

using ::testing::Test;

/// The ways in which a page or a person can go somewhere.
class Routes : public Test {
 protected:
  LoopbackServer server;
  TestWindow window;

  void RefuseBad() {
    window.judge = [](const auto& navigation) {
      if (navigation->Url().find("bad") != std::string::npos) {
        navigation->Refuse();
      } else {
        navigation->Allow();
      }
    };
  }
};

struct Route {
  const char* name;
  const char* page;
  const char* script;
};

class PageRoutes : public Routes, public ::testing::WithParamInterface<Route> {};

TEST_P(PageRoutes, IsAskedAndLoadsNothingWhenRefused) {
  server.Serve("/a", {GetParam().page});
  server.Serve("/bad", {"bad"});
  RefuseBad();
  ASSERT_TRUE(window.Load(server.Url("/a")));
  if (*GetParam().script != '\0') window.RunScript(GetParam().script);
  ASSERT_TRUE(window.WaitFor("BeforeNavigate2 " + server.Url("/bad")));
  window.WaitForScripts();
  EXPECT_EQ(server.Count("/bad"), 0);
  EXPECT_EQ(window.Browser().LocationURL(), server.Url("/a"));
}

INSTANTIATE_TEST_SUITE_P(
    All, PageRoutes,
    ::testing::Values(Route{"LinkClick", "<a id=x href=/bad>x</a>", "x.click()"},
                      Route{"LinkWithDownloadAttribute", "<a id=x download href=/bad>x</a>", "x.click()"},
                      Route{"LocationHref", "a", "location.href='/bad'"},
                      Route{"LocationReplace", "a", "location.replace('/bad')"},
                      Route{"FormGet", "<form id=x action=/bad></form>", "x.submit()"},
                      Route{"FormPost", "<form id=x method=post action=/bad></form>", "x.submit()"},
                      Route{"MetaRefresh", "<meta http-equiv=refresh content='0;url=/bad'>a", ""},
                      Route{"Frame", "<iframe src=/bad></iframe>", ""},
                      Route{"FrameInFrame", "<iframe srcdoc='<iframe src=/bad></iframe>'></iframe>", ""},
                      Route{"FrameSet", "<frameset cols='*'><frame src=/bad></frameset>", ""},
                      Route{"Object", "<object type='text/html' data=/bad></object>", ""},
                      Route{"Embed", "<embed type='text/html' src=/bad>", ""},
                      Route{"FrameSetsTop",
                            "<iframe srcdoc='<script>top.location=\"/bad\"</script>'></iframe>", ""},
                      Route{"BlankFrameGoesOn", "<iframe id=x></iframe>", "x.contentWindow.location='/bad'"}),
    [](const auto& row) { return std::string(row.param.name); });

struct Scheme {
  const char* name;
  const char* address;
};

class ForbiddenSchemes : public Routes, public ::testing::WithParamInterface<Scheme> {};

TEST_P(ForbiddenSchemes, NeverLoadEvenIfAllowed) {
  server.Serve("/a", {"<title>a</title>a<iframe id=f></iframe>"});
  ASSERT_TRUE(window.Load(server.Url("/a")));
  const std::string address = GetParam().address;
  window.Browser().Navigate(address);
  window.WaitForScripts();
  window.RunScript("location.href = '" + address + "'");
  window.WaitForScripts();
  window.RunScript("f.src = '" + address + "'");
  window.WaitForScripts();
  EXPECT_EQ(window.Script("return document.body.textContent"), "a");
  EXPECT_NE(window.Script("return document.title"), "ran");
  EXPECT_EQ(window.Browser().LocationURL(), server.Url("/a"));
  EXPECT_FALSE(window.Browser().Busy());
}

INSTANTIATE_TEST_SUITE_P(
    All, ForbiddenSchemes,
    ::testing::Values(Scheme{"Mail", "mailto:a@b.example"}, Scheme{"Ftp", "ftp://127.0.0.1/x"},
                      Scheme{"ViewSource", "view-source:http://127.0.0.1/"}, Scheme{"Engine", "webkit://gpu"},
                      Scheme{"Unknown", "steam://run/1"}, Scheme{"About", "about:config"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(Routes, ATypedScriptDoesNotRun) {
  server.Serve("/a", {"<title>a</title>a"});
  ASSERT_TRUE(window.Load(server.Url("/a")));
  window.Browser().Navigate("javascript:document.title='ran'");
  window.Browser().Navigate(" java\nscript:document.title='ran'");
  window.WaitForScripts();
  EXPECT_EQ(window.Script("return document.title"), "a");
}

TEST_F(Routes, APageCannotOpenAFile) {
  server.Serve("/a", {"a<iframe id=f></iframe>"});
  ASSERT_TRUE(window.Load(server.Url("/a")));
  window.RunScript("location.href = 'file:///etc/hostname'");
  window.RunScript("f.src = 'file:///etc/hostname'");
  window.WaitForScripts();
  EXPECT_EQ(window.Browser().LocationURL(), server.Url("/a"));
  EXPECT_EQ(window.Count("NavigateComplete2"), 1);
}

/// Files of the program in a folder that a person has named.
class LocalPages : public ::testing::Test {
 protected:
  void SetUp() override {
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "index.htm") << "<title>index</title><a id=a href=more.htm>x</a>";
    std::ofstream(folder / "more.htm") << "<title>more</title>";
    ASSERT_TRUE(window.Load(folder / "index.htm"));
    ASSERT_EQ(window.Script("return document.title"), "index");
  }
  void TearDown() override { std::filesystem::remove_all(folder); }

  const std::filesystem::path folder = std::filesystem::path(g_get_home_dir()) / "pages #1 of 50%? \u00E9";
  TestWindow window;
};

TEST_F(LocalPages, LeadToNoFileByAPlainYes) {
  window.RunScript("a.click()");
  window.WaitForScripts();
  EXPECT_EQ(window.Count("BeforeNavigate2"), 2);
  EXPECT_EQ(window.Script("return document.title"), "index");
}

TEST_F(LocalPages, LeadToOneAnotherWhereTheWindowSaysSo) {
  window.judge = [](const auto& navigation) { navigation->AllowFile(); };
  window.RunScript("a.click()");
  ASSERT_TRUE(window.WaitFor("DownloadComplete", 2));
  EXPECT_EQ(window.Script("return document.title"), "more");
}

TEST_F(Routes, BadTextLoadsNothingAndHarmsNothing) {
  for (const std::string& text :
       {std::string("http:///"), std::string(), std::string("   "), std::string("http://"),
        std::string("https://?x"), std::string(1, '\0'), std::string("\x01\x02"),
        std::string("http://\xff\xfe/"), "http://127.0.0.1/" + std::string(1 << 20, 'x'),
        std::string("http://a b/"), std::string(":"), std::string("//"), std::string("http://[::1/")}) {
    SCOPED_TRACE(text.substr(0, 40));
    const int before = window.Count("BeforeNavigate2");
    window.judge = [](const auto& navigation) { navigation->Allow(); };
    window.Browser().Navigate(text);
    EXPECT_EQ(window.Count("BeforeNavigate2"), before + 1);
    window.Browser().Stop();
  }
  window.journal.clear();
  window.Browser().Navigate("http:///");
  EXPECT_EQ(window.Last("BeforeNavigate2"), "BeforeNavigate2 http:///");
  EXPECT_FALSE(window.Browser().Busy());
}

TEST_F(Routes, LettersBeyondAsciiReachTheServerAsTyped) {
  server.Serve("/ñ", {"found"});
  ASSERT_TRUE(window.Load(server.Url("/ñ?q=ü x")));
  EXPECT_EQ(window.Count("BeforeNavigate2"), 1);
  EXPECT_EQ(window.Script("return document.body.textContent"), "found");
}

TEST_F(Routes, BlankDocumentsOfFramesRaiseNothing) {
  server.Serve("/a", {"<iframe></iframe><iframe src=about:blank></iframe><iframe srcdoc=x></iframe>a"});
  ASSERT_TRUE(window.Load(server.Url("/a")));
  EXPECT_EQ(window.Count("BeforeNavigate2"), 1);
  EXPECT_EQ(window.Count("NavigateComplete2 frame"), 0);
  ASSERT_TRUE(window.Load("about:blank"));
  EXPECT_EQ(window.Last("BeforeNavigate2"), "BeforeNavigate2 about:blank");
}

TEST_F(Routes, TwentyFramesAreHeldSideBySide) {
  std::string page = "a";
  for (int i = 0; i < 20; ++i) page += "<iframe src=/f" + std::to_string(i) + "></iframe>";
  server.Serve("/a", {page});
  for (int i = 0; i < 20; ++i) server.Serve("/f" + std::to_string(i), {"frame"});
  std::vector<std::shared_ptr<Navigation>> held;
  window.judge = [&](const auto& navigation) {
    if (navigation->Url().ends_with("/a")) {
      navigation->Allow();
    } else {
      held.push_back(navigation);
    }
  };
  window.Browser().Navigate(server.Url("/a"));
  ASSERT_TRUE(WaitUntil([&] { return held.size() == 20; }));
  for (int i = 0; i < 20; ++i) EXPECT_EQ(server.Count("/f" + std::to_string(i)), 0);
  for (auto navigation = held.rbegin(); navigation != held.rend(); ++navigation) (*navigation)->Allow();
  ASSERT_TRUE(window.WaitFor("DocumentComplete top"));
  EXPECT_EQ(window.Count("NavigateComplete2 frame"), 20);
  EXPECT_EQ(window.Count("DocumentComplete frame"), 20);
  EXPECT_EQ(window.Count("DownloadBegin"), window.Count("DownloadComplete"));
}

TEST_F(Routes, TheCommitOfANewPageDropsTheQuestionsOfTheOld) {
  server.Serve("/a", {"<iframe src=/held></iframe>a"});
  server.Serve("/held", {"h"});
  server.Serve("/b", {"b"});
  std::shared_ptr<Navigation> held;
  int dropped = 0;
  window.judge = [&](const auto& navigation) {
    if (navigation->Url().ends_with("/held")) {
      held = navigation;
      navigation->OnDropped([&] { ++dropped; });
    } else {
      navigation->Allow();
    }
  };
  window.Browser().Navigate(server.Url("/a"));
  ASSERT_TRUE(WaitUntil([&] { return held != nullptr; }));
  window.RunScript("location.href='/b'");
  ASSERT_TRUE(window.WaitFor("NavigateComplete2 top " + server.Url("/b")));
  EXPECT_EQ(dropped, 1);
  EXPECT_FALSE(held->Pending());
}

TEST_F(Routes, BackForwardAndRefreshAskInsideTheCallAndOnlyOnce) {
  server.Serve("/a", {"a"});
  server.Serve("/b", {"b"});
  EXPECT_THROW(window.Browser().GoBack(), PlatformError);
  ASSERT_TRUE(window.Load(server.Url("/a")));
  EXPECT_THROW(window.Browser().GoBack(), PlatformError);
  EXPECT_THROW(window.Browser().GoForward(), PlatformError);
  ASSERT_TRUE(window.Load(server.Url("/b")));
  ASSERT_TRUE(window.WaitFor("CommandStateChange 2 true"));

  const auto step = [&](const std::function<void()>& go, const std::string& to) {
    window.journal.clear();
    go();
    EXPECT_EQ(window.Last("BeforeNavigate2"), "BeforeNavigate2 " + server.Url(to));
    EXPECT_TRUE(window.WaitFor("DownloadComplete"));
    EXPECT_EQ(window.Count("BeforeNavigate2"), 1) << to;
    EXPECT_EQ(window.Browser().LocationURL(), server.Url(to));
  };
  step([&] { window.Browser().GoBack(); }, "/a");
  ASSERT_TRUE(window.WaitFor("CommandStateChange 1 true"));
  step([&] { window.Browser().GoForward(); }, "/b");
  step([&] { window.Browser().Refresh(); }, "/b");
}

TEST_F(Routes, ARefusedStepBackStaysWhereItIs) {
  server.Serve("/bad", {"bad"});
  server.Serve("/b", {"b"});
  ASSERT_TRUE(window.Load(server.Url("/bad")));
  ASSERT_TRUE(window.Load(server.Url("/b")));
  RefuseBad();
  window.Browser().GoBack();
  EXPECT_FALSE(window.Browser().Busy());
  window.RunScript("history.back()");
  ASSERT_TRUE(window.WaitFor("BeforeNavigate2 " + server.Url("/bad"), 3));
  window.WaitForScripts();
  EXPECT_EQ(window.Browser().LocationURL(), server.Url("/b"));
  EXPECT_EQ(server.Count("/bad"), 1);
}

TEST_F(Routes, AMarkIsGoodForOneQuestionOnly) {
  server.Serve("/a", {"a"});
  server.Serve("/b", {"b"});
  ASSERT_TRUE(window.Load(server.Url("/a")));
  ASSERT_TRUE(window.Load(server.Url("/b")));
  window.journal.clear();
  window.RunScript("location.href='/a'");
  ASSERT_TRUE(window.WaitFor("DownloadComplete"));
  EXPECT_EQ(window.Count("BeforeNavigate2 " + server.Url("/a")), 1);
}

TEST_F(Routes, AStepInsideThePageIsJudged) {
  server.Serve("/a", {"a"});
  ASSERT_TRUE(window.Load(server.Url("/a")));
  RefuseBad();
  window.RunScript("history.pushState(0, '', '/good')");
  ASSERT_TRUE(window.WaitFor("DocumentComplete top " + server.Url("/good")));
  EXPECT_EQ(window.Count("BeforeNavigate2 " + server.Url("/good")), 1);
  EXPECT_EQ(window.Browser().LocationURL(), server.Url("/good"));
  window.RunScript("history.pushState(0, '', '/bad')");
  ASSERT_TRUE(window.WaitFor("NavigateComplete2 top about:blank"));
  EXPECT_EQ(window.Count("BeforeNavigate2 " + server.Url("/bad")), 1);
  EXPECT_EQ(window.Browser().LocationURL(), "about:blank");
}

TEST_F(Routes, ManyStepsInsideThePageAreJudgedOneAtATime) {
  server.Serve("/a", {"a"});
  ASSERT_TRUE(window.Load(server.Url("/a")));
  std::vector<std::shared_ptr<Navigation>> held;
  window.judge = [&](const auto& navigation) { held.push_back(navigation); };
  window.RunScript("for (let i = 0; i < 50; i++) history.pushState(0, '', '/s' + i)");
  ASSERT_TRUE(WaitUntil([&] { return !held.empty(); }));
  window.WaitForScripts();
  EXPECT_EQ(held.size(), 1U);
  held.front()->Allow();
  ASSERT_TRUE(
      WaitUntil([&] { return held.size() == 2 || window.Browser().LocationURL() == server.Url("/s49"); }));
  if (held.size() == 2) held[1]->Allow();
  ASSERT_TRUE(WaitUntil([&] { return window.Browser().LocationURL() == server.Url("/s49"); }));
}

TEST_F(Routes, AFragmentIsAskedOnceAndReported) {
  server.Serve("/a", {"<a id=x href='#there'>x</a>"});
  ASSERT_TRUE(window.Load(server.Url("/a")));
  window.journal.clear();
  window.RunScript("x.click()");
  ASSERT_TRUE(window.WaitFor("DocumentComplete top " + server.Url("/a#there")));
  window.Browser().Navigate(server.Url("/a#here"));
  ASSERT_TRUE(window.WaitFor("DocumentComplete top " + server.Url("/a#here")));
  EXPECT_EQ(window.Count("BeforeNavigate2"), 2);
  EXPECT_FALSE(window.Browser().Busy());
  window.Browser().GoBack();
  ASSERT_TRUE(window.WaitFor("DocumentComplete top " + server.Url("/a#there"), 2));
  EXPECT_EQ(window.Count("BeforeNavigate2"), 3);
  EXPECT_EQ(server.Count("/a"), 1);
}

TEST_F(Routes, ARefusedFragmentStays) {
  server.Serve("/a", {"<a id=x href='#bad'>x</a>"});
  ASSERT_TRUE(window.Load(server.Url("/a")));
  RefuseBad();
  window.RunScript("x.click()");
  ASSERT_TRUE(window.WaitFor("BeforeNavigate2 " + server.Url("/a#bad")));
  window.WaitForScripts();
  EXPECT_EQ(window.Script("return location.href"), server.Url("/a"));
}

TEST_F(Routes, ServiceWorkersDoNotExist) {
  server.Serve("/a", {"a"});
  ASSERT_TRUE(window.Load(server.Url("/a")));
  EXPECT_EQ(window.Script("return typeof navigator.serviceWorker + typeof SharedWorker"),
            "undefinedundefined");
}

TEST_F(Routes, NothingIsDownloaded) {
  server.Serve("/a", {"a"});
  server.Serve("/file", {"x", "application/octet-stream"});
  server.Serve("/attached",
               {"x", "text/html", 200, {{"Content-Disposition", "attachment; filename=x.html"}}});
  server.Serve(
      "/mixed",
      {"--b\r\nContent-Type: text/html\r\n\r\none\r\n--b\r\nContent-Type: text/html\r\n\r\ntwo\r\n--b--",
       "multipart/x-mixed-replace;boundary=b"});
  for (const char* path : {"/file", "/attached", "/mixed"}) {
    SCOPED_TRACE(path);
    ASSERT_TRUE(window.Load(server.Url("/a")));
    window.journal.clear();
    window.RunScript(std::string("location.href='") + path + "'");
    ASSERT_TRUE(window.WaitFor("DocumentComplete top " + server.Url(path)));
    EXPECT_THAT(window.Script("return document.body.textContent"),
                ::testing::HasSubstr("This is not a page"));
  }
}

TEST_F(Routes, AnEmptyAnswerKeepsThePage) {
  server.Serve("/a", {"a"});
  server.Serve("/204", {"", "text/html", 204});
  ASSERT_TRUE(window.Load(server.Url("/a")));
  window.Browser().Navigate(server.Url("/204"));
  ASSERT_TRUE(window.WaitFor("DownloadComplete", 2));
  ASSERT_TRUE(WaitUntil([&] { return !window.Browser().Busy(); }));
  EXPECT_EQ(window.Browser().LocationURL(), server.Url("/a"));
  EXPECT_EQ(window.Script("return document.body.textContent"), "a");
}

}  // namespace
}  // namespace kivandra::testing
