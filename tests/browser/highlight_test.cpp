// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "browser/browser_world.h"

namespace kivandra {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct HighlightTest : testing::Test {
  fakes::BrowserWorld world;
  std::shared_ptr<frmBrowser> window = world.OpenWindow();
  fakes::FakeWebBrowser& engine = fakes::BrowserWorld::EngineOf(*window);
};

TEST_F(HighlightTest, PaintsTheWordOnThePageFiveThousandTimesAtTheMost) {
  window->highlight("whale");
  EXPECT_THAT(world.journal.lines,
              ElementsAre("frmBrowser#1.brwWebBrowser.Document.PaintText \"whale\", 5000"));
}

TEST_F(HighlightTest, GivesNothingBack) { EXPECT_EQ(window->highlight("whale"), Variant(Empty{})); }

TEST_F(HighlightTest, TheTextGoesToThePageAsItIs) {
  const std::string long_(10000, 'x');
  for (const std::string& text :
       {std::string("a \"quoted\" 'word'"), std::string("100% <b>"), std::string("кит 鯨 🐋"), long_,
        std::string("a\0b", 3), std::string("\xff\xfe")}) {
    world.journal.Clear();
    window->highlight(text);
    EXPECT_THAT(world.journal.lines,
                ElementsAre("frmBrowser#1.brwWebBrowser.Document.PaintText \"" + text + "\", 5000"));
  }
}

TEST_F(HighlightTest, ASecondCallPaintsOnceMore) {
  window->highlight("whale");
  window->highlight("whale");
  EXPECT_EQ(world.journal.lines.size(), 2U);
}

TEST_F(HighlightTest, APageWithoutADocumentDoesNothingAndSaysNothing) {
  engine.top.document = nullptr;
  EXPECT_NO_THROW(window->highlight("whale"));
  EXPECT_THAT(world.journal.lines, IsEmpty());
}

TEST_F(HighlightTest, AWindowWithoutAPageDoesNothingAndSaysNothing) {
  engine.hasPage = false;
  EXPECT_NO_THROW(window->highlight("whale"));
  EXPECT_THAT(world.journal.lines, IsEmpty());
}

TEST_F(HighlightTest, APageThatCannotBePaintedSaysNothing) {
  world.journal.failAt = world.journal.calls + 1;
  EXPECT_NO_THROW(window->highlight("whale"));
  EXPECT_THAT(world.journal.lines,
              ElementsAre("FAILED frmBrowser#1.brwWebBrowser.Document.PaintText \"whale\", 5000"));
}

TEST_F(HighlightTest, OneWindowsWordLeavesTheOthersAlone) {
  const auto other = world.OpenWindow();
  window->highlight("whale");
  EXPECT_TRUE(world.journal.With("frmBrowser#2").empty());
}

}  // namespace
}  // namespace kivandra
