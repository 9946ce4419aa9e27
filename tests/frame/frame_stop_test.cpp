// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "fakes/whole_program.h"

namespace kivandra {
namespace {

struct FrameStopTest : testing::Test {
  fakes::WholeProgram world;

  FrameStopTest() {
    world.StartAsUsual();
    world.PassStartUp();
    world.journal.Clear();
  }
};

TEST_F(FrameStopTest, PlaysWaitsReleasesAndClosesInThisOrder) {
  const long begin = world.loop.Now();
  EXPECT_TRUE(world.Frame().Close(UnloadMode::ControlMenu));
  EXPECT_EQ(world.loop.Now() - begin, 3000);
  const std::vector<std::string> expected = {
      "frmMain.Unload",
      "sndPlaySoundA \"/program/shutdowninprocess.wav\", 3",
      "frmMain.CloseMe.Enabled = True",
      "frmMain.CloseMe.Enabled = False",
      "InternetSetOptionA 42",
      "CloseHandle 77",
      "frmMain.BonusBar.Bonus Bar.AddressBar.Custom = Nothing",
      "frmMain.BonusBar.MainBar.Spacer.Custom = Nothing",
      "frmMain.BonusBar.MainBar.LogoBox.Custom = Nothing",
      "frmMain.BonusBar.MainBar.Banner.Custom = Nothing",
      "frmBrowser#1.Unload",
  };
  auto lines = world.journal.lines;
  ASSERT_GE(lines.size(), expected.size());
  lines.resize(expected.size());
  EXPECT_EQ(lines, expected);
  EXPECT_TRUE(world.forms.Loaded().empty());
  EXPECT_EQ(InstanceMutex, 0U);
}

TEST_F(FrameStopTest, ClosesEveryWindowTheLastOneFirst) {
  world.forms.Load("frmPassword");
  world.Frame().Close(UnloadMode::ControlMenu);
  EXPECT_LT(world.journal.Index("frmPassword.Unload"), world.journal.Index("frmBrowser#1.Unload"));
  EXPECT_TRUE(world.forms.Loaded().empty());
}

TEST_F(FrameStopTest, WithSoundsOffItIsSilentAndWaitsAllTheSame) {
  SaveItem(world.registry, "Sound", "1");
  const long begin = world.loop.Now();
  world.Frame().Close(UnloadMode::ControlMenu);
  EXPECT_EQ(world.loop.Now() - begin, 3000);
  EXPECT_TRUE(world.journal.With("sndPlaySoundA").empty());
}

TEST_F(FrameStopTest, PagesGoOnWorkingWhileItWaits) {
  world.loop.After(1000, [&] { world.Browser().ShowPage("http://page.example/", "A page"); });
  world.Frame().Close(UnloadMode::ControlMenu);
  EXPECT_TRUE(world.journal.Has("frmBrowser#1.Caption = \"A page\""));
}

TEST_F(FrameStopTest, TheMutexIsHeldUntilTheWaitIsOver) {
  world.loop.After(2999, [&] { EXPECT_EQ(InstanceMutex, 77U); });
  world.Frame().Close(UnloadMode::ControlMenu);
  EXPECT_EQ(InstanceMutex, 0U);
}

TEST_F(FrameStopTest, ASecondCloseRequestWaitsItsTurnInsideTheFirst) {
  const long begin = world.loop.Now();
  world.loop.After(1000, [&] { world.Frame().Close(UnloadMode::ControlMenu); });
  world.Frame().Close(UnloadMode::ControlMenu);
  EXPECT_EQ(world.loop.Now() - begin, 3000);
  EXPECT_EQ(world.journal.Count("CloseHandle 77"), 1);
  EXPECT_TRUE(world.forms.Loaded().empty());
}

TEST_F(FrameStopTest, NothingCanStopTheClosing) {
  // The sweep: whatever single call fails, the frame closes and the mutex is given up.
  fakes::WholeProgram clean;
  clean.StartAsUsual();
  clean.PassStartUp();
  clean.journal.calls = 0;
  clean.Frame().Close(UnloadMode::ControlMenu);
  const long calls = clean.journal.calls;
  for (long call = 2; call <= calls; ++call) {
    fakes::WholeProgram broken;
    broken.StartAsUsual();
    broken.PassStartUp();
    broken.journal.calls = 0;
    broken.journal.failAt = call;
    broken.Frame().Close(UnloadMode::ControlMenu);
    EXPECT_FALSE(broken.forms.IsLoaded("frmMain")) << "call " << call;
    EXPECT_EQ(InstanceMutex, 0U) << "call " << call;
  }
}

}  // namespace
}  // namespace kivandra
