// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/navigation_viewer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "filter/navigation_log.h"
#include "panel/panel_world.h"
#include "support/rich_text.h"

namespace kivandra {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string kEntry = " ->Otters URL http://www.otters.org/?a={1}  LogURL";

struct ViewerTest : testing::Test, fakes::PanelWorld {
  ViewerTest() {
    files.files["/data/21/2412002.rtf"] = WriteRichText(kEntry);
    panel.Show();
    journal.Clear();
  }
  void Choose(int day, int month, int year) { Panel().CalendarOf("Calendar1").Choose(day, month, year); }
  void OpenDay() {
    Choose(24, 1, 2002);
    journal.Clear();
  }
  fakes::FakeRichTextBox& URLS() { return Viewer().RichTextOf("URLS"); }
  void Link(unsigned message) { URLS().link(message, URLS().links.at(0)); }
};

TEST_F(ViewerTest, AChosenDateShowsItsDay) {
  Choose(24, 1, 2002);
  EXPECT_EQ(LogDateCaption, "24/1/2002");
  EXPECT_EQ(LogDateKey, "2412002");
  EXPECT_THAT(journal.lines,
              ElementsAre("Load Navigation", "Navigation.Caption = \"Navigation captured on 24/1/2002\"",
                          "ReadFile \"/data/21/2412002.rtf\"", "Navigation.URLS.Text = \"" + kEntry + "\"",
                          "Navigation.Visible = True", "Navigation.BringToFront"));
  EXPECT_TRUE(NavigationOpen);
}

TEST_F(ViewerTest, NoNumberOfADateIsPadded) {
  for (const auto& [day, month, year, key] :
       std::vector<std::tuple<int, int, int, std::string>>{{3, 4, 2026, "342026"},
                                                           {30, 12, 2026, "30122026"},
                                                           {11, 1, 2002, "1112002"},
                                                           {1, 11, 2002, "1112002"}}) {
    Choose(day, month, year);
    EXPECT_EQ(LogDateKey, key);
    Viewer().ButtonOf("OKButton").Click();
  }
}

TEST_F(ViewerTest, TheDateOfADayFindsTheFileThatTheDayWrote) {
  LogDayName = "16112026";
  Choose(16, 11, 2026);
  EXPECT_EQ(LogFile(LogDateKey), LogFile(LogDayName));
}

TEST_F(ViewerTest, ASecondDateIsIgnoredUntilTheViewerCloses) {
  OpenDay();
  Choose(25, 1, 2002);
  EXPECT_THAT(journal.lines, IsEmpty());
  EXPECT_EQ(LogDateKey, "2412002");
  Viewer().ButtonOf("OKButton").Click();
  EXPECT_FALSE(NavigationOpen);
  Choose(25, 1, 2002);
  EXPECT_EQ(Viewer().caption, "Navigation captured on 25/1/2002");
}

TEST_F(ViewerTest, ADayWithoutALogIsAnEmptyWindow) {
  Choose(1, 2, 2003);
  EXPECT_EQ(Viewer().caption, "Navigation captured on 1/2/2003");
  EXPECT_EQ(URLS().text, "");
  EXPECT_TRUE(NavigationOpen);
}

TEST_F(ViewerTest, AFileThatIsNoRichTextIsAnEmptyWindowAndABrokenOneShowsWhatThereIs) {
  files.files["/data/21/122003.rtf"] = std::string("\0\xFF binary", 9);
  Choose(1, 2, 2003);
  EXPECT_EQ(URLS().text, "");
  Viewer().ButtonOf("OKButton").Click();
  const std::string whole = WriteRichText(kEntry);
  files.files["/data/21/122003.rtf"] = whole.substr(0, whole.size() - 12);
  Choose(1, 2, 2003);
  EXPECT_EQ(URLS().text, kEntry.substr(0, kEntry.size() - 3));
}

TEST_F(ViewerTest, AFileThatCannotBeReadIsAnEmptyWindow) {
  journal.failOn = "ReadFile \"/data/21/2412002.rtf\"";
  Choose(24, 1, 2002);
  EXPECT_EQ(Viewer().caption, "Navigation captured on 24/1/2002");
  EXPECT_EQ(URLS().text, "");
  EXPECT_TRUE(journal.With("MsgBox").empty());
}

TEST_F(ViewerTest, DoesNotFollowLaterEntries) {
  OpenDay();
  files.files["/data/21/2412002.rtf"] = WriteRichText("later");
  EXPECT_EQ(URLS().text, kEntry);
}

TEST_F(ViewerTest, PrintsWithTheFolderForAName) {
  OpenDay();
  Viewer().ButtonOf("CancelButton").Click();
  EXPECT_THAT(journal.lines, ElementsAre("Navigation.URLS.PrintDoc \"/data/21/\""));
  journal.failOn = "Navigation.URLS.PrintDoc \"/data/21/\"";
  Viewer().ButtonOf("CancelButton").Click();
  EXPECT_TRUE(forms.IsLoaded("Navigation"));
}

TEST_F(ViewerTest, MayCloseAndGiveWayToAnotherDayWhileItPrints) {
  OpenDay();
  journal.watch = [this](const std::string& line) {
    if (line.find("PrintDoc") != std::string::npos) {
      Viewer().ButtonOf("OKButton").Click();
      Choose(25, 1, 2002);
    }
  };
  Viewer().ButtonOf("CancelButton").Click();
  EXPECT_EQ(Viewer().caption, "Navigation captured on 25/1/2002");
  EXPECT_TRUE(NavigationOpen);
}

TEST_F(ViewerTest, ALinkOpensInTheBareWindowWhateverItsAddress) {
  OpenDay();
  BadWords[1] = "otters";
  Link(WM_LBUTTONUP);
  const std::string address = "http://www.otters.org/?a={1}";
  EXPECT_TRUE(journal.Has("Load parentbrowse"));
  EXPECT_TRUE(journal.Has("parentbrowse.Visible = True"));
  EXPECT_EQ(journal.lines[journal.lines.size() - 2],
            "parentbrowse.brwWebBrowser.Navigate \"" + address + "\"");
  EXPECT_EQ(journal.lines.back(), "allow " + address);
}

TEST_F(ViewerTest, OnlyTheLeftButtonsEndOpensALink) {
  OpenDay();
  for (const unsigned message : {0U, 512U, WM_LBUTTONDOWN, 515U, 516U, WM_RBUTTONUP}) {
    Link(message);
  }
  EXPECT_THAT(journal.lines, IsEmpty());
}

TEST_F(ViewerTest, FurtherLinksGoToTheSameWindow) {
  OpenDay();
  Link(WM_LBUTTONUP);
  Link(WM_LBUTTONUP);
  EXPECT_EQ(journal.Count("Load parentbrowse"), 1);
  EXPECT_EQ(journal.With("brwWebBrowser.Navigate").size(), 2U);
}

TEST_F(ViewerTest, ALinkOpensAgainAfterItsWindowWasClosed) {
  OpenDay();
  Link(WM_LBUTTONUP);
  LinkWindow().Close(UnloadMode::ControlMenu);
  Link(WM_LBUTTONUP);
  EXPECT_EQ(journal.Count("Load parentbrowse"), 2);
  EXPECT_TRUE(LinkWindow().visible);
}

TEST_F(ViewerTest, ClosingThePanelLeavesTheViewerAndTheViewersEndLeavesItsLink) {
  OpenDay();
  Link(WM_LBUTTONUP);
  Panel().ButtonOf("cmdCancel").Click();
  EXPECT_TRUE(forms.IsLoaded("Navigation"));
  Viewer().ButtonOf("OKButton").Click();
  EXPECT_TRUE(forms.IsLoaded("parentbrowse"));
  // A new viewer has a window of its own.
  panel.Show();
  Choose(24, 1, 2002);
  EXPECT_TRUE(forms.IsLoaded("parentbrowse"));
  Link(WM_LBUTTONUP);
  EXPECT_EQ(journal.Count("Load parentbrowse"), 2);
  EXPECT_TRUE(LinkWindow().Close(UnloadMode::ControlMenu));
}

TEST_F(ViewerTest, WhateverSingleStepFailsTheViewerOpensAndTheLinkLeadsNowhereElse) {
  OpenDay();
  Viewer().ButtonOf("OKButton").Click();
  for (long fault = 1; fault <= 12; ++fault) {
    journal.Clear();
    journal.calls = 0;
    journal.failAt = fault;
    Choose(24, 1, 2002);
    if (NavigationOpen && forms.IsLoaded("Navigation")) {
      if (!URLS().links.empty()) {
        Link(WM_LBUTTONUP);
      }
    }
    journal.failAt = 0;
    for (const std::string& line : journal.With("Navigate ")) {
      EXPECT_NE(line.find("http://www.otters.org/?a={1}"), std::string::npos);
    }
    if (forms.IsLoaded("Navigation")) {
      Viewer().ButtonOf("OKButton").Click();
      EXPECT_FALSE(NavigationOpen) << fault;
    }
  }
}

}  // namespace
}  // namespace kivandra
