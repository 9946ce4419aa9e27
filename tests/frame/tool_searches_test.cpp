// SPDX-License-Identifier: GPL-3.0-or-later
// The tools that send the text of the search box to a service.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "frame/frame_world.h"
#include "frame/site_address.h"
#include "hosts.h"

namespace kivandra {
namespace {

using testing::IsEmpty;

const std::string kSponsor = "http://" + std::string(hosts::kProductSite) + "/sponsor.asp";
constexpr const char* kNoSite = "You must have a website displayed before using this feature.";

struct Row {
  int number;
  std::string name;
  std::string caption;
  std::string before;  ///< the address up to the text
  std::string behind;
};

std::string Address(std::string_view host, const char* path) { return "http://" + std::string(host) + path; }

const std::vector<Row> kRows = {
    {47, "doweb", "Tool139", Address(hosts::kWebSearchHost, "/search?q="), ""},
    {49, "dogroups", "Tool135", Address(hosts::kGroupsSearchHost, "/groups?q="), ""},
    {50, "doimages", "Tool132", Address(hosts::kImageSearchHost, "/images?hl=en&safe=off&q="),
     "&site=images"},
    {51, "Tool1", "Yahoo! Quotes", Address(hosts::kYahooQuotesHost, "/q?s="), "&d=v1"},
    {52, "Tool1", "MSN Quotes", Address(hosts::kMsnQuotesHost, "/scripts/webquote.dll?ipage=qd&symbol="), ""},
    {53, "dodictionary", "Tool130", Address(hosts::kDictionaryHost, "/cgi-bin/dict.pl?term="), "&db=*"},
};

/// Every tool that a search box without text leaves without an answer.
const std::vector<std::pair<std::string, std::string>> kSearchTools = {
    {"SearchTheWeb", "doweb"},         {"Search This Site?", "dosite"}, {"Search by Groups?", "dogroups"},
    {"Search by Images?", "doimages"}, {"Dictionary?", "dodictionary"}, {"Stock Quotes", "Yahoo! Quotes"},
    {"Stock Quotes", "MSN Quotes"},    {"Tools", "Highlight"},
};

std::string Navigates(const std::string& address, int child) {
  return "frmBrowser#" + std::to_string(child) + ".brwWebBrowser.Navigate \"" + address + "\"";
}

struct ToolSearchesTest : testing::Test {
  FrameWorld world;
  int windows = 1;

  /// Clicks with a text in the search box; whether one new window was opened and `address` was the last that
  /// was gone to, there, and the window in front before was left alone.
  testing::AssertionResult Opens(const std::string& name, const std::string& caption, const std::string& text,
                                 const std::string& address) {
    world.journal.Clear();
    world.PutSearchText(text);
    world.ClickTool(name, caption);
    ++windows;
    const auto effects = world.Effects();
    if (world.journal.Count("Load frmBrowser") != 1) {
      return testing::AssertionFailure() << "no new window, or too many";
    }
    if (effects.back() != Navigates(address, windows)) {
      return testing::AssertionFailure() << "goes to " << effects.back().substr(0, 300);
    }
    const std::string before = "frmBrowser#" + std::to_string(windows - 1) + ".brwWebBrowser.Navigate";
    if (!world.journal.With(before).empty()) {
      return testing::AssertionFailure() << "goes somewhere in the old window";
    }
    return testing::AssertionSuccess();
  }
};

TEST_F(ToolSearchesTest, EachSearchOpensItsServiceInANewWindow) {
  for (const Row& row : kRows) {
    EXPECT_TRUE(Opens(row.name, row.caption, "whale", row.before + "whale" + row.behind))
        << "row " << row.number;
  }
}

TEST_F(ToolSearchesTest, TheTextGoesOutAsItWasTyped) {
  const std::vector<std::string> texts = {"a b",
                                          "  a  ",
                                          "c&d",
                                          "100% + more",
                                          "%41",
                                          "\"whale\" 'song'",
                                          "a#b?c=d/e\\f",
                                          "<script>",
                                          "кит 鯨 🐋",
                                          "ballena ¿qué?",
                                          std::string(10000, 'x'),
                                          std::string("a\0b", 3),
                                          "\xff\xfe",
                                          "a\nb\r",
                                          " ",
                                          "*"};
  for (const Row& row : kRows) {
    for (const std::string& text : texts) {
      EXPECT_TRUE(Opens(row.name, row.caption, text, row.before + text + row.behind))
          << "row " << row.number << ": " << text.substr(0, 40);
    }
  }
}

TEST_F(ToolSearchesTest, ASearchForTwoWordsKeepsTheBlank) {
  EXPECT_TRUE(Opens("doweb", "Tool139", "a b", Address(hosts::kWebSearchHost, "/search?q=a b")));
}

TEST_F(ToolSearchesTest, ASearchWithAnAmpersandIsSplitAtTheService) {
  EXPECT_TRUE(Opens("doweb", "Tool139", "c&d", Address(hosts::kWebSearchHost, "/search?q=c&d")));
}

TEST_F(ToolSearchesTest, TheGroupsAreSearchedIfTheToolIsReached) {
  world.PutSearchText("whale");
  world.Click("Search by Groups?", "dogroups");
  EXPECT_EQ(world.Effects().back(), Navigates(Address(hosts::kGroupsSearchHost, "/groups?q=whale"), 2));
}

TEST_F(ToolSearchesTest, WithAnEmptyBoxNoSearchToolDoesAnythingOrSaysAnything) {
  for (const auto& [band, tool] : kSearchTools) {
    world.Click(band, tool);
    EXPECT_THAT(world.journal.lines, IsEmpty()) << tool;
  }
}

TEST_F(ToolSearchesTest, NoSearchToolIsEverDisabled) {
  for (const auto& [band, tool] : kSearchTools) {
    EXPECT_TRUE(world.ToolOf(band, tool).data.enabled) << tool;
  }
}

TEST_F(ToolSearchesTest, EachSearchLeavesOneMoreWindowOpen) {
  world.PutSearchText("whale");
  for (int search = 1; search <= 5; ++search) {
    world.Click("SearchTheWeb", "doweb");
  }
  EXPECT_EQ(world.journal.Count("Load frmBrowser"), 5);
  for (int child = 1; child <= 6; ++child) {
    EXPECT_TRUE(world.forms.IsLoaded("frmBrowser#" + std::to_string(child))) << child;
  }
}

TEST_F(ToolSearchesTest, ASearchWorksWithNoChildWindow) {
  for (const Row& row : kRows) {
    world.Child(windows).Close(UnloadMode::ControlMenu);
    EXPECT_TRUE(Opens(row.name, row.caption, "whale", row.before + "whale" + row.behind))
        << "row " << row.number;
  }
}

TEST_F(ToolSearchesTest, ASearchLowersTheBypass) {
  BackBypass = true;
  EXPECT_TRUE(Opens("doweb", "Tool139", "whale", Address(hosts::kWebSearchHost, "/search?q=whale")));
  EXPECT_FALSE(BackBypass);
}

TEST_F(ToolSearchesTest, TheKeysOfTheSearchesAreMixed) {
  // A quote tool by its name, or a search by its caption, is no row: the sponsor's page opens.
  EXPECT_TRUE(Opens("Yahoo! Quotes", "x", "whale", kSponsor));
  EXPECT_TRUE(Opens("x", "doweb", "whale", kSponsor));
  // The order decides where two rows fit.
  EXPECT_TRUE(Opens("dodictionary", "MSN Quotes", "w",
                    Address(hosts::kMsnQuotesHost, "/scripts/webquote.dll?ipage=qd&symbol=w")));
  EXPECT_TRUE(Opens("doweb", "MSN Quotes", "w", Address(hosts::kWebSearchHost, "/search?q=w")));
}

TEST_F(ToolSearchesTest, TheHeaderOfADropDownWithTextInTheBoxOpensTheSponsorsPageInANewWindow) {
  world.PutSearchText("whale");
  int child = 1;
  for (const auto& [band, tool] :
       std::vector<std::pair<std::string, std::string>>{{"Bonus Bar", "SearchCriteria"},
                                                        {"Bonus Bar", "Tools"},
                                                        {"Bonus Bar", "Help"},
                                                        {"SearchBy", "Search The Web"},
                                                        {"SearchBy", "Stock  Quotes"},
                                                        {"Tools", "Text Size"},
                                                        {"Tools", "Translation"}}) {
    world.journal.Clear();
    world.Click(band, tool);
    EXPECT_EQ(world.journal.Count("Load frmBrowser"), 1) << tool;
    EXPECT_EQ(world.Effects().back(), Navigates(kSponsor, ++child)) << tool;
  }
}

TEST_F(ToolSearchesTest, TheHeaderOfADropDownWithAnEmptyBoxDoesNothing) {
  for (const auto& [band, tool] : std::vector<std::pair<std::string, std::string>>{
           {"Bonus Bar", "SearchCriteria"}, {"Bonus Bar", "Tools"}, {"SearchBy", "Dictionary"}}) {
    world.Click(band, tool);
    EXPECT_THAT(world.journal.lines, IsEmpty()) << tool;
  }
}

TEST_F(ToolSearchesTest, AWindowThatCannotBeOpenedForTheSponsorIsPassedOver) {
  world.PutSearchText("whale");
  world.journal.failOn = "Load frmBrowser";
  EXPECT_NO_THROW(world.Click("Bonus Bar", "Tools"));
  EXPECT_THAT(world.journal.With("Navigate"), IsEmpty());
}

TEST_F(ToolSearchesTest, ASearchInTheSiteCutsTheAddressAndKeepsItsScheme) {
  for (const auto& [url, site] :
       std::vector<std::pair<std::string, std::string>>{{"http://example.com/x", "http://example.com"},
                                                        {"http://example.net/x", "http://example.net/"},
                                                        {"http://example.edu/x", "http"}}) {
    world.Browser(windows).locationURL = url;
    EXPECT_TRUE(Opens("dosite", "Tool137", "two words & more",
                      Address(hosts::kWebSearchHost, "/search?q=site:") + site + "+two words & more"));
  }
}

TEST_F(ToolSearchesTest, ASearchInTheSiteWithNoChildWindowTellsSoAndOpensNothing) {
  world.CloseChild();
  world.PutSearchText("whale");
  world.boxes.Expect(kNoSite);
  world.Click("Search This Site?", "dosite");
  EXPECT_THAT(world.Effects(), testing::ElementsAre("MsgBox \"" + std::string(kNoSite) + "\""));
}

TEST_F(ToolSearchesTest, ASearchInTheSiteThatFailsAnywhereTellsTheSame) {
  const std::string address = Address(hosts::kWebSearchHost, "/search?q=site:http+whale");
  for (const std::string& fault : {std::string("Load frmBrowser"), Navigates(address, 2)}) {
    FrameWorld broken;
    broken.PutSearchText("whale");
    broken.Browser().locationURL = "http://example.edu/";
    broken.journal.failOn = fault;
    broken.boxes.Expect(kNoSite);
    EXPECT_NO_THROW(broken.Click("Search This Site?", "dosite"));
    EXPECT_TRUE(broken.journal.Has("FAILED " + fault));
  }
}

TEST_F(ToolSearchesTest, ASearchThatFailsAnywhereIsSilent) {
  for (long call = 1; call <= 60; ++call) {
    FrameWorld broken;
    broken.PutSearchText("whale");
    broken.journal.calls = 0;
    broken.journal.failAt = call;
    EXPECT_NO_THROW(broken.Click("SearchTheWeb", "doweb")) << "call " << call;
    EXPECT_THAT(broken.journal.With("MsgBox"), IsEmpty()) << "call " << call;
    EXPECT_FALSE(BackBypass) << "call " << call;
    if (broken.journal.calls < call) {
      return;
    }
  }
  FAIL() << "a search never ends";
}

TEST(SiteAddressTest, TakesEverythingUpToTheFirstDotCom) {
  EXPECT_EQ(SiteAddress("http://example.com/x"), "http://example.com");
  EXPECT_EQ(SiteAddress("http://a.com.b.com/"), "http://a.com");
  EXPECT_EQ(SiteAddress("https://www.example.com:8080/x?y=z"), "https://www.example.com");
}

TEST(SiteAddressTest, TakesOneCharacterMoreBehindDotNetAndDotOrg) {
  EXPECT_EQ(SiteAddress("http://example.net/x"), "http://example.net/");
  EXPECT_EQ(SiteAddress("http://example.org/x"), "http://example.org/");
  EXPECT_EQ(SiteAddress("http://example.org:80/x"), "http://example.org:");
}

TEST(SiteAddressTest, HasNoOneCharacterMoreWhereTheAddressEnds) {
  EXPECT_EQ(SiteAddress("http://example.net"), "http://example.net");
  EXPECT_EQ(SiteAddress("http://example.org"), "http://example.org");
}

TEST(SiteAddressTest, TriesDotComFirstWhereverTheOthersStand) {
  EXPECT_EQ(SiteAddress("http://example.com.org/"), "http://example.com");
  EXPECT_EQ(SiteAddress("http://example.org/see.com/x"), "http://example.org/see.com");
  EXPECT_EQ(SiteAddress("http://example.net/?from=a.com&x"), "http://example.net/?from=a.com");
  EXPECT_EQ(SiteAddress("http://example.org/a.net/"), "http://example.org/a.net/");
  EXPECT_EQ(SiteAddress("http://www.commerce.edu/x"), "http://www.com");
  EXPECT_EQ(SiteAddress("http://www.computer.org/"), "http://www.com");
}

TEST(SiteAddressTest, KeepsFourCharactersOfAnyOtherAddress) {
  EXPECT_EQ(SiteAddress("http://example.edu/x"), "http");
  EXPECT_EQ(SiteAddress("file:///home/page.htm"), "file");
  EXPECT_EQ(SiteAddress("http://kivandra.localhost:14505/"), "http");
  EXPECT_EQ(SiteAddress("abc"), "abc");
  EXPECT_EQ(SiteAddress(""), "");
}

TEST(SiteAddressTest, SeesSmallLettersAlone) {
  EXPECT_EQ(SiteAddress("http://EXAMPLE.COM/x"), "http");
  EXPECT_EQ(SiteAddress("http://EXAMPLE.COM/x.org/y"), "http://EXAMPLE.COM/x.org/");
}

TEST(SiteAddressTest, TakesLongAndOddAddressesAsTheyAre) {
  const std::string longHost = "http://" + std::string(100000, 'a');
  EXPECT_EQ(SiteAddress(longHost + ".com/x"), longHost + ".com");
  EXPECT_EQ(SiteAddress(std::string("ht\0p://a.net\0x", 14)), std::string("ht\0p://a.net\0", 13));
}

}  // namespace
}  // namespace kivandra
