// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "frame/menu_world.h"

namespace kivandra {
namespace {

using Lines = std::vector<std::string>;

const std::string kDialog = "frmMain.CommonDialog1.";
const std::string kOld = "/program/winaqua.skn";
const std::string kNew = "/program/KVDSkins/meadow.skn";

struct SkinsTest : testing::Test {
  MenuWorld world;

  SkinsTest() { world.Start(); }
  void Choose(const std::string& file) {
    world.Dialog().answer = file;
    world.Choose("mnuskins");
  }
  std::string Stored() { return world.registry.Setting("skin").value_or("none"); }
  std::string SkinOf(const std::string& form) {
    return world.forms.Of(form).Fetch<fakes::FakeSkinForm>("SkinForm1", ControlKind::SkinForm).skinFile;
  }
};

TEST_F(SkinsTest, AChosenSkinDressesTheFrameAtOnceAndIsRemembered) {
  Choose(kNew);
  const Lines expected = {kDialog + "InitDir = \"/program/KVDSkins/\"",
                          kDialog + "Filter = \"KVD Skins (*.skn)|*.skn\"",
                          kDialog + "FilterIndex = 1",
                          kDialog + "Flags = 4100",
                          kDialog + "ShowOpen",
                          "frmMain.SkinForm1.SkinFile = \"" + kNew + "\""};
  EXPECT_EQ(world.journal.lines, expected);
  EXPECT_EQ(SkinFile, kNew);
  EXPECT_EQ(Stored(), kNew);
}

TEST_F(SkinsTest, CancellingChangesNothing) {
  Choose("");
  EXPECT_EQ(SkinFile, kOld);
  EXPECT_EQ(Stored(), "none");
  EXPECT_EQ(SkinOf("frmMain"), kOld);
}

TEST_F(SkinsTest, CancellingAfterAChangeKeepsTheChange) {
  Choose(kNew);
  Choose("");
  EXPECT_EQ(SkinFile, kNew);
  EXPECT_EQ(Stored(), kNew);
}

TEST_F(SkinsTest, ASkinFromAnotherFolderIsRememberedByItsFullPath) {
  Choose("/home/child/my skins/sea.skn");
  EXPECT_EQ(SkinFile, "/home/child/my skins/sea.skn");
  EXPECT_EQ(Stored(), "/home/child/my skins/sea.skn");
}

TEST_F(SkinsTest, AFileThatIsNoSkinIsRememberedAllTheSame) {
  world.journal.failOn = "frmMain.SkinForm1.SkinFile = \"/home/child/broken.skn\"";
  Choose("/home/child/broken.skn");
  EXPECT_TRUE(world.journal.Has("FAILED " + world.journal.failOn));
  EXPECT_EQ(SkinOf("frmMain"), kOld);
  EXPECT_EQ(SkinFile, "/home/child/broken.skn");
  EXPECT_EQ(Stored(), "/home/child/broken.skn");
}

TEST_F(SkinsTest, ATipOpenedLaterWearsTheNewSkinAndAnOpenOneKeepsItsOwn) {
  world.Choose("mnuTip");
  const auto early = world.forms.byName.at("frmTip");
  Choose(kNew);
  EXPECT_EQ(early->Fetch<fakes::FakeSkinForm>("SkinForm1", ControlKind::SkinForm).skinFile, kOld);
  early->Close(UnloadMode::ControlMenu);
  world.Choose("mnuTip");
  EXPECT_EQ(SkinOf("frmTip"), kNew);
}

TEST_F(SkinsTest, PageWindowsNeverChange) {
  Choose(kNew);
  world.Choose("mnuFileNew");
  EXPECT_TRUE(world.journal.With("frmBrowser#1.SkinForm1").empty());
  EXPECT_TRUE(world.journal.With("frmBrowser#2.SkinForm1").empty());
}

TEST_F(SkinsTest, ASkinThatCannotBeStoredIsWornAllTheSame) {
  world.registry.failAt = world.registry.calls + 1;
  Choose(kNew);
  EXPECT_EQ(SkinOf("frmMain"), kNew);
  EXPECT_EQ(SkinFile, kNew);
  EXPECT_EQ(Stored(), "none");
}

TEST_F(SkinsTest, AFailingStepLeavesTheStepsBehindItExceptThatWithoutADialogThereIsNoSkin) {
  Choose(kNew);
  const Lines clean = world.journal.lines;
  for (std::size_t step = 0; step < clean.size(); ++step) {
    MenuWorld broken;
    broken.Start();
    broken.journal.failAt = broken.journal.calls + static_cast<long>(step) + 1;
    broken.Dialog().answer = kNew;
    broken.Choose("mnuskins");
    const bool asked = clean[step] != kDialog + "ShowOpen";
    EXPECT_EQ(SkinFile, asked ? kNew : kOld) << clean[step];
    EXPECT_EQ(broken.registry.Setting("skin").value_or("none"), asked ? kNew : "none") << clean[step];
  }
}

TEST_F(SkinsTest, AFrameThatIsClosedWhileTheDialogStandsIsLeftAsItWasAndTheChoiceStands) {
  world.journal.watch = [&](const std::string& line) {
    if (line == kDialog + "ShowOpen") {
      world.journal.watch = nullptr;
      world.Frame().Close(UnloadMode::ControlMenu);
    }
  };
  EXPECT_NO_THROW(Choose(kNew));
  EXPECT_FALSE(world.forms.IsLoaded("frmMain"));
  EXPECT_TRUE(world.journal.With("frmMain.SkinForm1").empty());
  EXPECT_EQ(Stored(), kNew);
}

TEST_F(SkinsTest, ApplySkinPassesOverAFileThatIsNoSkin) {
  world.journal.failOn = "frmMain.SkinForm1.SkinFile = \"/nowhere.skn\"";
  EXPECT_NO_THROW(world.frame->ApplySkin("/nowhere.skn"));
  EXPECT_EQ(SkinFile, kOld);
}

}  // namespace
}  // namespace kivandra
