// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/frm_browser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "browser/browser_world.h"

namespace kivandra {
namespace {

using fakes::BrowserWorld;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ChildWindow : public ::testing::Test, protected BrowserWorld {};

TEST_F(ChildWindow, TheFirstOneGoesToTheCornerAndFitsIntoTheFrame) {
  frame.Window().scaleWidth = 8000;
  frame.Window().scaleHeight = 5000;
  const auto window = frame.NewBrowser();
  const auto& form = FormOf(*window);
  EXPECT_EQ(form.left, 0);
  EXPECT_EQ(form.top, 0);
  EXPECT_EQ(form.width, 8000);
  EXPECT_EQ(form.height, 5000);
  EXPECT_FALSE(form.visible);
  EXPECT_EQ(window->Tag(), "");
}

TEST_F(ChildWindow, TheFirstOneKeepsItsSizeIfThereIsRoom) {
  const auto window = frame.NewBrowser();
  EXPECT_EQ(FormOf(*window).width, 9000);
  EXPECT_EQ(FormOf(*window).height, 6000);
}

TEST_F(ChildWindow, ALaterOneIsNotPlaced) {
  const auto first = OpenWindow();
  const auto second = frame.NewBrowser();
  EXPECT_THAT(journal.With("frmBrowser#2.Left"), IsEmpty());
  EXPECT_THAT(journal.With("frmBrowser#2.Width"), IsEmpty());
}

TEST_F(ChildWindow, ComingToTheFrontUpdatesTheCommandsAndShowsTheAddressAgain) {
  const auto window = OpenWindow();
  EngineOf(*window).locationURL = "http://example.org/";
  AddressOf(*window).text = "half a word that was ty";
  window->Form_Activate();
  EXPECT_THAT(journal.lines, ElementsAre("frmBrowser#1.brwWebBrowser.ExecWB 21, 0",
                                         "frmBrowser#1.cboAddress.Text = \"http://example.org/\""));
}

TEST_F(ChildWindow, ComingToTheFrontWhileItLoadsMovesTheLogo) {
  const auto window = OpenWindow();
  EngineOf(*window).busy = true;
  window->Form_Activate();
  EXPECT_THAT(journal.lines, ElementsAre("frmBrowser#1.brwWebBrowser.ExecWB 21, 0", "Logo_Animate",
                                         "frmBrowser#1.cboAddress.Text = \"\""));
}

TEST_F(ChildWindow, ComingToTheFrontAfterABlockPutsItsAddressBackIntoTheBox) {
  const auto first = OpenWindow();
  EngineOf(*first).locationURL = "http://example.org/";
  BadWords[1] = "forbidden";
  first->brwWebBrowser().Navigate("http://forbidden.example/");
  ASSERT_EQ(BlockedURL, "http://forbidden.example/");
  ASSERT_EQ(AddressOf(*first).text, "");
  const auto second = OpenWindow();
  forms.Activate(&FormOf(*first));
  EXPECT_EQ(AddressOf(*first).text, "http://example.org/");
}

TEST_F(ChildWindow, GoingToTheBackEmptiesTheStatusAndIsRememberedByTheFrame) {
  const auto window = OpenWindow();
  window->Form_Deactivate();
  EXPECT_THAT(journal.lines,
              ElementsAre("frmMain.Status.Panels(\"TEXT\") = \"\"", "LastDeactivated = window"));
  EXPECT_EQ(frame.LastDeactivated.lock(), window);
}

TEST_F(ChildWindow, ClosingStopsTheLogoAndEmptiesTheStatus) {
  const auto window = OpenWindow();
  window->Window().Unload();
  EXPECT_THAT(journal.lines, ElementsAre("frmBrowser#1.Unload", "Logo_AnimateStop",
                                         "frmMain.Status.Text = \"\"", "Remove hook 1", "BrowserUnloaded"));
}

TEST_F(ChildWindow, ClosingLeavesTheFilterAndTheFramesAddressListAsTheyAre) {
  const auto window = OpenWindow();
  frame.Address().items = {"http://example.org/"};
  BadWords[1] = "forbidden";
  BlockedURL = "http://forbidden.example/";
  window->Window().Unload();
  EXPECT_THAT(frame.Address().items, ElementsAre("http://example.org/"));
  EXPECT_EQ(BadWords[1], "forbidden");
  EXPECT_EQ(BlockedURL, "http://forbidden.example/");
}

TEST_F(ChildWindow, ItsTwoSmallButtonsTileAndCascadeAllWindows) {
  const auto window = OpenWindow();
  FormOf(*window).ButtonOf("btnGo").Click();
  FormOf(*window).ButtonOf("btnsearch").Click();
  EXPECT_THAT(journal.lines, ElementsAre("tileme", "cascade"));
}

TEST_F(ChildWindow, NothingStartsItsResizeTimer) {
  const auto window = OpenWindow();
  window->Form_Resize();
  EngineOf(*window).ShowPage("http://example.org/", "Example");
  loop.Advance(60000);
  EXPECT_THAT(journal.With("ResizeTimer"), IsEmpty());
}

TEST_F(ChildWindow, ATickOfTheResizeTimerMovesTheWindowByOneAndStopsTheTimer) {
  const auto window = OpenWindow();
  FormOf(*window).left = 100;
  FormOf(*window).top = 200;
  FormOf(*window).TimerOf("ResizeTimer").Tick();
  EXPECT_THAT(journal.lines, ElementsAre("frmBrowser#1.Left = 101", "frmBrowser#1.Top = 201",
                                         "frmBrowser#1.ResizeTimer.Enabled = False"));
}

TEST_F(ChildWindow, SizingAnyWindowWidensAPopUpInFrontByOne) {
  const auto other = OpenWindow();
  const auto popUp = OpenWindow();
  FormOf(*popUp).tag = "POP";
  other->Form_Resize();
  EXPECT_THAT(journal.lines, ElementsAre("frmBrowser#2.Width = 9001"));
  popUp->Form_Resize();
  EXPECT_EQ(FormOf(*popUp).width, 9002);
}

TEST_F(ChildWindow, SizingLeavesAWindowInFrontAloneThatIsNoPopUp) {
  const auto popUp = OpenWindow();
  FormOf(*popUp).tag = "POP";
  const auto front = OpenWindow();
  front->Form_Resize();
  popUp->Form_Resize();
  EXPECT_THAT(journal.lines, IsEmpty());
}

TEST_F(ChildWindow, AMaximisedPopUpIsNotWidened) {
  const auto popUp = OpenWindow();
  FormOf(*popUp).tag = "POP";
  FormOf(*popUp).windowState = WindowState::Maximized;
  popUp->Form_Resize();
  EXPECT_EQ(FormOf(*popUp).width, 9000);
  FormOf(*popUp).windowState = WindowState::Normal;
  popUp->Form_Resize();
  EXPECT_EQ(FormOf(*popUp).width, 9001) << "a failed step must not stand in the way of the next";
}

TEST_F(ChildWindow, EachHasTheKeysOfTheProgramAsLongAsItIsLoaded) {
  const auto first = OpenWindow();
  const auto second = OpenWindow();
  EXPECT_TRUE(first->Keyboard);
  EXPECT_EQ(mKeyboardHooks::KeyboardHookUsers, 2);
  first->Window().Unload();
  EXPECT_EQ(mKeyboardHooks::KeyboardHookUsers, 1);
}

}  // namespace
}  // namespace kivandra
