// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "core/user_settings.h"
#include "fakes/whole_program.h"
#include "hosts.h"

namespace kivandra {
namespace {

const std::string kBannerPage = "http://" + std::string(hosts::kProductSite) + "/banners/banner1.html";
const std::string kFirstRunPage = "http://" + std::string(hosts::kProductSite) + "/onetime.asp";

struct FrameStartTest : testing::Test {
  fakes::WholeProgram world;

  /// The journal from the frame's load to its showing.
  std::vector<std::string> Load() {
    world.StartAsUsual();
    const auto& lines = world.journal.lines;
    const auto from = world.journal.Index("Load frmMain");
    const auto to = world.journal.Index("frmMain.Visible = True");
    EXPECT_GE(from, 0);
    EXPECT_GT(to, from);
    return {lines.begin() + from, lines.begin() + to};
  }
};

TEST_F(FrameStartTest, GoesThroughItsStepsInTheirOrder) {
  const std::vector<std::string> expected = {
      "Load frmMain",
      "frmMain.Menu.Lay",
      "frmMain.BonusBar.Lay",
      "frmMain.BonusBar.SideBar.Visible = False",
      "frmMain.Menu.mnuSidebar.Checked = False",
      "Install hook",
      "frmMain.BonusBar.MainBar.Spacer.Custom = frmMain.TheSpacer",
      "frmMain.BonusBar.Bonus Bar.AddressBar.Custom = frmMain.TheAddress",
      "frmMain.BonusBar.MainBar.Banner.Custom = frmMain.picBannerBorder",
      "frmMain.BonusBar.MainBar.LogoBox.Custom = frmMain.Logo",
      "sndPlaySoundA \"/program/welcome.wav\", 3",
      "frmMain.brwBanner.Navigate \"" + kBannerPage + "\"",
      "allow " + kBannerPage,
      "frmMain.WebBrowser2.Navigate \"/program/smile.gif\"",
      "frmMain.SkinForm1.Property14 = 1",
      "frmMain.SkinForm1.SkinFile = \"/program/winaqua.skn\"",
      "frmMain.brwBanner.Navigate \"" + kBannerPage + "\"",
      "allow " + kBannerPage,
      "frmMain.Caption = \"Kivandra 1.45\"",
      "Load frmBrowser",
  };
  auto lines = Load();
  ASSERT_GE(lines.size(), expected.size());
  lines.resize(expected.size());
  EXPECT_EQ(lines, expected);
}

TEST_F(FrameStartTest, FillsTheFilterBeforeTheFirstChildOpens) {
  world.StartAsUsual();
  EXPECT_EQ(BadWords[1], "porn");
  EXPECT_EQ(BadWords[101], "nUde");
  EXPECT_TRUE(BadWords[102].empty());
  EXPECT_TRUE(AllowedDomains[1].empty());
}

TEST_F(FrameStartTest, TheFirstChildGoesToTheStoredHomePageAndThenThere) {
  SaveSetting(world.registry, "Kivandra", "Home Page", "URL", "http://home.example/");
  world.StartAsUsual();
  const std::vector<std::string> expected = {"frmBrowser#1.brwWebBrowser.Navigate \"http://home.example/\"",
                                             "frmBrowser#1.brwWebBrowser.Navigate \"http://home.example/\""};
  EXPECT_EQ(world.journal.With("brwWebBrowser.Navigate"), expected);
}

TEST_F(FrameStartTest, WithoutAStoredHomePageTheProductsHomeFollowsTheEmptyOne) {
  world.StartAsUsual();
  const std::vector<std::string> expected = {
      "frmBrowser#1.brwWebBrowser.Navigate \"\"",
      "frmBrowser#1.brwWebBrowser.Navigate \"" + std::string(hosts::kProductHome) + "\""};
  EXPECT_EQ(world.journal.With("brwWebBrowser.Navigate"), expected);
}

TEST_F(FrameStartTest, TheFirstStartIsGreetedOnce) {
  SaveItem(world.registry, "T_PW", "Secret");
  world.program.Run();
  EXPECT_EQ(world.Setting("FirstTime"), "1");
  const auto stop = world.journal.Index("frmMain.WebBrowser2.Stop");
  const auto greet = world.journal.Index("frmBrowser#1.brwWebBrowser.Navigate \"" + kFirstRunPage + "\"");
  EXPECT_GE(stop, 0);
  EXPECT_LT(stop, greet);
}

TEST_F(FrameStartTest, TheFirstStartIsMarkedBeforeItsPageIsAskedFor) {
  // The page's navigation fails outright; the mark stands all the same.
  SaveItem(world.registry, "T_PW", "Secret");
  world.journal.failOn = "frmBrowser#1.brwWebBrowser.Navigate \"" + kFirstRunPage + "\"";
  world.boxes.Expect("5 - injected fault");
  world.program.Run();
  EXPECT_TRUE(world.journal.Has("FAILED " + world.journal.failOn));
  EXPECT_EQ(world.Setting("FirstTime"), "1");
}

TEST_F(FrameStartTest, TheFirstChildMayCloseWhileItIsGreeted) {
  SaveItem(world.registry, "T_PW", "Secret");
  world.journal.watch = [&](const std::string& line) {
    if (line == "frmBrowser#1.brwWebBrowser.Navigate \"" + kFirstRunPage + "\"") {
      world.Child().Close(UnloadMode::ControlMenu);
    }
  };
  world.boxes.Expect("91 - Object variable not set");  // there is none to place
  world.program.Run();
  EXPECT_TRUE(world.forms.IsLoaded("frmMain"));
}

TEST_F(FrameStartTest, LaterStartsAreNotGreeted) {
  world.StartAsUsual();
  EXPECT_TRUE(world.journal.With(kFirstRunPage).empty());
}

TEST_F(FrameStartTest, PlacesTheFirstChildOverTheWholeDesk) {
  world.StartAsUsual();
  EXPECT_EQ(world.Child().top, 100);
  EXPECT_EQ(world.Child().left, 100);
  EXPECT_EQ(world.Child().height, world.Frame().scaleHeight - 200);
  EXPECT_EQ(world.Child().width, world.Frame().scaleWidth - 200);
}

TEST_F(FrameStartTest, PlacesTheFirstChildBesideAShownSideBar) {
  SaveItem(world.registry, "Sidebar", "True");
  world.StartAsUsual();
  EXPECT_TRUE(world.journal.Has("frmMain.BonusBar.SideBar.Visible = True"));
  EXPECT_EQ(world.Child().width, world.Frame().width - 0 - 300);
}

TEST_F(FrameStartTest, OnlyTheWordTrueShowsTheSideBar) {
  for (const char* value : {"False", "true", "TRUE", "1", "-1", ""}) {
    fakes::WholeProgram each;
    SaveItem(each.registry, "Sidebar", value);
    each.StartAsUsual();
    EXPECT_TRUE(each.journal.Has("frmMain.BonusBar.SideBar.Visible = False")) << value;
  }
}

TEST_F(FrameStartTest, ATipComesOneAndAHalfSecondsLaterIfTheParentWantsIt) {
  SaveItem(world.registry, "T_OD", "1");
  world.StartAsUsual();
  EXPECT_TRUE(world.Frame().TimerOf("timerTips").enabled);
  world.loop.Advance(1500);
  EXPECT_FALSE(world.Frame().TimerOf("timerTips").enabled);
}

TEST_F(FrameStartTest, NoTipComesWithoutTheSetting) {
  SaveItem(world.registry, "T_OD", "0");
  world.StartAsUsual();
  EXPECT_FALSE(world.Frame().TimerOf("timerTips").enabled);
}

TEST_F(FrameStartTest, NoTipComesWhileOneIsOpen) {
  SaveItem(world.registry, "T_OD", "1");
  world.loop.After(2000, [] { TipOpen = true; });  // during the splash
  world.StartAsUsual();
  EXPECT_FALSE(world.Frame().TimerOf("timerTips").enabled);
}

TEST_F(FrameStartTest, IsSilentWhenSoundsAreOff) {
  SaveItem(world.registry, "Sound", "1");
  world.StartAsUsual();
  EXPECT_TRUE(world.journal.With("sndPlaySoundA").empty());
}

TEST_F(FrameStartTest, IsSilentWithoutADevice) {
  world.sound.devices = 0;
  world.StartAsUsual();
  EXPECT_TRUE(world.journal.With("sndPlaySoundA").empty());
}

TEST_F(FrameStartTest, StartUpSwitchesItselfOffAfterFiveSeconds) {
  world.StartAsUsual();
  EXPECT_TRUE(world.Frame().TimerOf("StartUp").enabled);
  world.loop.Advance(4999);
  EXPECT_TRUE(world.Frame().TimerOf("StartUp").enabled);
  world.loop.Advance(1);
  EXPECT_FALSE(world.Frame().TimerOf("StartUp").enabled);
}

TEST_F(FrameStartTest, AnErrorEndsTheLoadWithOneBoxAndLeavesTheFrame) {
  // The sweep over every call of the load: the frame always comes up, and never with the filter switched off.
  fakes::WholeProgram clean;
  clean.StartAsUsual();
  const long first = clean.journal.Index("Load frmMain");
  const long last = clean.journal.Index("frmMain.Visible = True");
  // From the call behind that of "Load frmMain" on.
  for (long call = first + 2; call <= last; ++call) {
    fakes::WholeProgram broken;
    broken.journal.failAt = call;
    struct Tolerant : MessageBoxes {
      MsgBoxResult MsgBox(const std::string& text, int, const std::string&) override {
        texts.push_back(text);
        return MsgBoxResult::Ok;
      }
      std::vector<std::string> texts;
    } boxes;
    Program program{{broken.forms, broken.loop, boxes, broken.registry, broken.instance, broken.system,
                     broken.files, broken.sound, broken.inet1, broken.clipboard, broken.session,
                     broken.keyboard, broken.shell, broken.inet, broken.defaultApplication}};
    SaveItem(broken.registry, "T_PW", "Secret");
    SaveItem(broken.registry, "F_C", "1");
    SaveItem(broken.registry, "FirstTime", "1");
    program.Run();
    EXPECT_LE(boxes.texts.size(), 1U) << "call " << call;
    const bool shown = broken.forms.IsLoaded("frmMain") && broken.Frame().visible;
    EXPECT_TRUE(shown || broken.journal.Has("FAILED frmMain.Visible = True")) << "call " << call;
    EXPECT_EQ(broken.Setting("F_C"), "1") << "call " << call;
  }
}

TEST_F(FrameStartTest, AnErrorLeavesTheFilterClosed) {
  // The bars can't be laid, the banner can't be shown: either way the five seconds end and the words are
  // there.
  for (const std::string& fault :
       {std::string("frmMain.BonusBar.Lay"), "frmMain.brwBanner.Navigate \"" + kBannerPage + "\""}) {
    fakes::WholeProgram broken;
    broken.journal.failOn = fault;
    broken.boxes.Expect("5 - injected fault");
    broken.StartAsUsual();
    ASSERT_TRUE(broken.journal.Has("FAILED " + fault));
    broken.PassStartUp();
    EXPECT_FALSE(broken.Frame().TimerOf("StartUp").enabled) << fault;
    EXPECT_EQ(BadWords[1], "porn") << fault;
    EXPECT_EQ(BadWords[101], "nUde") << fault;
  }
}

}  // namespace
}  // namespace kivandra
