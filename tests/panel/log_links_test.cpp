// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/log_links.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kivandra {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> Links(const std::string& text) {
  std::vector<std::string> links;
  std::size_t last = 0;
  for (const TextSpan& span : FindLinks(text)) {
    EXPECT_LE(last, span.begin);
    EXPECT_LT(span.begin, span.end);
    EXPECT_LE(span.end, text.size());
    last = span.end;
    links.push_back(text.substr(span.begin, span.end - span.begin));
  }
  return links;
}

TEST(LogLinksTest, AreTheAddressesUpToTheNextBlank) {
  EXPECT_THAT(
      Links(" ->Otters URL http://www.otters.org/a?b={c}&d=\\e.  ->Seals URL https://seals.org  LogURL"),
      ElementsAre("http://www.otters.org/a?b={c}&d=\\e.", "https://seals.org"));
  EXPECT_THAT(Links("ftp://files.example/\tHTTP://CAPITALS.example/\nhttp://last.example"),
              ElementsAre("ftp://files.example/", "HTTP://CAPITALS.example/", "http://last.example"));
}

TEST(LogLinksTest, AnUntitledPagesAddressBehindTheArrowIsOneToo) {
  EXPECT_THAT(Links(" ->http://a.example/ URL http://a.example/  "),
              ElementsAre("http://a.example/", "http://a.example/"));
}

TEST(LogLinksTest, AnAddressInsideAnAddressIsPartOfIt) {
  EXPECT_THAT(Links("http://a.example/?u=http://b.example/ c"),
              ElementsAre("http://a.example/?u=http://b.example/"));
}

TEST(LogLinksTest, OtherTextIsNone) {
  for (const char* text : {"", "://", "http", "http:/", "http://", "http:// x", "xhttp://a", "3ftp://a",
                           "file:///etc", "javascript://a", "s://http", "about:blank", "http//a"}) {
    EXPECT_THAT(Links(text), IsEmpty()) << text;
  }
}

TEST(LogLinksTest, LettersOfOtherScriptsStandInAnAddressAndBeforeIt) {
  EXPECT_THAT(Links("\u043F\u0440http://\u043F\u0440.example/\u05D0 x"),
              ElementsAre("http://\u043F\u0440.example/\u05D0"));
}

// A walk that went back over the text again and again would take hours here.
TEST(LogLinksTest, ALargeDayIsWalkedOnce) {
  for (const char* piece : {"://", "http", "http://", "x://y", "http://a "}) {
    std::string text;
    while (text.size() < 2'000'000) {
      text += piece;
    }
    for (const TextSpan& link : FindLinks(text)) {
      ASSERT_LT(link.begin, link.end) << piece;
      ASSERT_LE(link.end, text.size()) << piece;
    }
  }
}

}  // namespace
}  // namespace kivandra
