// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/sub_main.h"

#include <gtest/gtest.h>

#include "core/instance.h"
#include "fakes/fake_world.h"

namespace kivandra {
namespace {

struct NoGrant : SessionGrant {
  [[nodiscard]] bool SessionAllowPending() const override { return pending; }
  void ClearSessionAllowPending() override { pending = false; }
  void AllowBlockedURL() override {}
  bool pending = true;
};

struct SubMainTest : testing::Test {
  fakes::FakeWorld world;
  NoGrant grant;

  void Run() {
    SubMain({world.files, world.instance, world.system, grant,
             [this] { world.journal.Call("start Application"); }});
  }
};

TEST_F(SubMainTest, StartsFromFreshValues) {
  PasswordOpen = OptionsOpen = NavigationOpen = TipOpen = FindDialogOpen = true;
  SettingNames.fill("");
  Run();
  EXPECT_FALSE(PasswordOpen || OptionsOpen || NavigationOpen || TipOpen || FindDialogOpen || grant.pending);
  const std::array<std::string, 15> names = {"D_B",  "D_EM", "F_C",   "No_Sw",   "O_RA",
                                             "P_IE", "P_NS", "R_N",   "T_OD",    "T_PW",
                                             "B_B",  "POP",  "Sound", "Sidebar", "FirstTime"};
  EXPECT_EQ(SettingNames, names);
}

TEST_F(SubMainTest, TheFirstInstanceStartsTheApplication) {
  Run();
  const std::vector<std::string> expected = {"Kill \"/program/browser_update.exe\"",
                                             "CreateMutexA \"KVDBROWSERAPP_APPLICATION_MUTEX\", owner",
                                             "start Application"};
  EXPECT_EQ(world.journal.lines, expected);
  EXPECT_EQ(InstanceMutex, 77U);
}

TEST_F(SubMainTest, ALaterInstanceDeletesTheOldUpdateAndEndsWithoutAWord) {
  world.instance.taken = true;
  world.files.files["/program/browser_update.exe"] = "old";
  Run();
  const std::vector<std::string> expected = {"Kill \"/program/browser_update.exe\"",
                                             "CreateMutexA \"KVDBROWSERAPP_APPLICATION_MUTEX\", owner",
                                             "CloseHandle 77", "EnumWindows"};
  EXPECT_EQ(world.journal.lines, expected);
}

TEST_F(SubMainTest, ALaterInstanceWithAnAddressEndsTheSameWay) {
  world.instance.taken = true;
  world.system.commandLine = "http://site.example/";
  world.instance.marks = {{5, 0}, {6, 2}};
  Run();
  EXPECT_TRUE(world.journal.With("SendMessage").empty());
  EXPECT_TRUE(world.journal.With("SetForegroundWindow").empty());
  EXPECT_EQ(RunningFrameHandle, 0U);
}

TEST_F(SubMainTest, AnyFailingStepLeavesTheRest) {
  for (long fault = 1; fault <= 3; ++fault) {
    fakes::FakeWorld fresh;
    fresh.journal.failAt = fault;
    SubMain(
        {fresh.files, fresh.instance, fresh.system, grant, [&] { fresh.journal.Call("start Application"); }});
    EXPECT_EQ(fresh.journal.lines.size(), 3U) << "fault " << fault;
  }
}

struct RunningFrameTest : testing::Test {
  fakes::FakeWorld world;
  void HandOver() { HandOverToRunningFrame(world.instance, world.system); }
};

TEST_F(RunningFrameTest, TakesTheFirstWindowWhoseMarkIsExactlyOne) {
  world.instance.marks = {{3, 0}, {4, 2}, {5, 1}, {6, 1}};
  FindRunningFrame(world.instance);
  EXPECT_EQ(RunningFrameHandle, 5U);
  EXPECT_TRUE(world.journal.Has("GetPropA 5, \"KVDBROWSERAPP_APPLICATION\""));
  EXPECT_FALSE(world.journal.Has("GetPropA 6, \"KVDBROWSERAPP_APPLICATION\""));
}

TEST_F(RunningFrameTest, SendsItsCommandLine) {
  world.instance.marks = {{5, 1}};
  world.system.commandLine = "http://site.example/ñ";
  HandOver();
  EXPECT_TRUE(world.journal.Has("SendMessageTimeoutA 5, 74, 0, 0, 5000"));
  EXPECT_EQ(world.instance.sent.bytes, "http://site.example/ñ");
  EXPECT_EQ(world.instance.sent.dwData, 0U);
}

TEST_F(RunningFrameTest, SendsOneZeroByteToAHiddenFrame) {
  world.instance.marks = {{5, 1}};
  world.instance.windowVisible = false;
  HandOver();
  EXPECT_EQ(world.instance.sent.bytes, std::string(1, '\0'));
}

TEST_F(RunningFrameTest, BringsAVisibleFrameToTheFront) {
  world.instance.marks = {{5, 1}};
  HandOver();
  EXPECT_TRUE(world.journal.Has("SetForegroundWindow 5"));
  EXPECT_TRUE(world.journal.With("SendMessage").empty());
}

TEST_F(RunningFrameTest, RestoresAMinimisedFrameFirst) {
  world.instance.marks = {{5, 1}};
  world.instance.windowIconic = true;
  HandOver();
  EXPECT_LT(world.journal.Index("SendMessageA 5, 274, 61728, 0"),
            world.journal.Index("SetForegroundWindow 5"));
  EXPECT_TRUE(world.journal.Has("SendMessageA 5, 274, 61728, 0"));
}

TEST_F(RunningFrameTest, TheDeadTestOfAPreviousInstanceIsBuiltAllTheSame) {
  UsePrevInstanceTest = true;
  world.instance.previous = true;
  EXPECT_FALSE(IsFirstInstance(world.instance, "name"));
  world.instance.previous = false;
  EXPECT_TRUE(IsFirstInstance(world.instance, "name"));
  EXPECT_TRUE(world.journal.lines.empty());
}

}  // namespace
}  // namespace kivandra
