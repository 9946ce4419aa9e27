// SPDX-License-Identifier: GPL-3.0-or-later
#include "filter/word_search.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "filter/find_vectors.h"
#include "support/unicode.h"

namespace kivandra {
namespace {

bool Finds(const std::string& text, const std::vector<std::string>& words) {
  return WordSearch(words).FindsIn(text);
}

/// The meaning of a hit, word by word and place by place.
bool FindsByDefinition(const std::string& text, const std::vector<std::string>& words) {
  const auto points = [](const std::string& utf8) {
    std::u32string all;
    for (std::size_t at = 0; at < utf8.size();) {
      all.push_back(DecodeUtf8(utf8, at));
    }
    return all;
  };
  const std::u32string whole = points(text);
  for (const std::string& utf8 : words) {
    const std::u32string word = points(utf8);
    for (std::size_t at = 0; !word.empty() && at + word.size() <= whole.size(); ++at) {
      const std::size_t end = at + word.size();
      const bool alike = std::equal(word.begin(), word.end(), whole.begin() + static_cast<std::ptrdiff_t>(at),
                                    [](char32_t a, char32_t b) { return FoldCase(a) == FoldCase(b); });
      if (alike && (at == 0 || !IsLetterOrDigit(whole[at - 1])) &&
          (end == whole.size() || !IsLetterOrDigit(whole[end]))) {
        return true;
      }
    }
  }
  return false;
}

struct SearchCase {
  const char* name;
  std::string text;
  std::vector<std::string> words;
  bool found;
};

class WordSearchTest : public testing::TestWithParam<SearchCase> {};

TEST_P(WordSearchTest, FindsAsTold) { EXPECT_EQ(Finds(GetParam().text, GetParam().words), GetParam().found); }

const std::string kLong(3000, 'x');

INSTANTIATE_TEST_SUITE_P(
    Rows, WordSearchTest,
    testing::Values(
        SearchCase{"no_words", "anything", {}, false},
        SearchCase{"empty_word_never_hits", "anything", {""}, false},
        SearchCase{"empty_text", "", {"cat"}, false}, SearchCase{"the_whole_text", "cat", {"cat"}, true},
        SearchCase{"other_case", "a CaT b", {"cAt"}, true},
        SearchCase{"letter_before", "scat", {"cat"}, false},
        SearchCase{"letter_behind", "cats", {"cat"}, false},
        SearchCase{"digit_before", "1cat", {"cat"}, false},
        SearchCase{"digit_behind", "cat1", {"cat"}, false},
        SearchCase{"underscores_part_words", "_cat_", {"cat"}, true},
        SearchCase{"accented_letter_before",
                   "\xC3\xA9"
                   "cat",
                   {"cat"},
                   false},
        SearchCase{"accented_letter_behind", "cat\xC3\xA9", {"cat"}, false},
        SearchCase{"combining_mark_is_no_letter", "cat\xCC\x81", {"cat"}, true},
        SearchCase{"broken_byte_is_no_letter",
                   "\xC3"
                   "cat\xFF",
                   {"cat"},
                   true},
        SearchCase{"tags_part_words", "<b>cat</b>", {"cat"}, true},
        SearchCase{"entity_in_front", "&nbsp;cat", {"cat"}, true},
        SearchCase{"goes_on_behind_a_nul", std::string("dog\0cat", 7), {"cat"}, true},
        SearchCase{"word_with_a_nul", std::string("a x\0y b", 7), {std::string("x\0y", 3)}, true},
        SearchCase{"accents_fold", "CAF\xC3\x89", {"caf\xC3\xA9"}, true},
        SearchCase{"accents_matter", "cafe", {"caf\xC3\xA9"}, false},
        SearchCase{"word_with_a_comma", "anal, x", {"anal,"}, true},
        SearchCase{"word_with_a_comma_needs_it", "anal x", {"anal,"}, false},
        SearchCase{"letter_behind_the_comma", "anal,x", {"anal,"}, false},
        SearchCase{"word_with_a_blank", "x -rated", {"x -rated"}, true},
        SearchCase{"word_with_a_blank_needs_it", "x-rated", {"x -rated"}, false},
        SearchCase{"word_that_begins_with_a_hyphen", "the -jobblow it", {"-jobblow"}, true},
        SearchCase{"letter_before_the_hyphen", "a-jobblow", {"-jobblow"}, false},
        SearchCase{"word_that_ends_in_a_mark", "-job!blow -jobs! x", {"-job!blow -jobs!"}, true},
        SearchCase{"second_try_overlaps_the_first", "a a a b", {"a a b"}, true},
        SearchCase{"suffix_inside_a_longer_word_is_none", "xcat", {"xcatx", "cat"}, false},
        SearchCase{"suffix_behind_a_hyphen_inside_a_longer_word", "x-cat y", {"x-cats", "cat"}, true},
        SearchCase{"suffix_of_a_longer_word_that_breaks_off_at_the_end", "x-cat", {"x-cats", "cat"}, true},
        SearchCase{"suffix_of_a_longer_word_that_goes_on_with_a_mark", "x-cat-z", {"x-cat-y", "cat"}, true},
        SearchCase{"prefix_of_a_longer_word", "porn!", {"porno", "porn"}, true},
        SearchCase{"prefix_at_the_end_of_the_text", "the porn", {"pornos", "porn"}, true},
        SearchCase{"longer_than_the_text", "ca", {"cat"}, false},
        SearchCase{"letter_of_another_script_before",
                   "\xE4\xB8\xAD"
                   "cat",
                   {"cat"},
                   false},
        SearchCase{"word_of_another_script", "\xE4\xB8\xAD\xEF\xBC\x8C", {"\xE4\xB8\xAD"}, true},
        SearchCase{"broken_byte_in_a_word_is_any_broken_byte",
                   "a\xFE"
                   "b",
                   {"a\xFF"
                    "b"},
                   true},
        SearchCase{"very_long_word", "a " + kLong + " b", {kLong}, true},
        SearchCase{"very_long_word_and_a_letter", "a " + kLong + "x b", {kLong}, false}),
    [](const auto& row) { return std::string(row.param.name); });

class RecordedSearches : public testing::TestWithParam<const char*> {};

TEST_P(RecordedSearches, AreAnsweredByTheirDefinition) {
  const auto vectors = test::ReadFindVectors(std::string(KV_TEST_DATA "/") + GetParam());
  ASSERT_FALSE(vectors.empty());
  // The dotless i folds to no other letter one to one.
  const std::set<std::string> foldings = {"f0639", "f0641"};
  for (const auto& [id, text, word, found] : vectors) {
    if (!foldings.contains(id)) {
      EXPECT_EQ(Finds(text, {word}), found) << id;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Files, RecordedSearches, testing::Values("find_agrees.tsv", "find_differs.tsv"),
                         [](const auto& file) {
                           return std::string(file.param).substr(0, std::string(file.param).find('.'));
                         });

// Also with other words beside the recorded one: the words of one search don't disturb each other.
TEST(WordSearch, FindsTheSameForManyWordsAsForEachAlone) {
  const auto vectors = test::ReadFindVectors(KV_TEST_DATA "/find_agrees.tsv");
  for (std::size_t i = 0; i + 10 < vectors.size(); i += 5) {
    std::vector<std::string> words;
    for (std::size_t j = i; j < i + 10; ++j) {
      words.push_back(vectors[j].word);
    }
    const std::string& text = vectors[i].text;
    const bool any =
        std::any_of(words.begin(), words.end(), [&](const auto& word) { return Finds(text, {word}); });
    EXPECT_EQ(Finds(text, words), any) << vectors[i].id;
  }
}

std::string RandomText(std::mt19937& random, const std::vector<std::string>& units, std::size_t most) {
  std::string text;
  for (std::size_t length = random() % (most + 1); length > 0; --length) {
    text += units[random() % units.size()];
  }
  return text;
}

struct Alphabet {
  const char* name;
  std::vector<std::string> units;
};

class RandomSearches : public testing::TestWithParam<Alphabet> {};

TEST_P(RandomSearches, AgreeWithTheDefinition) {
  const std::vector<std::string>& units = GetParam().units;
  std::mt19937 random(20021116);
  int hits = 0;
  constexpr int kRounds = 6000;
  for (int round = 0; round < kRounds; ++round) {
    std::vector<std::string> words;
    for (std::size_t n = random() % 5; n > 0; --n) {
      words.push_back(RandomText(random, units, 6));
    }
    const std::string text = RandomText(random, units, 30);
    const bool found = FindsByDefinition(text, words);
    hits += found ? 1 : 0;
    ASSERT_EQ(Finds(text, words), found) << "round " << round;
  }
  // Both answers are put to the test.
  EXPECT_GT(hits, kRounds / 10);
  EXPECT_LT(hits, kRounds * 9 / 10);
}

// Few characters, so that words, their overlaps and their neighbours meet often.
INSTANTIATE_TEST_SUITE_P(Alphabets, RandomSearches,
                         testing::Values(Alphabet{"one_letter_and_a_hyphen", {"a", "-"}},
                                         Alphabet{"two_letters", {"a", "b", "B", "-"}},
                                         Alphabet{"letters_digits_and_broken_bytes",
                                                  {"a", "A", "1", "-", " ", std::string(1, '\0'), "\xC3\xA9",
                                                   "\xC3\x89", "\xFF", "_", "\xC3", "k", "\xE2\x84\xAA"}}),
                         [](const auto& alphabet) { return std::string(alphabet.param.name); });

// So many states with so many different characters that most have no row of their own.
TEST(WordSearch, AgreesWithTheDefinitionForHugeTables) {
  std::mt19937 random(7);
  const std::vector<std::string> units = {"a", "b", "-", " "};
  std::vector<std::string> words;
  std::string& manyCharacters = words.emplace_back();
  for (unsigned long point = 0x4E00; point < 0x4E00 + 900; ++point) {
    test::AppendUtf8(manyCharacters, point);
  }
  for (int i = 0; i < 150; ++i) {
    words.push_back("xxxxxx" + RandomText(random, units, 60));
    // Words inside of words, so that a way through a long one ends in the middle of another.
    words.push_back(words.back().substr(random() % (words.back().size() / 2 + 1)));
  }
  const WordSearch search(words);
  int hits = 0;
  constexpr int kRounds = 800;
  for (int round = 0; round < kRounds; ++round) {
    std::string text;
    for (std::size_t parts = 1 + random() % 3; parts > 0; --parts) {
      const std::string& word = words[1 + random() % (words.size() - 1)];
      const std::size_t from = random() % 2 == 0 ? 0 : random() % (word.size() + 1);
      text += word.substr(from, random() % 2 == 0 ? word.size() : random() % (word.size() + 1));
    }
    const bool found = FindsByDefinition(text, words);
    hits += found ? 1 : 0;
    ASSERT_EQ(search.FindsIn(text), found) << "round " << round << ": " << text;
  }
  EXPECT_GT(hits, kRounds / 10);
  EXPECT_LT(hits, kRounds * 9 / 10);
}

TEST(WordSearch, TakesOnePassHoweverTheTextIsMade) {
  // A search that looked from each place anew would take minutes here.
  std::vector<std::string> words;
  for (std::size_t length = 1; length <= 190; ++length) {
    words.push_back(std::string(length, '-') + "a");
  }
  const WordSearch search(words);
  std::string text(std::size_t{8} << 20, '-');
  EXPECT_FALSE(search.FindsIn(text));
  text += "a";
  EXPECT_TRUE(search.FindsIn(text));
  text += "b";
  EXPECT_FALSE(search.FindsIn(text));
}

}  // namespace
}  // namespace kivandra
