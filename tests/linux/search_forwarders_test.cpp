// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/search_forwarders.h"

#include <gtest/gtest.h>

#include "linux/temporary_folder.h"

namespace kivandra::linux_impl {
namespace {

class SearchForwardersTest : public testing::Test {
 protected:
  SearchForwardersTest() {
    folder_.Write("table",
                  "# service\tpath\tkey\taddress\n"
                  "spanish\t/ask\tq\thttps://es.example/?q=\n"
                  "*\t/ask\tq\thttps://a.example/?q=\n"
                  "*\tno-slash\tq\thttps://b.example/?q=\n"
                  "*\t/plain\tq\thttp://b.example/?q=\n"
                  "*\t/short\tq\n"
                  "\t/nobody\tq\thttps://b.example/?q=\n"
                  "news\t/\t-\thttps://n.example/today\n"
                  "*\t/words\tterm\thttps://c.example/find/\n");
  }
  [[nodiscard]] std::string To(std::string_view path, std::string_view query,
                               std::string_view service = "") const {
    return SearchForwarders(folder_.Path("table")).Forward(service, path, query).value_or("nowhere");
  }
  tests::TemporaryFolder folder_;
};

TEST_F(SearchForwardersTest, ASearchGoesToTheServiceOfItsRow) {
  EXPECT_EQ(To("/ask", "q=volcano"), "https://a.example/?q=volcano");
  EXPECT_EQ(To("/words", "term=volcano&db=*"), "https://c.example/find/volcano");
}

TEST_F(SearchForwardersTest, BlanksAndLettersOfOtherLanguagesArrive) {
  EXPECT_EQ(To("/ask", "q=why%20is+it%3F"), "https://a.example/?q=why%20is%20it%3F");
  EXPECT_EQ(To("/ask", "q=d%C3%B3nde"), "https://a.example/?q=d%C3%B3nde");
}

TEST_F(SearchForwardersTest, TheTextCannotChangeTheAddress) {
  EXPECT_EQ(To("/ask", "q=a%26safe=off"), "https://a.example/?q=a%26safe%3Doff");
  EXPECT_EQ(To("/words", "term=%2F..%2F%0D%0ALocation:x"),
            "https://c.example/find/%2F..%2F%0D%0ALocation%3Ax");
}

TEST_F(SearchForwardersTest, OnlyTheRowsKeyCounts) {
  EXPECT_EQ(To("/ask", "x=1&q=two&q=three&qq=four"), "https://a.example/?q=two");
  EXPECT_EQ(To("/ask", "origin=0"), "https://a.example/?q=");
}

TEST_F(SearchForwardersTest, OtherPathsAreNotForwarded) {
  for (const char* path :
       {"/", "/as", "/ask/", "/ASK", "", "no-slash", "/plain", "/short", "/nobody", "# service"}) {
    EXPECT_EQ(To(path, "q=volcano"), "nowhere") << path;
  }
}

TEST_F(SearchForwardersTest, TheServiceTellsRowsOfOnePathApart) {
  EXPECT_EQ(To("/ask", "q=oso", "spanish"), "https://es.example/?q=oso");
  EXPECT_EQ(To("/ask", "q=bear", "english"), "https://a.example/?q=bear");
  EXPECT_EQ(To("/", "", "news"), "https://n.example/today");
  EXPECT_EQ(To("/", "", ""), "nowhere");
  EXPECT_EQ(To("/ask", "q=a", "*"), "https://a.example/?q=a");
}

TEST_F(SearchForwardersTest, ARowWithoutAKeyTakesNothingOfTheQuery) {
  EXPECT_EQ(To("/", "-=x&q=y", "news"), "https://n.example/today");
}

TEST_F(SearchForwardersTest, AnEscapeIsUndoneOnce) {
  EXPECT_EQ(To("/ask", "q=100%25"), "https://a.example/?q=100%25");
  EXPECT_EQ(To("/ask", "q=%2541"), "https://a.example/?q=%2541");
  EXPECT_EQ(To("/ask", "q=50% off%zz%4"), "https://a.example/?q=50%25%20off%25zz%254");
}

TEST_F(SearchForwardersTest, RawCharactersAreEncoded) {
  EXPECT_EQ(To("/ask", "q=\"who\" <b> d\xC3\xB3nde\r\nX: y"),
            "https://a.example/?q=%22who%22%20%3Cb%3E%20d%C3%B3nde%0D%0AX%3A%20y");
}

TEST_F(SearchForwardersTest, AnEmptyTextStillReachesTheService) {
  EXPECT_EQ(To("/ask", "q="), "https://a.example/?q=");
  EXPECT_EQ(To("/ask", ""), "https://a.example/?q=");
  EXPECT_EQ(To("/ask", "q"), "https://a.example/?q=");
}

TEST_F(SearchForwardersTest, AVeryLongTextIsCutBehindAWholeCharacter) {
  EXPECT_EQ(To("/ask", "q=" + std::string(10'000, 'a')),
            "https://a.example/?q=" + std::string(SearchForwarders::kLongestText, 'a'));
  std::string accents = "q=a";
  for (int i = 0; i < 5'000; ++i) {
    accents += "%C3%B3";
  }
  const std::string address = To("/ask", accents);
  EXPECT_TRUE(address.ends_with("%C3%B3"));
  EXPECT_EQ(address.size(), std::string("https://a.example/?q=a").size() + 149 * 6);
}

/// The table that ships with the program.
class ShippedForwardersTest : public testing::Test {
 protected:
  [[nodiscard]] std::string To(std::string_view service, std::string_view path,
                               std::string_view query) const {
    return table_.Forward(service, path, query).value_or("nowhere");
  }
  SearchForwarders table_{std::string(KV_SOURCE_DIR) + "/site/forwarders.tsv"};
};

TEST_F(ShippedForwardersTest, QuestionsGoToAnEncyclopediaInTheirLanguage) {
  const std::string tail = "&origin=0&site_name=Jeeves&metasearch=yes";
  EXPECT_EQ(To("english", "/main/askjeeves.asp", "ask=why%20is%20the%20sky%20blue" + tail),
            "https://simple.wikipedia.org/w/index.php?search=why%20is%20the%20sky%20blue");
  EXPECT_EQ(To("spanish", "/main/askjeeves.asp", "ask=donde%20viven%20los%20osos" + tail),
            "https://es.vikidia.org/w/index.php?search=donde%20viven%20los%20osos");
}

TEST_F(ShippedForwardersTest, WordsGoToADictionaryAndSymbolsToAQuotePage) {
  EXPECT_EQ(To("", "/cgi-bin/dict.pl", "term=volcano&db=*"),
            "https://simple.wiktionary.org/w/index.php?search=volcano");
  EXPECT_EQ(To("", "/q", "s=ABC&d=v1"), "https://finance.yahoo.com/quote/ABC");
  EXPECT_EQ(To("", "/scripts/webquote.dll", "ipage=qd&symbol=A/C"), "https://www.cnbc.com/quotes/A%2FC");
}

TEST_F(ShippedForwardersTest, FixedLinksGoToLivingPages) {
  EXPECT_EQ(To("children", "/", ""), "https://www.kiddle.co/");
  EXPECT_EQ(To("children", "/content/news/", ""), "https://www.bbc.co.uk/newsround");
  EXPECT_EQ(To("", "/systran/cgi", ""), "https://translate.systran.net/");
}

TEST_F(ShippedForwardersTest, TheHomePageAndTheOthersOfTheSiteAreNotForwarded) {
  for (const char* path : {"/", "/help/", "/content/news/", "/tips/default.htm"}) {
    EXPECT_EQ(To("", path, "q=a&s=b"), "nowhere") << path;
    EXPECT_EQ(To("math", path, "q=a&s=b"), "nowhere") << path;
  }
}

TEST_F(SearchForwardersTest, AMissingTableForwardsNothing) {
  EXPECT_FALSE(SearchForwarders(folder_.Path("none")).Forward("", "/ask", "q=a").has_value());
}

}  // namespace
}  // namespace kivandra::linux_impl
