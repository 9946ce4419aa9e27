// SPDX-License-Identifier: GPL-3.0-or-later
// What every menu entry does, with a page window in front and without one.
#include <gtest/gtest.h>

#include "core/user_settings.h"
#include "frame/menu_world.h"
#include "frame/menus.h"
#include "hosts.h"

namespace kivandra {
namespace {

using Lines = std::vector<std::string>;

const std::string kBrowser = "frmBrowser#1.brwWebBrowser.";
const std::string kSite = "http://" + std::string(hosts::kProductSite);
const std::string kPreview = "The Print Preview Command is Currently Disabled or Not Available.";
const std::string kDialog = "frmMain.CommonDialog1.";

std::string Http(std::string_view host) { return "http://" + std::string(host); }

struct MenuCommandsTest : testing::Test {
  MenuWorld world;

  /// The journal of one entry in a world of its own, with a child window in front.
  static Lines Of(const std::string& entry) {
    MenuWorld fresh;
    fresh.Start();
    fresh.Choose(entry);
    return fresh.journal.lines;
  }
  static Lines WithoutChild(const std::string& entry) {
    MenuWorld fresh;
    fresh.StartWithoutChild();
    fresh.Choose(entry);
    return fresh.journal.lines;
  }
};

TEST_F(MenuCommandsTest, CommandsOfTheEngineGoToThePageInFront) {
  const std::vector<std::pair<const char*, const char*>> rows = {
      {"mnuFileSave", "ExecWB 4, 1"},      {"mnuFilePrint", "ExecWB 6, 1"},
      {"mnuFilePagesetup", "ExecWB 8, 1"}, {"mnuFileProperties", "ExecWB 10, 1"},
      {"mnuEditCut", "ExecWB 11, 0"},      {"mnuEditCopy", "ExecWB 12, 0"},
      {"mnuEditPaste", "ExecWB 13, 0"},    {"mnuLargest", "ExecWB 19, 2, 4"},
      {"mnuLarger", "ExecWB 19, 2, 3"},    {"mnuMedium", "ExecWB 19, 2, 2"},
      {"mnuSmaller", "ExecWB 19, 2, 1"},   {"mnuSmallest", "ExecWB 19, 2, 0"},
  };
  for (const auto& [entry, effect] : rows) {
    EXPECT_EQ(Of(entry), Lines{kBrowser + effect}) << entry;
    EXPECT_EQ(WithoutChild(entry), Lines{}) << entry;
  }
}

TEST_F(MenuCommandsTest, TextSizeWithoutAWindowDoesNothing) {
  for (const char* entry : {"mnuLargest", "mnuLarger", "mnuMedium", "mnuSmaller", "mnuSmallest"}) {
    EXPECT_EQ(WithoutChild(entry), Lines{}) << entry;
  }
}

TEST_F(MenuCommandsTest, SelectAllTakesTheFocusToTheWindowFirst) {
  const Lines expected = {"frmBrowser#1.SetFocus", kBrowser + "ExecWB 17, 0"};
  EXPECT_EQ(Of("mnuEditSelectall"), expected);
  EXPECT_EQ(WithoutChild("mnuEditSelectall"), Lines{});
}

TEST_F(MenuCommandsTest, LinksOpenTheirPageInTheWindowInFront) {
  const std::vector<std::pair<const char*, std::string>> rows = {
      {"mnuRegister", kSite + "/help"},
      {"mnuSupport", kSite + "/support.asp"},
      {"mnuListSite", kSite + "/getlisted"},
      {"mnuDisney", Http(hosts::kDisneyHost)},
      {"mnuYahooligans", Http(hosts::kYahooligansHost)},
      {"mnuBerits", Http(hosts::kBeritsHost)},
      {"mnuSesamestreet", Http(hosts::kSesameStreetHost)},
      {"mnubarney", Http(hosts::kBarneyHost)},
      {"mnuChildrenTelevisionWorkshop", Http(hosts::kTelevisionWorkshopHost)},
      {"Mnu4Kids", Http(hosts::k4KidsHost)},
      {"mnuFamilyInternet", Http(hosts::kFamilyInternetHost)},
      {"mnuWorldLingo", Http(hosts::kWorldLingoHost)},
      {"mnuSystran", Http(hosts::kSystranHost) + "/systran/cgi"},
  };
  for (const auto& [entry, address] : rows) {
    const Lines lines = Of(entry);
    ASSERT_FALSE(lines.empty()) << entry;
    EXPECT_EQ(lines[0], kBrowser + "Navigate \"" + address + "\"") << entry;
    EXPECT_EQ(WithoutChild(entry), Lines{}) << entry;
  }
}

TEST_F(MenuCommandsTest, LinksAreJudgedLikeAnyNavigation) {
  world.Start();
  world.Choose("mnuDisney");
  EXPECT_TRUE(world.inet1.Waits(Http(hosts::kDisneyHost)));
  world.inet1.Answer(Http(hosts::kDisneyHost), "some porn");
  EXPECT_TRUE(world.journal.Has("refuse " + Http(hosts::kDisneyHost)));
}

TEST_F(MenuCommandsTest, ANewWindowGoesToTheStoredHomePage) {
  world.Start();
  SaveSetting(world.registry, "Kivandra", "Home Page", "URL", "http://home.example/");
  BackBypass = true;
  world.Choose("mnuFileNew");
  EXPECT_TRUE(world.journal.Has("Load frmBrowser"));
  EXPECT_EQ(world.journal.Count("frmBrowser#2.brwWebBrowser.Navigate \"http://home.example/\""), 2);
  EXPECT_FALSE(BackBypass);
}

TEST_F(MenuCommandsTest, ANewWindowGoesToTheProductsHomeIfNoneIsStored) {
  world.StartWithoutChild();
  world.Choose("mnuFileNew");
  EXPECT_TRUE(
      world.journal.Has("frmBrowser#2.brwWebBrowser.Navigate \"" + std::string(hosts::kProductHome) + "\""));
  EXPECT_TRUE(world.Child(2).visible);
}

TEST_F(MenuCommandsTest, OpenAsksForAFileAndGoesThere) {
  world.Start();
  world.Dialog().answer = "/home/child/page.html";
  world.Choose("mnuFileOpen");
  const Lines expected = {kDialog +
                              "Filter = \"Web Pages and Office Documents (*.doc, *.xls, *.ppt, *.htm, "
                              "*.html)|*.doc;*.xls;*.ppt;*.htm;*.html\"",
                          kDialog + "FilterIndex = 1", kDialog + "Flags = 4100", kDialog + "ShowOpen",
                          kBrowser + "Navigate \"/home/child/page.html\""};
  auto lines = world.journal.lines;
  ASSERT_GE(lines.size(), expected.size());
  lines.resize(expected.size());
  EXPECT_EQ(lines, expected);
}

TEST_F(MenuCommandsTest, OpenTakesDocumentsOfAnOfficeToo) {
  world.Start();
  for (const char* file : {"/home/child/letter.doc", "/home/child/sums.xls", "/home/child/talk.ppt"}) {
    world.Dialog().answer = file;
    world.Choose("mnuFileOpen");
    EXPECT_TRUE(world.journal.Has(kBrowser + "Navigate \"" + file + "\"")) << file;
  }
}

TEST_F(MenuCommandsTest, OpenGoesNowhereWhenItIsCancelled) {
  world.Start();
  world.Choose("mnuFileOpen");
  EXPECT_TRUE(world.journal.With("Navigate").empty());
}

TEST_F(MenuCommandsTest, OpenWithoutAWindowAsksAndThenDoesNothing) {
  world.StartWithoutChild();
  world.Dialog().answer = "/home/child/page.html";
  world.Choose("mnuFileOpen");
  EXPECT_TRUE(world.journal.Has(kDialog + "ShowOpen"));
  EXPECT_TRUE(world.journal.With("Navigate").empty());
}

TEST_F(MenuCommandsTest, PrintPreviewIsNeverThere) {
  world.Start();
  world.boxes.Expect(kPreview);
  world.Choose("mnuPrintPreview");
  const Lines expected = {kBrowser + "QueryStatusWB 7", "MsgBox \"" + kPreview + "\""};
  EXPECT_EQ(world.journal.lines, expected);
}

TEST_F(MenuCommandsTest, PrintPreviewSaysNothingIfItCannotAsk) {
  EXPECT_EQ(WithoutChild("mnuPrintPreview"), Lines{});
  world.Start();
  world.journal.failOn = kBrowser + "QueryStatusWB 7";
  world.Choose("mnuPrintPreview");
  EXPECT_EQ(world.journal.lines, Lines{"FAILED " + kBrowser + "QueryStatusWB 7"});
}

TEST_F(MenuCommandsTest, ExitClosesThePanelAndThenTheProgram) {
  world.Start();
  world.forms.Load("frmOptions");
  world.Choose("mnuFileExit");
  EXPECT_GE(world.journal.Index("frmOptions.Unload"), 0);
  EXPECT_LT(world.journal.Index("frmOptions.Unload"), world.journal.Index("frmMain.Unload"));
  EXPECT_TRUE(world.journal.Has("sndPlaySoundA \"/program/shutdowninprocess.wav\", 3"));
  EXPECT_TRUE(world.forms.Loaded().empty());
}

TEST_F(MenuCommandsTest, ExitWithoutThePanelDoesNotLoadIt) {
  world.Start();
  world.Choose("mnuFileExit");
  EXPECT_TRUE(world.journal.With("Load ").empty());
  EXPECT_TRUE(world.forms.Loaded().empty());
}

TEST_F(MenuCommandsTest, FindRaisesItsFlagOnlyWhileItSendsItsKeyStrokes) {
  world.Start();
  bool raised = false;
  world.journal.watch = [&](const std::string& line) {
    if (line == "SendKeys \"^{f}\"") {
      raised = FindDialogOpen;
    }
  };
  world.Choose("mnuEditFind");
  EXPECT_TRUE(raised);
  EXPECT_FALSE(FindDialogOpen);
  const Lines expected = {kBrowser + "SetFocus", "SendKeys \"^{f}\""};
  EXPECT_EQ(world.journal.lines, expected);
}

TEST_F(MenuCommandsTest, FindWithoutAWindowSendsItsKeyStrokesAllTheSame) {
  EXPECT_EQ(WithoutChild("mnuEditFind"), Lines{"SendKeys \"^{f}\""});
  EXPECT_FALSE(FindDialogOpen);
}

TEST_F(MenuCommandsTest, OutsideProgramsAreStartedInANormalWindow) {
  const std::vector<std::pair<const char*, const char*>> rows = {
      {"mnuNotepad", "notepad.exe"},
      {"mnuWordpad", "Wordpad"},
      {"mnuCalc", "calc.exe"},
      {"mnuSound", "sndvol32.exe"},
      {"mnuContentAdvisor", "rundll32.exe shell32.dll,Control_RunDLL inetcpl.cpl,,2"},
  };
  for (const auto& [entry, program] : rows) {
    const Lines expected = {"Shell \"" + std::string(program) + "\", 1"};
    EXPECT_EQ(Of(entry), expected) << entry;
    EXPECT_EQ(WithoutChild(entry), expected) << entry;
  }
}

TEST_F(MenuCommandsTest, AProgramThatDoesNotStartIsPassedOver) {
  world.Start();
  for (const auto& [entry, program] :
       {std::pair("mnuNotepad", "notepad.exe"), {"mnuWordpad", "Wordpad"}, {"mnuSound", "sndvol32.exe"}}) {
    world.journal.failOn = "Shell \"" + std::string(program) + "\", 1";
    world.Choose(entry);
    EXPECT_TRUE(world.journal.Has("FAILED " + world.journal.failOn)) << entry;
  }
  EXPECT_TRUE(world.journal.With("MsgBox").empty());
}

TEST_F(MenuCommandsTest, ACalculatorThatDoesNotStartIsTold) {
  world.Start();
  world.journal.failOn = "Shell \"calc.exe\", 1";
  world.boxes.Expect("5 - injected fault");
  world.Choose("mnuCalc");
}

TEST_F(MenuCommandsTest, PicturesAreFlippedByKeyStrokesAndThePageComesBackTwoSecondsLater) {
  world.Start();
  world.Choose("mnuImages");
  Lines expected = {"Shell \"rundll32.exe shell32.dll,Control_RunDLL inetcpl.cpl,,6\", 1"};
  expected.insert(expected.end(), 45, "SendKeys \"{DOWN}\"");
  expected.insert(expected.end(), {"SendKeys \"( )\"", "SendKeys \"{TAB}\"", "SendKeys \"{TAB}\"",
                                   "SendKeys \"( )\"", "frmMain.Refreshtimer.Enabled = True"});
  EXPECT_EQ(world.journal.lines, expected);
  world.journal.Clear();
  world.loop.Advance(1999);
  EXPECT_TRUE(world.journal.lines.empty());
  world.loop.Advance(1);
  ASSERT_GE(world.journal.lines.size(), 2U);
  EXPECT_EQ(world.journal.lines[0], "frmMain.Refreshtimer.Enabled = False");
  EXPECT_EQ(world.journal.lines[1], kBrowser + "Refresh");
  world.loop.Advance(10000);
  EXPECT_EQ(world.journal.Count(kBrowser + "Refresh"), 1);
}

TEST_F(MenuCommandsTest, PicturesWithoutAWindowAreFlippedAndNothingIsRefreshed) {
  world.StartWithoutChild();
  world.Choose("mnuImages");
  world.loop.Advance(2000);
  EXPECT_EQ(world.journal.Count("SendKeys \"{DOWN}\""), 45);
  EXPECT_EQ(world.journal.lines.back(), "frmMain.Refreshtimer.Enabled = False");
}

TEST_F(MenuCommandsTest, GoingBackByTheMenuIsFilteredWhateverTheParentSaysOfTheTool) {
  world.Start();
  SaveItem(world.registry, "B_B", "1");
  world.Browser().back = "http://www.porn.org";
  world.Browser().onBack = [] { EXPECT_FALSE(BackBypass); };
  world.Choose("mnuGoBack");
  EXPECT_TRUE(world.journal.Has("refuse http://www.porn.org"));
}

TEST_F(MenuCommandsTest, GoingForwardGoesForward) {
  world.Start();
  world.Browser().forward = "http://next.example/";
  world.Choose("mnuGoForward");
  EXPECT_EQ(world.journal.lines.at(0), kBrowser + "GoForward");
}

TEST_F(MenuCommandsTest, GoingWhereThereIsNoPageSaysNothing) {
  EXPECT_EQ(Of("mnuGoBack"), Lines{kBrowser + "GoBack"});
  EXPECT_EQ(Of("mnuGoForward"), Lines{kBrowser + "GoForward"});
  EXPECT_EQ(WithoutChild("mnuGoBack"), Lines{});
  EXPECT_EQ(WithoutChild("mnuGoForward"), Lines{});
}

TEST_F(MenuCommandsTest, FavouritesAreLeftToTheirRoom) {
  world.Start();
  world.Child().ComboOf("cboAddress").text = "http://typed.example/";
  world.Choose("wow_Click");
  world.Choose("mnuAddFavourites");
  world.Choose("mnuAddFav");
  const Lines expected = {"openFavourites",
                          "addFavourite \"http://first.example/\", \"http://typed.example/\"",
                          "organizeFavourites"};
  EXPECT_EQ(world.journal.lines, expected);
}

TEST_F(MenuCommandsTest, NothingIsAddedToTheFavouritesWithoutAWindow) {
  EXPECT_EQ(WithoutChild("mnuAddFavourites"), Lines{});
}

TEST_F(MenuCommandsTest, TheParentsMenuAsksForThePassword) {
  EXPECT_EQ(Of("mnuAdmin"), Lines{"showPassword"});
  EXPECT_EQ(WithoutChild("mnuAdmin"), Lines{"showPassword"});
}

TEST_F(MenuCommandsTest, TheUpdateIsAskedForAloud) {
  EXPECT_EQ(Of("mnuUpdate"), Lines{"CheckForUpdate False"});
}

TEST_F(MenuCommandsTest, EntriesWithoutTheirRoomDoNothing) {
  MenuWorld bare(MenuWorld::Services::None);
  bare.Start();
  for (const char* entry : {"wow_Click", "mnuAddFavourites", "mnuAddFav", "mnuAdmin", "mnuUpdate"}) {
    bare.Choose(entry);
    EXPECT_TRUE(bare.journal.lines.empty()) << entry;
  }
}

TEST_F(MenuCommandsTest, AToolMayCallAnEntryByItsName) {
  world.Start();
  world.frame->Menu_Click("mnuBerits");
  EXPECT_EQ(world.journal.lines.at(0), kBrowser + "Navigate \"" + Http(hosts::kBeritsHost) + "\"");
}

TEST_F(MenuCommandsTest, AWindowMayGoWhileItsDialogStands) {
  world.Start();
  world.Browser().onExec = [&](int) { world.Child().Close(UnloadMode::ControlMenu); };
  EXPECT_NO_THROW(world.Choose("mnuFilePrint"));
  EXPECT_FALSE(world.forms.IsLoaded("frmBrowser#1"));
}

TEST_F(MenuCommandsTest, NoEntryThrowsWhateverCallFails) {
  std::vector<std::string> entries;
  const std::function<void(const std::vector<MenuData>&)> collect = [&](const auto& menus) {
    for (const MenuData& each : menus) {
      entries.push_back(each.name);
      collect(each.entries);
    }
  };
  world.Start();
  collect(world.Frame().MenusOf("Menu").menus);
  const auto prepare = [](MenuWorld& each) {
    each.Start();
    each.Dialog().answer = "/program/KVDSkins/meadow.skn";
    each.Browser().back = each.Browser().forward = "http://next.example/";
  };
  for (const std::string& entry : entries) {
    if (entry == "mnuPrintPreview" || entry == "mnuCalc") {
      continue;  // their boxes are looked at above
    }
    MenuWorld clean;
    prepare(clean);
    const long before = clean.journal.calls;
    clean.Choose(entry);
    const long calls = clean.journal.calls - before;
    for (long call = 1; call <= calls; ++call) {
      MenuWorld broken;
      prepare(broken);
      broken.journal.failAt = broken.journal.calls + call;
      EXPECT_NO_THROW(broken.Choose(entry)) << entry << ", call " << call;
      EXPECT_FALSE(FindDialogOpen) << entry << ", call " << call;
      EXPECT_EQ(broken.journal.With("FAILED").size(), 1U) << entry << ", call " << call;
    }
  }
}

TEST_F(MenuCommandsTest, AFailingStepLeavesTheStepsBehindIt) {
  for (const char* entry : {"mnuImages", "mnuEditFind", "mnuEditSelectall"}) {
    const Lines clean = Of(entry);
    for (std::size_t step = 0; step < clean.size(); ++step) {
      MenuWorld broken;
      broken.Start();
      broken.journal.failAt = broken.journal.calls + static_cast<long>(step) + 1;
      broken.Choose(entry);
      Lines expected = clean;
      expected[step] = "FAILED " + expected[step];
      EXPECT_EQ(broken.journal.lines, expected) << entry << ", step " << step;
    }
  }
}

// --- What other windows ask of the frame

TEST_F(MenuCommandsTest, MiniMizerMakesEveryChildSmallAndArrangesThem) {
  world.Start();
  world.frame->mnuFileNew_Click();
  world.journal.Clear();
  world.frame->MiniMizer();
  const Lines expected = {"frmBrowser#1.WindowState = 1", "frmBrowser#2.WindowState = 1",
                          "frmMain.MDIClient.SendMessageA 552, 0, 0"};
  EXPECT_EQ(world.journal.lines, expected);
}

TEST_F(MenuCommandsTest, MiniMizerWithoutChildrenOnlyArranges) {
  world.StartWithoutChild();
  world.forms.Load("frmPassword");
  world.journal.Clear();
  world.frame->MiniMizer();
  EXPECT_EQ(world.journal.lines, Lines{"frmMain.MDIClient.SendMessageA 552, 0, 0"});
}

TEST_F(MenuCommandsTest, MiniMizerPassesOverAChildThatStays) {
  world.Start();
  world.journal.failOn = "frmBrowser#1.WindowState = 1";
  world.frame->MiniMizer();
  EXPECT_EQ(world.journal.lines.back(), "frmMain.MDIClient.SendMessageA 552, 0, 0");
}

TEST_F(MenuCommandsTest, LoadHTMLOpensAnAddressInTheWindowInFront) {
  world.Start();
  world.frame->LoadHTML("http://asked.example/");
  EXPECT_EQ(world.journal.lines.at(0), kBrowser + "Navigate \"http://asked.example/\"");
  world.Child().Close(UnloadMode::ControlMenu);
  EXPECT_THROW(world.frame->LoadHTML("http://asked.example/"), PlatformError);
}

TEST_F(MenuCommandsTest, ProfileSaveItemWritesOneValueAndSaysNothingIfItCannot) {
  world.Start();
  world.frame->ProfileSaveItem("Bars", "Row", "2", "/data/bars.ini");
  EXPECT_EQ(world.files.files["/data/bars.ini"], "[Bars]\r\nRow=2\r\n");
  world.journal.failOn = "WriteFile \"/data/bars.ini\"";
  EXPECT_NO_THROW(world.frame->ProfileSaveItem("Bars", "Row", "3", "/data/bars.ini"));
  EXPECT_EQ(world.files.files["/data/bars.ini"], "[Bars]\r\nRow=2\r\n");
}

}  // namespace
}  // namespace kivandra
