// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "browser/browser_world.h"
#include "browser/frm_browser.h"
#include "hosts.h"

namespace kivandra {
namespace {

using fakes::BrowserWorld;
using fakes::Quoted;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string kWordSearch = "http://" + std::string(hosts::kWordSearchHost) + "/search?q=";
const std::string kHotKeySearch = "http://" + std::string(hosts::kHotKeySearchHost) + "/bin/search?p=";

class TypedText : public ::testing::Test, protected BrowserWorld {
 protected:
  TypedText() : window(OpenWindow()), box(AddressOf(*window)) {
    frame.startUp = true; /* the gate is not asked here */
  }

  std::shared_ptr<frmBrowser> window;
  fakes::FakeComboBox& box;
};

TEST_F(TypedText, EnterStopsThePageMovesTheLogoAndGoesThere) {
  box.text = "example.org";
  journal.Clear();
  EXPECT_TRUE(box.Press(13));
  ASSERT_GE(journal.lines.size(), 3U);
  journal.lines.resize(3);
  EXPECT_THAT(journal.lines, ElementsAre("frmBrowser#1.brwWebBrowser.Stop", "Logo_Animate",
                                         "frmBrowser#1.brwWebBrowser.Navigate \"http://www.example.org\""));
}

TEST_F(TypedText, EnterInAnEmptyBoxGoesToTheProductsHomePage) {
  box.Press(13);
  EXPECT_TRUE(journal.Has("frmBrowser#1.brwWebBrowser.Navigate " + Quoted(std::string(hosts::kProductHome))));
}

TEST_F(TypedText, AnyOtherKeyIsLeftToTheBox) {
  for (const int key : {0, 9, 10, 12, 14, 27, 46, 65, 112, 123}) {
    EXPECT_FALSE(box.Press(key)) << key;
  }
  EXPECT_THAT(journal.lines, IsEmpty());
}

TEST_F(TypedText, ADoubleClickEmptiesTheBoxAndDoesNothingElse) {
  box.text = "http://example.org/";
  box.dblClick();
  EXPECT_THAT(journal.lines, ElementsAre("frmBrowser#1.cboAddress.Text = \"\""));
}

TEST_F(TypedText, AnAddressChosenFromTheListIsGoneToAsIfItWereTyped) {
  box.text = "http://example.org/";
  box.click();
  ASSERT_GE(journal.lines.size(), 3U);
  journal.lines.resize(3);
  EXPECT_THAT(journal.lines, ElementsAre("frmBrowser#1.brwWebBrowser.Stop", "Logo_Animate",
                                         "frmBrowser#1.brwWebBrowser.Navigate \"http://example.org/\""));
}

TEST_F(TypedText, TheWindowRoutesATextForOthersToo) {
  EXPECT_EQ(window->getURL("WWW.EXAMPLE.COM"), "http://WWW.EXAMPLE.COM");
  EXPECT_THAT(journal.lines, IsEmpty());
}

TEST_F(TypedText, ATypedAddressIsJudgedLikeAnyOther) {
  frame.startUp = false;
  BadWords[1] = "forbidden";
  box.text = "forbidden.com";
  box.Press(13);
  EXPECT_EQ(BlockedURL, "http://www.forbidden.com");
  EXPECT_EQ(box.text, "");
}

class SelectedWords : public TypedText {
 protected:
  /// The words that are selected on the page; with none a copy leaves the clipboard as it is.
  void Select(const std::string& words) {
    frame.onCopy = [this, words] {
      if (!words.empty()) {
        clipboard.text = words;
      }
    };
  }
  [[nodiscard]] std::vector<std::string> Navigations() const { return journal.With(".Navigate "); }
};

TEST_F(SelectedWords, TheButtonSearchesForThemAndLeavesTheClipboardEmpty) {
  Select("blue whale");
  clipboard.text = "something older";
  FormOf(*window).ButtonOf("SearchWeb").Click();
  ASSERT_GE(journal.lines.size(), 4U);
  EXPECT_EQ(journal.lines[0], "Clipboard.Clear");
  EXPECT_EQ(journal.lines[1], "mnuEditCopy_Click");
  EXPECT_EQ(journal.lines[2], "Clipboard.GetText");
  EXPECT_EQ(journal.lines[3], "frmBrowser#1.brwWebBrowser.Navigate " + Quoted(kWordSearch + "blue whale"));
  EXPECT_EQ(journal.lines.back(), "Clipboard.Clear");
  EXPECT_EQ(clipboard.text, "");
}

TEST_F(SelectedWords, TheButtonDoesNothingWithoutThemWhateverTheClipboardHeld) {
  Select("");
  clipboard.text = "something older";
  FormOf(*window).ButtonOf("SearchWeb").Click();
  EXPECT_THAT(journal.lines, ElementsAre("Clipboard.Clear", "mnuEditCopy_Click", "Clipboard.GetText"));
}

TEST_F(SelectedWords, TheButtonAlwaysSearchesForWords) {
  Select("what is www.example.com");
  FormOf(*window).ButtonOf("SearchWeb").Click();
  EXPECT_THAT(Navigations(), ElementsAre("frmBrowser#1.brwWebBrowser.Navigate " +
                                         Quoted(kWordSearch + "what is www.example.com")));
}

TEST_F(SelectedWords, TheButtonNavigatesTheWindowInFront) {
  const auto front = OpenWindow();
  Select("whale");
  FormOf(*window).ButtonOf("SearchWeb").Click();
  EXPECT_THAT(Navigations(),
              ElementsAre("frmBrowser#2.brwWebBrowser.Navigate " + Quoted(kWordSearch + "whale")));
}

TEST_F(SelectedWords, TheButtonWithNoWindowInFrontOnlyClearsTheClipboard) {
  Select("whale");
  forms.active = nullptr;
  FormOf(*window).ButtonOf("SearchWeb").Click();
  EXPECT_THAT(journal.lines,
              ElementsAre("Clipboard.Clear", "mnuEditCopy_Click", "Clipboard.GetText", "Clipboard.Clear"));
}

TEST_F(SelectedWords, F12SearchesForThemAndLeavesTheClipboardEmpty) {
  Select("blue whale");
  EXPECT_FALSE(keyboard.Press(123)) << "the key goes on to the page";
  ASSERT_GE(journal.lines.size(), 3U);
  EXPECT_EQ(journal.lines[0], "mnuEditCopy_Click");
  EXPECT_EQ(journal.lines[1], "Clipboard.GetText");
  EXPECT_EQ(journal.lines[2], "frmBrowser#1.brwWebBrowser.Navigate " + Quoted(kHotKeySearch + "blue whale"));
  EXPECT_EQ(journal.lines.back(), "Clipboard.Clear");
}

TEST_F(SelectedWords, F12WithNothingSelectedSearchesForWhatTheClipboardHeld) {
  Select("");
  clipboard.text = "something older";
  keyboard.Press(123);
  EXPECT_THAT(Navigations(), ElementsAre("frmBrowser#1.brwWebBrowser.Navigate " +
                                         Quoted(kHotKeySearch + "something older")));
  EXPECT_EQ(clipboard.text, "");
}

TEST_F(SelectedWords, F12WithNothingSelectedAndAnEmptyClipboardDoesNothing) {
  Select("");
  keyboard.Press(123);
  EXPECT_THAT(journal.lines, ElementsAre("mnuEditCopy_Click", "Clipboard.GetText"));
}

TEST_F(SelectedWords, F12CountsWithAnyModifier) {
  for (int shift = 0; shift < 8; ++shift) {
    journal.Clear();
    Select("whale");
    keyboard.Press(123, shift);
    EXPECT_EQ(Navigations().size(), 1U) << shift;
  }
}

TEST_F(SelectedWords, NoOtherKeySearches) {
  Select("whale");
  for (int key = 1; key < 256; ++key) {
    if (key != 123) {
      EXPECT_FALSE(keyboard.Press(key));
    }
  }
  EXPECT_THAT(journal.lines, IsEmpty());
}

TEST_F(SelectedWords, ReleasingF12DoesNothing) {
  Select("whale");
  keyboard.Press(123, 0, /*up=*/true);
  EXPECT_THAT(journal.lines, IsEmpty());
}

TEST_F(SelectedWords, EveryWindowSearchesOnF12InTheOrderOfOpening) {
  OpenWindow();
  Select("whale");
  keyboard.Press(123);
  EXPECT_THAT(Navigations(),
              ElementsAre("frmBrowser#1.brwWebBrowser.Navigate " + Quoted(kHotKeySearch + "whale"),
                          "frmBrowser#2.brwWebBrowser.Navigate " + Quoted(kHotKeySearch + "whale")));
}

TEST_F(SelectedWords, TheSearchIsJudgedLikeAnyNavigation) {
  frame.startUp = false;
  BadWords[1] = "forbidden";
  Select("forbidden");
  keyboard.Press(123);
  EXPECT_EQ(BlockedURL, kHotKeySearch + "forbidden");
}

}  // namespace
}  // namespace kivandra
