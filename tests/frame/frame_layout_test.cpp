// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "frame/frame_world.h"

namespace kivandra {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct FrameLayoutTest : testing::Test {
  FrameWorld world;

  FrameLayoutTest() {
    for (const char* tool : {"Back", "Forward", "Refresh", "Home", "Stop", "Print", "Lock"}) {
      Main(tool).data.width = 930;
    }
    Main("Tool68").data.width = 90;
    Main("Banner").data.width = 3000;
    Main("LogoBox").data.width = 1000;
    world.Frame().FindControl("Logo", ControlKind::PictureBox);
    Logo().width = 960;
    for (const char* tool : {"Find", "Tools", "Help"}) {
      Bonus(tool).data.width = 1100;
    }
    for (const char* tool : {"sep1", "sep2", "sep3", "sep4", "sep5"}) {
      Bonus(tool).data.width = 90;
    }
    Bonus("btnGo").data.width = 420;
    world.Frame().scaleWidth = 20000;
  }

  fakes::FakeBarControl::FakeTool& Main(const std::string& tool) { return world.ToolOf("MainBar", tool); }
  fakes::FakeBarControl::FakeTool& Bonus(const std::string& tool) { return world.ToolOf("Bonus Bar", tool); }
  fakes::FakePictureBox& Logo() {
    return world.Frame().Fetch<fakes::FakePictureBox>("Logo", ControlKind::PictureBox);
  }
  void Resize(Twips innerWidth) {
    world.Frame().scaleWidth = innerWidth;
    world.journal.Clear();
    world.Frame().events->Form_Resize();
  }
  /// The widths of all tools of both bars.
  std::map<std::string, Twips> Widths() {
    std::map<std::string, Twips> widths;
    for (const char* band : {"MainBar", "Bonus Bar"}) {
      for (const auto& [name, tool] : world.Frame().BarsOf("BonusBar").bands.at(band)->tools) {
        widths[band + ("." + name)] = tool->data.width;
      }
    }
    return widths;
  }
};

// The fixed tools: 7 * 930 + 90 = 6600; 2895 + 1800 + 3 * 1100 + 5 * 90 + 7 * 420 = 11385.
constexpr Twips kSpacerAt20000 = 20000 - (3000 + 960 + 6600) - 1000 + 60;
constexpr Twips kAddressAt20000 = 20000 - 11385 + 270;

TEST_F(FrameLayoutTest, BothBarsFillTheFrameStepByStep) {
  Resize(20000);
  EXPECT_THAT(
      world.journal.lines,
      ElementsAre("frmMain.BonusBar.MainBar.Width = 20000", "frmMain.BonusBar.MainBar.Spacer.Width = 9440",
                  "frmMain.BonusBar.MainBar.Spacer.Width = 8500", "frmMain.BonusBar.Bonus Bar.Width = 20000",
                  "frmMain.BonusBar.Bonus Bar.AddressBar.Width = 8885"));
  EXPECT_EQ(Main("Spacer").data.width, kSpacerAt20000);
  EXPECT_EQ(Bonus("AddressBar").data.width, kAddressAt20000);
}

TEST_F(FrameLayoutTest, AMinimisedFrameLeavesTheBarsAlone) {
  world.Frame().windowState = WindowState::Minimized;
  const auto before = Widths();
  Resize(30000);
  EXPECT_THAT(world.journal.lines, IsEmpty());
  EXPECT_EQ(Widths(), before);
}

TEST_F(FrameLayoutTest, AMaximisedFrameIsLaidOutLikeAnyOther) {
  world.Frame().windowState = WindowState::Maximized;
  Resize(20000);
  EXPECT_EQ(Main("Spacer").data.width, kSpacerAt20000);
}

TEST_F(FrameLayoutTest, AWiderFrameWidensTheSpacerAndTheAddressBarAlone) {
  Resize(20000);
  auto expected = Widths();
  Resize(25000);
  expected["MainBar.Spacer"] += 5000;
  expected["Bonus Bar.AddressBar"] += 5000;
  EXPECT_EQ(Widths(), expected);
}

TEST_F(FrameLayoutTest, AFrameNarrowerThanItsToolsGivesNegativeWidths) {
  Resize(1000);
  EXPECT_EQ(Main("Spacer").data.width, kSpacerAt20000 - 19000);
  EXPECT_EQ(Bonus("AddressBar").data.width, kAddressAt20000 - 19000);
  EXPECT_LT(Main("Spacer").data.width, 0);
  Resize(0);
  EXPECT_EQ(Main("Spacer").data.width, kSpacerAt20000 - 20000);
}

TEST_F(FrameLayoutTest, TheSearchBoxKeepsItsWidth) {
  for (const Twips width : {0L, 5000L, 20000L, 40000L, 3000000L}) {
    Resize(width);
    EXPECT_EQ(Bonus("SearchCriteria").data.width, 193 * 15);
  }
}

TEST_F(FrameLayoutTest, ASecondResizeAtTheSameWidthChangesNothing) {
  Resize(20000);
  const auto once = Widths();
  Resize(20000);
  EXPECT_EQ(Widths(), once);
}

TEST_F(FrameLayoutTest, AVeryWideFrameIsNoOverflow) {
  Resize(500000);
  EXPECT_EQ(Main("Spacer").data.width, kSpacerAt20000 + 480000);
  EXPECT_EQ(Bonus("AddressBar").data.width, kAddressAt20000 + 480000);
}

TEST_F(FrameLayoutTest, ASumOf32767StillFits) {
  Main("Back").data.width += 32767 - 6600;
  Bonus("Find").data.width += 32767 - 11385;
  Resize(20000);
  EXPECT_EQ(Main("Spacer").data.width, kSpacerAt20000 - (32767 - 6600));
  EXPECT_EQ(Bonus("AddressBar").data.width, kAddressAt20000 - (32767 - 11385));
}

TEST_F(FrameLayoutTest, AnOverflowInTheFirstSumEndsItQuietlyAndKeepsWhatIsSet) {
  Resize(20000);
  Main("Back").data.width += 32768 - 6600;
  Resize(25000);
  EXPECT_THAT(world.journal.lines, ElementsAre("frmMain.BonusBar.MainBar.Width = 25000"));
  EXPECT_EQ(Bonus("AddressBar").data.width, kAddressAt20000);
}

TEST_F(FrameLayoutTest, AnOverflowInTheSecondSumEndsItQuietlyAndKeepsWhatIsSet) {
  Resize(20000);
  Bonus("btnGo").data.width = 5000;  // seven times of it are too much
  Resize(25000);
  EXPECT_EQ(Main("Spacer").data.width, kSpacerAt20000 + 5000);
  EXPECT_TRUE(world.journal.Has("frmMain.BonusBar.Bonus Bar.Width = 25000"));
  EXPECT_EQ(Bonus("AddressBar").data.width, kAddressAt20000);
}

TEST_F(FrameLayoutTest, ARunningSumThatOverflowsIsAFailureEvenIfTheWholeWouldFit) {
  Main("Back").data.width = 32767;
  Main("Tool68").data.width = -20000;
  Resize(20000);
  EXPECT_THAT(world.journal.lines, ElementsAre("frmMain.BonusBar.MainBar.Width = 20000"));
}

TEST_F(FrameLayoutTest, TheNextResizeTriesAgain) {
  Main("Back").data.width = 40000;
  Resize(25000);
  Main("Back").data.width = 930;
  Resize(20000);
  EXPECT_EQ(Main("Spacer").data.width, kSpacerAt20000);
  EXPECT_EQ(Bonus("AddressBar").data.width, kAddressAt20000);
}

TEST_F(FrameLayoutTest, AFailureKeepsTheStepsBeforeItAndNoneBehindIt) {
  // The sweep over all five changes.
  const std::vector<std::string> steps = {
      "frmMain.BonusBar.MainBar.Width = 20000", "frmMain.BonusBar.MainBar.Spacer.Width = 9440",
      "frmMain.BonusBar.MainBar.Spacer.Width = 8500", "frmMain.BonusBar.Bonus Bar.Width = 20000",
      "frmMain.BonusBar.Bonus Bar.AddressBar.Width = 8885"};
  for (std::size_t failing = 0; failing < steps.size(); ++failing) {
    world.journal.failOn = steps[failing];
    EXPECT_NO_THROW(Resize(20000));
    std::vector<std::string> expected(steps.begin(), steps.begin() + static_cast<std::ptrdiff_t>(failing));
    expected.push_back("FAILED " + steps[failing]);
    EXPECT_EQ(world.journal.lines, expected);
  }
}

TEST_F(FrameLayoutTest, TouchesNoSetting) {
  const long before = world.registry.calls;
  Resize(20000);
  EXPECT_EQ(world.registry.calls, before);
}

TEST_F(FrameLayoutTest, AResizeBeforeTheBarsAreLaidIsQuiet) {
  fakes::WholeProgram fresh;
  fresh.journal.failOn = "frmMain.BonusBar.Lay";
  fresh.boxes.Expect("5 - injected fault");
  fresh.StartAsUsual();
  EXPECT_NO_THROW(fresh.Frame().events->Form_Resize());
}

}  // namespace
}  // namespace kivandra
