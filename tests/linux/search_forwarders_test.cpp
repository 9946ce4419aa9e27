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
                  "# path\tkey\taddress\n"
                  "/ask\tq\thttps://a.example/?q=\n"
                  "no-slash\tq\thttps://b.example/?q=\n"
                  "/plain\tq\thttp://b.example/?q=\n"
                  "/short\tq\n"
                  "/words\tterm\thttps://c.example/find/\n");
  }
  [[nodiscard]] std::string To(std::string_view path, std::string_view query) const {
    return SearchForwarders(folder_.Path("table")).Forward(path, query).value_or("nowhere");
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
  for (const char* path : {"/", "/as", "/ask/", "/ASK", "", "no-slash", "/plain", "/short", "# path"}) {
    EXPECT_EQ(To(path, "q=volcano"), "nowhere") << path;
  }
}

TEST_F(SearchForwardersTest, AMissingTableForwardsNothing) {
  EXPECT_FALSE(SearchForwarders(folder_.Path("none")).Forward("/ask", "q=a").has_value());
}

}  // namespace
}  // namespace kivandra::linux_impl
