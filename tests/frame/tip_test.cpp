// SPDX-License-Identifier: GPL-3.0-or-later
// The tip of the day, and the windows without bars.
#include <gtest/gtest.h>

#include "frame/menu_world.h"
#include "hosts.h"

namespace kivandra {
namespace {

using Lines = std::vector<std::string>;

const std::string kSite = "http://" + std::string(hosts::kProductSite);

struct TipTest : testing::Test {
  MenuWorld world;

  fakes::FakeForm& Tip() { return world.forms.Of("frmTip"); }
  long Tips() { return world.journal.Count("Load frmTip"); }
};

TEST_F(TipTest, TheMenuOpensTheTipInTheSkinInForce) {
  world.Start();
  SkinFile = "/program/KVDSkins/berry.skn";
  world.Choose("mnuTip");
  const Lines expected = {"Load frmTip", "frmTip.SkinForm1.SkinFile = \"/program/KVDSkins/berry.skn\"",
                          "frmTip.SkinForm1.ApplyTo frmTip.cmdOK",
                          "frmTip.TipBrowser.Navigate \"" + kSite + "/tips/default.htm\"",
                          "frmTip.Visible = True"};
  EXPECT_EQ(world.journal.lines, expected);
  EXPECT_TRUE(TipOpen);
}

TEST_F(TipTest, TheMenuOpensNoSecondOne) {
  world.Start();
  world.Choose("mnuTip");
  world.Choose("mnuTip");
  EXPECT_EQ(Tips(), 1);
}

TEST_F(TipTest, OkClosesItAndTheMenuOpensItAgain) {
  world.Start();
  world.Choose("mnuTip");
  Tip().ButtonOf("cmdOK").Click();
  EXPECT_FALSE(world.forms.IsLoaded("frmTip"));
  EXPECT_FALSE(TipOpen);
  world.Choose("mnuTip");
  EXPECT_EQ(Tips(), 2);
}

TEST_F(TipTest, ItsCloseBoxDoesTheSame) {
  world.Start();
  world.Choose("mnuTip");
  Tip().Close(UnloadMode::ControlMenu);
  EXPECT_FALSE(TipOpen);
}

TEST_F(TipTest, ItComesByItselfOneAndAHalfSecondsAfterTheFrameAndOnlyOnce) {
  SaveItem(world.registry, "T_OD", "1");
  world.frame->Load();
  world.loop.Advance(1499);
  EXPECT_EQ(Tips(), 0);
  world.loop.Advance(1);
  EXPECT_EQ(Tips(), 1);
  EXPECT_TRUE(Tip().visible);
  EXPECT_TRUE(TipOpen);
  EXPECT_LT(world.journal.Index("frmTip.Visible = True"),
            world.journal.Index("frmMain.timerTips.Enabled = False"));
  world.loop.Advance(60000);
  EXPECT_EQ(Tips(), 1);
}

TEST_F(TipTest, WithoutTheSettingItComesOnlyFromTheMenu) {
  SaveItem(world.registry, "T_OD", "0");
  world.Start();
  world.loop.Advance(60000);
  EXPECT_EQ(Tips(), 0);
  world.Choose("mnuTip");
  EXPECT_EQ(Tips(), 1);
}

TEST_F(TipTest, TheTimerDoesNotAskWhetherOneIsOpen) {
  SaveItem(world.registry, "T_OD", "1");
  world.frame->Load();
  world.Choose("mnuTip");
  world.loop.Advance(1500);
  EXPECT_EQ(Tips(), 2);
  // The first one that is closed clears the flag for both.
  world.forms.Of("frmTip").Close(UnloadMode::ControlMenu);
  EXPECT_FALSE(TipOpen);
}

TEST_F(TipTest, ATimersTipThatCannotBeShownCountsAsOpen) {
  SaveItem(world.registry, "T_OD", "1");
  world.frame->Load();
  world.journal.failOn = "Load frmTip";
  world.loop.Advance(1500);
  EXPECT_TRUE(world.journal.Has("FAILED Load frmTip"));
  EXPECT_TRUE(TipOpen);
  EXPECT_FALSE(world.Frame().TimerOf("timerTips").enabled);
}

TEST_F(TipTest, AMenusTipThatCannotBeLoadedSaysNothing) {
  world.Start();
  world.journal.failOn = "Load frmTip";
  world.Choose("mnuTip");
  EXPECT_FALSE(TipOpen);
  world.journal.failOn.clear();
  world.Choose("mnuTip");
  EXPECT_EQ(Tips(), 1);
}

TEST_F(TipTest, AFailingStepOfItsLoadLeavesTheStepsBehindIt) {
  world.Start();
  world.Choose("mnuTip");
  const Lines clean = world.journal.lines;
  for (std::size_t step = 1; step < clean.size(); ++step) {
    MenuWorld broken;
    broken.Start();
    broken.journal.failAt = broken.journal.calls + static_cast<long>(step) + 1;
    broken.Choose("mnuTip");
    Lines expected = clean;
    expected[step] = "FAILED " + expected[step];
    EXPECT_EQ(broken.journal.lines, expected);
    EXPECT_TRUE(TipOpen) << clean[step];
  }
}

TEST_F(TipTest, ItGoesWithTheProgram) {
  world.Start();
  world.Choose("mnuTip");
  world.Frame().Close(UnloadMode::ControlMenu);
  EXPECT_FALSE(world.forms.IsLoaded("frmTip"));
  EXPECT_FALSE(TipOpen);
}

TEST_F(TipTest, ItsWindowIsTakenAwayWithTheFramesObject) {
  world.Start();
  world.Choose("mnuTip");
  world.frame->ShowBannerFree("Support", "/support.asp");
  world.frame.reset();
  EXPECT_FALSE(world.forms.IsLoaded("frmTip"));
  EXPECT_FALSE(world.forms.IsLoaded("BannerFree"));
}

TEST_F(TipTest, AWindowWithoutBarsFillsItselfWithItsPage) {
  world.Start();
  world.frame->ShowBannerFree("Banner Free", "/bannerfree/");
  const Lines expected = {"Load BannerFree", "BannerFree.WebBrowser1.Move 0,0,15000,9000",
                          "BannerFree.Visible = True", "BannerFree.Caption = \"Banner Free\"",
                          "BannerFree.WebBrowser1.Navigate \"" + kSite + "/bannerfree/\""};
  EXPECT_EQ(world.journal.lines, expected);
}

TEST_F(TipTest, EachIsANewWindow) {
  world.Start();
  world.frame->ShowBannerFree("Banner Free", "/bannerfree/");
  const auto first = world.forms.byName.at("BannerFree");
  world.frame->ShowBannerFree("Support", "/support.asp");
  EXPECT_EQ(first->caption, "Banner Free");
  EXPECT_EQ(world.forms.Of("BannerFree").caption, "Support");
  EXPECT_EQ(world.forms.Of("BannerFree").ViewOf("WebBrowser1").shown, kSite + "/support.asp");
  first->Close(UnloadMode::ControlMenu);
  EXPECT_TRUE(world.forms.IsLoaded("BannerFree"));
}

TEST_F(TipTest, AFailingStepOfAWindowWithoutBarsLeavesTheStepsBehindIt) {
  world.Start();
  world.frame->ShowBannerFree("Support", "/support.asp");
  const Lines clean = world.journal.lines;
  for (std::size_t step = 1; step < clean.size(); ++step) {
    MenuWorld broken;
    broken.Start();
    broken.journal.failAt = broken.journal.calls + static_cast<long>(step) + 1;
    broken.frame->ShowBannerFree("Support", "/support.asp");
    Lines expected = clean;
    expected[step] = "FAILED " + expected[step];
    EXPECT_EQ(broken.journal.lines, expected);
  }
  MenuWorld none;
  none.Start();
  none.journal.failOn = "Load BannerFree";
  EXPECT_THROW(none.frame->ShowBannerFree("Support", "/support.asp"), PlatformError);
}

}  // namespace
}  // namespace kivandra
