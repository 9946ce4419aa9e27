// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <stdexcept>

#include "core/application.h"
#include "fakes/whole_program.h"
#include "hosts.h"

namespace kivandra {
namespace {

const std::string kCaption = "Possible Adult Content Has Been Detected.  Page will not be displayed.";

struct BlockStory : testing::Test {
  fakes::WholeProgram world;

  BlockStory() {
    world.StartAsUsual();
    world.Browser().ShowPage(std::string(hosts::kProductHome), "Home");
    world.PassStartUp();
    world.journal.Clear();
  }
  bool LockEnabled() { return world.ToolOf("MainBar", "Lock").data.enabled; }
};

TEST_F(BlockStory, ACleanPageIsFetchedOnceAndShown) {
  world.inet1.pages["http://www.otters.org"] = "<p>Otters hold hands.</p>";
  world.Type("www.otters.org");
  EXPECT_TRUE(world.inet1.Waits("http://www.otters.org"));
  world.loop.Advance(100);
  EXPECT_TRUE(world.journal.Has("allow http://www.otters.org"));
  EXPECT_EQ(world.journal.Count("FetchPage \"http://www.otters.org\""), 1);
  EXPECT_FALSE(LockEnabled());
  EXPECT_EQ(world.Frame().caption, "Kivandra");
}

TEST_F(BlockStory, AForbiddenPageNeverShowsAndTheParentCanLetItThrough) {
  const std::string page = "http://www.page.org";
  world.inet1.pages[page] = "<p>Some PORN here</p>";
  world.Type(page);
  world.loop.Advance(100);

  EXPECT_TRUE(world.journal.Has("refuse " + page));
  EXPECT_EQ(world.Frame().caption, kCaption);
  EXPECT_EQ(world.Child().ComboOf("cboAddress").text, "");
  EXPECT_TRUE(LockEnabled());
  EXPECT_EQ(world.journal.Count("Beep"), 30);
  EXPECT_EQ(BlockedURL, page);

  // The parent presses Lock, says yes and gives the password.
  world.boxes.Expect("Allow " + page + " for this session?", 276, "Session Lock", MsgBoxResult::Yes);
  world.loop.After(100, [&] {
    world.forms.Of("frmPassword").TextBoxOf("txtPassword").text = "Secret";
    world.forms.Of("frmPassword").ButtonOf("cmdOK").Click();
  });
  world.Click("MainBar", "Lock");
  EXPECT_EQ(AllowedDomains[1], page);
  EXPECT_TRUE(world.journal.Has("allow " + page));
  EXPECT_EQ(world.Child().windowState, WindowState::Maximized);
  EXPECT_FALSE(LockEnabled());
  EXPECT_FALSE(SessionAllowGranted);

  // A longer address passes too, another page of the site does not.
  EXPECT_TRUE(world.Browser().Ask(page + "/more")->Allowed());
  world.Browser().Ask("http://other.org/porn.html");
  EXPECT_TRUE(world.journal.Has("refuse http://other.org/porn.html"));
}

TEST_F(BlockStory, AForbiddenAddressIsNeverFetched) {
  world.Type("http://www.essex-porn.org");
  EXPECT_TRUE(world.journal.Has("refuse http://www.essex-porn.org"));
  EXPECT_TRUE(world.journal.With("FetchPage").empty());
}

TEST_F(BlockStory, ANewNavigationDisablesLockAtOnceAndKeepsTheBlockedAddress) {
  world.Type("http://www.porn.org");
  EXPECT_TRUE(LockEnabled());
  world.Type("http://www.otters.org");
  EXPECT_FALSE(LockEnabled());
  EXPECT_EQ(BlockedURL, "http://www.porn.org");
}

TEST_F(BlockStory, ActivatingTheWindowPutsItsAddressBack) {
  world.Type("http://www.porn.org");
  EXPECT_EQ(world.Child().ComboOf("cboAddress").text, "");
  world.Child().events->Form_Activate();
  EXPECT_EQ(world.Child().ComboOf("cboAddress").text, std::string(hosts::kProductHome));
}

TEST_F(BlockStory, AWindowClosedWhileItsPageIsJudgedLetsNothingIn) {
  world.Type("http://www.otters.org");
  ASSERT_TRUE(world.inet1.Waits("http://www.otters.org"));
  world.Child().Close(UnloadMode::ControlMenu);
  world.inet1.Answer("http://www.otters.org", "clean");
  EXPECT_FALSE(world.journal.Has("allow http://www.otters.org"));
}

TEST_F(BlockStory, TwoWindowsAreJudgedSideBySideAndNeverMixedUp) {
  world.Type("http://www.first.org");
  auto second = world.Browser().Ask("http://www.second.org");
  EXPECT_TRUE(world.inet1.Waits("http://www.first.org"));
  EXPECT_TRUE(world.inet1.Waits("http://www.second.org"));
  world.inet1.Answer("http://www.second.org", "clean");
  EXPECT_TRUE(second->Allowed());
  EXPECT_FALSE(world.journal.Has("allow http://www.first.org"));
  world.inet1.Answer("http://www.first.org", "porn");
  EXPECT_TRUE(world.journal.Has("refuse http://www.first.org"));
}

TEST_F(BlockStory, BackGoesUnfilteredOnlyIfTheParentSaysSo) {
  world.Browser().back = "http://www.porn.org";
  world.Click("MainBar", "Back");
  EXPECT_TRUE(world.journal.Has("refuse http://www.porn.org"));
  SaveItem(world.registry, "B_B", "1");
  world.Click("MainBar", "Back");
  EXPECT_TRUE(world.journal.Has("allow http://www.porn.org"));
  EXPECT_FALSE(BackBypass);
}

TEST_F(BlockStory, BackStaysFilteredIfTheSettingCannotBeRead) {
  SaveItem(world.registry, "B_B", "1");
  world.Browser().back = "http://www.porn.org";
  world.registry.calls = 0;
  world.registry.failAt = 1;
  world.Click("MainBar", "Back");
  EXPECT_TRUE(world.journal.Has("refuse http://www.porn.org"));
}

TEST_F(BlockStory, TheNextPageIsFilteredAgainHoweverGoingBackEnds) {
  SaveItem(world.registry, "B_B", "1");
  // No page behind.
  world.Click("MainBar", "Back");
  EXPECT_FALSE(BackBypass);
  // A fault of the program itself.
  world.Browser().back = "http://www.otters.org";
  world.Browser().onBack = [] {
    EXPECT_TRUE(BackBypass);
    throw std::logic_error("a fault");
  };
  EXPECT_THROW(world.Click("MainBar", "Back"), std::logic_error);
  EXPECT_FALSE(BackBypass);
  world.Type("http://www.porn.org");
  EXPECT_TRUE(world.journal.Has("refuse http://www.porn.org"));
}

TEST_F(BlockStory, HomeGoesToTheStoredPageAndStoresOneIfThereIsNone) {
  world.Click("MainBar", "Home");
  EXPECT_TRUE(
      world.journal.Has("frmBrowser#1.brwWebBrowser.Navigate \"" + std::string(hosts::kProductHome) + "\""));
  EXPECT_EQ(StoredHomePage(world.registry), std::string(hosts::kProductHome));
}

TEST_F(BlockStory, HomeWithoutAWindowOpensOne) {
  world.Child().Close(UnloadMode::ControlMenu);
  world.Click("MainBar", "Home");
  EXPECT_TRUE(world.forms.IsLoaded("frmBrowser#2"));
}

TEST_F(BlockStory, ToolsWithoutAWindowDoNothingAndSayNothing) {
  world.Child().Close(UnloadMode::ControlMenu);
  world.journal.Clear();
  for (const char* tool : {"Lock", "Back", "Forward", "Stop", "Refresh", "Print"}) {
    world.Click("MainBar", tool);
  }
  EXPECT_TRUE(world.journal.lines.empty());
  EXPECT_FALSE(BackBypass);
}

TEST_F(BlockStory, TheFramesAddressBoxLeadsTheActiveChild) {
  auto& box = world.Frame().ComboOf("TheAddress");
  box.text = "what is love";
  box.Press(kKeyReturn);
  const std::vector<std::string> expected = {
      "frmBrowser#1.brwWebBrowser.Stop", "frmMain.WebBrowser2.Navigate \"/program/smile.gif\"",
      "frmBrowser#1.brwWebBrowser.Navigate \"http://" + std::string(hosts::kEnglishQuestionHost) +
          "/main/askjeeves.asp?ask=what is love&origin=0&site_name=Jeeves&metasearch=yes\""};
  auto lines = world.journal.lines;
  ASSERT_GE(lines.size(), expected.size());
  lines.resize(expected.size());
  EXPECT_EQ(lines, expected);
}

TEST_F(BlockStory, TheFramesEmptyAddressBoxOpensANewWindowAtTheProductsHome) {
  world.Frame().ComboOf("TheAddress").text = "";
  world.Click("Bonus Bar", "btnGo");
  EXPECT_TRUE(world.journal.Has("Load frmBrowser"));
  EXPECT_TRUE(
      world.journal.Has("frmBrowser#2.brwWebBrowser.Navigate \"" + std::string(hosts::kProductHome) + "\""));
}

TEST_F(BlockStory, AChildsSmallButtonsTileAndCascadeAllWindows) {
  world.Child().ButtonOf("btnGo").Click();
  EXPECT_TRUE(world.journal.Has("frmMain.MDIClient.SendMessageA 550, 1, 1"));
  world.Child().ButtonOf("btnsearch").Click();
  EXPECT_TRUE(world.journal.Has("frmMain.MDIClient.SendMessageA 551, 0, 0"));
}

}  // namespace
}  // namespace kivandra
