// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>

#include <optional>
#include <sstream>

#include "engine/engine_test.h"
#include "platform/platform_error.h"

namespace kivandra::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Test;

class NewWindows : public Test {
 protected:
  LoopbackServer server;
  TestWindow window;
  std::unique_ptr<TestWindow> popUp;

  void SetUp() override {
    server.Serve("/a", {"<title>a</title><a id=blank target=_blank href=/p>x</a>"
                        "<form id=form target=_blank action=/p></form>"});
    server.Serve("/p", {"<title>p</title>popped up"});
    ASSERT_TRUE(window.Load(server.Url("/a")));
  }
  void AllowWindows() {
    window.newWindow = [this](WebBrowser*& ppDisp, bool&) {
      popUp = std::make_unique<TestWindow>();
      ppDisp = &popUp->Browser();
    };
  }
};

TEST_F(NewWindows, NothingOpensIfTheyAreRefused) {
  for (const char* script : {"window.open('/p')", "blank.click()", "form.submit()", "window.open('')"}) {
    SCOPED_TRACE(script);
    const int before = window.Count("NewWindow2");
    window.RunScript(script);
    ASSERT_TRUE(window.WaitFor("NewWindow2", before + 1));
    EXPECT_EQ(window.Script("return 1"), "1");
  }
  EXPECT_EQ(server.Count("/p"), 0);
  EXPECT_EQ(window.Browser().LocationURL(), server.Url("/a"));
}

TEST_F(NewWindows, ThePageOpensInTheNewWindowAndIsJudgedThere) {
  AllowWindows();
  for (const char* script : {"window.open('/p')", "blank.click()", "form.submit()",
                             "window.open('').location='/p'", "window.open('/p', '', 'noopener')"}) {
    SCOPED_TRACE(script);
    popUp.reset();
    const int before = window.Count("BeforeNavigate2");
    window.RunScript(script);
    ASSERT_TRUE(
        WaitUntil([&] { return popUp && popUp->Count("DocumentComplete top " + server.Url("/p")) > 0; }));
    EXPECT_EQ(popUp->Count("BeforeNavigate2 " + server.Url("/p")), 1);
    EXPECT_EQ(popUp->Count("OnVisible true"), 1);
    EXPECT_EQ(window.Count("BeforeNavigate2"), before);
    EXPECT_EQ(popUp->Script("return document.body.textContent"), "popped up");
  }
}

TEST_F(NewWindows, ARefusedPageLeavesTheNewWindowEmpty) {
  window.newWindow = [this](WebBrowser*& ppDisp, bool&) {
    popUp = std::make_unique<TestWindow>();
    popUp->judge = [](const auto& navigation) { navigation->Refuse(); };
    ppDisp = &popUp->Browser();
  };
  window.RunScript("window.open('/p')");
  ASSERT_TRUE(WaitUntil([&] { return popUp && popUp->Count("BeforeNavigate2") == 1; }));
  EXPECT_EQ(popUp->Script("return document.body.textContent"), "");
  EXPECT_EQ(server.Count("/p"), 0);
}

TEST_F(NewWindows, AWindowThatWasMadeAndThenCancelledDoesNotOpen) {
  window.newWindow = [this](WebBrowser*& ppDisp, bool& Cancel) {
    popUp = std::make_unique<TestWindow>();
    ppDisp = &popUp->Browser();
    Cancel = true;
  };
  window.RunScript("window.open('/p')");
  ASSERT_TRUE(window.WaitFor("NewWindow2"));
  EXPECT_EQ(window.Script("return 1"), "1");
  popUp.reset();
  EXPECT_EQ(window.Script("return 2"), "2");
  EXPECT_EQ(server.Count("/p"), 0);
}

TEST_F(NewWindows, AHandlerMayMakeTwoWindowsAndGiveEither) {
  std::unique_ptr<TestWindow> first;
  for (const bool giveFirst : {true, false}) {
    window.newWindow = [&](WebBrowser*& ppDisp, bool&) {
      first = std::make_unique<TestWindow>();
      popUp = std::make_unique<TestWindow>();
      ppDisp = giveFirst ? &first->Browser() : &popUp->Browser();
    };
    window.RunScript("window.open('/p')");
    ASSERT_TRUE(WaitUntil([&] {
      const auto& given = giveFirst ? first : popUp;
      return given && given->Count("DocumentComplete top " + server.Url("/p")) > 0;
    }));
  }
}

TEST_F(NewWindows, AnExistingWindowGoesToTheAddress) {
  TestWindow other;
  window.newWindow = [&](WebBrowser*& ppDisp, bool&) { ppDisp = &other.Browser(); };
  window.RunScript("window.open('/p')");
  ASSERT_TRUE(other.WaitFor("DocumentComplete top " + server.Url("/p")));
  EXPECT_EQ(other.Count("BeforeNavigate2 " + server.Url("/p")), 1);
}

TEST_F(NewWindows, AWindowWithoutAGestureIsNotEvenAskedFor) {
  server.Serve("/auto", {"<script>window.open('/p')</script>auto"});
  ASSERT_TRUE(window.Load(server.Url("/auto")));
  EXPECT_EQ(window.Count("NewWindow2"), 0);
}

TEST_F(NewWindows, AMailLinkForANewWindowIsJudgedHere) {
  AllowWindows();
  window.RunScript("blank.href='mailto:a@b.example'; blank.click()");
  ASSERT_TRUE(window.WaitFor("BeforeNavigate2 mailto:a@b.example"));
  EXPECT_EQ(window.Count("NewWindow2"), 0);
}

TEST_F(NewWindows, ScriptsPlaceAndSizeTheirWindow) {
  AllowWindows();
  window.RunScript("window.open('/p', '', 'left=30,top=40,width=300,height=200')");
  ASSERT_TRUE(WaitUntil([&] { return popUp && popUp->Count("DownloadComplete") > 0; }));
  EXPECT_EQ(popUp->Last("WindowSetWidth"), "WindowSetWidth 300");
  EXPECT_EQ(popUp->Last("WindowSetHeight"), "WindowSetHeight 200");
  EXPECT_EQ(popUp->Last("WindowSetLeft"), "WindowSetLeft 30");
  EXPECT_EQ(popUp->Last("WindowSetTop"), "WindowSetTop 40");
  popUp->RunScript("resizeTo(350, 250)");
  ASSERT_TRUE(popUp->WaitFor("WindowSetWidth 350"));
  ASSERT_TRUE(popUp->WaitFor("WindowSetHeight 250"));
  popUp.reset();
  window.RunScript("window.open('/p')");
  ASSERT_TRUE(WaitUntil([&] { return popUp && popUp->Count("DownloadComplete") > 0; }));
  EXPECT_EQ(popUp->Count("WindowSet"), 0);
}

TEST_F(NewWindows, AWindowThatClosesItselfSaysSo) {
  AllowWindows();
  window.RunScript("window.open('/p')");
  ASSERT_TRUE(WaitUntil([&] { return popUp && popUp->Count("DownloadComplete") > 0; }));
  bool gone = false;
  popUp->onQuit = [&] {
    popUp.reset();
    gone = true;
  };
  popUp->RunScript("window.close()");
  EXPECT_TRUE(WaitUntil([&] { return gone; }));
}

TEST_F(NewWindows, TheOpenerMayCloseFirst) {
  auto opener = std::make_unique<TestWindow>();
  ASSERT_TRUE(opener->Load(server.Url("/a")));
  opener->newWindow = [&](WebBrowser*& ppDisp, bool&) {
    popUp = std::make_unique<TestWindow>();
    ppDisp = &popUp->Browser();
  };
  opener->RunScript("window.open('/p')");
  ASSERT_TRUE(WaitUntil([&] { return popUp != nullptr; }));
  opener.reset();
  ASSERT_TRUE(popUp->WaitFor("DocumentComplete top " + server.Url("/p")));
}

/// An object of the program that notes its calls.
class Recorder : public ScriptObject {
 public:
  std::vector<std::string> calls;

  [[nodiscard]] std::vector<Member> Members() const override {
    return {{"Visible", true}, {"Navigate", false}, {"Fail", false}};
  }
  ScriptValue Invoke(std::string_view member, const std::vector<ScriptValue>& arguments) override {
    std::ostringstream call;
    call << member << std::boolalpha;
    for (const ScriptValue& argument : arguments) {
      if (const auto* text = std::get_if<std::string>(&argument)) call << " '" << *text << "'";
      if (const auto* number = std::get_if<double>(&argument)) call << ' ' << *number;
      if (const auto* truth = std::get_if<bool>(&argument)) call << ' ' << *truth;
      if (std::holds_alternative<std::monostate>(argument)) call << " nothing";
    }
    calls.push_back(call.str());
    if (member == "Fail") throw PlatformError(kInvalidCall, "no good");
    return arguments.empty() ? ScriptValue(true) : arguments.front();
  }
};

class ScriptObjects : public Test {
 protected:
  LoopbackServer server;
  Recorder recorder;
  TestWindow window;
};

TEST_F(ScriptObjects, ReachThePageThatIsThereAndEveryLaterOne) {
  server.Serve("/a", {"a"});
  server.Serve("/b", {"<script>window.seen = typeof KVD</script>b"});
  ASSERT_TRUE(window.Load(server.Url("/a")));
  EXPECT_EQ(window.Script("return typeof KVD"), "undefined");
  window.Browser().SetScriptObject("KVD", &recorder);
  ASSERT_TRUE(WaitUntil([&] { return window.Script("return typeof KVD") == "object"; }));
  EXPECT_EQ(window.Script("return await KVD.Navigate('x')"), "x");
  ASSERT_TRUE(window.Load(server.Url("/b")));
  EXPECT_EQ(window.Script("return seen"), "object");
  EXPECT_EQ(window.Script("return await KVD.Visible"), "true");
  window.Browser().SetScriptObject("KVD", nullptr);
  EXPECT_THAT(window.Script("return await KVD.Navigate('x')"), HasSubstr("error"));
  ASSERT_TRUE(window.Load(server.Url("/a")));
  EXPECT_EQ(window.Script("return typeof KVD"), "undefined");
}

TEST_F(ScriptObjects, PassValuesAndRefuseOthers) {
  server.Serve("/a", {"a"});
  window.Browser().SetScriptObject("KVD", &recorder);
  ASSERT_TRUE(window.Load(server.Url("/a")));
  EXPECT_EQ(window.Script("return await KVD.Navigate('ñ\\u0041', 1.5, true, null)"), "ñA");
  EXPECT_EQ(recorder.calls.back(), "Navigate 'ñA' 1.5 true nothing");
  EXPECT_THAT(window.Script("return await KVD.Fail()"), HasSubstr("no good"));
  EXPECT_THAT(window.Script("return await KVD.Navigate({})"), HasSubstr("error"));
  EXPECT_EQ(window.Script("KVD.Visible = false; return await KVD.Visible"), "true");
  EXPECT_THAT(recorder.calls, ::testing::Contains("Visible false"));
  EXPECT_THAT(window.Script("return await KVD.Unknown()"), HasSubstr("error"));
}

TEST_F(ScriptObjects, CannotBeReplacedByAPage) {
  server.Serve("/a", {"a"});
  window.Browser().SetScriptObject("KVD", &recorder);
  ASSERT_TRUE(window.Load(server.Url("/a")));
  EXPECT_EQ(
      window.Script(
          "try { KVD = 1 } catch {} try { delete window.KVD } catch {} try { KVD.Navigate = 1 } catch {}"
          "return typeof KVD + typeof KVD.Navigate"),
      "objectfunction");
}

TEST_F(ScriptObjects, AreOutOfReachForFrames) {
  server.Serve("/a", {"<iframe src='" + server.Url("/f", "localhost") + "'></iframe>a"});
  server.Serve("/f", {"<script>let word = typeof KVD;"
                      "try { webkit.messageHandlers.program.postMessage(['x', 'Navigate', 'evil']).then("
                      "() => top.postMessage('through', '*'), () => top.postMessage(word, '*')); }"
                      "catch (e) { top.postMessage(word, '*'); }</script>"});
  window.Browser().SetScriptObject("KVD", &recorder);
  window.judge = [](const auto& navigation) { navigation->Allow(); };
  ASSERT_TRUE(window.Load(server.Url("/a")));
  EXPECT_EQ(window.Script("return new Promise((done) => { addEventListener('message', (e) => done(e.data));"
                          "document.querySelector('iframe').src += '?again'; })"),
            "undefined");
  EXPECT_TRUE(recorder.calls.empty());
}

TEST_F(ScriptObjects, ThePagesOwnWorldCannotSeeTheProgramsMessages) {
  server.Serve("/a", {"a"});
  ASSERT_TRUE(window.Load(server.Url("/a")));
  EXPECT_EQ(window.Script("return typeof window.webkit.messageHandlers.frame + typeof kivandraClearUnload"),
            "undefinedundefined");
}

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

class Identity : public Test {
 protected:
  LoopbackServer server;
  TestWindow window;

  static std::string CookieHeader(const std::string& url) {
    std::optional<std::string> header;
    Engine().Session().CookieHeader(url, [&](std::string text) { header = std::move(text); });
    EXPECT_FALSE(header.has_value());
    WaitUntil([&] { return header.has_value(); });
    return header.value_or("none came");
  }
};

TEST_F(Identity, IsWhatTheEngineReallySends) {
  server.Serve("/a", {"a"});
  ASSERT_TRUE(window.Load(server.Url("/a")));
  const Request request = server.Last("/a");
  gtk::WebSession& session = Engine().Session();
  EXPECT_EQ(request.headers.at("user-agent"), session.UserAgent());
  EXPECT_EQ(request.headers.at("accept"), session.Accept());
  EXPECT_EQ(request.headers.at("accept-language"), session.AcceptLanguage());
}

TEST_F(Identity, KnowsTheCookiesOfEachHost) {
  server.Serve("/set", {"a",
                        "text/html",
                        200,
                        {{"Set-Cookie", "plain=1; Path=/"},
                         {"Set-Cookie", "hidden=2; HttpOnly; Max-Age=1000; Path=/"}}});
  server.Serve("/a", {"a"});
  ASSERT_TRUE(window.Load(server.Url("/set")));
  ASSERT_TRUE(window.Load(server.Url("/a")));
  EXPECT_EQ(server.Last("/a").headers.at("cookie"), CookieHeader(server.Url("/a")));
  EXPECT_THAT(CookieHeader(server.Url("/a")), HasSubstr("hidden=2"));
  EXPECT_EQ(CookieHeader(server.Url("/a", "other.localhost")), "");
  EXPECT_EQ(CookieHeader("not an address"), "");

  Engine().Session().InternetSetOptionA(INTERNET_OPTION_END_BROWSER_SESSION);
  EXPECT_EQ(CookieHeader(server.Url("/a")), "hidden=2");
}

TEST_F(Identity, KnowsTheReferrerWhileAQuestionIsJudged) {
  server.Serve("/a", {"a"});
  server.Serve("/b", {"b"});
  ASSERT_TRUE(window.Load(server.Url("/a")));
  std::string during;
  window.judge = [&](const auto& navigation) {
    during = Engine().Session().Referrer(navigation->Url());
    navigation->Allow();
  };
  window.RunScript("location.href='/b'");
  ASSERT_TRUE(window.WaitFor("DocumentComplete top " + server.Url("/b")));
  EXPECT_EQ(during, server.Url("/a"));
  EXPECT_EQ(server.Last("/b").headers.at("referer"), during);
  EXPECT_EQ(Engine().Session().Referrer(server.Url("/b")), "");
}

TEST(Surroundings, TheEngineIsShutIn) { EXPECT_EQ(gtk::SandboxProblem(), ""); }

TEST(Surroundings, NoDebuggerGetsIn) {
  g_setenv("WEBKIT_INSPECTOR_SERVER", "127.0.0.1:1", TRUE);
  g_setenv("GTK_DEBUG", "interactive", TRUE);
  gtk::PrepareEngineEnvironment();
  EXPECT_EQ(g_getenv("WEBKIT_INSPECTOR_SERVER"), nullptr);
  EXPECT_EQ(g_getenv("GTK_DEBUG"), nullptr);
}

}  // namespace
}  // namespace kivandra::testing
