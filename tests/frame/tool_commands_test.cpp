// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of a tool's click that go by the tool's caption.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/user_settings.h"
#include "frame/frame_world.h"
#include "hosts.h"

namespace kivandra {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string kChild = "frmBrowser#1.brwWebBrowser.";
const std::string kSite = "http://" + std::string(hosts::kProductSite);
const std::string kSponsor = kSite + "/sponsor.asp";

std::string Http(std::string_view host, const char* path = "") {
  return "http://" + std::string(host) + path;
}
std::string Navigates(const std::string& address, int child = 1) {
  return "frmBrowser#" + std::to_string(child) + ".brwWebBrowser.Navigate \"" + address + "\"";
}

struct ToolCommandsTest : testing::Test {
  FrameWorld world;

  ToolCommandsTest() {
    world.Browser().back = "http://before.example/";
    world.Browser().forward = "http://after.example/";
    world.Browser().locationURL = "http://page.example/";
    SaveSetting(world.registry, "Kivandra", "Home Page", "URL", "http://home.example/");
  }
  /// Clicks a tool of this caption whose name is no row's.
  std::vector<std::string> Effects(const std::string& caption) {
    world.journal.Clear();
    world.ClickTool("Tool1", caption);
    return world.Effects();
  }
};

TEST_F(ToolCommandsTest, EachCaptionHasItsCommand) {
  struct Row {
    int number;
    std::string caption;
    std::vector<std::string> effects;
  };
  const std::vector<Row> rows = {
      {20, "btnGo", {kChild + "Stop", Navigates("http://www.otters.org")}},
      {21, "&Back", {kChild + "GoBack"}},
      {22, "&Forward", {kChild + "GoForward"}},
      {23, "&Stop", {kChild + "Stop"}},
      {24, "&Refresh", {kChild + "Refresh"}},
      {25, "&Home", {Navigates("http://home.example/")}},
      {26, "Site Of The Month", {Navigates(Http(hosts::kBeritsHost))}},
      {27, "World Lingo", {Navigates(Http(hosts::kWorldLingoHost))}},
      {28, "Systran", {Navigates(Http(hosts::kSystranHost, "/systran/cgi"))}},
      {29, "Largest", {kChild + "ExecWB 19, 2, 4"}},
      {30, "Larger", {kChild + "ExecWB 19, 2, 3"}},
      {31, "Medium", {kChild + "ExecWB 19, 2, 2"}},
      {32, "Smaller", {kChild + "ExecWB 19, 2, 1"}},
      {33, "Smallest", {kChild + "ExecWB 19, 2, 0"}},
      {34, "Wordpad", {"Shell \"Wordpad\", 1"}},
      {35, "&Print", {kChild + "ExecWB 6, 1"}},
      {36, "Volume", {"Shell \"sndvol32.exe\", 1"}},
      {37, "Advertise", {Navigates(kSponsor)}},
      {38, "How to Use", {Navigates(kSite + "/help")}},
      {39, "Banner Free Browser", {"Load BannerFree"}},
      {40, "On-Line Support", {"Load BannerFree"}},
      {43, "Find", {kChild + "SetFocus", "SendKeys \"^{f}\""}},
      {44, "Highlight", {}},
      {45, "Notepad", {"Shell \"notepad.exe\", 1"}},
      {46, "Calculator", {"Shell \"calc.exe\", 1", "SendKeys \"%{v}\"", "SendKeys \"t\""}},
  };
  world.Frame().ComboOf("TheAddress").text = "http://www.otters.org";
  for (const Row& row : rows) {
    EXPECT_EQ(Effects(row.caption), row.effects) << "row " << row.number;
  }
}

TEST_F(ToolCommandsTest, ATextInTheSearchBoxChangesNoCommand) {
  world.PutSearchText("whale");
  EXPECT_THAT(Effects("&Stop"), ElementsAre(kChild + "Stop"));
  EXPECT_THAT(Effects("Notepad"), ElementsAre("Shell \"notepad.exe\", 1"));
  EXPECT_THAT(Effects("btnGo"), testing::Not(testing::Contains(Navigates(kSponsor))));
}

TEST_F(ToolCommandsTest, CaptionsComeBeforeTheNamesOfSearches) {
  world.PutSearchText("whale");
  world.ClickTool("doweb", "&Stop");
  EXPECT_THAT(world.Effects(), ElementsAre(kChild + "Stop"));
}

TEST_F(ToolCommandsTest, CommandsGoByCaptionAndEveryLetterCounts) {
  for (const char* caption : {"Back", "&back", "&Back ", "", "Tool1", "Stop", "Calc"}) {
    EXPECT_THAT(Effects(caption), IsEmpty()) << caption;
  }
  world.ClickTool("&Stop", "Tool1");
  EXPECT_THAT(world.Effects(), IsEmpty());
}

TEST_F(ToolCommandsTest, LockAsksForTheLastBlockedAddress) {
  BlockedURL = "http://bad.example/";
  world.boxes.Expect("Allow http://bad.example/ for this session?",
                     kMsgYesNo + kMsgCritical + kMsgDefaultButton2, "Session Lock", MsgBoxResult::No);
  world.Click("MainBar", "Lock");
}

TEST_F(ToolCommandsTest, BackLiftsTheFilterForThatCallAlone) {
  SaveItem(world.registry, "B_B", "1");
  bool during = false;
  world.Browser().onBack = [&] { during = BackBypass; };
  world.Click("MainBar", "Back");
  EXPECT_TRUE(during);
  EXPECT_FALSE(BackBypass);
}

TEST_F(ToolCommandsTest, BackLiftsNothingUnlessTheSettingSaysSo) {
  for (const char* value : {"0", "", "2", "11", "x1"}) {
    SaveItem(world.registry, "B_B", value);
    bool during = true;
    world.Browser().onBack = [&] { during = BackBypass; };
    world.Click("MainBar", "Back");
    EXPECT_FALSE(during) << value;
  }
}

TEST_F(ToolCommandsTest, BackWithNoPageBehindLeavesTheFilterDown) {
  SaveItem(world.registry, "B_B", "1");
  world.Browser().back.clear();
  EXPECT_NO_THROW(world.Click("MainBar", "Back"));
  EXPECT_FALSE(BackBypass);
}

TEST_F(ToolCommandsTest, BackSurvivesAWindowThatClosesOnTheWay) {
  SaveItem(world.registry, "B_B", "1");
  world.Browser().onBack = [&] { world.Child().Close(UnloadMode::Code); };
  EXPECT_NO_THROW(world.Click("MainBar", "Back"));
  EXPECT_FALSE(BackBypass);
}

TEST_F(ToolCommandsTest, HomeStoresTheProductsHomeWhereNothingIsStored) {
  SaveSetting(world.registry, "Kivandra", "Home Page", "URL", "");
  EXPECT_THAT(Effects("&Home"), ElementsAre(Navigates(std::string(hosts::kProductHome))));
  EXPECT_EQ(GetSetting(world.registry, "Kivandra", "Home Page", "URL"), hosts::kProductHome);
}

TEST_F(ToolCommandsTest, HomeKeepsWhatTheParentStored) {
  Effects("&Home");
  EXPECT_EQ(GetSetting(world.registry, "Kivandra", "Home Page", "URL"), "http://home.example/");
}

TEST_F(ToolCommandsTest, HomeWithNoChildWindowOpensOneAtTheHomePage) {
  world.CloseChild();
  EXPECT_THAT(Effects("&Home"), ElementsAre("Load frmBrowser", Navigates("http://home.example/", 2),
                                            Navigates("http://home.example/", 2)));
}

TEST_F(ToolCommandsTest, AdvertiseWithNoChildWindowOpensOne) {
  world.CloseChild();
  const auto effects = Effects("Advertise");
  ASSERT_FALSE(effects.empty());
  EXPECT_EQ(effects.front(), "Load frmBrowser");
  EXPECT_EQ(effects.back(), Navigates(kSponsor, 2));
}

TEST_F(ToolCommandsTest, AdvertiseInAWindowThatFailsOpensANewOne) {
  world.journal.failOn = Navigates(kSponsor);
  const auto effects = Effects("Advertise");
  EXPECT_EQ(effects.front(), "FAILED " + Navigates(kSponsor));
  EXPECT_EQ(effects.back(), Navigates(kSponsor, 2));
}

TEST_F(ToolCommandsTest, TheWindowsWithoutABannerBearTheirCaptionsAndPages) {
  Effects("Banner Free Browser");
  EXPECT_EQ(world.journal.With("Navigate \"" + kSite + "/bannerfree/\"").size(), 1U);
  EXPECT_TRUE(world.forms.Of("BannerFree").caption.ends_with("Banner Free"));
  Effects("On-Line Support");
  EXPECT_EQ(world.journal.With("Navigate \"" + kSite + "/support.asp\"").size(), 1U);
  EXPECT_TRUE(world.forms.Of("BannerFree").caption.ends_with("Support"));
}

TEST_F(ToolCommandsTest, FindStillSendsItsKeysWhenThePageTakesNoFocus) {
  world.journal.failOn = kChild + "SetFocus";
  EXPECT_THAT(Effects("Find"), ElementsAre("FAILED " + kChild + "SetFocus", "SendKeys \"^{f}\""));
}

TEST_F(ToolCommandsTest, HighlightPaintsTheTextOfTheSearchBox) {
  world.PutSearchText("whale");
  EXPECT_THAT(Effects("Highlight"), ElementsAre(kChild + "Document.PaintText \"whale\", 5000"));
}

TEST_F(ToolCommandsTest, HighlightWithAnEmptySearchBoxDoesNothing) {
  EXPECT_THAT(Effects("Highlight"), IsEmpty());
}

TEST_F(ToolCommandsTest, HighlightThatFailsSaysNothing) {
  world.PutSearchText("whale");
  world.journal.failOn = kChild + "Document.PaintText \"whale\", 5000";
  EXPECT_NO_THROW(Effects("Highlight"));
}

TEST_F(ToolCommandsTest, ACalculatorThatDoesNotStartGetsNoKeys) {
  world.journal.failOn = "Shell \"calc.exe\", 1";
  Effects("Calculator");
  EXPECT_THAT(world.journal.lines, ElementsAre("FAILED Shell \"calc.exe\", 1"));
}

TEST_F(ToolCommandsTest, WithNoChildWindowTheCommandsOnAPageDoNothing) {
  world.CloseChild();
  world.PutSearchText("whale");
  world.Frame().ComboOf("TheAddress").text = "http://www.otters.org";
  for (const char* caption : {"&Lock", "btnGo", "&Back", "&Forward", "&Stop", "&Refresh", "Site Of The Month",
                              "World Lingo", "Systran", "Largest", "Larger", "Medium", "Smaller", "Smallest",
                              "&Print", "How to Use", "Find", "Highlight"}) {
    EXPECT_THAT(Effects(caption), IsEmpty()) << caption;
  }
  EXPECT_FALSE(BackBypass);
}

TEST_F(ToolCommandsTest, WithNoChildWindowTheOutsideProgramsStartAllTheSame) {
  world.CloseChild();
  EXPECT_THAT(Effects("Notepad"), ElementsAre("Shell \"notepad.exe\", 1"));
  EXPECT_THAT(Effects("Wordpad"), ElementsAre("Shell \"Wordpad\", 1"));
  EXPECT_THAT(Effects("Volume"), ElementsAre("Shell \"sndvol32.exe\", 1"));
  EXPECT_EQ(Effects("Calculator").size(), 3U);
  EXPECT_THAT(Effects("On-Line Support"), ElementsAre("Load BannerFree"));
}

TEST_F(ToolCommandsTest, GoOpensWhatWasTypedIntoTheFramesBox) {
  world.Frame().ComboOf("TheAddress").text = "http://www.otters.org";
  world.journal.Clear();
  world.Click("Bonus Bar", "btnGo");
  const auto at = [&](const std::string& line) { return world.journal.Index(line); };
  EXPECT_GE(at(kChild + "Stop"), 0);
  EXPECT_LT(at(kChild + "Stop"), at("frmMain.WebBrowser2.Navigate \"/program/smile.gif\""));
  EXPECT_LT(at("frmMain.WebBrowser2.Navigate \"/program/smile.gif\""),
            at(Navigates("http://www.otters.org")));
}

TEST_F(ToolCommandsTest, GoWithAnEmptyBoxOpensANewWindow) {
  const auto effects = Effects("btnGo");
  ASSERT_GE(effects.size(), 2U);
  EXPECT_EQ(effects.front(), "Load frmBrowser");
  EXPECT_EQ(effects.back(), Navigates(frmBrowser::getURL(""), 2));
}

TEST_F(ToolCommandsTest, EnterInTheFramesBoxIsGo) {
  world.Frame().ComboOf("TheAddress").text = "http://www.otters.org";
  EXPECT_FALSE(world.Frame().ComboOf("TheAddress").Press('A'));
  EXPECT_TRUE(world.Frame().ComboOf("TheAddress").Press(kKeyReturn));
  EXPECT_TRUE(world.journal.Has(Navigates("http://www.otters.org")));
}

TEST_F(ToolCommandsTest, NoSingleFaultLeavesAClickOrLiftsTheFilter) {
  // The sweep: each command again and again, with its first, second, third … call failing.
  for (const char* caption : {"btnGo", "&Back", "&Forward", "&Stop", "&Refresh", "&Home", "Site Of The Month",
                              "Largest", "Wordpad", "&Print", "Volume", "Advertise", "How to Use",
                              "Banner Free Browser", "Find", "Highlight", "Notepad", "Calculator"}) {
    for (long call = 1; call <= 40; ++call) {
      FrameWorld broken;
      SaveItem(broken.registry, "B_B", "1");
      broken.Browser().back = "http://before.example/";
      broken.PutSearchText(caption == std::string("Highlight") ? "whale" : "");
      broken.journal.calls = 0;
      broken.journal.failAt = call;
      EXPECT_NO_THROW(broken.ClickTool("Tool1", caption)) << caption << ", call " << call;
      EXPECT_FALSE(BackBypass) << caption << ", call " << call;
      EXPECT_TRUE(broken.forms.IsLoaded("frmMain"));
      if (broken.journal.calls < call) {
        break;
      }
      ASSERT_LT(call, 40) << caption << " never ends";
    }
  }
}

}  // namespace
}  // namespace kivandra
