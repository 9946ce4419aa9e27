// SPDX-License-Identifier: GPL-3.0-or-later
#include "filter/bad_words.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "filter/filter_values.h"
#include "hosts.h"

namespace kivandra {
namespace {

class BuiltInWords : public testing::Test {
 protected:
  BuiltInWords() {
    ResetFilterValues();
    FillBadWords();
  }
};

TEST_F(BuiltInWords, StandInTheirOrder) {
  const std::map<std::size_t, std::string> told = {
      {1, "porn"},         {2, "fucked"},        {3, "freetits"},      {4, "freesex"},
      {5, "freepics"},     {6, "cocksucker"},    {7, "cocksucker"},    {8, "boobs"},
      {9, "poonarni"},     {10, "FUCK"},         {11, "surfwatch"},    {12, "pussy"},
      {13, "cunt"},        {14, "cock"},         {15, "dick"},         {16, "FUCK"},
      {17, "FUCKING"},     {18, "upskirt"},      {19, "orgasm"},       {20, "bitch"},
      {21, "asshole"},     {22, "anal,"},        {23, "blowjob"},      {24, "jerkoff"},
      {25, "masturbate"},  {26, "tits"},         {27, "pornamatuers"}, {28, "amatuer"},
      {29, "nude"},        {30, "cunt"},         {31, "erotic"},       {32, "pussy"},
      {33, "gays"},        {34, "Xrated"},       {35, "x -rated"},     {36, "x -rated"},
      {37, "Naked"},       {38, "shit"},         {39, "Xrated"},       {40, "XXX"},
      {41, "Naked"},       {42, "nude"},         {43, "Playboy"},      {45, "slut"},
      {46, "sluts"},       {47, "freesexnude,"}, {49, "netnanny"},     {50, "aXXXess"},
      {55, "erotica"},     {56, "cumshot"},      {57, "dildo"},        {58, "boner"},
      {59, "hooker"},      {60, "bestiality"},   {61, "cum"},          {62, "-shotscum"},
      {63, "-shots!blow"}, {64, "-jobblow"},     {65, "-jobsblow"},    {66, "-job!blow -jobs!"},
      {67, "SNATCHES"},    {68, "Porno"},        {69, "Pornos"},       {70, "LEZBOS"},
      {71, "Nudists"},     {72, "Nudist"},       {73, "Nudists"},      {74, "DILDOS"},
      {78, "LESBIAN"},     {79, "LESBIANS"},     {80, "LESBIAN"},      {81, "LESBIANS"},
      {82, "crotchless"},  {88, "sex"},          {89, "voyeurdorm"},   {90, "voyeur"},
      {91, "Sex"},         {92, "SEx"},          {93, "SEX"},          {94, "seX"},
      {95, "sEX"},         {96, "Nude"},         {97, "NUDE"},         {98, "nuDe"},
      {99, "nudE"},        {100, "nUDE"},        {101, "nUde"}};
  ASSERT_EQ(told.size() + 14, kBuiltInRows);
  for (const auto& [row, word] : told) {
    EXPECT_EQ(BadWords[row], word) << "row " << row;
  }
}

TEST_F(BuiltInWords, TakeRows1To101AndLeaveTheOthersEmpty) {
  EXPECT_EQ(BadWords.FirstEmptyRow(), 102U);
  for (std::size_t row = 102; row <= 200; ++row) {
    EXPECT_EQ(BadWords[row], "") << "row " << row;
  }
  EXPECT_EQ(AllowedDomains.FirstEmptyRow(), 1U);
}

TEST_F(BuiltInWords, KeepTheirRepeats) {
  const std::vector<std::pair<std::size_t, std::size_t>> repeats = {{6, 7},   {10, 16}, {12, 32}, {13, 30},
                                                                    {29, 42}, {34, 39}, {35, 36}, {37, 41},
                                                                    {71, 73}, {78, 80}, {79, 81}};
  std::map<std::string, std::vector<std::size_t>> rowsOf;
  for (std::size_t row = 1; row <= kBuiltInRows; ++row) {
    rowsOf[BadWords[row]].push_back(row);
  }
  std::size_t repeated = 0;
  for (const auto& [word, rows] : rowsOf) {
    repeated += rows.size() > 1 ? 1 : 0;
  }
  EXPECT_EQ(repeated, repeats.size());
  for (const auto& [one, other] : repeats) {
    EXPECT_EQ(BadWords[one], BadWords[other]);
  }
}

TEST_F(BuiltInWords, HoldSixOfTheEightSpellingsOfOneWordAndSevenOfTheOther) {
  const auto holds = [](const std::string& word) {
    for (std::size_t row = 1; row <= kBuiltInRows; ++row) {
      if (BadWords[row] == word) {
        return true;
      }
    }
    return false;
  };
  for (const char* word :
       {"sex", "Sex", "SEx", "SEX", "seX", "sEX", "nude", "Nude", "NUDE", "nuDe", "nudE", "nUDE", "nUde"}) {
    EXPECT_TRUE(holds(word)) << word;
  }
  for (const char* word : {"sEx", "SeX", "NuDe", "NUde", "nUdE"}) {
    EXPECT_FALSE(holds(word)) << word;
  }
}

TEST_F(BuiltInWords, HoldBareDomainsInTheHostRows) {
  for (const std::size_t row : {44U, 48U, 51U, 52U, 53U, 54U, 75U, 76U, 77U}) {
    const std::string& host = BadWords[row];
    EXPECT_NE(host.find('.'), std::string::npos) << "row " << row;
    EXPECT_EQ(host.find_first_of(":/ ,"), std::string::npos) << "row " << row;
  }
}

TEST_F(BuiltInWords, HoldTwoDomainsInARowInTheJoinedHostRows) {
  for (const std::size_t row : {48U, 54U}) {
    const std::string& joined = BadWords[row];
    const std::size_t first = joined.find('.');
    EXPECT_NE(joined.find('.', first + 1), std::string::npos) << "row " << row;
  }
}

TEST_F(BuiltInWords, HoldAddressesWithTheirSchemeInTheUrlRows) {
  const auto pathOf = [](const std::string& url) {
    const std::size_t host = url.find("://") + 3;
    const std::size_t slash = url.find('/', host);
    return slash == std::string::npos ? std::string() : url.substr(slash);
  };
  for (std::size_t row = 83; row <= 87; ++row) {
    EXPECT_EQ(BadWords[row].rfind("http", 0), 0U) << "row " << row;
    EXPECT_NE(BadWords[row].find("://"), std::string::npos) << "row " << row;
    const bool homePage = row == 84 || row == 85;
    EXPECT_EQ(pathOf(BadWords[row]).size() <= 1, homePage) << "row " << row;
  }
  EXPECT_NE(BadWords[83].find('?'), std::string::npos);
}

TEST_F(BuiltInWords, RefuseNothingThatTheProgramItselfNeeds) {
  for (const std::string_view needed : {hosts::kProductHome, hosts::kForwarderSite, hosts::kWordSearchHost,
                                        hosts::kHotKeySearchHost, hosts::kSearchHome}) {
    for (std::size_t row = 1; row <= kBuiltInRows; ++row) {
      EXPECT_EQ(needed.find(BadWords[row]), std::string_view::npos) << BadWords[row];
    }
  }
}

TEST_F(BuiltInWords, CanBeFilledInTwiceAndLeaveAddedRowsAlone) {
  BadWords[1] = "";
  BadWords[102] = "added";
  BadWords[103] = "sex";
  FillBadWords();
  EXPECT_EQ(BadWords[1], "porn");
  EXPECT_EQ(BadWords[102], "added");
  EXPECT_EQ(BadWords[103], "sex");
  EXPECT_EQ(BadWords.FirstEmptyRow(), 104U);
}

TEST(FilterTables, AreEmptyBeforeTheyAreFilled) {
  ResetFilterValues();
  for (std::size_t row = 1; row <= 200; ++row) {
    EXPECT_EQ(BadWords[row], "");
  }
  for (std::size_t row = 1; row <= 100; ++row) {
    EXPECT_EQ(AllowedDomains[row], "");
  }
  EXPECT_EQ(BlockedURL, "");
  EXPECT_FALSE(SessionAllowPending);
  EXPECT_FALSE(BackBypass);
}

TEST(FilterTables, RefuseRowsOutsideOfTheTable) {
  ResetFilterValues();
  const auto number = [](auto access) {
    try {
      access();
    } catch (const PlatformError& error) {
      return error.Number();
    }
    return 0L;
  };
  EXPECT_EQ(number([] { BadWords[0] = "x"; }), kSubscriptOutOfRange);
  EXPECT_EQ(number([] { BadWords[201] = "x"; }), kSubscriptOutOfRange);
  EXPECT_EQ(number([] { AllowedDomains[0] = "x"; }), kSubscriptOutOfRange);
  EXPECT_EQ(number([] { AllowedDomains[101] = "x"; }), kSubscriptOutOfRange);
  EXPECT_EQ(number([] { BadWords[1] = BadWords[200] = "x"; }), 0);
  EXPECT_EQ(number([] { AllowedDomains[1] = AllowedDomains[100] = "x"; }), 0);
}

TEST(FilterTables, HaveNoEmptyRowWhenFull) {
  AllowedDomainsTable table;
  for (std::size_t row = 1; row <= 100; ++row) {
    EXPECT_EQ(table.FirstEmptyRow(), row);
    table[row] = "x";
  }
  EXPECT_EQ(table.FirstEmptyRow(), 101U);
}

}  // namespace
}  // namespace kivandra
