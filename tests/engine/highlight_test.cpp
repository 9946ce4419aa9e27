// SPDX-License-Identifier: GPL-3.0-or-later
// Words of a page on a yellow ground.
#include <gmock/gmock.h>

#include <chrono>

#include "engine/engine_test.h"

namespace kivandra::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Test;

constexpr int kBound = 5000;

class Highlight : public Test {
 protected:
  LoopbackServer server;
  TestWindow window;
  std::shared_ptr<HtmlDocument> document;

  void Open(const std::string& body) {
    server.Serve("/a", {"<!DOCTYPE html><meta charset=utf-8><title>a</title><body>" + body});
    ASSERT_TRUE(window.Load(server.Url("/a")));
    document = window.Browser().Page()->Document();
    ASSERT_NE(document, nullptr);
  }
  /// Paints and gives the page's body with each painted span as [brackets].
  std::string Paint(const std::string& text, int bound = kBound) {
    document->PaintText(text, bound);
    return Body();
  }
  std::string Body() {
    return window.Script(
        "return document.body.innerHTML.replaceAll('<span style=\"background-color:yellow\">', '[')"
        ".replaceAll('</span>', ']')");
  }
  std::string Hits() {
    return window.Script("return document.querySelectorAll('[style=\"background-color:yellow\"]').length");
  }
};

TEST_F(Highlight, PaintsEveryPlaceWithItsOwnLetters) {
  Open("<p>Cat, a CAT, concatenation.</p><p>dog</p>");
  EXPECT_EQ(Paint("cAt"), "<p>[Cat], a [CAT], con[cat]enation.</p><p>dog</p>");
}

TEST_F(Highlight, AWordThatIsNotOnThePageChangesNothing) {
  Open("<p>dog</p>");
  EXPECT_EQ(Paint("cat"), "<p>dog</p>");
  EXPECT_EQ(window.Script("return getSelection().rangeCount"), "0");
}

TEST_F(Highlight, FindsAWordAcrossTagsInsideALine) {
  Open("<p>x<b>F</b>o<i>o<u>B</u></i>aR!</p>");
  EXPECT_EQ(Paint("foobar"), "<p>x<b>[F]</b>[o]<i>[o]<u>[B]</u></i>[aR]!</p>");
}

TEST_F(Highlight, DoesNotFindAWordAcrossBlocksLinesAndPictures) {
  const std::string body =
      "<p>ca</p><p>t</p>ca<br>t "
      "ca<img>t<div>ca</div>t<table><tbody><tr><td>ca</td><td>t</td></tr></tbody></table>";
  Open(body);
  EXPECT_EQ(Paint("cat"), body);
}

TEST_F(Highlight, TakesBlanksAndLineEndsOfTheSourceAsOneBlank) {
  Open("<p>two \n  words, two&nbsp;words, two <b> words</b></p>");
  Paint("Two  Words");
  EXPECT_EQ(
      window.Script("return [...document.querySelectorAll('span')].map((s) => s.textContent).join('|')"),
      "two \n  words|two\u00a0words|two |words");
}

TEST_F(Highlight, LeavesWhatNobodyReads) {
  const std::string body =
      "<script>'cat'</script><style>cat{}</style><textarea>cat</textarea><noscript>cat</noscript>"
      "<p style=\"display:none\">cat</p><p hidden=\"\">cat</p><p style=\"visibility:hidden\">cat</p>"
      "<select><option>cat</option></select><details><summary>x</summary>cat</details>"
      "<svg><text>cat</text></svg><template>cat</template>";
  Open(body);
  EXPECT_EQ(Paint("cat"), body);
  Open(
      "<div style=\"visibility:hidden\">cat<p style=\"visibility:visible\">cat</p></div>"
      "<div style=\"display:contents\">cat</div>");
  EXPECT_EQ(Paint("cat"),
            "<div style=\"visibility:hidden\">cat<p style=\"visibility:visible\">[cat]</p></div>"
            "<div style=\"display:contents\">[cat]</div>");
}

TEST_F(Highlight, BeginsAtWhatIsSelected) {
  Open("<p>cat cat</p><p id=p>cat cat cat</p>");
  (void)window.Script("getSelection().setBaseAndExtent(p.firstChild, 4, p.firstChild, 7)");
  EXPECT_EQ(Paint("cat"), "<p>cat cat</p><p id=\"p\">cat [cat] [cat]</p>");
}

TEST_F(Highlight, EndsWithTheLastPlaceSelectedAndInSight) {
  Open("<p>cat</p><p style='margin-top:4000px'>a ca<b>T</b>!</p><p>dog</p>");
  Paint("cat");
  EXPECT_EQ(window.Script("return '' + getSelection()"), "caT");
  EXPECT_EQ(window.Script("return scrollY > 1000"), "true");
}

TEST_F(Highlight, ASecondCallPaintsOverTheFirst) {
  Open("<p>cat cat</p>");
  Paint("cat");
  document->PaintText("cat", kBound);
  const std::string span = "<span style=\"background-color:yellow\">";
  EXPECT_EQ(window.Script("return document.body.innerHTML"),
            "<p>" + span + span + "cat</span></span> " + span + span + "cat</span></span></p>");
}

TEST_F(Highlight, PaintsNoMoreThanTheBound) {
  Open("<script>document.write('<p>cat cat</p>'.repeat(10))</script>");
  Paint("cat", 7);
  EXPECT_EQ(Hits(), "7");
  EXPECT_EQ(window.Script("return '' + (getSelection().focusNode.closest?.('p') ?? "
                          "getSelection().focusNode.parentNode.closest('p')).innerHTML.endsWith(' cat')"),
            "true");
  Paint("cat", 0);
  Paint("cat", -1);
  EXPECT_EQ(Hits(), "7");
}

TEST_F(Highlight, FiveThousandPlacesAreDoneInASecond) {
  Open(
      "<script>document.write('<p>some c<b>a</b>t words about a <i>cat</i> and "
      "more</p>'.repeat(6000))</script>");
  const auto begin = std::chrono::steady_clock::now();
  document->PaintText("cat", kBound);
  EXPECT_EQ(Hits(), "10000");  // half of them cross two tags
  const auto took = std::chrono::steady_clock::now() - begin;
  RecordProperty("milliseconds",
                 static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(took).count()));
  std::cout << std::chrono::duration_cast<std::chrono::milliseconds>(took).count() << " ms\n";
  EXPECT_LT(took, std::chrono::seconds(5));
}

TEST_F(Highlight, TextsOfAnyKindAreOnlyLookedFor) {
  Open("<p id=p></p>");
  const std::string before = Body();
  for (const std::string& text :
       {std::string("\"'`\\"), std::string("</script><b>"), std::string("${1}"), std::string("\u2028\u2029"),
        std::string(10000, 'x'), std::string("a\0b", 3), std::string("\xff\xfe"), std::string("\n\r\t"),
        std::string("'); document.body.innerHTML = 'ran'; ('")}) {
    EXPECT_EQ(Paint(text), before);
    // The same text on the page is found.
    char* valid = g_utf8_make_valid(text.data(), static_cast<gssize>(text.size()));
    char* escaped = g_uri_escape_string(valid, nullptr, FALSE);
    (void)window.Script("p.textContent = 'x' + decodeURIComponent('" + std::string(escaped) + "') + 'x'");
    document->PaintText(text, kBound);
    EXPECT_NE(Hits(), "0") << escaped;
    g_free(escaped);
    g_free(valid);
    (void)window.Script("p.textContent = ''; getSelection().removeAllRanges()");
  }
}

TEST_F(Highlight, AnEmptyTextIsFoundNowhere) {
  Open("<p>cat</p>");
  EXPECT_EQ(Paint(""), "<p>cat</p>");
}

TEST_F(Highlight, FoldsLettersOfOtherScripts) {
  Open("<p>ÁRBOL árbol ΟΔΟΣ İstanbul ẞ</p>");
  EXPECT_EQ(Paint("Árbol"), "<p>[ÁRBOL] [árbol] ΟΔΟΣ İstanbul ẞ</p>");
  EXPECT_THAT(Paint("οδος"), HasSubstr("[ΟΔΟΣ]"));
  EXPECT_THAT(Paint("STANBUL"), HasSubstr("İ[stanbul]"));
}

TEST_F(Highlight, AKeptDocumentDoesNothingOnceItsPageHasGone) {
  Open("<p>cat</p>");
  server.Serve("/b", {"<p>cat</p>"});
  ASSERT_TRUE(window.Load(server.Url("/b")));
  document->PaintText("cat", kBound);
  EXPECT_EQ(Hits(), "0");
  document = window.Browser().Page()->Document();
  window.CloseWindow();
  document->PaintText("cat", kBound);
  window.Owned().reset();
  document->PaintText("cat", kBound);
}

TEST_F(Highlight, APageWithoutHtmlHasNoDocument) {
  server.Serve("/t", {"cat", "text/plain"});
  ASSERT_TRUE(window.Load(server.Url("/t")));
  EXPECT_EQ(window.Browser().Page()->Document(), nullptr);
  Open("");
  EXPECT_EQ(Paint("cat"), "");
}

TEST_F(Highlight, APageCannotKeepItselfFromBeingPainted) {
  server.Serve("/a",
               {"<!DOCTYPE html><body><form><input name=parentNode><input name=localName><img name=body>"
                "<img name=createElement><img name=createTreeWalker>cat</form>"
                "<script>Text.prototype.replaceWith = Element.prototype.setAttribute = () => {};"
                "getComputedStyle = null</script>",
                "text/html",
                200,
                {{"Content-Security-Policy", "style-src 'none'"}}});
  ASSERT_TRUE(window.Load(server.Url("/a")));
  document = window.Browser().Page()->Document();
  document->PaintText("cat", kBound);
  EXPECT_EQ(window.Script("const span = document.querySelector('span');"
                          "return span.textContent + ' ' + span.style.backgroundColor"),
            "cat yellow");
  EXPECT_EQ(window.Script("return typeof kivandraPainted"), "undefined");
}

}  // namespace
}  // namespace kivandra::testing
