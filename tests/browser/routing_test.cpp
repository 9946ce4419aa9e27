// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/routing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "hosts.h"

namespace kivandra {
namespace {

const std::vector<std::string> kEnglish{
    "what", "WHAT", "What", "WHERE", "where", "Where", "HOW",   "how",   "How",   "when",  "When",  "WHEN",
    "why",  "WHY",  "Why",  "who",   "Who",   "WHO",   "IS",    "is",    "Is",    "Are",   "are",   "ARE",
    "Will", "will", "WILL", "can",   "Can",   "CAN",   "Could", "could", "COULD", "Shall", "shall", "SHALL"};
const std::vector<std::string> kSpanish{
    "Quien",  "Quién",   "quien",   "quién",   "QUIEN",   "Que",     "Qué",     "que",     "qué",
    "QUE",    "Donde",   "Dónde",   "donde",   "dónde",   "DONDE",   "Cuando",  "Cuándo",  "cuando",
    "cuándo", "CUANDO",  "Porque",  "Porqué",  "porque",  "porqué",  "PORQUE",  "Como",    "como",
    "COMO",   "Hay",     "hay",     "HAY",     "Estan",   "Están",   "estan",   "están",   "ESTAN",
    "Puedo",  "puedo",   "PUEDO",   "Pudiera", "pudiera", "PUDIERA", "Pudiese", "pudiese", "PUDIESE",
    "Cual",   "Cúal",    "cual",    "cúal",    "CUAL",    "Esta",    "Está",    "esta",    "está",
    "ESTA",   "Quienes", "Quiénes", "quienes", "quiénes", "QUIENES", "Cuales",  "cuales",  "CUALES",
    "Por",    "por",     "POR",     "SHALL",   "¿",       "?"};

/// What an address box can make of a text.
enum class Way { Home, AsTyped, HttpInFront, HttpWwwInFront, WordSearch, EnglishQuestion, SpanishQuestion };

std::string Address(Way way, const std::string& text) {
  const auto question = [&text](std::string_view host) {
    return "http://" + std::string(host) + "/main/askjeeves.asp?ask=" + text +
           "&origin=0&site_name=Jeeves&metasearch=yes";
  };
  switch (way) {
    case Way::Home:
      return std::string(hosts::kProductHome);
    case Way::AsTyped:
      return text;
    case Way::HttpInFront:
      return "http://" + text;
    case Way::HttpWwwInFront:
      return "http://www." + text;
    case Way::WordSearch:
      return "http://" + std::string(hosts::kWordSearchHost) + "/search?q=" + text;
    case Way::EnglishQuestion:
      return question(hosts::kEnglishQuestionHost);
    case Way::SpanishQuestion:
      return question(hosts::kSpanishQuestionHost);
  }
  return {};
}

struct Case {
  std::string name;
  std::string text;
  Way way;
};

class AddressBox : public ::testing::TestWithParam<Case> {};

TEST_P(AddressBox, GoesWhereTheTextPoints) {
  const Case& each = GetParam();
  const std::string before = each.text;
  EXPECT_EQ(getURL(each.text), Address(each.way, each.text)) << each.text;
  EXPECT_EQ(each.text, before);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, AddressBox,
    ::testing::Values(
        Case{"NothingTyped", "", Way::Home}, Case{"OneBlankIsTwoEmptyWords", " ", Way::WordSearch},

        // An address by its "www."
        Case{"WwwWithoutEnding", "www.example", Way::WordSearch},
        Case{"WwwWithoutEndingButWithScheme", "http://www.example", Way::WordSearch},
        Case{"WwwWithUnknownEnding", "www.example.edu", Way::WordSearch},
        Case{"WwwInASentenceOfTwoWords", "what is www.example", Way::WordSearch},
        Case{"WwwAndEnding", "www.example.com", Way::HttpInFront},
        Case{"WwwAndEndingInCapitals", "WWW.EXAMPLE.COM", Way::HttpInFront},
        Case{"WwwAndEndingInMixedCase", "wWw.Example.oRg", Way::HttpInFront},
        Case{"WwwAndEndingAndPath", "www.example.net/a b?c=d", Way::HttpInFront},
        Case{"WwwAtTheEnd", "example.com www.", Way::HttpInFront},
        Case{"WwwInsideAWord", "xwww.example.com", Way::HttpInFront},
        Case{"WwwWithSecureScheme", "https://www.example.com", Way::HttpInFront},
        Case{"WwwWithScheme", "http://www.example.com", Way::AsTyped},
        Case{"WwwWithSchemeInCapitals", "HTTP://WWW.EXAMPLE.COM", Way::AsTyped},
        Case{"SchemeBehindWww", "www.example.com/?to=http://x", Way::AsTyped},
        Case{"NearlyWww", "ww.example", Way::WordSearch},
        Case{"WwwWithoutItsDot", "wwwexample", Way::WordSearch},
        Case{"WwwAsAWholeTextWithoutDot", "www", Way::WordSearch},
        Case{"WwwAsAWholeText", "www.", Way::WordSearch}, Case{"DotThenWww", ".www", Way::WordSearch},

        // A full address by its scheme.
        Case{"SchemeWithoutEnding", "http://example", Way::AsTyped},
        Case{"SchemeWithEnding", "http://example.org/", Way::AsTyped},
        Case{"SchemeInMixedCase", "hTTp://example", Way::AsTyped},
        Case{"SchemeInsideASentence", "what is http://example", Way::AsTyped},
        Case{"SchemeAlone", "http://", Way::AsTyped},
        Case{"SchemeBehindOtherColons", "a::http://b", Way::AsTyped},
        Case{"SchemeWithOneSlash", "http:/example", Way::WordSearch},
        Case{"SchemeWithoutSlashes", "http:example", Way::WordSearch},
        Case{"SchemeCutOff", "http:", Way::WordSearch},
        Case{"SecureSchemeWithoutEnding", "https://example", Way::WordSearch},
        Case{"SecureSchemeWithEnding", "https://example.org", Way::HttpWwwInFront},

        // An address by its ending alone.
        Case{"EndingAlone", "example.org", Way::HttpWwwInFront},
        Case{"EndingNet", "example.net", Way::HttpWwwInFront},
        Case{"EndingCom", "example.com", Way::HttpWwwInFront},
        Case{"EndingInCapitals", "EXAMPLE.COM", Way::HttpWwwInFront},
        Case{"OtherProtocol", "ftp://example.org", Way::HttpWwwInFront},
        Case{"EndingInTheMiddle", "a.common.thing", Way::HttpWwwInFront},
        Case{"EndingAtTheFront", ".com", Way::HttpWwwInFront},
        Case{"EndingInAQuestion", "what is example.com", Way::HttpWwwInFront},
        Case{"EndingBehindManyDots", "a.....com", Way::HttpWwwInFront},
        Case{"MailAddress", "mailto:someone@example.com", Way::HttpWwwInFront},
        Case{"CountryEnding", "example.co.uk", Way::WordSearch},
        Case{"EndingWithABlankInside", "example. com", Way::WordSearch},
        Case{"EndingCutOff", "example.co", Way::WordSearch},
        Case{"EndingWithoutItsDot", "examplecom", Way::WordSearch},

        // A word.
        Case{"OneWord", "dinosaur", Way::WordSearch}, Case{"OneQuestionWord", "what", Way::WordSearch},
        Case{"OneQuestionMark", "?", Way::WordSearch}, Case{"OneSpanishMark", "¿", Way::WordSearch},
        Case{"TabIsNoBlank", "what\tis\tlove", Way::WordSearch},
        Case{"NoBreakBlankIsNoBlank", "what\u00a0is", Way::WordSearch},

        // Questions.
        Case{"EnglishQuestion", "what is love", Way::EnglishQuestion},
        Case{"SpanishQuestion", "que es", Way::SpanishQuestion},
        Case{"SecondWordHasTheRightCase", "WhAt is", Way::EnglishQuestion},
        Case{"NoWordHasTheRightCase", "WhAt iS", Way::WordSearch},
        Case{"EnglishOverridesSpanish", "como is", Way::EnglishQuestion},
        Case{"EnglishOverridesSpanishInEitherOrder", "is como", Way::EnglishQuestion},
        Case{"MarksStuckToWords", "¿como estas?", Way::WordSearch},
        Case{"MarksBetweenBlanks", "¿ como estas ?", Way::SpanishQuestion},
        Case{"MarkAloneAtTheEnd", "love ?", Way::SpanishQuestion},
        Case{"MarkStuckToTheLastWord", "love it?", Way::WordSearch},
        Case{"DoubleBlank", "blue  whale", Way::WordSearch},
        Case{"DoubleBlankBeforeAQuestionWord", "blue  what", Way::EnglishQuestion},
        Case{"QuestionWordAndABlankBehind", "what ", Way::EnglishQuestion},
        Case{"QuestionWordAndABlankBefore", " what", Way::EnglishQuestion},
        Case{"QuestionWordInTheMiddle", "tell me why now", Way::EnglishQuestion},
        Case{"WordOfBothTables", "SHALL x", Way::EnglishQuestion},
        Case{"AccentOnTheFirstVowel", "Cúal x", Way::SpanishQuestion},
        Case{"AccentOnTheSecondVowel", "Cuál x", Way::WordSearch},
        Case{"AccentAsACharacterOfItsOwn", "que\u0301 x", Way::WordSearch},
        Case{"AccentedCapitals", "QUIÉN x", Way::WordSearch},
        Case{"SpanishWordInsideALongerOne", "queso verde", Way::WordSearch},
        Case{"EnglishWordInsideALongerOne", "whatever island", Way::WordSearch}),
    [](const auto& row) { return row.param.name; });

bool IsQuestionWord(const std::string& word) {
  return std::count(kEnglish.begin(), kEnglish.end(), word) +
             std::count(kSpanish.begin(), kSpanish.end(), word) >
         0;
}

void ExpectWay(Way way, const std::string& text) { EXPECT_EQ(getURL(text), Address(way, text)) << text; }

/// The word alone among others, and texts that hold it only nearly.
void WalkTable(const std::vector<std::string>& table, Way way) {
  for (const std::string& word : table) {
    const Way wanted = word == "SHALL" ? Way::EnglishQuestion : way;
    ExpectWay(wanted, word + " zebra");
    ExpectWay(wanted, "zebra " + word);
    ExpectWay(wanted, "zebra " + word + " zebra");
    ExpectWay(Way::WordSearch, word);
    ExpectWay(Way::WordSearch, "zebra " + word + "x");
    ExpectWay(Way::WordSearch, "zebra x" + word);
    ExpectWay(Way::WordSearch, "zebra " + word + ".");
    // Every letter of ASCII in the other case, unless that is a word of a table too.
    for (std::size_t i = 0; i < word.size(); ++i) {
      std::string other = word;
      if ((other[i] >= 'a' && other[i] <= 'z') || (other[i] >= 'A' && other[i] <= 'Z')) {
        other[i] = static_cast<char>(other[i] ^ 0x20);
        if (!IsQuestionWord(other)) {
          ExpectWay(Way::WordSearch, "zebra " + other);
        }
      }
      other = word.substr(0, i);
      if (!IsQuestionWord(other)) {
        ExpectWay(Way::WordSearch, "zebra " + other);
      }
    }
  }
}

TEST(QuestionWords, EveryEnglishWordMakesAQuestion) { WalkTable(kEnglish, Way::EnglishQuestion); }

TEST(QuestionWords, EverySpanishWordMakesAQuestion) { WalkTable(kSpanish, Way::SpanishQuestion); }

TEST(QuestionWords, StandInTheirOrderWithNoneTwice) {
  EXPECT_EQ(std::vector<std::string>(kEnglishQuestionWords.begin(), kEnglishQuestionWords.end()), kEnglish);
  EXPECT_EQ(std::vector<std::string>(kSpanishQuestionWords.begin(), kSpanishQuestionWords.end()), kSpanish);
  EXPECT_EQ(std::set<std::string>(kEnglish.begin(), kEnglish.end()).size(), 36U);
  EXPECT_EQ(std::set<std::string>(kSpanish.begin(), kSpanish.end()).size(), 69U);
}

TEST(Searches, TakeTheTextAsItStands) {
  const std::string text = "a b&c=\xff%41#ñ";
  EXPECT_EQ(WordSearchURL(text), Address(Way::WordSearch, text));
  EXPECT_EQ(EnglishQuestionURL(text), Address(Way::EnglishQuestion, text));
  EXPECT_EQ(SpanishQuestionURL(text), Address(Way::SpanishQuestion, text));
  EXPECT_EQ(HotKeySearchURL(text),
            "http://" + std::string(hosts::kHotKeySearchHost) + "/bin/search?p=" + text);
}

std::string LowerAscii(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 0x20) : c; });
  return text;
}

/// The rules in their plainest form.
Way PlainWay(const std::string& text) {
  const std::string lower = LowerAscii(text);
  const auto has = [&lower](const char* part) { return lower.find(part) != std::string::npos; };
  const bool ending = has(".net") || has(".com") || has(".org");
  if (text.empty()) {
    return Way::Home;
  }
  if (has("www.")) {
    return !ending ? Way::WordSearch : has("http://") ? Way::AsTyped : Way::HttpInFront;
  }
  if (has("http://")) {
    return Way::AsTyped;
  }
  if (ending) {
    return Way::HttpWwwInFront;
  }
  std::vector<std::string> words;
  std::istringstream stream(text);
  for (std::string word; std::getline(stream, word, ' ');) {
    words.push_back(word);
  }
  if (text.back() == ' ') {
    words.emplace_back();
  }
  if (words.size() < 2) {
    return Way::WordSearch;
  }
  const auto anyOf = [&words](const std::vector<std::string>& table) {
    return std::any_of(words.begin(), words.end(), [&table](const std::string& word) {
      return std::find(table.begin(), table.end(), word) != table.end();
    });
  };
  return anyOf(kEnglish) ? Way::EnglishQuestion : anyOf(kSpanish) ? Way::SpanishQuestion : Way::WordSearch;
}

TEST(AddressBoxTexts, AnyMixtureOfPiecesFollowsThePlainRules) {
  const std::vector<std::string> pieces{"www.",   "WwW",      ".",    ":",    "/",     "http://",
                                        "HTTP:/", ".com",     ".Org", ".ne",  "t",     " ",
                                        "  ",     "a",        "ñ",    "is",   "what ", "que",
                                        " ¿",     "?",        "\xc3", "como", "SHALL", std::string(1, '\0'),
                                        "\n",     "\xff\xfe", "Who",  "é"};
  std::mt19937 random(20261121);
  std::uniform_int_distribution<std::size_t> piece(0, pieces.size() - 1);
  std::uniform_int_distribution<int> length(0, 8);
  for (int round = 0; round < 40000; ++round) {
    std::string text;
    for (int left = length(random); left > 0; --left) {
      text += pieces[piece(random)];
    }
    ASSERT_EQ(getURL(text), Address(PlainWay(text), text)) << ::testing::PrintToString(text);
  }
}

TEST(AddressBoxTexts, AMillionBytesOfAnyKindAreRouted) {
  constexpr std::size_t kSize = 1 << 20;
  const auto repeated = [](std::string_view piece) {
    std::string text;
    while (text.size() < kSize) {
      text += piece;
    }
    return text;
  };
  ExpectWay(Way::WordSearch, repeated("x"));
  ExpectWay(Way::WordSearch, repeated(" "));
  ExpectWay(Way::WordSearch, repeated("W "));
  ExpectWay(Way::WordSearch, repeated("."));
  ExpectWay(Way::WordSearch, repeated("www"));
  ExpectWay(Way::WordSearch, repeated("http:/"));
  ExpectWay(Way::WordSearch, repeated(std::string_view("\0", 1)));
  ExpectWay(Way::WordSearch, repeated("\xff"));
  ExpectWay(Way::EnglishQuestion, repeated("Pudiesf ") + "is");
  ExpectWay(Way::SpanishQuestion, repeated("\xc2 ") + "¿");
  ExpectWay(Way::HttpWwwInFront, repeated(".co") + ".com");
}

TEST(AddressBoxTexts, ANulIsAnOrdinaryCharacter) {
  const std::string nul(1, '\0');
  ExpectWay(Way::WordSearch, nul);
  ExpectWay(Way::HttpWwwInFront, "a" + nul + "b.com");
  ExpectWay(Way::EnglishQuestion, nul + " is");
  ExpectWay(Way::WordSearch, "a is" + nul);
}

}  // namespace
}  // namespace kivandra
