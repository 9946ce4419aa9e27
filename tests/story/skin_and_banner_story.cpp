// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "fakes/whole_program.h"
#include "hosts.h"

namespace kivandra {
namespace {

const std::string kMeadow = "/program/KVDSkins/meadow.skn";

fakes::FakeSkinForm& SkinOf(fakes::FakeForm& form) {
  return form.Fetch<fakes::FakeSkinForm>("SkinForm1", ControlKind::SkinForm);
}

TEST(SkinStory, AChildChoosesASkinAndFindsItAgainTheNextDay) {
  std::optional<std::string> stored;
  {
    fakes::WholeProgram world;
    world.StartAsUsual();
    world.PassStartUp();
    EXPECT_EQ(SkinOf(world.Frame()).skinFile, "/program/winaqua.skn");
    world.Frame().DialogOf("CommonDialog1").answer = kMeadow;
    world.Frame().MenusOf("Menu").Choose("mnuskins");
    EXPECT_EQ(SkinOf(world.Frame()).skinFile, kMeadow);

    // The prompt and the tip follow, the page windows do not.
    world.Frame().MenusOf("Menu").Choose("mnuAdmin");
    EXPECT_EQ(SkinOf(world.forms.Of("frmPassword")).skinFile, kMeadow);
    world.Frame().MenusOf("Menu").Choose("mnuTip");
    EXPECT_EQ(SkinOf(world.forms.Of("frmTip")).skinFile, kMeadow);
    EXPECT_TRUE(world.journal.With("frmBrowser#1.SkinForm1").empty());

    world.Frame().MenusOf("Menu").Choose("mnuFileExit");
    EXPECT_TRUE(world.forms.Loaded().empty());
    stored = world.registry.Setting("skin");
  }
  ASSERT_EQ(stored, kMeadow);
  fakes::WholeProgram world;
  world.registry.PutSetting("skin", *stored);
  world.StartAsUsual();
  EXPECT_EQ(SkinOf(world.Frame()).skinFile, kMeadow);
}

TEST(BannerStory, AClickOnTheBannerIsJudgedLikeATypedAddress) {
  fakes::WholeProgram world;
  world.StartAsUsual();
  world.Browser().ShowPage(std::string(hosts::kProductHome), "Home");
  world.PassStartUp();
  auto& banner = world.Frame().BrowserOf("brwBanner");
  const std::string target = "http://toys.example/";

  // The advertisement leads to a page with a bad word.
  world.inet1.pages[target] = "<p>Toys and PORN</p>";
  EXPECT_FALSE(banner.Ask(target)->Allowed());
  world.loop.Advance(100);
  EXPECT_EQ(world.Frame().caption, "Possible Adult Content Has Been Detected.  Page will not be displayed.");
  EXPECT_EQ(BlockedURL, target);
  EXPECT_EQ(world.journal.Count("Beep"), 30);
  EXPECT_TRUE(world.ToolOf("MainBar", "Lock").data.enabled);
  EXPECT_FALSE(world.journal.Has("allow " + target));

  // Another day the page is clean.
  world.inet1.pages[target] = "<p>Toys</p>";
  banner.Ask(target);
  world.loop.Advance(100);
  EXPECT_TRUE(world.journal.Has("allow " + target));
  EXPECT_FALSE(world.forms.IsLoaded("frmBrowser#2"));
}

}  // namespace
}  // namespace kivandra
