// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/frm_options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/application.h"
#include "core/user_settings.h"
#include "panel/panel_world.h"

namespace kivandra {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::vector<std::pair<std::string, std::string>> kBoxes = {
    {"Record_Navigation", "R_N"}, {"Prevent_IE", "P_IE"},    {"Prevent_Netscape", "P_NS"},
    {"Filter_Check", "F_C"},      {"Disable_Email", "D_EM"}, {"Tip_OfDay", "T_OD"},
    {"Back_Button", "B_B"},       {"Popup", "POP"},          {"Sound", "Sound"}};

struct OptionsTest : testing::Test, fakes::PanelWorld {
  void Open() {
    panel.Show();
    journal.Clear();
  }
  void Passwords(const std::string& first, const std::string& second) {
    Panel().TextBoxOf("NewPassword_0").text = first;
    Panel().TextBoxOf("NewPassword_1").text = second;
  }
};

TEST_F(OptionsTest, LoadsInItsOrder) {
  SaveItem(registry, "R_N", "1");
  SaveItem(registry, "Sound", "1");
  SaveSetting(registry, "Kivandra", "Home Page", "URL", "http://www.otters.org/");
  PutSlot(kAllowedSection, 0, std::string("allowed.example"));
  PutSlot(kDisallowedSection, 0, std::string("refused.example"));
  panel.Show();
  std::vector<std::string> expected = {"Load frmOptions",
                                       "frmOptions.SkinForm1.SkinFile = \"/program/winaqua.skn\""};
  const auto applied = [&expected](const std::string& name) {
    expected.push_back("frmOptions.SkinForm1.ApplyTo frmOptions." + name);
  };
  for (const char* name :
       {"SkinPanel1", "SkinPanel2", "Command1", "DB", "cmdCancel", "Command3", "NewPasswordButton"}) {
    applied(name);
  }
  for (int label = 0; label < 10; ++label) {
    applied("SkinLabel1_" + std::to_string(label));
  }
  for (const char* name :
       {"SkinLabel2", "SkinLabel3", "Skinbutton1", "SkinButton2", "SkinButton3", "SkinButton4"}) {
    applied(name);
  }
  for (const std::string line :
       {"Combo1_0.Text = \"\"", "Combo1_1.Text = \"\"", "Combo1_0.AddItem \"allowed.example\", 0",
        "Combo1_1.AddItem \"refused.example\", 0", "Calendar1.Today", "Left = 5745", "Top = 0"}) {
    expected.push_back("frmOptions." + line);
  }
  for (const auto& [box, setting] : kBoxes) {
    expected.push_back("frmOptions." + box +
                       ".Value = " + (setting == "R_N" || setting == "Sound" ? "1" : "0"));
  }
  expected.push_back("frmOptions.HomePage.Text = \"http://www.otters.org/\"");
  expected.push_back("frmOptions.Visible = True");
  expected.push_back("frmOptions.BringToFront");
  EXPECT_EQ(journal.lines, expected);
}

TEST_F(OptionsTest, IsKnownToBeOpenFromLoadToUnload) {
  panel.Show();
  EXPECT_TRUE(OptionsOpen);
  Panel().ButtonOf("cmdCancel").Click();
  EXPECT_FALSE(OptionsOpen);
  EXPECT_FALSE(forms.IsLoaded("frmOptions"));
}

TEST_F(OptionsTest, ASecondRequestBringsTheSameWindowUp) {
  Open();
  Panel().TextBoxOf("HomePage").text = "half typed";
  panel.Show();
  EXPECT_THAT(journal.lines, ElementsAre("frmOptions.Visible = True", "frmOptions.BringToFront"));
  EXPECT_EQ(Panel().TextBoxOf("HomePage").text, "half typed");
  Panel().ButtonOf("cmdCancel").Click();
  panel.Show();
  EXPECT_EQ(journal.Count("Load frmOptions"), 1);
}

TEST_F(OptionsTest, OpeningWithABrowserPreventedRunsNothingAndWritesNothing) {
  for (const auto& [box, setting] : kBoxes) {
    SaveItem(registry, setting, "1 as stored");
  }
  panel.Show();
  EXPECT_EQ(Panel().CheckOf("Prevent_IE").value, 1);
  EXPECT_THAT(journal.With("Prevent_IE"), ElementsAre("frmOptions.Prevent_IE.Value = 1"));
  // A box that wrote back what it shows would have written "1".
  for (const auto& [box, setting] : kBoxes) {
    EXPECT_EQ(Setting(setting), "1 as stored");
  }
}

TEST_F(OptionsTest, AMissingOrStrangeSettingComesUpClear) {
  SaveItem(registry, "POP", "yes");
  SaveItem(registry, "T_OD", "");
  SaveItem(registry, "B_B", "1 and more");
  SaveItem(registry, "D_EM", "99999999999999999999");
  panel.Show();
  EXPECT_EQ(Panel().CheckOf("Filter_Check").value, 0);
  EXPECT_EQ(Panel().CheckOf("Popup").value, 0);
  EXPECT_EQ(Panel().CheckOf("Tip_OfDay").value, 0);
  EXPECT_EQ(Panel().CheckOf("Back_Button").value, 1);
  EXPECT_EQ(Panel().CheckOf("Disable_Email").value, 1);
}

TEST_F(OptionsTest, ABoxIsStoredTheMomentItIsClickedAndClosingKeepsIt) {
  Open();
  for (const auto& [box, setting] : kBoxes) {
    Panel().CheckOf(box).Click();
    EXPECT_EQ(Setting(setting), "1") << box;
  }
  Panel().CheckOf("Sound").Click();
  Panel().ButtonOf("cmdCancel").Click();
  EXPECT_EQ(Setting("Sound"), "0");
  EXPECT_EQ(Setting("F_C"), "1");
}

TEST_F(OptionsTest, TheTwoBrowsersAreToldOfATickAndOfItsEnd) {
  Open();
  Panel().CheckOf("Prevent_IE").Click();
  Panel().CheckOf("Prevent_IE").Click();
  Panel().CheckOf("Prevent_Netscape").Click();
  Panel().CheckOf("Popup").Click();
  EXPECT_THAT(journal.lines, ElementsAre("Prevent_IE", "Prevent_IE", "Prevent_Netscape"));
  EXPECT_EQ(Setting("P_IE"), "0");
  EXPECT_EQ(Setting("P_NS"), "1");
}

TEST_F(OptionsTest, ABrowserIsToldThoughTheSettingCannotBeStored) {
  Open();
  registry.calls = 0;
  registry.failAt = 1;
  Panel().CheckOf("Prevent_IE").Click();
  EXPECT_THAT(journal.lines, ElementsAre("Prevent_IE"));
}

TEST_F(OptionsTest, TheDefaultBrowserButtonAsksForIt) {
  Open();
  Panel().ButtonOf("DB").Click();
  EXPECT_THAT(journal.lines, ElementsAre("DB"));
}

TEST_F(OptionsTest, TheHomePageIsStoredAsTypedByItsButtonAlone) {
  Open();
  Panel().TextBoxOf("HomePage").text = " not an address\\ %PATH% ";
  Panel().ButtonOf("Skinbutton1").Click();
  EXPECT_EQ(StoredHomePage(registry), " not an address\\ %PATH% ");
  Panel().TextBoxOf("HomePage").text = "http://lost.example/";
  Panel().ButtonOf("cmdCancel").Click();
  EXPECT_EQ(StoredHomePage(registry), " not an address\\ %PATH% ");
  panel.Show();
  EXPECT_EQ(Panel().TextBoxOf("HomePage").text, " not an address\\ %PATH% ");
}

TEST_F(OptionsTest, ChangingThePasswordOpensTheBoxes) {
  Open();
  Panel().ButtonOf("Command1").Click();
  EXPECT_THAT(
      journal.lines,
      ElementsAre("frmOptions.NewPassword_0.Enabled = True", "frmOptions.NewPassword_1.Enabled = True",
                  "frmOptions.NewPasswordButton.Enabled = True",
                  "frmOptions.NewPassword_0.BackColor = Window",
                  "frmOptions.NewPassword_1.BackColor = Window", "frmOptions.NewPassword_0.SetFocus"));
}

TEST_F(OptionsTest, EnterMovesBetweenThePasswordBoxesAndRecordsNothing) {
  Open();
  Passwords("new", "new");
  EXPECT_TRUE(Panel().TextBoxOf("NewPassword_0").Press(kKeyReturn));
  EXPECT_TRUE(Panel().TextBoxOf("NewPassword_1").Press(kKeyReturn));
  EXPECT_THAT(journal.lines,
              ElementsAre("frmOptions.NewPassword_1.SetFocus", "frmOptions.NewPassword_0.SetFocus"));
  journal.Clear();
  Passwords("", "");
  Panel().TextBoxOf("NewPassword_0").Press(kKeyReturn);
  EXPECT_FALSE(Panel().TextBoxOf("NewPassword_0").Press(kKeyDelete));
  EXPECT_THAT(journal.lines, IsEmpty());
  EXPECT_EQ(Setting("T_PW"), "");
}

TEST_F(OptionsTest, TwoEqualPasswordsAreRecordedAndTheBoxesClose) {
  Open();
  Panel().ButtonOf("Command1").Click();
  Passwords("New", "New");
  journal.Clear();
  const std::string told =
      "Password has been recorded.  Please write down your password and store it in a safe area.";
  boxes.Expect(told);
  Panel().ButtonOf("NewPasswordButton").Click();
  EXPECT_EQ(Setting("T_PW"), "New");
  EXPECT_THAT(
      journal.lines,
      ElementsAre("frmOptions.NewPassword_0.Text = \"\"", "frmOptions.NewPassword_1.Text = \"\"",
                  "frmOptions.NewPassword_0.BackColor = Window",
                  "frmOptions.NewPassword_1.BackColor = Window", "frmOptions.NewPassword_0.Enabled = False",
                  "frmOptions.NewPassword_1.Enabled = False", "MsgBox \"" + told + "\""));
}

TEST_F(OptionsTest, RecordingTwiceNeedsANewPressOfChange) {
  Open();
  Panel().ButtonOf("Command1").Click();
  for (int round = 0; round < 2; ++round) {
    Passwords("Same", "Same");
    boxes.Expect("Password has been recorded.  Please write down your password and store it in a safe area.");
    Panel().ButtonOf("NewPasswordButton").Click();
    EXPECT_FALSE(Panel().TextBoxOf("NewPassword_0").enabled);
    EXPECT_FALSE(Panel().TextBoxOf("NewPassword_1").enabled);
    Panel().ButtonOf("Command1").Click();
    EXPECT_TRUE(Panel().TextBoxOf("NewPassword_0").enabled);
  }
}

TEST_F(OptionsTest, PasswordsThatDifferOrAreEmptyAreRefusedAndTheBoxesStayOpen) {
  SaveItem(registry, "T_PW", "Old");
  Open();
  Panel().ButtonOf("Command1").Click();
  for (const auto& [first, second] : std::vector<std::pair<std::string, std::string>>{
           {"a", "b"}, {"a", "A"}, {"", ""}, {"a", ""}, {"", "a"}, {"a", "a "}}) {
    Passwords(first, second);
    journal.Clear();
    boxes.Expect("Invalid Password, try again!", kMsgOkOnly, "Password Error");
    Panel().ButtonOf("NewPasswordButton").Click();
    EXPECT_THAT(journal.lines,
                ElementsAre("frmOptions.NewPassword_0.Text = \"\"", "frmOptions.NewPassword_1.Text = \"\"",
                            "frmOptions.NewPassword_0.SetFocus", "MsgBox \"Invalid Password, try again!\""));
    EXPECT_TRUE(Panel().TextBoxOf("NewPassword_0").enabled);
  }
  EXPECT_EQ(Setting("T_PW"), "Old");
}

TEST_F(OptionsTest, ThePanelMayCloseWhileABoxStands) {
  Open();
  Passwords("New", "New");
  boxes.Expect("Password has been recorded.  Please write down your password and store it in a safe area.",
               kMsgOkOnly, {}, MsgBoxResult::Ok, [this] {
                 Panel().Close(UnloadMode::ControlMenu);
                 panel.Show();
               });
  Panel().ButtonOf("NewPasswordButton").Click();
  EXPECT_TRUE(OptionsOpen);
}

TEST_F(OptionsTest, WhateverSingleStepOfTheLoadFailsTheOthersHappen) {
  panel.Show();
  const long steps = journal.calls;
  Panel().ButtonOf("cmdCancel").Click();
  for (long fault = 2; fault <= steps - 2; ++fault) {  // 1 is the window itself, the last two its showing
    journal.Clear();
    journal.calls = 0;
    journal.failAt = fault;
    panel.Show();
    journal.failAt = 0;
    EXPECT_TRUE(OptionsOpen) << fault;
    EXPECT_EQ(static_cast<long>(journal.lines.size()), steps) << fault;
    Panel().CheckOf("Popup").value = 0;
    Panel().CheckOf("Popup").Click();
    EXPECT_EQ(Setting("POP"), "1") << fault;
    SaveItem(registry, "POP", "0");
    Panel().ButtonOf("cmdCancel").Click();
  }
}

TEST_F(OptionsTest, AStoreThatFailsThroughoutStillOpensAnEmptyPanel) {
  for (long fault = 1; fault < 40; ++fault) {
    registry.calls = 0;
    registry.failAt = fault;
    panel.Show();
    EXPECT_TRUE(OptionsOpen) << fault;
    registry.failAt = 0;
    Panel().ButtonOf("cmdCancel").Click();
  }
}

}  // namespace
}  // namespace kivandra
