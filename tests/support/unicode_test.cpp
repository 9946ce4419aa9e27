// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/unicode.h"

#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace kivandra {
namespace {

std::vector<char32_t> Decoded(std::string_view text) {
  std::vector<char32_t> points;
  for (std::size_t at = 0; at < text.size();) {
    points.push_back(DecodeUtf8(text, at));
  }
  return points;
}

using Points = std::vector<char32_t>;
constexpr char32_t kBad = kReplacementCharacter;

struct DecodeCase {
  const char* name;
  std::string text;
  Points points;
};

class DecodeUtf8Test : public testing::TestWithParam<DecodeCase> {};

TEST_P(DecodeUtf8Test, ReadsAsTold) { EXPECT_EQ(Decoded(GetParam().text), GetParam().points); }

INSTANTIATE_TEST_SUITE_P(
    Rows, DecodeUtf8Test,
    testing::Values(DecodeCase{"nothing", "", {}}, DecodeCase{"ascii", "aZ~", {'a', 'Z', '~'}},
                    DecodeCase{"nul_is_a_character", std::string("a\0b", 3), {'a', 0, 'b'}},
                    DecodeCase{"last_of_one_byte", "\x7F", {0x7F}},
                    DecodeCase{"first_of_two_bytes", "\xC2\x80", {0x80}},
                    DecodeCase{"last_of_two_bytes", "\xDF\xBF", {0x7FF}},
                    DecodeCase{"first_of_three_bytes", "\xE0\xA0\x80", {0x800}},
                    DecodeCase{"last_before_the_surrogates", "\xED\x9F\xBF", {0xD7FF}},
                    DecodeCase{"first_behind_the_surrogates", "\xEE\x80\x80", {0xE000}},
                    DecodeCase{"last_of_three_bytes", "\xEF\xBF\xBF", {0xFFFF}},
                    DecodeCase{"first_of_four_bytes", "\xF0\x90\x80\x80", {0x10000}},
                    DecodeCase{"last_of_all", "\xF4\x8F\xBF\xBF", {0x10FFFF}},
                    DecodeCase{"stray_continuation", "\x80", {kBad}},
                    DecodeCase{"overlong_two_bytes", "\xC1\xBF", {kBad, kBad}},
                    DecodeCase{"overlong_three_bytes", "\xE0\x9F\xBF", {kBad, kBad, kBad}},
                    DecodeCase{"overlong_four_bytes", "\xF0\x8F\xBF\xBF", {kBad, kBad, kBad, kBad}},
                    DecodeCase{"first_surrogate", "\xED\xA0\x80", {kBad, kBad, kBad}},
                    DecodeCase{"above_the_last", "\xF4\x90\x80\x80", {kBad, kBad, kBad, kBad}},
                    DecodeCase{"no_such_lead", "\xF5\x80\x80\x80", {kBad, kBad, kBad, kBad}},
                    DecodeCase{"byte_ff", "\xFF", {kBad}},
                    DecodeCase{"cut_off_at_the_end", "a\xE2\x82", {'a', kBad, kBad}},
                    DecodeCase{"cut_off_by_a_letter", "\xE2\x82s", {kBad, kBad, 's'}},
                    DecodeCase{"lead_before_a_whole_one", "\xC3\xC3\xA9", {kBad, 0xE9}}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(CharKind, KnowsLettersAndDigitsOfManyScripts) {
  for (const char32_t letter : {U'a', U'Z', U'\u00AA', U'\u00B5', U'\u00DF', U'\u0416', U'\u05D0', U'\u4E2D',
                                U'\u01C5', U'\U00020000', U'\U0001D400'}) {
    EXPECT_TRUE(IsLetter(letter)) << std::hex << static_cast<unsigned>(letter);
    EXPECT_FALSE(IsDecimalDigit(letter));
    EXPECT_TRUE(IsLetterOrDigit(letter));
  }
  for (const char32_t digit : {U'0', U'9', U'\u0660', U'\u0969', U'\uFF15', U'\U0001D7CE'}) {
    EXPECT_TRUE(IsDecimalDigit(digit)) << std::hex << static_cast<unsigned>(digit);
    EXPECT_FALSE(IsLetter(digit));
    EXPECT_TRUE(IsLetterOrDigit(digit));
  }
}

TEST(CharKind, TakesNeitherUnderscoreNorSuperscriptNorMarkForALetterOrDigit) {
  for (const char32_t other :
       {U'_', U' ', U'\0', U'-', U'\u00B2', U'\u00B9', U'\u2167', U'\u24B6', U'\u0301', U'\u0345', U'\u00D7',
        U'\uFEFF', kReplacementCharacter, static_cast<char32_t>(0xD800), static_cast<char32_t>(0x110000),
        static_cast<char32_t>(0xFFFFFFFF)}) {
    EXPECT_FALSE(IsLetterOrDigit(other)) << std::hex << static_cast<unsigned>(other);
  }
}

TEST(FoldCase, MakesLettersThatDifferInCaseAloneAlike) {
  const std::vector<std::pair<char32_t, char32_t>> pairs = {
      {U'A', U'a'},           {U'Z', U'z'},           {U'\u00C9', U'\u00E9'},
      {U'\u0178', U'\u00FF'}, {U'\u0160', U'\u0161'}, {U'\u1E9E', U'\u00DF'},
      {U'\u212A', U'k'},      {U'\u017F', U's'},      {U'\u03C2', U'\u03C3'},
      {U'\u039C', U'\u00B5'}, {U'\u01C5', U'\u01C6'}, {U'\u0416', U'\u0436'},
      {U'\u2160', U'\u2170'}, {U'\u24B6', U'\u24D0'}, {U'\U00010400', U'\U00010428'},
      {U'\u1FBC', U'\u1FB3'},
  };
  for (const auto& [one, other] : pairs) {
    EXPECT_EQ(FoldCase(one), FoldCase(other)) << std::hex << static_cast<unsigned>(one);
  }
}

TEST(FoldCase, LeavesAloneWhatHasNoCounterpartOfOneCharacter) {
  for (const char32_t c :
       {U'a', U'0', U'_', U'@', U'[', U'\u00DF', U'\u0130', U'\u0149', U'\u4E2D', U'\u0345'}) {
    EXPECT_EQ(FoldCase(c), c) << std::hex << static_cast<unsigned>(c);
  }
  EXPECT_NE(FoldCase(U'\u00E9'), FoldCase(U'e'));
}

TEST(FoldCase, NeverChangesTheKindAndIsDoneInOneStep) {
  for (char32_t c = 0; c < 0x110000; ++c) {
    const char32_t folded = FoldCase(c);
    ASSERT_LT(folded, 0x110000U);
    ASSERT_EQ(FoldCase(folded), folded) << std::hex << static_cast<unsigned>(c);
    ASSERT_EQ(IsLetter(folded), IsLetter(c)) << std::hex << static_cast<unsigned>(c);
    ASSERT_EQ(IsDecimalDigit(folded), IsDecimalDigit(c)) << std::hex << static_cast<unsigned>(c);
  }
}

// What a system of code page 1252 says of each byte.
TEST(CharKind, AgreesWithTheRecordedCodePage) {
  std::ifstream file(KV_TEST_DATA "/chars1252.tsv");
  ASSERT_TRUE(file);
  std::string line;
  std::getline(file, line);
  std::map<unsigned, char32_t> unicodeOf;
  std::vector<std::array<unsigned, 7>> rows;
  while (std::getline(file, line)) {
    std::istringstream fields(line);
    std::array<unsigned, 7> row{};
    for (std::size_t i = 0; i < row.size(); ++i) {
      fields >> (i == 2 || i == 3 ? std::dec : std::hex) >> row[i];
    }
    ASSERT_TRUE(fields) << line;
    unicodeOf[row[0]] = row[1];
    rows.push_back(row);
  }
  ASSERT_EQ(rows.size(), 256U);
  for (const auto& [byte, point, isAlpha, isAlphaNumeric, type, lower, upper] : rows) {
    SCOPED_TRACE(byte);
    const bool superscript = byte == 0xB2 || byte == 0xB3 || byte == 0xB9;  // digits there, no decimal digits
    EXPECT_EQ(IsLetter(point), isAlpha != 0);
    EXPECT_EQ(IsLetterOrDigit(point), isAlphaNumeric != 0 && !superscript);
    EXPECT_EQ(FoldCase(unicodeOf[lower]), FoldCase(unicodeOf[upper]));
  }
}

}  // namespace
}  // namespace kivandra
