// SPDX-License-Identifier: GPL-3.0-or-later
// Windows that pages ask for.
#include <gmock/gmock.h>

#include "engine/desktop_input.h"
#include "engine/engine_test.h"

namespace kivandra::testing {
namespace {

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

TEST_F(NewWindows, AbsurdPlacesAndSizesDoNoHarm) {
  AllowWindows();
  window.RunScript(
      "window.open('/p', '', "
      "'left=-99999999999,top=1e300,width=99999999999999999999,height=-7,innerWidth=x')");
  ASSERT_TRUE(WaitUntil([&] { return popUp && popUp->Count("DownloadComplete") > 0; }));
  popUp->RunScript("resizeTo(NaN, Infinity); moveTo(-1e300, 1e300); resizeBy(-1e9, 0); resizeTo(2**31, 0)");
  popUp->WaitForScripts();
  EXPECT_EQ(popUp->Script("return document.body.textContent"), "popped up");
}

/// Opens what it is asked for, and keeps it.
class ManyWindows : public NewWindows {
 protected:
  std::vector<std::unique_ptr<TestWindow>> opened;

  void OpenAll() {
    window.newWindow = [this](WebBrowser*& ppDisp, bool&) {
      opened.push_back(std::make_unique<TestWindow>());
      ppDisp = &opened.back()->Browser();
    };
  }
};

TEST_F(ManyWindows, AThousandInALoopAreTwenty) {
  OpenAll();
  window.RunScript("let got = 0; for (let i = 0; i < 1000; ++i) if (window.open('/p')) ++got;");
  ASSERT_TRUE(window.WaitFor("NewWindow2", 20));
  window.WaitForScripts();
  EXPECT_EQ(opened.size(), 20U);
  EXPECT_EQ(window.Script("return got"), "20");
  window.RunScript("blank.click()");
  window.WaitForScripts();
  EXPECT_EQ(opened.size(), 20U);
  // Where one has closed there is room for one.
  opened.pop_back();
  window.RunScript("window.open('/p'); window.open('/p')");
  ASSERT_TRUE(WaitUntil([&] { return opened.size() == 20U; }));
  window.WaitForScripts();
  EXPECT_EQ(opened.size(), 20U);
}

TEST_F(ManyWindows, APersonsClickOpensOneMore) {
  OpenAll();
  server.Serve("/click",
               {"<body style='margin:0' onclick=\"for (let i = 0; i < 50; ++i) window.open('/p')\">x<p "
                "style='height:500px'>"});
  ASSERT_TRUE(window.Load(server.Url("/click")));
  window.RunScript("for (let i = 0; i < 30; ++i) window.open('')");
  ASSERT_TRUE(WaitUntil([&] { return opened.size() == 20U; }));
  window.WaitForScripts();
  for (const auto& each : opened) each->Hide();
  DesktopInput input(GTK_WIDGET(window.View()));
  input.Click(100, 100);
  ASSERT_TRUE(WaitUntil([&] { return opened.size() == 21U; }));
  window.WaitForScripts();
  EXPECT_EQ(opened.size(), 21U);
}

TEST_F(ManyWindows, NoneComeByThemselvesFromTimersAndUnloading) {
  OpenAll();
  server.Serve(
      "/auto",
      {"<body onunload=\"window.open('/p')\" onbeforeunload=\"window.open('/p')\"><script>open('/p');"
       "let turns = 0; setInterval(() => { open('/p'); ++turns }, 1); onpagehide = () => open('/p')"
       "</script>"});
  ASSERT_TRUE(window.Load(server.Url("/auto")));
  ASSERT_TRUE(WaitUntil([&] { return window.Script("return turns > 20") == "true"; }));
  ASSERT_TRUE(window.Load(server.Url("/a")));
  window.WaitForScripts();
  EXPECT_TRUE(opened.empty());
  EXPECT_EQ(server.Count("/p"), 0);
}

TEST_F(ManyWindows, AWindowThatOpensOthersStaysWithinTheSameNumber) {
  OpenAll();
  window.RunScript("let w = window; for (let i = 0; i < 40; ++i) { const n = w.open(''); if (n) w = n; }");
  ASSERT_TRUE(window.WaitFor("NewWindow2"));
  window.WaitForScripts();
  EXPECT_LE(Engine().PageWindows(), 20);
  opened.clear();
  EXPECT_EQ(Engine().PageWindows(), 0);
}

TEST_F(NewWindows, LinksInAWindowThatAScriptWroteAreJudged) {
  AllowWindows();
  window.RunScript(
      "const w = window.open(''); w.document.write('<title>w</title><a id=l href=/p>written</a>'); "
      "w.document.close()");
  ASSERT_TRUE(WaitUntil([&] { return popUp && popUp->Script("return document.title") == "w"; }));
  // The text was in the page that wrote it, and counts as that page.
  ASSERT_TRUE(popUp->WaitFor("BeforeNavigate2 " + server.Url("/a")));
  EXPECT_EQ(popUp->Count("BeforeNavigate2"), 1);
  EXPECT_EQ(server.Count("/p"), 0);
  popUp->judge = [](const auto& navigation) { navigation->Refuse(); };
  popUp->RunScript("l.click()");
  ASSERT_TRUE(popUp->WaitFor("BeforeNavigate2 " + server.Url("/p")));
  popUp->WaitForScripts();
  EXPECT_EQ(server.Count("/p"), 0);
  EXPECT_EQ(popUp->Script("return document.body.textContent"), "written");
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

}  // namespace
}  // namespace kivandra::testing
