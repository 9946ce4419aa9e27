// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "browser/browser_world.h"
#include "browser/frm_browser.h"

namespace kivandra {
namespace {

using fakes::BrowserWorld;
using fakes::FakePageFrame;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PageEvents : public ::testing::Test, protected BrowserWorld {
 protected:
  PageEvents() : window(OpenWindow()), engine(EngineOf(*window)) {}

  void Arrive(const std::string& address) {
    engine.locationURL = address;
    engine.events->NavigateComplete2(engine.top, address);
  }

  std::shared_ptr<frmBrowser> window;
  fakes::FakeWebBrowser& engine;
};

TEST_F(PageEvents, TheStatusTextIsTheFrames) {
  engine.events->StatusTextChange("Opening page");
  EXPECT_THAT(journal.lines, ElementsAre("frmMain.Status.Text = \"Opening page\""));
}

TEST_F(PageEvents, ThePagesTitleIsTheWindowsCaption) {
  engine.events->TitleChange("Whales");
  EXPECT_THAT(journal.lines, ElementsAre("frmBrowser#1.Caption = \"Whales\""));
}

TEST_F(PageEvents, BackAndForwardFollowWhatTheEngineSays) {
  engine.events->CommandStateChange(1, false);
  engine.events->CommandStateChange(2, false);
  engine.events->CommandStateChange(1, true);
  EXPECT_THAT(journal.lines, ElementsAre("frmMain.BonusBar.MainBar.Forward.Enabled = False",
                                         "frmMain.BonusBar.MainBar.Back.Enabled = False",
                                         "frmMain.BonusBar.MainBar.Forward.Enabled = True"));
}

TEST_F(PageEvents, OtherCommandsChangeNoTool) {
  for (const long command : {0L, -1L, 3L, 257L, 0x7FFFFFFFL}) {
    engine.events->CommandStateChange(command, true);
  }
  EXPECT_THAT(journal.lines, IsEmpty());
}

TEST_F(PageEvents, TheToolsFollowTheWindowThatSpokeLast) {
  const auto second = OpenWindow();
  engine.events->CommandStateChange(2, true);
  EngineOf(*second).events->CommandStateChange(2, false);
  EXPECT_FALSE(frame.Bars().Bands("MainBar").Tools("Back").Enabled());
}

TEST_F(PageEvents, ABeginningDownloadMovesTheLogo) {
  engine.events->DownloadBegin();
  EXPECT_THAT(journal.lines, ElementsAre("Logo_Animate"));
}

TEST_F(PageEvents, AnArrivalTakesTheUnloadHandlerAwayAndPutsTheAddressOnTopOfBothLists) {
  Arrive("http://example.org/");
  EXPECT_THAT(journal.lines,
              ElementsAre("frmBrowser#1.brwWebBrowser.Document.onunload = 1",
                          "frmBrowser#1.cboAddress.AddItem \"http://example.org/\", 0",
                          "frmBrowser#1.cboAddress.ListIndex = 0", "frmBrowser#1.cboAddress.SetFocus",
                          "frmMain.TheAddress.AddItem \"http://example.org/\", 0",
                          "frmMain.TheAddress.ListIndex = 0", "frmMain.TheAddress.SetFocus"));
  EXPECT_EQ(AddressOf(*window).text, "http://example.org/");
  EXPECT_EQ(frame.Address().text, "http://example.org/");
}

TEST_F(PageEvents, VisitingAnAddressTwiceLeavesOneItemOnTopOfEachList) {
  Arrive("http://a.example/");
  Arrive("http://b.example/");
  Arrive("http://a.example/");
  EXPECT_THAT(AddressOf(*window).items, ElementsAre("http://a.example/", "http://b.example/"));
  EXPECT_THAT(frame.Address().items, ElementsAre("http://a.example/", "http://b.example/"));
}

TEST_F(PageEvents, OnlyTheFirstEqualItemLeavesItsPlace) {
  AddressOf(*window).items = {"http://b.example/", "http://a.example/", "http://a.example/"};
  journal.Clear();
  Arrive("http://a.example/");
  EXPECT_THAT(journal.With("cboAddress.RemoveItem"), ElementsAre("frmBrowser#1.cboAddress.RemoveItem 1"));
  EXPECT_THAT(AddressOf(*window).items,
              ElementsAre("http://a.example/", "http://b.example/", "http://a.example/"));
}

TEST_F(PageEvents, AddressesThatDifferInALetterAreTwo) {
  Arrive("http://a.example/x");
  Arrive("http://a.example/X");
  Arrive("http://a.example/x ");
  Arrive("http://a.example/");
  EXPECT_THAT(AddressOf(*window).items, ElementsAre("http://a.example/", "http://a.example/x ",
                                                    "http://a.example/X", "http://a.example/x"));
}

TEST_F(PageEvents, AFrameOfThePageRepeatsThePagesAddress) {
  FakePageFrame inner("frame", false, journal);
  Arrive("http://a.example/");
  Arrive("http://b.example/");
  engine.events->NavigateComplete2(inner, "http://advert.example/");
  EXPECT_TRUE(journal.Has("frame.onunload = 1"));
  EXPECT_THAT(AddressOf(*window).items, ElementsAre("http://b.example/", "http://a.example/"));
  EXPECT_THAT(frame.Address().items, ElementsAre("http://b.example/", "http://a.example/"));
}

TEST_F(PageEvents, TwoWindowsShareTheFramesListAndHaveTheirOwn) {
  const auto second = OpenWindow();
  Arrive("http://a.example/");
  EngineOf(*second).ShowPage("http://b.example/", "B");
  EXPECT_THAT(AddressOf(*window).items, ElementsAre("http://a.example/"));
  EXPECT_THAT(AddressOf(*second).items, ElementsAre("http://b.example/"));
  EXPECT_THAT(frame.Address().items, ElementsAre("http://b.example/", "http://a.example/"));
}

TEST_F(PageEvents, TheListsHaveNoLimit) {
  for (int page = 0; page < 500; ++page) {
    Arrive("http://a.example/" + std::to_string(page));
  }
  EXPECT_EQ(AddressOf(*window).items.size(), 500U);
  EXPECT_EQ(AddressOf(*window).items.front(), "http://a.example/499");
}

TEST_F(PageEvents, OddAndHugeTextsGoThroughUnchanged) {
  const std::string odd = std::string("\xff\xfe\0", 3) + std::string(1 << 20, 'x') + "\xc3";
  Arrive(odd);
  Arrive(odd);
  engine.events->TitleChange(odd);
  engine.events->StatusTextChange(odd);
  EXPECT_THAT(AddressOf(*window).items, ElementsAre(odd));
  EXPECT_EQ(FormOf(*window).caption, odd);
}

TEST_F(PageEvents, TheDocumentIsKeptForThePageAlone) {
  const auto document = engine.top.document;
  engine.events->DocumentComplete(engine.top, "http://a.example/");
  EXPECT_EQ(window->mWbrDoc, document);
  FakePageFrame inner("frame", false, journal);
  engine.events->DocumentComplete(inner, "http://advert.example/");
  EXPECT_EQ(window->mWbrDoc, nullptr) << "it is cleared first, whatever frame is complete";
}

TEST_F(PageEvents, AnythingButHtmlIsNoDocument) {
  engine.events->DocumentComplete(engine.top, "http://a.example/");
  engine.top.document = nullptr;
  engine.events->DocumentComplete(engine.top, "http://a.example/picture.png");
  EXPECT_EQ(window->mWbrDoc, nullptr);
}

TEST_F(PageEvents, AFinishedDownloadStillsTheLogoGivesScriptsTheProgramAndLogs) {
  engine.events->DownloadComplete();
  EXPECT_THAT(journal.lines,
              ElementsAre("ShowStillLogo", "frmBrowser#1.brwWebBrowser.ScriptObject KVD set", "log step"));
  EXPECT_EQ(engine.scriptObject, &kvd);
}

TEST_F(PageEvents, AllWindowsOfferTheSameObjectToScripts) {
  const auto second = OpenWindow();
  engine.events->DownloadComplete();
  EngineOf(*second).events->DownloadComplete();
  EXPECT_EQ(engine.scriptObject, EngineOf(*second).scriptObject);
}

TEST_F(PageEvents, WithoutALogNothingElseChanges) {
  services.logStep = nullptr;
  const auto second = OpenWindow();
  EngineOf(*second).events->DownloadComplete();
  EXPECT_THAT(journal.lines, ElementsAre("ShowStillLogo", "frmBrowser#2.brwWebBrowser.ScriptObject KVD set"));
}

TEST_F(PageEvents, TheLogoStopsWhenTheFirstOfTwoPagesIsThere) {
  const auto second = OpenWindow();
  engine.events->DownloadBegin();
  EngineOf(*second).events->DownloadBegin();
  engine.events->DownloadComplete();
  EXPECT_THAT(journal.With("Logo"), ElementsAre("Logo_Animate", "Logo_Animate", "ShowStillLogo"));
}

TEST_F(PageEvents, AFinishedDownloadShowsThePopUpInFront) {
  const auto popUp = OpenWindow();
  FormOf(*popUp).tag = "POP";
  engine.events->DownloadComplete();
  EXPECT_THAT(journal.With("Visible"), ElementsAre("frmBrowser#2.Visible = True"));
}

TEST_F(PageEvents, AFinishedDownloadShowsNoOtherWindowInFront) {
  OpenWindow();
  engine.events->DownloadComplete();
  EXPECT_THAT(journal.With("Visible"), IsEmpty());
}

TEST_F(PageEvents, AHiddenWindowIsClosedWhenItsDownloadIsFinished) {
  const auto hidden = frame.NewBrowser();
  journal.Clear();
  EngineOf(*hidden).events->DownloadComplete();
  EXPECT_FALSE(hidden->Window().Loaded());
  EXPECT_THAT(frame.windows, ElementsAre(window));
  EXPECT_EQ(journal.lines.front(), "ShowStillLogo");
  EXPECT_TRUE(journal.Has("log step")) << "the log has its say about every finished download";
}

TEST_F(PageEvents, ABarePopUpComesToTheFrontWhenItsDownloadIsFinished) {
  window->cboAddress().SetVisible(false);
  journal.Clear();
  engine.events->DownloadComplete();
  EXPECT_EQ(journal.lines.back(), "frmBrowser#1.BringToFront");
}

TEST_F(PageEvents, AQuittingPageClosesItsWindow) {
  engine.events->OnQuit();
  EXPECT_FALSE(window->Window().Loaded());
  EXPECT_THAT(frame.windows, IsEmpty());
}

TEST_F(PageEvents, ThePageShowsAndHidesItsWindow) {
  engine.events->OnVisible(false);
  engine.events->OnVisible(true);
  EXPECT_THAT(journal.With("Visible"),
              ElementsAre("frmBrowser#1.Visible = False", "frmBrowser#1.Visible = True"));
}

TEST_F(PageEvents, EveryNavigationGoesThroughTheGate) {
  BadWords[1] = "forbidden";
  BadWords[2] = "naughty";
  // By its address.
  EXPECT_FALSE(engine.Ask("http://forbidden.example/")->Allowed());
  EXPECT_TRUE(journal.Has("frmBrowser#1.brwWebBrowser.Stop"));
  EXPECT_EQ(BlockedURL, "http://forbidden.example/");
  // By its page, while the window lives on.
  const auto held = engine.Ask("http://a.example/");
  EXPECT_TRUE(held->Pending());
  EXPECT_TRUE(inet1.Answer("http://a.example/", "a naughty page"));
  EXPECT_FALSE(held->Allowed());
  EXPECT_EQ(BlockedURL, "http://a.example/");
  const auto passing = engine.Ask("http://b.example/");
  EXPECT_TRUE(inet1.Answer("http://b.example/", "a nice page"));
  EXPECT_TRUE(passing->Allowed());
}

TEST_F(PageEvents, APassingNavigationShowsItsAddressAndRestoresAMinimisedWindow) {
  FormOf(*window).windowState = WindowState::Minimized;
  engine.Ask("http://b.example/");
  inet1.Answer("http://b.example/", "a nice page");
  EXPECT_EQ(AddressOf(*window).text, "http://b.example/");
  EXPECT_EQ(FormOf(*window).windowState, WindowState::Normal);
}

}  // namespace
}  // namespace kivandra
