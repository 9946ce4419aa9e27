// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/frm_password.h"

#include <gtest/gtest.h>

#include "fakes/fake_world.h"

namespace kivandra {
namespace {

struct FakeGrant : SessionGrant {
  explicit FakeGrant(fakes::Journal& testJournal) : journal(testJournal) {}
  [[nodiscard]] bool SessionAllowPending() const override { return pending; }
  void ClearSessionAllowPending() override { pending = false; }
  void AllowBlockedURL() override {
    journal.Call("AllowBlockedURL");
    if (full) {
      throw PlatformError(kSubscriptOutOfRange, "Subscript out of range");
    }
  }
  fakes::Journal& journal;
  bool pending = false;
  bool full = false;
};

struct PasswordTest : testing::Test {
  fakes::FakeWorld world;
  FakeGrant grant{world.journal};
  frmPassword window{{world.forms, world.boxes, world.registry, world.sound, world.system, grant,
                      [this] { world.journal.Call("show frmOptions"); }}};

  PasswordTest() { SaveItem(world.registry, "T_PW", "Secret"); }
  fakes::FakeForm& Form() { return world.forms.Of("frmPassword"); }
  void Try(const std::string& text) {
    Form().TextBoxOf("txtPassword").text = text;
    Form().ButtonOf("cmdOK").Click();
  }
  void ExpectRefusal() { world.boxes.Expect("Invalid Password, try again!", kMsgOkOnly, "Password Error"); }
};

TEST_F(PasswordTest, WearsTheSkinInForceSetInItsOrder) {
  SkinFile = "/skins/berry.skn";
  window.Show();
  const std::vector<std::string> expected = {"frmPassword.SkinForm1.Property14 = 1",
                                             "frmPassword.SkinForm1.SkinFile = \"/skins/berry.skn\"",
                                             "frmPassword.SkinForm1.ApplyTo frmPassword.cmdOK",
                                             "frmPassword.SkinForm1.ApplyTo frmPassword.cmdCancel",
                                             "frmPassword.SkinForm1.ApplyTo frmPassword.SkinLabel1"};
  EXPECT_EQ(world.journal.With("SkinForm1"), expected);
}

TEST_F(PasswordTest, IsKnownToBeOpenFromLoadToUnload) {
  EXPECT_FALSE(PasswordOpen);
  window.Show();
  EXPECT_TRUE(PasswordOpen);
  Form().ButtonOf("cmdCancel").Click();
  EXPECT_FALSE(PasswordOpen);
}

TEST_F(PasswordTest, TheRightPasswordOpensThePanelWithASound) {
  window.Show();
  world.journal.Clear();
  Try("Secret");
  const std::vector<std::string> expected = {
      "show frmOptions", "sndPlaySoundA \"/program/accessgranted.wav\", 3", "frmPassword.Unload"};
  EXPECT_EQ(world.journal.lines, expected);
  EXPECT_FALSE(SessionAllowGranted);
}

TEST_F(PasswordTest, IsSilentWhenSoundsAreOffOrNothingCanPlay) {
  SaveItem(world.registry, "Sound", "1");
  window.Show();
  Try("Secret");
  SaveItem(world.registry, "Sound", "0");
  world.sound.devices = 0;
  window.Show();
  Try("Secret");
  EXPECT_TRUE(world.journal.With("sndPlaySoundA").empty());
}

TEST_F(PasswordTest, AfterABlockTheRightPasswordGrantsTheAddressAndOpensNoPanel) {
  grant.pending = true;
  window.Show();
  world.journal.Clear();
  Try("Secret");
  const std::vector<std::string> expected = {"AllowBlockedURL", "frmPassword.Unload"};
  EXPECT_EQ(world.journal.lines, expected);
  EXPECT_TRUE(SessionAllowGranted);
}

TEST_F(PasswordTest, WithAFullTableTheGrantIsStillTold) {
  grant.pending = true;
  grant.full = true;
  window.Show();
  Try("Secret");
  EXPECT_TRUE(SessionAllowGranted);
  EXPECT_FALSE(world.forms.IsLoaded("frmPassword"));
}

TEST_F(PasswordTest, OnlyTheExactPasswordOpens) {
  window.Show();
  for (const std::string& near :
       {std::string(), std::string("secret"), std::string("Secret "), std::string(" Secret"),
        std::string("Secre"), std::string(10000, 'S'), std::string("Secret\0", 7)}) {
    ExpectRefusal();
    Try(near);
    EXPECT_TRUE(world.forms.IsLoaded("frmPassword"));
    EXPECT_EQ(Form().TextBoxOf("txtPassword").text, "");
  }
  EXPECT_FALSE(world.journal.Has("show frmOptions"));
}

TEST_F(PasswordTest, AfterTenWrongTriesTheRightOneOpensThePanel) {
  window.Show();
  for (int tries = 0; tries < 10; ++tries) {
    ExpectRefusal();
    Try("wrong");
  }
  Try("Secret");
  EXPECT_TRUE(world.journal.Has("show frmOptions"));
}

TEST_F(PasswordTest, AFailedTryTakesAnEarlierGrantBack) {
  SessionAllowGranted = true;
  window.Show();
  ExpectRefusal();
  Try("wrong");
  EXPECT_FALSE(SessionAllowGranted);
}

TEST_F(PasswordTest, CancelLeavesThePanelClosedAndTheTablesAsTheyWere) {
  grant.pending = true;
  window.Show();
  Form().ButtonOf("cmdCancel").Click();
  EXPECT_FALSE(world.journal.Has("show frmOptions"));
  EXPECT_FALSE(world.journal.Has("AllowBlockedURL"));
  EXPECT_FALSE(world.forms.IsLoaded("frmPassword"));
}

TEST_F(PasswordTest, AChangedPasswordCountsForTheNextPrompt) {
  window.Show();
  SaveItem(world.registry, "T_PW", "Newer");
  Form().ButtonOf("cmdCancel").Click();
  window.Show();
  Try("Newer");
  EXPECT_TRUE(world.journal.Has("show frmOptions"));
}

TEST_F(PasswordTest, AsksModallyUntilItIsAnswered) {
  world.loop.After(100, [&] { ExpectRefusal(); });
  world.loop.After(200, [&] { Try("wrong"); });
  world.loop.After(300, [&] { Try("Secret"); });
  window.ShowModal();
  EXPECT_EQ(world.loop.Now(), 300);
  EXPECT_FALSE(world.forms.IsLoaded("frmPassword"));
}

TEST_F(PasswordTest, AFieldThatCannotBeReadOpensNothing) {
  // The whole sweep: whatever single step fails, a wrong password opens nothing.
  for (long fault = 1; fault <= 4; ++fault) {
    window.Show();
    Form().TextBoxOf("txtPassword").text = "wrong";
    world.journal.calls = 0;
    world.journal.failAt = fault;
    ExpectRefusal();
    Form().ButtonOf("cmdOK").Click();
    world.journal.failAt = 0;
    if (fault == 2) {  // the box itself failed
      ASSERT_TRUE(world.journal.Has("FAILED MsgBox \"Invalid Password, try again!\""));
      world.boxes.MsgBox("Invalid Password, try again!", kMsgOkOnly, "Password Error");
    }
    EXPECT_FALSE(world.journal.Has("show frmOptions"));
  }
}

}  // namespace
}  // namespace kivandra
