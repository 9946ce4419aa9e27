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

TEST_F(FrameCommandsTest, F1WithoutAWindowOpensTheHelpInANewOne) {
  world.Child().Close(UnloadMode::ControlMenu);
  world.keyboard.Press(kKeyF1);
  const std::vector<std::string> expected = {
      "frmBrowser#2.brwWebBrowser.Navigate \"\"",
      "frmBrowser#2.brwWebBrowser.Navigate \"" + std::string(hosts::kProductHome) + "\"",
      "frmBrowser#2.brwWebBrowser.Navigate \"" + kHelpPage + "\""};
  EXPECT_EQ(world.journal.With("brwWebBrowser.Navigate"), expected);
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
