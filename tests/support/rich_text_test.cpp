// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/rich_text.h"

#include <gtest/gtest.h>

#include <random>

#include "support/unicode.h"

namespace kivandra {
namespace {

const std::string kHead = "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0 Arial;}}\\pard\\f0 ";

std::optional<std::string> Body(const std::string& body) { return ReadRichText(kHead + body + "}"); }

TEST(RichTextTest, GivesBackWhatWasWritten) {
  for (const std::string& text : {
           std::string(),
           std::string(" ->Home URL http://www.example.com/  LogURL"),
           std::string("  blanks at both ends  "),
           std::string("\\par {\\b x} } { \\\\ \\'e9 \\u955? \\bin9 \\*"),
           std::string("{\\rtf1 a document}"),
           std::string("one\ntwo\n\nthree\n"),
           std::string("\n"),
           std::string("a\tb"),
           std::string("Καλημέρα Привет שלום مرحبا こんにちは नमस्ते \U0001F989\U0001F9A6"),
           std::string("line\u2028paragraph\u2029soft\u00ADfixed\u00A0zero\u200Bjoiner\u200D"),
           std::string("e\u0301 \uFEFF \uFFFD \U0010FFFF"),
       }) {
    EXPECT_EQ(ReadRichText(WriteRichText(text)), text);
  }
}

TEST(RichTextTest, EveryLineEndIsOne) {
  EXPECT_EQ(ReadRichText(WriteRichText("a\r\nb\rc\nd\r\n")), "a\nb\nc\nd\n");
}

TEST(RichTextTest, ControlsAndBytesThatAreNoTextBecomeReplacementCharacters) {
  EXPECT_EQ(ReadRichText(WriteRichText(std::string("a\0b\x01\x1b\x7f", 6) + "\xC2\x85")),
            "a\uFFFDb\uFFFD\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(ReadRichText(WriteRichText("\xFF\xC0\xAF\xED\xA0\x80z")),
            "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDz");
}

TEST(RichTextTest, WritesAsciiAloneWithEveryBraceClosed) {
  std::mt19937 random(7);
  std::string text;
  for (int i = 0; i < 20000; ++i) {
    text.push_back(static_cast<char>(random() & 0xFFU));
  }
  const std::string document = WriteRichText(text);
  long depth = 0;
  for (std::size_t at = 0; at < document.size(); ++at) {
    const auto byte = static_cast<unsigned char>(document[at]);
    ASSERT_TRUE(byte < 0x7F && (byte >= ' ' || byte == '\r' || byte == '\n')) << int{byte};
    if (byte == '\\' && (document[at + 1] == '\\' || document[at + 1] == '{' || document[at + 1] == '}')) {
      ++at;
    } else {
      depth += byte == '{' ? 1 : byte == '}' ? -1 : 0;
    }
    ASSERT_GE(depth, 0);
  }
  EXPECT_EQ(depth, 0);
}

TEST(RichTextTest, EveryCharacterComesBack) {
  std::string text;
  for (char32_t point = 0x20; point < 0x110000; point += point < 0x3000 ? 1 : 61) {
    if ((point >= 0x7F && point < 0xA0) || (point >= 0xD800 && point < 0xE000)) {
      continue;
    }
    if (point < 0x80) {
      text.push_back(static_cast<char>(point));
    } else if (point < 0x800) {
      text.push_back(static_cast<char>(0xC0U | point >> 6U));
      text.push_back(static_cast<char>(0x80U | (point & 0x3FU)));
    } else if (point < 0x10000) {
      text.push_back(static_cast<char>(0xE0U | point >> 12U));
      text.push_back(static_cast<char>(0x80U | (point >> 6U & 0x3FU)));
      text.push_back(static_cast<char>(0x80U | (point & 0x3FU)));
    } else {
      text.push_back(static_cast<char>(0xF0U | point >> 18U));
      text.push_back(static_cast<char>(0x80U | (point >> 12U & 0x3FU)));
      text.push_back(static_cast<char>(0x80U | (point >> 6U & 0x3FU)));
      text.push_back(static_cast<char>(0x80U | (point & 0x3FU)));
    }
  }
  EXPECT_EQ(ReadRichText(WriteRichText(text)), text);
}

TEST(RichTextTest, PassesOverWhatIsNoTextOfTheDocument) {
  EXPECT_EQ(Body("a{\\*\\unknown x{y}\\u955?}b"), "ab");
  EXPECT_EQ(Body("a{\\colortbl;\\red0;}b{\\stylesheet{\\s0 Normal;}}c{\\info{\\title T}{\\author A}}d"),
            "abcd");
  EXPECT_EQ(Body("{\\header top\\par}a{\\footnote note}{\\pict\\wmetafile8 0102}b"), "ab");
  EXPECT_EQ(Body("{\\field{\\*\\fldinst{HYPERLINK \"http://x/\"}}{\\fldrslt{link}}}e"), "linke");
  EXPECT_EQ(Body("a{\\pict\\bin3 x}y}b"), "ab");
  EXPECT_EQ(Body("a\\bin5 }}}}}b"), "ab");
}

TEST(RichTextTest, KnowsTheSpecialCharacters) {
  EXPECT_EQ(Body("a\\tab b\\line c\\~d\\_e\\-f\\emdash g\\ldblquote h\\rdblquote\\bullet"),
            "a\tb\nc\u00A0d\u2011e\u00ADf\u2014g\u201Ch\u201D\u2022");
  EXPECT_EQ(Body("a\\cell b\\cell\\row"), "a\tb\t\n");
}

TEST(RichTextTest, AFallbackIsSkippedAndEndsWithItsGroup) {
  EXPECT_EQ(Body("\\u945?x"), "\u03B1x");
  EXPECT_EQ(Body("{\\uc0\\u945 x}\\u945 ?y"), "\u03B1x\u03B1y");
  EXPECT_EQ(Body("{\\uc3\\u945 \\'61b\\b c}d"), "\u03B1cd");
  EXPECT_EQ(Body("{\\uc9\\u945 ab}c"), "\u03B1c");
  EXPECT_EQ(Body("\\u-10178?\\u-8823?z"), "\U0001F989z");
  EXPECT_EQ(Body("\\u55357?z\\u56841?"), "\uFFFDz\uFFFD");
  EXPECT_EQ(Body("\\u99999999999?z\\u-99999999?"), "\uFFFDz\uFFFD");
}

TEST(RichTextTest, ReadsBytesByTheCodePageOfTheFontOrOfTheDocument) {
  EXPECT_EQ(Body("caf\\'e9 \\'80"), "caf\u00E9 \u20AC");
  EXPECT_EQ(ReadRichText("{\\rtf1\\ansi\\ansicpg1251 \\'cf\\'f0}"), "\u041F\u0440");
  EXPECT_EQ(ReadRichText("{\\rtf1\\mac \\'8e}"), "\u00E9");
  EXPECT_EQ(
      ReadRichText("{\\rtf1\\ansi{\\fonttbl{\\f0 A;}{\\f1\\fcharset161 B;}}\\f1\\'e1\\f0\\'e1\\plain\\'e1}"),
      "\u03B1\u00E1\u00E1");
  EXPECT_EQ(ReadRichText("{\\rtf1\\ansicpg99999 \\'e1a}"), "\uFFFDa");
}

TEST(RichTextTest, SaysWhatIsNoRichText) {
  for (const std::string& bytes :
       {std::string("just text"), std::string("a {b} c"), std::string(" {\\rtf1 abc}"), std::string("{"),
        std::string("{\\rtf"), std::string("{\\rtfd abc}"), std::string("{\\RTF1 abc}"),
        std::string("\xEF\xBB\xBF{\\rtf1 abc}"), std::string(1000, '\0'), std::string("SQLite format 3")}) {
    EXPECT_EQ(ReadRichText(bytes), std::nullopt) << bytes;
  }
  EXPECT_EQ(ReadRichText(""), "");
}

TEST(RichTextTest, ReadsADocumentThatBreaksOffAsFarAsItGoes) {
  const std::string whole = WriteRichText("first {one} \u03B1 \U0001F989 last");
  for (std::size_t length = 0; length < whole.size(); ++length) {
    (void)ReadRichText(std::string_view(whole).substr(0, length));
  }
  EXPECT_EQ(ReadRichText(kHead + "abc"), "abc");
  EXPECT_EQ(ReadRichText(kHead + "abc\\'e"), "abce");
  EXPECT_EQ(ReadRichText(kHead + "abc\\bin99 x"), "abc");
}

TEST(RichTextTest, TooDeepGroupsArePassedOver) {
  std::string deep = kHead + "a";
  for (int i = 0; i < 100000; ++i) {
    deep += "{x\\u955?\\par";
  }
  deep.append(100000, '}');
  const auto text = ReadRichText(deep + "b}");
  ASSERT_TRUE(text);
  EXPECT_EQ(text->front(), 'a');
  EXPECT_EQ(text->back(), 'b');
  EXPECT_LT(text->size(), 2000U);
}

TEST(RichTextTest, AnyBytesBehindTheHeadAreRead) {
  std::mt19937 random(11);
  const std::string pieces = "{}\\\\''**uu--0123 \n\rabfpxt~\x80\xFF";
  for (int round = 0; round < 3000; ++round) {
    std::string bytes = "{\\rtf1 ";
    for (int i = 0; i < 60; ++i) {
      bytes.push_back(pieces[random() % pieces.size()]);
    }
    const auto text = ReadRichText(bytes);
    ASSERT_TRUE(text);
    // What comes out is sound UTF-8, and so goes round unchanged but for NUL, which can't come out.
    for (std::size_t at = 0; at < text->size();) {
      const std::size_t before = at;
      const char32_t point = DecodeUtf8(*text, at);
      ASSERT_TRUE(point != kReplacementCharacter || at - before == 3) << bytes;
    }
  }
}

TEST(RichTextTest, TakesTextsOfMegabytes) {
  std::string text;
  while (text.size() < 5'000'000) {
    text += " ->A page {of} otters URL http://www.example.com/otters?a=1  ";
  }
  const auto read = ReadRichText(WriteRichText(text));
  EXPECT_TRUE(read == text);
}

}  // namespace
}  // namespace kivandra
