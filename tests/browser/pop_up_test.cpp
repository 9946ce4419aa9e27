// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "browser/browser_world.h"
#include "browser/frm_browser.h"

namespace kivandra {
namespace {

using fakes::BrowserWorld;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

class NewWindow : public ::testing::Test, protected BrowserWorld {
 protected:
  NewWindow() : window(OpenWindow()) {}

  void Ask() { EngineOf(*window).events->NewWindow2(ppDisp, Cancel); }

  std::shared_ptr<frmBrowser> window;
  WebBrowser* ppDisp = nullptr;
  bool Cancel = false;
};

TEST_F(NewWindow, IsRefusedWithoutAWordIfTheParentSaysSo) {
  registry.PutSetting("POP", "1");
  Ask();
  EXPECT_TRUE(Cancel);
  EXPECT_EQ(ppDisp, nullptr);
  EXPECT_THAT(journal.lines, Each("Read POP")) << "the setting is read, and nothing else happens";
  EXPECT_EQ(frame.windows.size(), 1U);
}

TEST_F(NewWindow, IsOpenedForAnyOtherValueOfTheSetting) {
  for (const char* value : {"", "0", "2", "x1", "11", "-1", "True"}) {
    registry.PutSetting("POP", value);
    ppDisp = nullptr;
    Ask();
    EXPECT_FALSE(Cancel) << value;
    EXPECT_NE(ppDisp, nullptr) << value;
  }
}

TEST_F(NewWindow, IsMadeHiddenHandedToTheEngineAndThenShown) {
  Ask();
  EXPECT_FALSE(Cancel);
  ASSERT_EQ(frame.windows.size(), 2U);
  const auto popUp = frame.windows.back();
  EXPECT_EQ(ppDisp, &popUp->brwWebBrowser());
  EXPECT_EQ(popUp->Tag(), "POP");
  const auto lines = journal.With("frmBrowser#2.");
  const std::vector<std::string> first(lines.begin(), lines.begin() + 6);
  EXPECT_THAT(first, ElementsAre("frmBrowser#2.Tag = \"POP\"", "frmBrowser#2.Visible = False",
                                 "frmBrowser#2.brwWebBrowser.RegisterAsBrowser = True",
                                 "frmBrowser#2.Visible = False", "frmBrowser#2.Visible = False",
                                 "frmBrowser#2.Visible = True"));
  EXPECT_EQ(lines.back(), "frmBrowser#2.Left = 1");
  EXPECT_EQ(journal.lines.back(), "frmBrowser#1.brwWebBrowser.Document.onunload = 1");
}

TEST_F(NewWindow, HasAnAddressRowUntilItsPageSizesIt) {
  Ask();
  const auto popUp = frame.windows.back();
  EXPECT_TRUE(popUp->cboAddress().Visible());
  popUp->WindowSetHeight(300);
  EXPECT_FALSE(popUp->cboAddress().Visible());
}

TEST_F(NewWindow, IsJudgedByTheGateLikeAnyWindow) {
  BadWords[1] = "forbidden";
  Ask();
  const auto popUp = frame.windows.back();
  const auto navigation = EngineOf(*popUp).Ask("http://forbidden.example/");
  EXPECT_FALSE(navigation->Allowed());
  EXPECT_TRUE(popUp->Window().Loaded()) << "an empty window stays";
  EXPECT_TRUE(journal.Has(
      "frmMain.Caption = \"Possible Adult Content Has Been Detected.  Page will not be displayed.\""));
}

TEST_F(NewWindow, APopUpMayOpenAnother) {
  Ask();
  WebBrowser* next = nullptr;
  EngineOf(*frame.windows.back()).events->NewWindow2(next, Cancel);
  ASSERT_EQ(frame.windows.size(), 3U);
  EXPECT_EQ(next, &frame.windows.back()->brwWebBrowser());
  EXPECT_EQ(frame.windows.back()->Tag(), "POP");
}

TEST_F(NewWindow, ThatCannotBeMadeLeavesTheEngineWithoutOneAndClearsTheUnloadHandlerAllTheSame) {
  journal.failAt = journal.calls + 2;
  Ask();
  EXPECT_TRUE(journal.Has("FAILED Load frmBrowser"));
  EXPECT_EQ(ppDisp, nullptr);
  EXPECT_FALSE(Cancel);
  EXPECT_EQ(journal.lines.back(), "frmBrowser#1.brwWebBrowser.Document.onunload = 1");
}

TEST_F(NewWindow, ThatIsClosedAtOnceIsNotHandedToTheEngine) {
  frame.onNewWindow = [](frmBrowser& made) {
    EngineOf(made).onExec = [&made](int) { made.Window().Unload(); };
  };
  Ask();
  EXPECT_EQ(frame.windows.size(), 1U);
  EXPECT_EQ(ppDisp, nullptr);
}

class ScriptedSize : public ::testing::Test, protected BrowserWorld {
 protected:
  ScriptedSize() : window(OpenWindow()), form(FormOf(*window)) {
    form.windowState = WindowState::Maximized;
    window->brwWebBrowser().Move(30, 450, 9000, 5000);
    journal.Clear();
  }

  std::shared_ptr<frmBrowser> window;
  fakes::FakeForm& form;
};

TEST_F(ScriptedSize, LeftAndTopMakeTheWindowNormalAndMoveItByPixels) {
  window->WindowSetLeft(10);
  window->WindowSetTop(-4);
  EXPECT_THAT(journal.lines, ElementsAre("frmBrowser#1.WindowState = 0", "frmBrowser#1.Left = 150",
                                         "frmBrowser#1.WindowState = 0", "frmBrowser#1.Top = -60"));
}

TEST_F(ScriptedSize, HeightTurnsTheWindowIntoABarePopUpAndShowsTheOneInFront) {
  window->WindowSetHeight(200);
  EXPECT_THAT(journal.lines,
              ElementsAre("frmBrowser#1.WindowState = 0", "frmBrowser#1.Height = 3000",
                          "frmBrowser#1.cboAddress.Visible = False", "frmBrowser#1.btnGo.Visible = False",
                          "frmBrowser#1.btnsearch.Visible = False", "frmBrowser#1.SearchWeb.Visible = False",
                          "frmBrowser#1.brwWebBrowser.Move 30,0,9000,5000", "frmBrowser#1.Visible = True"));
}

TEST_F(ScriptedSize, WidthHidesOneButtonTwiceAndLeavesTheSearchButton) {
  window->WindowSetWidth(400);
  EXPECT_THAT(journal.lines,
              ElementsAre("frmBrowser#1.WindowState = 0", "frmBrowser#1.Width = 6000",
                          "frmBrowser#1.cboAddress.Visible = False", "frmBrowser#1.btnGo.Visible = False",
                          "frmBrowser#1.btnsearch.Visible = False", "frmBrowser#1.btnsearch.Visible = False",
                          "frmBrowser#1.brwWebBrowser.Move 30,0,9000,5000"));
  EXPECT_TRUE(form.ButtonOf("SearchWeb").visible);
}

TEST_F(ScriptedSize, HeightWithNoWindowInFrontIsNoFault) {
  forms.active = nullptr;
  window->WindowSetHeight(200);
  EXPECT_THAT(journal.lines, Not(Contains("frmBrowser#1.Visible = True")));
  EXPECT_EQ(form.height, 3000);
}

TEST_F(ScriptedSize, AnyNumberIsTakenWithoutHarm) {
  for (const long pixels : {std::numeric_limits<long>::max(), std::numeric_limits<long>::min(), 0L, -1L}) {
    window->WindowSetLeft(pixels);
    window->WindowSetTop(pixels);
    window->WindowSetWidth(pixels);
    window->WindowSetHeight(pixels);
  }
  window->WindowSetLeft(std::numeric_limits<long>::max());
  EXPECT_EQ(form.left, 32767 * 15);
  window->WindowSetLeft(std::numeric_limits<long>::min());
  EXPECT_EQ(form.left, -32767 * 15);
}

}  // namespace
}  // namespace kivandra
