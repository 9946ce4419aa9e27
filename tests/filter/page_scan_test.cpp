// SPDX-License-Identifier: GPL-3.0-or-later
#include "filter/page_scan.h"

#include <gtest/gtest.h>

#include <string>

#include "filter/bad_words.h"
#include "filter/filter_values.h"

namespace kivandra {
namespace {

BadWordsTable TableOf(std::initializer_list<const char*> words) {
  BadWordsTable table;
  std::size_t row = 0;
  for (const char* word : words) {
    table[++row] = word;
  }
  return table;
}

BadWordsTable FilledUpTo(std::size_t last) {
  BadWordsTable table;
  for (std::size_t row = 1; row <= last; ++row) {
    table[row] = "word" + std::to_string(row);
  }
  return table;
}

TEST(PageScan, FindsAnyRowAsAWholeWordInAnyCase) {
  const BadWordsTable table = TableOf({"sex", "anal,"});
  EXPECT_TRUE(PageScanFinds("<p>No SEX here</p>", table));
  EXPECT_TRUE(PageScanFinds("oral and Anal, and more", table));
  EXPECT_FALSE(PageScanFinds("Sussex and Essex", table));
  EXPECT_FALSE(PageScanFinds("anal and more", table));
}

TEST(PageScan, FindsNothingOnACleanPage) { EXPECT_FALSE(PageScanFinds("<p>Whales</p>", TableOf({"sex"}))); }

TEST(PageScan, TakesAnEmptyPageForAHit) { EXPECT_TRUE(PageScanFinds("", TableOf({"sex"}))); }

TEST(PageScan, TakesAnEmptyPageForAHitEvenWithoutAnyWord) {
  EXPECT_TRUE(PageScanFinds("", BadWordsTable{}));
  EXPECT_FALSE(PageScanFinds("x", BadWordsTable{}));
}

TEST(PageScan, TakesAPageOfOneBlankForAPage) { EXPECT_FALSE(PageScanFinds(" ", TableOf({"sex"}))); }

TEST(PageScan, StopsAtTheFirstEmptyRow) {
  BadWordsTable table = TableOf({"one", "", "three"});
  EXPECT_TRUE(PageScanFinds("one", table));
  EXPECT_FALSE(PageScanFinds("three", table));
}

TEST(PageScan, LooksAtRow199ButNotAtRow200) {
  const BadWordsTable table = FilledUpTo(200);
  EXPECT_TRUE(PageScanFinds("a word198 b", table));
  EXPECT_TRUE(PageScanFinds("a word199 b", table));
  EXPECT_FALSE(PageScanFinds("a word200 b", table));
}

TEST(PageScan, BlocksAnEmptyPageAsLongAsOneOfTheScannedRowsIsEmpty) {
  EXPECT_TRUE(PageScanFinds("", FilledUpTo(198)));
  EXPECT_FALSE(PageScanFinds("", FilledUpTo(199)));
  EXPECT_FALSE(PageScanFinds("", FilledUpTo(200)));
}

TEST(PageScan, SeesAWordThatIsAddedOrChangedBetweenTwoPages) {
  BadWordsTable table = TableOf({"one"});
  EXPECT_FALSE(PageScanFinds("two three", table));
  table[2] = "two";
  EXPECT_TRUE(PageScanFinds("two three", table));
  table[2] = "four";
  EXPECT_FALSE(PageScanFinds("two three", table));
  table[1] = "three";
  EXPECT_TRUE(PageScanFinds("two three", table));
  table[1] = "";
  EXPECT_FALSE(PageScanFinds("two three", table));
}

TEST(PageScan, KeepsTwoTablesApart) {
  const BadWordsTable one = TableOf({"one"});
  const BadWordsTable two = TableOf({"two"});
  for (int round = 0; round < 3; ++round) {
    EXPECT_TRUE(PageScanFinds("one", one));
    EXPECT_FALSE(PageScanFinds("one", two));
    EXPECT_FALSE(PageScanFinds("two", one));
    EXPECT_TRUE(PageScanFinds("two", two));
  }
}

TEST(PageScan, CatchesEverySpellingOfABuiltInWordButNotLongerWords) {
  ResetFilterValues();
  FillBadWords();
  for (const char* page :
       {"sEx", "SeX", "sex", "nUdE", "the porn, that", "x -rated", "-shots!blow", "\"cum\""}) {
    EXPECT_TRUE(PageScanFinds(page, BadWords)) << page;
  }
  for (const char* page :
       {"Sussex", "nudes", "popcorn", "x-rated", "cucumber", "shots!blow", "anal", "document.cookie"}) {
    EXPECT_FALSE(PageScanFinds(page, BadWords)) << page;
  }
}

TEST(PageScan, SearchesForEachRowAsItStands) {
  ResetFilterValues();
  FillBadWords();
  const std::string pages[] = {"a cum b", "a -shotscum b", "a -shots!blow b"};
  const std::size_t rows[] = {61, 62, 63};
  for (std::size_t page = 0; page < 3; ++page) {
    EXPECT_TRUE(PageScanFinds(pages[page], BadWords)) << pages[page];
    for (std::size_t row = 0; row < 3; ++row) {
      const BadWordsTable alone = TableOf({BadWords[rows[row]].c_str()});
      EXPECT_EQ(PageScanFinds(pages[page], alone), page == row) << "row " << rows[row] << ": " << pages[page];
    }
  }
  // One row's end and the next one's beginning make no word.
  EXPECT_FALSE(PageScanFinds("shotscum a-shotscum shots!blow", BadWords));
}

TEST(PageScan, FindsTheLastWordOfAHugePage) {
  const BadWordsTable table = TableOf({"sex"});
  std::string page(std::size_t{32} << 20, ' ');
  EXPECT_FALSE(PageScanFinds(page, table));
  page.replace(page.size() - 3, 3, "sex");
  EXPECT_TRUE(PageScanFinds(page, table));
}

}  // namespace
}  // namespace kivandra
