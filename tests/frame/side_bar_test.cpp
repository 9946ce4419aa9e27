// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "frame/frame_world.h"

namespace kivandra {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string kChecked = "frmMain.Menu.mnuSidebar.Checked = ";
const std::string kVisible = "frmMain.BonusBar.SideBar.Visible = ";
const std::string kWidth = "frmBrowser#1.Width = ";
const std::string kHeight = "frmBrowser#1.Height = ";
const std::string kCascade = "frmMain.MDIClient.SendMessageA 551, 0, 0";

struct SideBarTest : testing::Test {
  FrameWorld world;

  SideBarTest() {
    world.Frame().width = 21000;
    world.Frame().height = 15000;
    world.Frame().scaleWidth = 20000;
    world.Frame().scaleHeight = 12000;
    Bar("SideBar").width = 1815;
    Bar("MainBar").height = 1200;
  }
  fakes::FakeBarControl::FakeBand& Bar(const std::string& name) {
    return *world.Frame().BarsOf("BonusBar").bands.at(name);
  }
  void Toggle() {
    world.journal.Clear();
    world.Frame().MenusOf("Menu").Choose("mnuSidebar");
  }
  [[nodiscard]] bool Checked() { return world.Frame().MenusOf("Menu").Checked("mnuSidebar"); }
};

TEST_F(SideBarTest, ShowsTheBarAndFitsTheChildBesideIt) {
  Toggle();
  EXPECT_THAT(world.journal.lines,
              ElementsAre(kChecked + "True", kVisible + "True", kWidth + "17885", kHeight + "10800"));
  EXPECT_EQ(world.Setting("Sidebar"), "True");
}

TEST_F(SideBarTest, HidesTheBarAndWidensTheChildButLeavesItsHeight) {
  Toggle();
  Toggle();
  EXPECT_THAT(world.journal.lines, ElementsAre(kChecked + "False", kVisible + "False", kWidth + "19800"));
  EXPECT_EQ(world.Setting("Sidebar"), "False");
}

TEST_F(SideBarTest, WithAMaximisedChildHidingCascadesAndTriesAgain) {
  Toggle();
  world.Child().windowState = WindowState::Maximized;
  world.journal.watch = [this](const std::string& line) {
    if (line == kCascade) {
      world.Child().windowState = WindowState::Normal;  // what the area does to its children
    }
  };
  Toggle();
  EXPECT_THAT(world.journal.lines, ElementsAre(kChecked + "False", kVisible + "False", kCascade,
                                               kWidth + "19800", kHeight + "13800"));
}

TEST_F(SideBarTest, AChildThatStaysMaximisedEndsTheHiding) {
  Toggle();
  world.Child().windowState = WindowState::Maximized;
  EXPECT_NO_THROW(Toggle());
  EXPECT_THAT(world.journal.lines, ElementsAre(kChecked + "False", kVisible + "False", kCascade));
  EXPECT_EQ(world.Setting("Sidebar"), "False");
}

TEST_F(SideBarTest, WithAMaximisedChildShowingEndsAtTheWidthWithoutACascade) {
  world.Child().windowState = WindowState::Maximized;
  EXPECT_NO_THROW(Toggle());
  EXPECT_THAT(world.journal.lines, ElementsAre(kChecked + "True", kVisible + "True"));
  EXPECT_EQ(world.Setting("Sidebar"), "True");
  EXPECT_TRUE(Checked());
}

TEST_F(SideBarTest, WithoutAChildNothingHappensAtAll) {
  world.CloseChild();
  Toggle();
  EXPECT_THAT(world.journal.lines, IsEmpty());
  EXPECT_FALSE(Checked());
  EXPECT_EQ(world.Setting("Sidebar"), "");
}

TEST_F(SideBarTest, ItsStateComesBackAtTheNextStart) {
  Toggle();
  world.Frame().Close(UnloadMode::ControlMenu);
  world.StartAgain();
  EXPECT_TRUE(Checked());
  EXPECT_TRUE(Bar("SideBar").visible);
}

TEST_F(SideBarTest, HiddenItStaysHiddenAtTheNextStart) {
  Toggle();
  Toggle();
  world.Frame().Close(UnloadMode::ControlMenu);
  world.StartAgain();
  EXPECT_FALSE(Checked());
  EXPECT_FALSE(Bar("SideBar").visible);
}

TEST_F(SideBarTest, AStartWithoutTheSettingHidesAndUnchecksIt) {
  EXPECT_FALSE(Checked());
  EXPECT_FALSE(Bar("SideBar").visible);
}

TEST_F(SideBarTest, AFailureEndsTheShowingWhereItStands) {
  const std::vector<std::string> steps = {kChecked + "True", kVisible + "True", kWidth + "17885",
                                          kHeight + "10800"};
  for (std::size_t failing = 0; failing < steps.size(); ++failing) {
    FrameWorld broken;
    broken.Frame().scaleWidth = 20000;
    broken.Frame().scaleHeight = 12000;
    broken.Frame().BarsOf("BonusBar").bands.at("SideBar")->width = 1815;
    broken.Frame().BarsOf("BonusBar").bands.at("MainBar")->height = 1200;
    broken.journal.failOn = steps[failing];
    EXPECT_NO_THROW(broken.Frame().MenusOf("Menu").Choose("mnuSidebar"));
    std::vector<std::string> expected(steps.begin(), steps.begin() + static_cast<std::ptrdiff_t>(failing));
    expected.push_back("FAILED " + steps[failing]);
    EXPECT_EQ(broken.journal.lines, expected);
  }
}

TEST_F(SideBarTest, AStoreThatFailsEndsItBeforeTheChildIsFitted) {
  world.registry.failAt = world.registry.calls + 1;
  EXPECT_NO_THROW(Toggle());
  EXPECT_THAT(world.journal.lines, ElementsAre(kChecked + "True", kVisible + "True"));
}

}  // namespace
}  // namespace kivandra
