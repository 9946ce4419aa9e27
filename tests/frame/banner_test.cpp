// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "frame/menu_world.h"
#include "hosts.h"

namespace kivandra {
namespace {

using Lines = std::vector<std::string>;

const std::string kSite = "http://" + std::string(hosts::kProductSite);
const std::string kAd = "http://toys.example/";
const std::string kBrowser = "frmBrowser#1.brwWebBrowser.";

struct BannerTest : testing::Test {
  MenuWorld world;

  /// What the engine is handed for a new window that the banner asks for.
  WebBrowser* NewWindow() {
    WebBrowser* given = nullptr;
    bool cancel = false;
    world.BannerControl().events->NewWindow2(given, cancel);
    EXPECT_FALSE(cancel);
    return given;
  }
};

TEST_F(BannerTest, ABannersOwnPagesStayInTheBanner) {
  world.Start();
  for (const std::string path : {"/banners/banner1.html", "/banners/more/banner2.html?x=1", "/bannersale"}) {
    world.journal.Clear();
    EXPECT_TRUE(world.BannerControl().Ask(kSite + path)->Allowed()) << path;
    EXPECT_EQ(world.journal.lines, Lines{"allow " + kSite + path});
  }
}

TEST_F(BannerTest, ThePlaceOfTheBannersCountsAnywhereInTheAddress) {
  world.Start();
  EXPECT_TRUE(
      world.BannerControl().Ask("https://" + std::string(hosts::kProductSite) + "/banners/")->Allowed());
  EXPECT_TRUE(world.BannerControl()
                  .Ask("http://counter.example/?from=" + std::string(hosts::kProductSite) + "/banners")
                  ->Allowed());
}

TEST_F(BannerTest, CapitalsAndOtherPagesOfTheSiteAreNoBanners) {
  world.Start();
  for (const std::string& url : {kSite + "/Banners/banner1.html", kSite + "/sponsor.asp", kSite + "/", kAd,
                                 std::string("about:blank"), std::string()}) {
    EXPECT_FALSE(world.BannerControl().Ask(url)->Allowed()) << url;
  }
}

TEST_F(BannerTest, AClickOpensItsTargetInTheWindowThatIsRead) {
  world.Start();
  EXPECT_FALSE(world.BannerControl().Ask(kAd)->Allowed());
  const Lines expected = {"refuse " + kAd, kBrowser + "SetFocus", kBrowser + "Navigate \"" + kAd + "\""};
  auto lines = world.journal.lines;
  ASSERT_GE(lines.size(), expected.size());
  lines.resize(expected.size());
  EXPECT_EQ(lines, expected);
  EXPECT_FALSE(world.forms.IsLoaded("frmBrowser#2"));
}

TEST_F(BannerTest, AClicksTargetIsJudgedAndMayBeBlocked) {
  world.Start();
  world.BannerControl().Ask(kAd);
  ASSERT_TRUE(world.inet1.Waits(kAd));
  world.inet1.Answer(kAd, "some porn");
  EXPECT_EQ(world.journal.Count("refuse " + kAd), 2);  // once in the banner, once in the window
  EXPECT_EQ(BlockedURL, kAd);

  world.BannerControl().Ask("http://www.porn.org");
  EXPECT_EQ(BlockedURL, "http://www.porn.org");
  EXPECT_FALSE(world.journal.Has("FetchPage \"http://www.porn.org\""));
}

TEST_F(BannerTest, AClickWithoutAWindowLeadsNowhere) {
  world.StartWithoutChild();
  EXPECT_FALSE(world.BannerControl().Ask(kAd)->Allowed());
  EXPECT_EQ(world.journal.lines, Lines{"refuse " + kAd});
}

TEST_F(BannerTest, AFailingStepOfAClickLeavesTheOthers) {
  world.Start();
  world.journal.failOn = kBrowser + "SetFocus";
  world.BannerControl().Ask(kAd);
  EXPECT_TRUE(world.journal.Has(kBrowser + "Navigate \"" + kAd + "\""));
  world.journal.failOn = kBrowser + "Navigate \"" + kAd + "\"";
  EXPECT_NO_THROW(world.BannerControl().Ask(kAd));
  EXPECT_EQ(world.journal.With("allow").size(), 0U);
}

TEST_F(BannerTest, ANewWindowLandsInTheWindowThatIsRead) {
  world.Start();
  EXPECT_EQ(NewWindow(), &world.Browser());
  EXPECT_TRUE(world.journal.lines.empty());
}

TEST_F(BannerTest, ANewWindowWithoutAWindowMakesOne) {
  world.StartWithoutChild();
  WebBrowser* given = NewWindow();
  EXPECT_EQ(given, &world.Browser(2));
  EXPECT_TRUE(world.Child(2).visible);
  EXPECT_EQ(world.frame->ActiveForm()->Tag(), "");
  // What the engine opens there passes the gate.
  EXPECT_FALSE(world.Browser(2).Ask("http://www.porn.org")->Allowed());
}

TEST_F(BannerTest, AWindowThatCannotBeMadeMeansThatNoneOpens) {
  world.StartWithoutChild();
  world.journal.failOn = "Load frmBrowser";
  EXPECT_EQ(NewWindow(), nullptr);
}

TEST_F(BannerTest, AWindowThatCannotBeShownIsHandedOverAllTheSame) {
  world.StartWithoutChild();
  world.journal.failOn = "frmBrowser#2.Visible = True";
  const WebBrowser* given = NewWindow();
  EXPECT_EQ(given, &world.Browser(2));
}

TEST_F(BannerTest, AWindowThatIsClosedWhileItIsShownIsNotHandedOver) {
  world.StartWithoutChild();
  world.journal.watch = [&](const std::string& line) {
    if (line == "frmBrowser#2.Visible = True") {
      world.Child(2).Close(UnloadMode::ControlMenu);
    }
  };
  EXPECT_EQ(NewWindow(), nullptr);
}

TEST_F(BannerTest, ItsStatusTextStandsInTheFrame) {
  world.Start();
  world.BannerControl().events->StatusTextChange("http://toys.example/");
  EXPECT_EQ(world.journal.lines, Lines{"frmMain.Status.Text = \"http://toys.example/\""});
  world.journal.failOn = "frmMain.Status.Text = \"again\"";
  EXPECT_NO_THROW(world.BannerControl().events->StatusTextChange("again"));
}

TEST_F(BannerTest, WhateverElseHappensInItConcernsNobody) {
  world.Start();
  auto& banner = world.BannerControl();
  banner.ShowPage(kSite + "/banners/banner1.html", "Banner");
  banner.events->CommandStateChange(1, true);
  banner.events->OnVisible(false);
  banner.events->OnQuit();
  banner.events->WindowSetLeft(1);
  banner.events->WindowSetTop(1);
  banner.events->WindowSetWidth(1);
  banner.events->WindowSetHeight(1);
  EXPECT_TRUE(world.journal.lines.empty());
}

TEST_F(BannerTest, TheProgramItselfNeverTurnsItAfterTheStart) {
  world.Start();
  world.loop.Advance(60000);
  EXPECT_TRUE(world.journal.With("brwBanner").empty());
}

TEST_F(BannerTest, ItIsDeafOnceTheFrameHasGone) {
  world.Start();
  auto& banner = world.BannerControl();
  world.Frame().Close(UnloadMode::ControlMenu);
  EXPECT_EQ(banner.events, nullptr);
}

}  // namespace
}  // namespace kivandra
