// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/options_help.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "hosts.h"
#include "panel/panel_world.h"

namespace kivandra {
namespace {

using testing::ElementsAre;

struct OptionsHelpTest : testing::Test, fakes::PanelWorld {
  OptionsHelpTest() {
    panel.Show();
    Help().visible = false;
    Panel().ButtonOf("Command3").caption = "&Online Help";
    journal.Clear();
  }
  fakes::FakeWebBrowser& Help() { return Panel().BrowserOf("Help"); }
};

TEST_F(OptionsHelpTest, TheHelpButtonsShowTheirLocalPages) {
  for (const auto& [button, page] :
       std::vector<std::pair<std::string, std::string>>{{"SkinButton2", "/program/help/OptionsHelp.htm"},
                                                        {"SkinButton3", "/program/help/OptionsHelp.htm"},
                                                        {"SkinButton4", "/program/help/CheckBox.htm"}}) {
    journal.Clear();
    Panel().ButtonOf(button).Click();
    EXPECT_THAT(journal.lines, ElementsAre("frmOptions.Help.Navigate \"" + page + "\"", "allow file " + page,
                                           "frmOptions.Help.Visible = True"));
  }
}

TEST_F(OptionsHelpTest, TheFirstPressOfOnlineHelpOnlyChangesTheCaptionTheSecondOpensIt) {
  Panel().ButtonOf("Command3").Click();
  EXPECT_THAT(journal.lines,
              ElementsAre("frmOptions.Help.Visible = False", "frmOptions.Command3.Caption = \"\"",
                          "frmOptions.SkinForm1.ApplyTo frmOptions.Command3",
                          "frmOptions.Command3.Caption = \"Online Help\""));
  journal.Clear();
  Panel().ButtonOf("Command3").Click();
  const std::string address = "http://" + std::string(hosts::kProductSite) + "/help";
  EXPECT_THAT(journal.lines,
              ElementsAre("frmOptions.Help.Navigate \"" + address + "\"", "allow " + address,
                          "frmOptions.Help.Visible = True", "frmOptions.Command3.Caption = \"\"",
                          "frmOptions.SkinForm1.ApplyTo frmOptions.Command3",
                          "frmOptions.Command3.Caption = \"Close Help\""));
  Panel().ButtonOf("Command3").Click();
  EXPECT_FALSE(Help().visible);
  EXPECT_EQ(Panel().ButtonOf("Command3").caption, "Online Help");
}

TEST_F(OptionsHelpTest, ALinkWithCLOSEHidesTheHelpAndIsNotCancelled) {
  Panel().ButtonOf("SkinButton2").Click();
  EXPECT_TRUE(Help().Ask("file:///program/help/CLOSE")->Allowed());
  EXPECT_FALSE(Help().visible);
  EXPECT_EQ(Panel().ButtonOf("Command3").caption, "&Online Help");
}

TEST_F(OptionsHelpTest, ALinkWithCloseInLowerCaseDoesNotHideIt) {
  Panel().ButtonOf("SkinButton2").Click();
  EXPECT_TRUE(Help().Ask("file:///program/help/close")->Allowed());
  EXPECT_TRUE(Help().visible);
}

TEST_F(OptionsHelpTest, ALocalPageLeadsToTheOtherAndToNoOtherFile) {
  Panel().ButtonOf("SkinButton2").Click();
  journal.Clear();
  for (const char* link : {"file:///program/help/CheckBox.htm", "file:///program/help/CheckBox.htm?CLOSE"}) {
    Help().Ask(link);
  }
  EXPECT_THAT(journal.lines,
              ElementsAre("allow file file:///program/help/CheckBox.htm", "frmOptions.Help.Visible = False",
                          "allow file file:///program/help/CheckBox.htm?CLOSE"));
  journal.Clear();
  // Not cancelled, but the engine loads no file for a plain yes.
  Help().Ask("file:///etc/CLOSE");
  EXPECT_THAT(journal.lines, ElementsAre("frmOptions.Help.Visible = False", "allow file:///etc/CLOSE"));
  EXPECT_FALSE(Help().Ask("file:///program/help/../private.htm")->Allowed());
  EXPECT_FALSE(Help().Ask("file:///program/help/..%2fprivate.htm")->Allowed());
}

TEST_F(OptionsHelpTest, LeadsToNoOtherPage) {
  EXPECT_FALSE(Help().Ask("http://www.page.org/")->Allowed());
  WebBrowser* other = nullptr;
  bool cancel = false;
  Help().events->NewWindow2(other, cancel);
  EXPECT_TRUE(cancel);
  EXPECT_EQ(other, nullptr);
}

TEST_F(OptionsHelpTest, AClosedPanelRefusesWhatItsHelpStillAsks) {
  auto& help = Help();
  Panel().ButtonOf("cmdCancel").Click();
  EXPECT_EQ(help.events, nullptr);
}

bool IsHelpPage(const std::string& address, const std::string& programDirectory) {
  return IsLocalHelpPage(address, programDirectory) || IsOnlineHelpPage(address);
}

TEST(HelpPageTest, IsOneOfTheProgramOrOfTheProductsHelp) {
  const std::string site = "http://" + std::string(hosts::kProductSite);
  for (const std::string& page :
       {std::string("/program/help/OptionsHelp.htm"), std::string("file:///program/help/CheckBox.htm#top"),
        std::string("file:///program/help/a%20page.htm?x=/../y"), site + "/help", site + "/help/",
        site + "/help/index.html", site + "/help#a", site + "/help?a"}) {
    EXPECT_TRUE(IsHelpPage(page, "/program")) << page;
  }
  EXPECT_TRUE(IsHelpPage("file:///my%20home/pro%C3%A9/help/x", "/my home/pro\u00E9"));
  for (const std::string& page :
       {std::string(), std::string("file:///etc/passwd"), std::string("/program/help"),
        std::string("file:///program/help/../sounds/x"), std::string("file:///program/help/%2e%2e/x"),
        std::string("file:///program/helper/x"), std::string("file://host/program/help/x"), site + "/helper",
        site + "/help/../", site, std::string("https://www.page.org/help"),
        std::string("http://www.page.org/?") + site + "/help", std::string("about:blank"),
        std::string("data:text/html,/program/help/")}) {
    EXPECT_FALSE(IsHelpPage(page, "/program")) << page;
  }
}

}  // namespace
}  // namespace kivandra
