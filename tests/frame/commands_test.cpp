// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "fakes/whole_program.h"
#include "hosts.h"

namespace kivandra {
namespace {

const std::string kHelpPage = "http://" + std::string(hosts::kProductSite) + "/help/";

struct FrameCommandsTest : testing::Test {
  fakes::WholeProgram world;

  FrameCommandsTest() {
    world.StartAsUsual();
    world.PassStartUp();
    world.journal.Clear();
  }
};

TEST_F(FrameCommandsTest, F1OpensTheHelpInTheActiveWindow) {
  world.keyboard.Press(kKeyF1);
  EXPECT_TRUE(world.journal.Has("frmBrowser#1.brwWebBrowser.Navigate \"" + kHelpPage + "\""));
}

TEST_F(FrameCommandsTest, F1WithoutAWindowDoesNothing) {
  world.Child().Close(UnloadMode::ControlMenu);
  world.journal.Clear();
  world.keyboard.Press(kKeyF1);
  EXPECT_TRUE(world.journal.lines.empty());
}

TEST_F(FrameCommandsTest, F1CountsWithAnyModifierAndGoesOnToThePage) {
  for (int shift = 0; shift < 8; ++shift) {
    world.journal.Clear();
    EXPECT_FALSE(world.keyboard.Press(kKeyF1, shift));
    EXPECT_TRUE(world.journal.Has("frmBrowser#1.brwWebBrowser.Navigate \"" + kHelpPage + "\"")) << shift;
  }
}

TEST_F(FrameCommandsTest, ReleasingF1DoesNothing) {
  world.keyboard.Press(kKeyF1, 0, /*up=*/true);
  EXPECT_TRUE(world.journal.lines.empty());
}

TEST_F(FrameCommandsTest, AnAddressChosenFromTheFramesListIsOpenedLikeATypedOne) {
  world.Frame().ComboOf("TheAddress").text = "http://www.otters.org";
  world.Frame().ComboOf("TheAddress").click();
  EXPECT_TRUE(world.journal.Has("frmBrowser#1.brwWebBrowser.Navigate \"http://www.otters.org\""));
}

TEST_F(FrameCommandsTest, OtherKeysOpenNothing) {
  world.keyboard.Press('H');
  EXPECT_TRUE(world.journal.With("Navigate").empty());
}

TEST_F(FrameCommandsTest, HomeSaysNothingWhenTheStoreFails) {
  world.registry.failAt = world.registry.calls + 1;
  world.Click("MainBar", "Home");
  EXPECT_TRUE(world.journal.With("Navigate").empty());
}

TEST_F(FrameCommandsTest, ATimerThatCannotBeSwitchedOffIsPassedOver) {
  fakes::WholeProgram fresh;
  fresh.journal.failOn = "frmMain.StartUp.Enabled = False";
  fresh.StartAsUsual();
  EXPECT_NO_THROW(fresh.loop.Advance(5000));
  EXPECT_TRUE(fresh.journal.Has("FAILED frmMain.StartUp.Enabled = False"));
}

}  // namespace
}  // namespace kivandra
