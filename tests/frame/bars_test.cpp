// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/bars.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>

#include "frame/frame_world.h"

namespace kivandra {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Every band with its name, caption, kind and, after a colon, row or child band; below it its tools: name,
// caption, kind and display, picture, what it opens, width in pixels, tool tip. A dot stands for nothing; an
// enabled tool says nothing of it. Blanks around a bar do not count, but two blanks inside a text do.
constexpr const char* kBars = R"(
BAND Bonus Bar | Bonus Bar | tool bar:2
  SearchCriteria | Search | edit | . | SearchBy | 193 | Enter search word here and then choose method in adjoining dropdown box
  sep1 | . | separator | . | . | . | .
  Tools | Tools | beside | 44 | Tools | . | .
  sep3 | . | separator | . | . | . | .
  Find | Find | beside | 21 | . | . | .
  sep2 | . | separator | . | . | . | .
  AddressBar | Tool73 | hosted | . | . | . | .
  btnGo | btnGo | picture | 61 | . | . | .
  sep4 | . | separator | . | . | . | .
  Site Of The Month | Site Of The Month | picture | 50 | . | 120 | Site Of The Month
  sep5 | . | separator | . | . | . | .
  Help | Help | beside | 34 | Help_Expanded | . | .
BAND SearchBy | SearchBy | drop-down
  Search The Web | Search The Web | beside | 25 | SearchTheWeb | . | .
  Search This Site | Search This Site | beside | 26 | Search This Site? | . | .
  Search by Images | Search by Images | beside | 28 | Search by Images? | . | .
  Dictionary | Dictionary | beside | 32 | Dictionary? | . | .
  Tool44 | . | separator | . | . | . | .
  Stock  Quotes | Stock  Quotes | beside | 29 | Stock Quotes | . | .
BAND Stock Quotes | Band3 | drop-down
  Yahoo! Quotes | Yahoo! Quotes | beside | 30 | . | . | .
  MSN Quotes | MSN Quotes | beside | 31 | . | . | .
BAND Tools | Tools | drop-down
  Highlight | Highlight | beside | 45 | HILITE | . | Enter a word in the search box and this feature will highlight it on the current web page
  Tool15 | . | separator | . | . | . | .
  Notepad | Notepad | beside | 40 | . | . | .
  Wordpad | Wordpad | beside | 41 | . | . | .
  Tool14 | . | separator | . | . | . | .
  Calculator | Calculator | beside | 39 | . | . | .
  Volume | Volume | beside | 43 | . | . | .
  Text Size | Text Size | beside | 46 | Text Size | . | .
  Translation | Translation | beside | 47 | Translation | . | .
BAND Help_Expanded | Help_Expanded | drop-down
  How to Use | How to Use | beside | 35 | . | . | .
  On-Line Support | On-Line Support | beside | 37 | . | . | .
  Tool7 | . | separator | . | . | . | .
  Advertise | Advertise | beside | 38 | . | . | .
  Banner Free Browser | Banner Free Browser | beside | 36 | . | . | .
BAND Text Size | Text Size | drop-down
  Largest | Largest | words | . | . | . | .
  Larger | Larger | words | . | . | . | .
  Medium | Medium | words | . | . | . | .
  Smaller | Smaller | words | . | . | . | .
  Smallest | Smallest | words | . | . | . | .
BAND Translation | Translation | drop-down
  World Lingo | World Lingo | beside | 48 | . | . | .
  Systran | Systran | beside | 49 | . | . | .
BAND MainBar | MainBar | tool bar:1
  Back | &Back | above | 51 | . | . | .
  Forward | &Forward | above | 52 | . | . | .
  Refresh | &Refresh | above | 53 | . | . | .
  Stop | &Stop | above | 54 | . | . | .
  Home | &Home | above | 55 | . | . | .
  Print | &Print | above | 56 | . | . | .
  Lock | &Lock | above, disabled | 58 | . | . | .
  Tool68 | . | separator | . | . | . | .
  Spacer | Spacer | hosted | . | . | . | .
  Banner | Banner | hosted | . | . | . | .
  LogoBox | LogoBox | hosted | . | . | . | .
BAND SideBar | SideBar | side bar:Subjects
BAND Subjects | Subjects | child band
  Math | . | picture | 114 | . | . | .
  Tool105 | Tool105 | spacer | . | . | . | .
  Language | Language | picture | 115 | . | . | .
  Tool106 | Tool106 | spacer | . | . | . | .
  Science | Science | picture | 116 | . | . | .
  Tool107 | Tool107 | spacer | . | . | . | .
  Social Studies | Social Studies | picture | 117 | . | . | .
BAND HILITE | Band10 | drop-down
  How to Use? | Tool121 | picture | 138 | . | . | Click here to learn how to use the Highlight feature
BAND SearchTheWeb | Band11 | drop-down
  doweb | Tool139 | picture | 149 | . | . | .
  Tool138 | . | separator | . | . | . | .
  SearchTheWeb | Tool122 | picture | 139 | . | . | .
BAND Search This Site? | Band12 | drop-down
  dosite | Tool137 | picture | 148 | . | . | .
  Tool136 | . | separator | . | . | . | .
  SearchThisSite | Tool124 | picture | 140 | . | . | .
BAND Search by Groups? | Band13 | drop-down
  dogroups | Tool135 | picture | 147 | . | . | .
  Tool134 | . | separator | . | . | . | .
  SearchbyGroups | Tool125 | picture | 141 | . | . | .
BAND Search by Images? | Band14 | drop-down
  doimages | Tool132 | picture | 146 | . | . | .
  Tool131 | . | separator | . | . | . | .
  SearchbyImages | Tool126 | picture | 142 | . | . | .
BAND Dictionary? | Band15 | drop-down
  dodictionary | Tool130 | picture | 145 | . | . | .
  slash | . | separator | 144 | . | . | .
  DictionaryHelp | Tool127 | picture | 143 | . | . | .
)";

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    if (!line.empty()) {
      lines.push_back(line);
    }
  }
  return lines;
}

std::string OrDot(const std::string& text) { return text.empty() ? "." : text; }

std::string Told(const BandData& band) {
  std::string kind;
  switch (band.kind) {
    case BandKind::ToolBar:
      kind = "tool bar:" + std::to_string(band.row);
      break;
    case BandKind::DropDown:
      kind = "drop-down";
      break;
    case BandKind::SideBar:
      kind = "side bar:" + band.childBand;
      break;
    case BandKind::ChildBand:
      kind = "child band";
      break;
  }
  return "BAND " + band.name + " | " + band.caption + " | " + kind;
}

std::string KindOf(const ToolData& tool) {
  switch (tool.kind) {
    case ToolKind::Edit:
      return "edit";
    case ToolKind::Separator:
      return "separator";
    case ToolKind::Spacer:
      return "spacer";
    case ToolKind::Hosted:
      return "hosted";
    case ToolKind::Button:
      break;
  }
  switch (tool.display) {
    case ToolDisplay::Image:
      return "picture";
    case ToolDisplay::Text:
      return "words";
    case ToolDisplay::ImageAndText:
      return "beside";
    case ToolDisplay::ImageAboveText:
      return "above";
  }
  return "?";
}

std::string Told(const ToolData& tool) {
  const std::string width = tool.width == -1       ? "."
                            : tool.width % 15 == 0 ? std::to_string(tool.width / 15)
                                                   : std::to_string(tool.width) + " twips";
  return "  " + tool.name + " | " + OrDot(tool.caption) + " | " + KindOf(tool) +
         (tool.enabled ? "" : ", disabled") + " | " + (tool.image == -1 ? "." : std::to_string(tool.image)) +
         " | " + OrDot(tool.subBand) + " | " + width + " | " + OrDot(tool.toolTip);
}

const BandData& BandOf(const std::string& name) {
  const auto& bands = BonusBarData();
  return *std::find_if(bands.begin(), bands.end(), [&](const BandData& band) { return band.name == name; });
}

TEST(BarsTest, EveryBandAndToolStandsAsItWasLaidDown) {
  const std::vector<std::string> expected = Lines(kBars);
  std::vector<std::string> found;
  for (const BandData& band : BonusBarData()) {
    found.push_back(Told(band));
    for (const ToolData& tool : band.tools) {
      found.push_back(Told(tool));
    }
  }
  ASSERT_EQ(found.size(), expected.size());
  for (std::size_t row = 0; row < expected.size(); ++row) {
    EXPECT_EQ(found[row], expected[row]);
  }
}

TEST(BarsTest, EachBandHasAsManyToolsAsItWasLaidDownWith) {
  std::vector<std::pair<std::string, std::size_t>> counts;
  for (const BandData& band : BonusBarData()) {
    counts.emplace_back(band.name, band.tools.size());
  }
  using Count = std::pair<std::string, std::size_t>;
  EXPECT_THAT(counts, ElementsAre(Count("Bonus Bar", 12), Count("SearchBy", 6), Count("Stock Quotes", 2),
                                  Count("Tools", 9), Count("Help_Expanded", 5), Count("Text Size", 5),
                                  Count("Translation", 2), Count("MainBar", 11), Count("SideBar", 0),
                                  Count("Subjects", 7), Count("HILITE", 1), Count("SearchTheWeb", 3),
                                  Count("Search This Site?", 3), Count("Search by Groups?", 3),
                                  Count("Search by Images?", 3), Count("Dictionary?", 3)));
}

TEST(BarsTest, NoToolStandsTwiceInABandAndEveryDropDownExists) {
  std::set<std::string> bands;
  for (const BandData& band : BonusBarData()) {
    EXPECT_TRUE(bands.insert(band.name).second) << band.name;
  }
  for (const BandData& band : BonusBarData()) {
    std::set<std::string> tools;
    for (const ToolData& tool : band.tools) {
      EXPECT_TRUE(tools.insert(tool.name).second) << band.name << " " << tool.name;
      EXPECT_TRUE(tool.subBand.empty() || bands.count(tool.subBand) == 1) << tool.subBand;
    }
  }
}

TEST(BarsTest, TheSearchBoxNeverOffersASearchOfGroups) {
  for (const BandData& band : BonusBarData()) {
    for (const ToolData& tool : band.tools) {
      EXPECT_NE(tool.subBand, "Search by Groups?") << band.name << " " << tool.name;
    }
  }
  EXPECT_EQ(BandOf("Search by Groups?").tools.front().name, "dogroups");
}

TEST(BarsTest, StockQuotesKeepsItsTwoBlanksAndOpensABandWithOne) {
  const ToolData& quotes = BandOf("SearchBy").tools.back();
  EXPECT_EQ(quotes.name, "Stock  Quotes");
  EXPECT_EQ(quotes.caption, "Stock  Quotes");
  EXPECT_EQ(quotes.subBand, "Stock Quotes");
}

TEST(BarsTest, LockAloneStartsDisabled) {
  std::vector<std::string> disabled;
  for (const BandData& band : BonusBarData()) {
    for (const ToolData& tool : band.tools) {
      if (!tool.enabled) {
        disabled.push_back(tool.name);
      }
    }
  }
  EXPECT_THAT(disabled, ElementsAre("Lock"));
}

struct LaidBarsTest : testing::Test {
  FrameWorld world;

  void Enter(const std::string& band, const std::string& name) {
    world.Frame().BarsOf("BonusBar").toolEntered(world.ToolOf(band, name));
  }
};

TEST_F(LaidBarsTest, LockStartsDisabled) {
  EXPECT_FALSE(world.ToolOf("MainBar", "Lock").data.enabled);
  EXPECT_TRUE(world.ToolOf("MainBar", "Back").data.enabled);
}

TEST_F(LaidBarsTest, AFreshStartShowsTheBarsAsLaidDownWhateverWasLeft) {
  world.ToolOf("Bonus Bar", "SearchCriteria").SetWidth(10);
  world.ToolOf("MainBar", "Lock").SetEnabled(true);
  world.Main().mnuSidebar_Click();
  world.Frame().Close(UnloadMode::ControlMenu);

  world.StartAgain();
  EXPECT_EQ(world.ToolOf("Bonus Bar", "SearchCriteria").data.width, 193 * 15);
  EXPECT_FALSE(world.ToolOf("MainBar", "Lock").data.enabled);
  // The side bar alone is remembered.
  EXPECT_TRUE(world.Frame().BarsOf("BonusBar").Bands("SideBar").Visible());
}

TEST_F(LaidBarsTest, GoingIntoTheSearchBoxEmptiesIt) {
  world.ToolOf("Bonus Bar", "SearchCriteria").text = "a word to be used again";
  Enter("Bonus Bar", "SearchCriteria");
  EXPECT_EQ(world.ToolOf("Bonus Bar", "SearchCriteria").text, "");
}

TEST_F(LaidBarsTest, GoingIntoAnotherToolChangesNothing) {
  for (const BandData& band : BonusBarData()) {
    for (const ToolData& tool : band.tools) {
      if (tool.name != "SearchCriteria") {
        world.ToolOf(band.name, tool.name).text = "kept";
        Enter(band.name, tool.name);
        EXPECT_EQ(world.ToolOf(band.name, tool.name).text, "kept") << tool.name;
      }
    }
  }
  EXPECT_THAT(world.journal.lines, IsEmpty());
}

TEST_F(LaidBarsTest, TheCaptionSearchIsWhatCountsLetterByLetter) {
  auto& bars = world.Frame().BarsOf("BonusBar");
  for (const char* caption : {"search", "&Search", "Search ", "SEARCH", ""}) {
    ToolData data;
    data.name = "SearchCriteria";
    data.caption = caption;
    fakes::FakeBarControl::FakeTool tool(bars, "Bonus Bar", data);
    tool.text = "kept";
    bars.toolEntered(tool);
    EXPECT_EQ(tool.text, "kept") << caption;
  }
  ToolData data;
  data.name = "Another";
  data.caption = "Search";
  fakes::FakeBarControl::FakeTool tool(bars, "Bonus Bar", data);
  tool.text = "lost";
  bars.toolEntered(tool);
  EXPECT_EQ(tool.text, "");
}

TEST_F(LaidBarsTest, ASearchBoxThatCannotBeEmptiedSaysNothing) {
  world.journal.failOn = "frmMain.BonusBar.Bonus Bar.SearchCriteria.Text = \"\"";
  world.ToolOf("Bonus Bar", "SearchCriteria").text = "whale";
  EXPECT_NO_THROW(Enter("Bonus Bar", "SearchCriteria"));
  EXPECT_TRUE(world.journal.Has("FAILED " + world.journal.failOn));
}

}  // namespace
}  // namespace kivandra
