// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of a tool's click that go by the tool's name: help and links.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "frame/frame_world.h"
#include "hosts.h"

namespace kivandra {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

struct Row {
  int number;
  std::string name;
  std::string result;  ///< the text that is shown, or the address that is opened
};

std::string Address(std::string_view host, const char* path) { return "http://" + std::string(host) + path; }

const std::vector<Row> kHelpRows = {
    {1, "How to Use?",
     "Enter a search criteria in the SEARCH box first then use this feature to highlight all occurances of "
     "that item "
     "in the current web page"},
    {2, "DictionaryHelp",
     "This option will render a dictionary definition of the word entered in the Toolbar search box.  This "
     "feature "
     "works more effectively with the parental filter OFF"},
    {3, "SearchTheWeb",
     "This option will search the entire Internet for the search criteria entered in the Toolbar search box"},
    {4, "SearchbyGroups",
     "This option will search Internet user groups for the search criteria entered in the Toolbar search "
     "box"},
    {5, "SearchbyImages",
     "This option will search the entire Internet for images based on the search criteria entered in the "
     "Toolbar "
     "search box"},
    {6, "SearchThisSite",
     "This option will search the CURRENT SITE for the search criteria entered in the Toolbar search box.  "
     "Great way "
     "to easily find what you are looking for on a site without clicking through all of the pages!"},
};

const std::vector<Row> kLinkRows = {
    {7, "News", Address(hosts::kYahooligansHost, "/content/news/")},
    {8, "Yahooligans", Address(hosts::kYahooligansHost, "")},
    {9, "Homework", Address(hosts::kHomeworkHost, "/")},
    {10, "Fun Stuff", Address(hosts::kBeritsHost, "/")},
    {11, "Shrek", Address(hosts::kShrekHost, "/")},
    {12, "Barney", Address(hosts::kBarneyHost, "/")},
    {13, "Disney", Address(hosts::kDisneyHost, "/")},
    {14, "Sesame Street", Address(hosts::kSesameStreetHost, "/")},
    {15, "Math", Address(hosts::kMathHost, "/")},
    {16, "Social Studies", Address(hosts::kSocialStudiesHost, "")},
    {17, "Science", Address(hosts::kScienceHost, "")},
    {18, "Language", Address(hosts::kLanguageHost, "")},
};

std::string Navigates(const std::string& address) {
  return "frmBrowser#1.brwWebBrowser.Navigate \"" + address + "\"";
}

struct ToolLinksTest : testing::Test {
  FrameWorld world;
};

TEST_F(ToolLinksTest, TheHelpToolsShowOnePlainBoxEach) {
  for (const Row& row : kHelpRows) {
    world.journal.Clear();
    world.boxes.Expect(row.result);
    world.ClickTool(row.name, "Tool1");
    EXPECT_THAT(world.Effects(), ElementsAre("MsgBox \"" + row.result + "\"")) << "row " << row.number;
  }
}

TEST_F(ToolLinksTest, TheHelpToolsAnswerWithNoChildWindowToo) {
  world.CloseChild();
  for (const Row& row : kHelpRows) {
    world.boxes.Expect(row.result);
    world.ClickTool(row.name, "Tool1");
  }
}

TEST_F(ToolLinksTest, TheHelpToolsOfTheBarsAnswerWhetherTheSearchBoxHoldsTextOrNot) {
  const std::vector<std::pair<std::string, std::string>> tools = {
      {"HILITE", "How to Use?"},
      {"Dictionary?", "DictionaryHelp"},
      {"SearchTheWeb", "SearchTheWeb"},
      {"Search by Groups?", "SearchbyGroups"},
      {"Search by Images?", "SearchbyImages"},
      {"Search This Site?", "SearchThisSite"},
  };
  for (std::size_t row = 0; row < tools.size(); ++row) {
    for (const char* text : {"", "whale"}) {
      world.PutSearchText(text);
      world.boxes.Expect(kHelpRows[row].result);
      world.Click(tools[row].first, tools[row].second);
    }
  }
}

TEST_F(ToolLinksTest, ABoxThatCannotBeShownIsPassedOver) {
  world.journal.failOn = "MsgBox \"" + kHelpRows[0].result + "\"";
  EXPECT_NO_THROW(world.Click("HILITE", "How to Use?"));
  EXPECT_TRUE(world.journal.Has("FAILED " + world.journal.failOn));
}

TEST_F(ToolLinksTest, EachLinkOpensItsSiteInTheWindowInFront) {
  for (const Row& row : kLinkRows) {
    world.journal.Clear();
    world.ClickTool(row.name, "");
    EXPECT_THAT(world.Effects(), ElementsAre(Navigates(row.result))) << "row " << row.number;
  }
}

TEST_F(ToolLinksTest, TheSubjectsOfTheSideBarAreLinks) {
  for (const char* subject : {"Math", "Social Studies", "Science", "Language"}) {
    world.journal.Clear();
    world.Click("Subjects", subject);
    EXPECT_EQ(world.journal.With("frmBrowser#1.brwWebBrowser.Navigate ").size(), 1U) << subject;
  }
}

TEST_F(ToolLinksTest, TheSubjectsGapsDoNothing) {
  for (const char* gap : {"Tool105", "Tool106", "Tool107"}) {
    world.Click("Subjects", gap);
  }
  EXPECT_THAT(world.journal.lines, IsEmpty());
}

TEST_F(ToolLinksTest, ALinkWithNoChildWindowTellsItsErrorAndTheProgramGoesOn) {
  world.CloseChild();
  for (const Row& row : kLinkRows) {
    world.journal.Clear();
    world.boxes.Expect("91 - Object variable not set");
    EXPECT_NO_THROW(world.ClickTool(row.name, "")) << "row " << row.number;
    EXPECT_THAT(world.Effects(), ElementsAre("MsgBox \"91 - Object variable not set\""));
  }
  EXPECT_TRUE(world.forms.IsLoaded("frmMain"));
  EXPECT_FALSE(world.loop.Ended());
}

TEST_F(ToolLinksTest, ALinkThatFailsTellsItsError) {
  world.journal.failOn = Navigates(kLinkRows[8].result);
  world.boxes.Expect("5 - injected fault");
  EXPECT_NO_THROW(world.Click("Subjects", "Math"));
}

TEST_F(ToolLinksTest, ALinksErrorThatCannotBeToldIsPassedOver) {
  world.CloseChild();
  world.journal.failOn = "MsgBox \"91 - Object variable not set\"";
  EXPECT_NO_THROW(world.Click("Subjects", "Math"));
  EXPECT_TRUE(world.journal.Has("FAILED " + world.journal.failOn));
}

TEST_F(ToolLinksTest, NamesComeBeforeCaptions) {
  world.ClickTool("Math", "&Stop");
  EXPECT_THAT(world.Effects(), ElementsAre(Navigates(kLinkRows[8].result)));
}

TEST_F(ToolLinksTest, ACaptionIsNoNameAndEveryLetterCounts) {
  for (const auto& [name, caption] :
       std::vector<std::pair<std::string, std::string>>{{"x", "Math"},
                                                        {"x", "DictionaryHelp"},
                                                        {"math", ""},
                                                        {"Math ", ""},
                                                        {"", ""},
                                                        {std::string("Math\0", 5), ""},
                                                        {"how to use?", ""}}) {
    world.ClickTool(name, caption);
    EXPECT_THAT(world.Effects(), IsEmpty()) << name << "/" << caption;
  }
}

TEST_F(ToolLinksTest, ALinkIsJudgedByTheGate) {
  world.Click("Subjects", "Science");
  EXPECT_THAT(world.Browser().asked, testing::Not(IsEmpty()));
  world.journal.Clear();
  SaveItem(world.registry, "F_C", "1");
  BadWords[1] = std::string(hosts::kShrekHost);
  world.ClickTool("Shrek", "");
  EXPECT_THAT(world.journal.lines, Contains("refuse " + kLinkRows[4].result));
}

}  // namespace
}  // namespace kivandra
