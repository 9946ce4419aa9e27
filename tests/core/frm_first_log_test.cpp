// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/frm_first_log.h"

#include <gtest/gtest.h>

#include "fakes/fake_world.h"

namespace kivandra {
namespace {

struct FirstLogTest : testing::Test {
  fakes::FakeWorld world;
  frmFirstLog window{world.forms, world.loop, world.boxes, world.registry, world.system};

  fakes::FakeForm& Form() { return world.forms.Of("frmFirstLog"); }
  void Type(const std::string& first, const std::string& second) {
    Form().TextBoxOf("txtPassword1").text = first;
    Form().TextBoxOf("txtPassword").text = second;
    Form().ButtonOf("SkinButton1").Click();
  }
  void ExpectRefusal() { world.boxes.Expect("Invalid Password, try again!", kMsgOkOnly, "Login"); }
};

TEST_F(FirstLogTest, SwitchesTheFilterOnBeforeAnythingElse) {
  window.Show();
  EXPECT_EQ(world.Setting("F_C"), "1");
}

TEST_F(FirstLogTest, WearsTheDefaultSkinWhateverTheSettingHolds) {
  SkinFile = "/elsewhere/berry.skn";
  window.Show();
  const std::vector<std::string> expected = {"frmFirstLog.SkinForm1.Property14 = 1",
                                             "frmFirstLog.SkinForm1.SkinFile = \"/program/winaqua.skn\"",
                                             "frmFirstLog.SkinForm1.ApplyTo frmFirstLog.SkinButton1",
                                             "frmFirstLog.SkinForm1.ApplyTo frmFirstLog.SkinLabel1",
                                             "frmFirstLog.SkinForm1.ApplyTo frmFirstLog.SkinLabel2"};
  EXPECT_EQ(world.journal.With("SkinForm1"), expected);
}

TEST_F(FirstLogTest, PutsTheCursorIntoTheFirstField) {
  window.Show();
  EXPECT_TRUE(world.journal.Has("frmFirstLog.txtPassword1.SetFocus"));
}

TEST_F(FirstLogTest, ReturnGoesFromFieldToFieldAndPressesNothing) {
  window.Show();
  world.journal.Clear();
  Form().TextBoxOf("txtPassword1").text = "same";
  Form().TextBoxOf("txtPassword").text = "same";
  EXPECT_TRUE(Form().TextBoxOf("txtPassword1").Press(kKeyReturn));
  EXPECT_TRUE(Form().TextBoxOf("txtPassword").Press(kKeyReturn));
  EXPECT_FALSE(Form().TextBoxOf("txtPassword").Press('a'));
  const std::vector<std::string> expected = {"frmFirstLog.txtPassword.SetFocus",
                                             "frmFirstLog.txtPassword1.SetFocus"};
  EXPECT_EQ(world.journal.lines, expected);
  EXPECT_EQ(world.Setting("T_PW"), "");
}

TEST_F(FirstLogTest, TakesTwoEqualFieldsAndGoes) {
  window.Show();
  Type("s", "s");
  EXPECT_EQ(world.Setting("T_PW"), "s");
  EXPECT_FALSE(world.forms.IsLoaded("frmFirstLog"));
}

TEST_F(FirstLogTest, RefusesTwoEmptyFields) {
  window.Show();
  ExpectRefusal();
  Type("", "");
  EXPECT_EQ(world.Setting("T_PW"), "");
  EXPECT_TRUE(world.forms.IsLoaded("frmFirstLog"));
}

TEST_F(FirstLogTest, RefusesFieldsThatDifferOnlyInCase) {
  window.Show();
  ExpectRefusal();
  Type("Secret", "secret");
  EXPECT_EQ(world.Setting("T_PW"), "");
}

TEST_F(FirstLogTest, ARefusalClearsBothFieldsThenAsksAgain) {
  window.Show();
  world.journal.Clear();
  ExpectRefusal();
  Type("one", "two");
  const std::vector<std::string> expected = {
      "frmFirstLog.txtPassword1.Text = \"\"", "frmFirstLog.txtPassword.Text = \"\"",
      "frmFirstLog.txtPassword1.SetFocus", "MsgBox \"Invalid Password, try again!\""};
  EXPECT_EQ(world.journal.lines, expected);
}

TEST_F(FirstLogTest, ItsCloseBoxDoesNothingOnAFirstRun) {
  window.Show();
  EXPECT_FALSE(Form().Close(UnloadMode::ControlMenu));
  EXPECT_TRUE(world.forms.IsLoaded("frmFirstLog"));
}

TEST_F(FirstLogTest, AnyOtherKindOfClosingLetsTheWindowGo) {
  for (const UnloadMode mode : {UnloadMode::Code, UnloadMode::WindowManager, UnloadMode::MdiForm}) {
    window.Show();
    EXPECT_TRUE(Form().Close(mode));
    EXPECT_FALSE(world.forms.IsLoaded("frmFirstLog"));
  }
}

TEST_F(FirstLogTest, WithAPasswordItsCloseBoxCloses) {
  window.Show();
  SaveItem(world.registry, "T_PW", "x");
  EXPECT_TRUE(Form().Close(UnloadMode::ControlMenu));
}

TEST_F(FirstLogTest, APasswordWithTwoPercentSignsIsStoredWithExpansion) {
  window.Show();
  Type("%NO_SUCH_VARIABLE%", "%NO_SUCH_VARIABLE%");
  HKEY key = 0;
  ASSERT_EQ(world.registry.RegOpenKeyExA(HKEY_CLASSES_ROOT, kSettingsSection, KEY_QUERY_VALUE, key), 0);
  std::uint32_t type = 0;
  std::size_t size = 0;
  world.registry.RegQueryValueExA(key, "T_PW", type, nullptr, size);
  EXPECT_EQ(type, REG_EXPAND_SZ);
}

TEST_F(FirstLogTest, AFailingStepOfARefusalLeavesTheOthers) {
  for (long fault = 1; fault <= 3; ++fault) {
    fakes::FakeWorld fresh;
    frmFirstLog other(fresh.forms, fresh.loop, fresh.boxes, fresh.registry, fresh.system);
    other.Show();
    fresh.boxes.Expect("Invalid Password, try again!", kMsgOkOnly, "Login");
    auto& form = fresh.forms.Of("frmFirstLog");
    form.TextBoxOf("txtPassword1").text = "one";
    fresh.journal.calls = 0;
    fresh.journal.failAt = fault;
    form.ButtonOf("SkinButton1").Click();
    EXPECT_TRUE(fresh.journal.Has("MsgBox \"Invalid Password, try again!\"")) << "fault " << fault;
  }
}

}  // namespace
}  // namespace kivandra
