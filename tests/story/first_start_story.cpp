// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "fakes/whole_program.h"
#include "hosts.h"
#include "platform/linux/settings_tree.h"

namespace kivandra {
namespace {

TEST(FirstStartStory, AParentChoosesAPasswordAndTheChildReadsTheFirstPage) {
  fakes::WholeProgram world;
  const std::string firstRunPage = "http://" + std::string(hosts::kProductSite) + "/onetime.asp";

  // The parent looks at the first window, tries to close it, mistypes, and then chooses a password.
  world.loop.After(1000, [&] { EXPECT_FALSE(world.forms.Of("frmFirstLog").Close(UnloadMode::ControlMenu)); });
  world.boxes.Expect("Invalid Password, try again!", kMsgOkOnly, "Login");
  world.loop.After(2000, [&] {
    auto& window = world.forms.Of("frmFirstLog");
    window.TextBoxOf("txtPassword1").text = "sun";
    window.TextBoxOf("txtPassword").text = "sum";
    window.ButtonOf("SkinButton1").Click();
  });
  world.loop.After(3000, [&] {
    auto& window = world.forms.Of("frmFirstLog");
    window.TextBoxOf("txtPassword1").text = "sun";
    window.TextBoxOf("txtPassword").text = "sun";
    window.ButtonOf("SkinButton1").Click();
  });
  world.program.Run();

  EXPECT_EQ(world.Setting("T_PW"), "sun");
  EXPECT_EQ(world.Setting("F_C"), "1");
  EXPECT_EQ(world.Setting("FirstTime"), "1");
  EXPECT_EQ(world.loop.Now(), 3000 + 2500);
  EXPECT_TRUE(world.Frame().visible);
  EXPECT_FALSE(world.forms.IsLoaded("frmSplash"));

  // The first-run page passes and is shown.
  EXPECT_TRUE(world.journal.Has("allow " + firstRunPage));
  world.Browser().ShowPage(firstRunPage, "Welcome");
  EXPECT_EQ(world.Child().caption, "Welcome");
  EXPECT_EQ(world.Child().ComboOf("cboAddress").text, firstRunPage);
  EXPECT_EQ(world.Frame().ComboOf("TheAddress").items, std::vector<std::string>{firstRunPage});

  // The program closes and nothing is left.
  EXPECT_TRUE(world.Frame().Close(UnloadMode::ControlMenu));
  EXPECT_TRUE(world.forms.Loaded().empty());
}

TEST(FirstStartStory, ASecondStartLeavesNoTrace) {
  fakes::WholeProgram world;
  world.instance.taken = true;
  world.system.commandLine = "http://site.example/";
  world.program.Run();
  EXPECT_TRUE(world.forms.Loaded().empty());
  EXPECT_TRUE(world.journal.With("Load ").empty());
  EXPECT_TRUE(world.journal.With("MsgBox").empty());
}

TEST(FirstStartStory, ADamagedStoreIsToldAndNeverBecomesASilentFirstRun) {
  const std::filesystem::path folder = std::filesystem::path(testing::TempDir()) / "kivandra_damaged_store";
  std::filesystem::create_directories(folder);
  const std::string file = (folder / "registry.db").string();
  const std::string garbage = "this was a store of settings once";
  std::ofstream(file) << garbage;

  fakes::WholeProgram world;
  linux_impl::SettingsTree tree(file);
  struct Listener : MessageBoxes {
    MsgBoxResult MsgBox(const std::string& text, int, const std::string&) override {
      texts.push_back(text);
      return MsgBoxResult::Ok;
    }
    std::vector<std::string> texts;
  } boxes;
  Program program{{world.forms, world.loop, boxes, tree, world.instance, world.system, world.files,
                   world.sound, world.inet1, world.clipboard, world.session, world.keyboard, world.shell,
                   world.inet, world.defaultApplication}};
  program.Run();

  ASSERT_EQ(boxes.texts.size(), 1U);
  EXPECT_NE(boxes.texts[0].find(" - email:" + std::string(hosts::kSupportAddress)), std::string::npos);
  EXPECT_NE(boxes.texts[0].find(file), std::string::npos) << boxes.texts[0];
  EXPECT_TRUE(world.forms.Loaded().empty());
  std::stringstream kept;
  kept << std::ifstream(file).rdbuf();
  EXPECT_EQ(kept.str(), garbage);
  std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace kivandra
