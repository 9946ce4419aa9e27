// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/page_decoder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kivandra::linux_impl {
namespace {

using ::testing::HasSubstr;

std::string Utf16(const std::u16string& text, bool big) {
  std::string bytes;
  for (const char16_t unit : text) {
    const char low = static_cast<char>(unit & 0xFF);
    const char high = static_cast<char>(unit >> 8);
    bytes += big ? std::string{high, low} : std::string{low, high};
  }
  return bytes;
}

struct Page {
  const char* name;
  const char* contentType;
  std::string bytes;
  std::string text;
};

class Decoding : public ::testing::TestWithParam<Page> {};

// What the engine itself shows of each of these pages.
TEST_P(Decoding, ReadsThePageAsTheEngineShowsIt) {
  EXPECT_EQ(DecodePage(GetParam().bytes, GetParam().contentType), GetParam().text);
}

const std::string kBom8 = "\xEF\xBB\xBF";

INSTANTIATE_TEST_SUITE_P(
    All, Decoding,
    ::testing::Values(
        Page{"Empty", "text/html", "", ""}, Page{"AsciiUndeclared", "text/html", "plain", "plain"},
        Page{"WesternUndeclared", "text/html", "\xF1", "ñ\n\xEF\xBF\xBD"},
        Page{"Utf8Undeclared", "text/html", "ñ", "Ã±\nñ"},
        Page{"Utf8InHeader", "text/html; charset=UTF-8", "ñ", "ñ"},
        Page{"Utf8Broken", "text/html; charset=utf-8",
             "a\xFF"
             "b\xE2\x82z",
             "a\xEF\xBF\xBD"
             "b\xEF\xBF\xBDz"},
        Page{"Latin1MeansWindows", "text/html; charset=latin1", "\x80\xF1", "€ñ"},
        Page{"AsciiMeansWindows", "text/html; charset=us-ascii", "\x80", "€"},
        Page{"QuotedLabel", "text/html; charset=\"iso-8859-2\"", "\xB1", "ą"},
        Page{"SingleQuotedLabel", "text/html; charset='iso-8859-2'", "\xB1", "ą"},
        Page{"FirstOfTwoLabels", "text/html; charset=iso-8859-2; charset=utf-8", "\xB1", "ą"},
        Page{"BlanksAroundLabel", "text/html;charset = iso-8859-2 ", "\xB1", "ą"},
        Page{"MarkBeatsHeader", "text/html; charset=latin1",
             "\xEF\xBB\xBF"
             "ñ",
             "ñ"},
        Page{"Utf16LittleMark", "text/html; charset=utf-8", "\xFF\xFE" + Utf16(u"sex ñ", false), "sex ñ"},
        Page{"Utf16BigMark", "text/html", "\xFE\xFF" + Utf16(u"sex ñ", true), "sex ñ"},
        Page{"Utf16WithoutMark", "text/html; charset=utf-16", Utf16(u"sex ñ", false), "sex ñ"},
        Page{"Utf16BigWithoutMark", "text/html; charset=utf-16be", Utf16(u"sex ñ", true), "sex ñ"},
        Page{"Utf16Pairs", "text/html; charset=utf-16le", Utf16(u"\xD83D\xDE00", false), "😀"},
        Page{"Utf16BrokenPairs", "text/html; charset=utf-16le",
             Utf16({0xDE00, 'a', 0xD83D, 'b', 0xD83D}, false),
             "\xEF\xBF\xBD"
             "a\xEF\xBF\xBD"
             "b\xEF\xBF\xBD"},
        Page{"UnknownHeaderLetsMetaSpeak", "text/html; charset=foo", "<meta charset=iso-8859-2>\xB1",
             "<meta charset=iso-8859-2>ą"},
        Page{"HeaderBeatsMeta", "text/html; charset=utf-8", "<meta charset=iso-8859-2>ñ",
             "<meta charset=iso-8859-2>ñ"},
        Page{"MetaCannotMeanUtf16", "text/html", "<meta charset=utf-16>ñ", "<meta charset=utf-16>ñ"},
        Page{"MetaInQuotes", "text/html", "<META name=x Charset = 'ISO-8859-2' >\xB1",
             "<META name=x Charset = 'ISO-8859-2' >ą"},
        Page{"MetaOldForm", "text/html",
             "<meta http-equiv=Content-Type content=\"text/html; charset=iso-8859-2\">\xB1",
             "<meta http-equiv=Content-Type content=\"text/html; charset=iso-8859-2\">ą"},
        Page{"XmlDeclaration", "text/html", "<?xml version=\"1.0\" encoding=\"iso-8859-2\"?>\xB1",
             "<?xml version=\"1.0\" encoding=\"iso-8859-2\"?>ą"},
        Page{"XmlIsUtf8", "application/xhtml+xml", "<html>ñ</html>", "<html>ñ</html>"},
        Page{"XmlInItsCharset", "application/xhtml+xml", "<?xml version='1.0' encoding='iso-8859-2'?>\xB1",
             "<?xml version='1.0' encoding='iso-8859-2'?>ą"},
        Page{"Japanese", "text/html; charset=iso-2022-jp", "\x1B$BF|K\\\x1B(Bsex", "日本sex"},
        Page{"JapaneseUndeclared", "text/html", "\x1B$BF|K\\\x1B(Bsex", "\x1B$BF|K\\\x1B(Bsex\n日本sex"},
        Page{"ShiftJis", "text/html; charset=x-sjis", "\x92\x86", "中"},
        Page{"EucJp", "text/html; charset=euc-jp", "\xC3\xE6", "中"},
        Page{"EucKr", "text/html; charset=ks_c_5601-1987", "\xC1\xDF", "중"},
        Page{"Chinese", "text/html; charset=gb2312", "\xD6\xD0", "中"},
        Page{"Big5", "text/html; charset=big5", "\xA4\xA4", "中"},
        Page{"Cyrillic", "text/html; charset=koi8-r", "\xC1", "а"},
        Page{"Hebrew", "text/html; charset=iso-8859-8-i", "\xE0", "א"},
        Page{"UserDefined", "text/html; charset=x-user-defined", "s\xB1", "s\xEF\x9E\xB1"},
        Page{"Utf7IsNotRead", "text/html; charset=utf-7", "+AHM-ex", "+AHM-ex"},
        Page{"RefusedCharsetIsReadAsBytes", "text/html; charset=iso-2022-kr", "sex", "sex"},
        Page{"ZerosBetweenLetters", "text/html; charset=utf-8", std::string("s\0e\0x", 5),
             "sex\ns\xEF\xBF\xBD"
             "e\xEF\xBF\xBDx"},
        Page{"NoTypeAtAll", "", "plain", "plain"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(DecodingUtf16, IsFoundEvenIfNothingDeclaresIt) {
  EXPECT_THAT(DecodePage(Utf16(u"<p>sex</p>", false), "text/html"), HasSubstr("<p>sex</p>"));
}

struct Head {
  const char* name;
  std::string bytes;
  bool declares;
};

class Heads : public ::testing::TestWithParam<Head> {};

TEST_P(Heads, DeclareOnlyWhereTheEngineLooks) {
  EXPECT_EQ(ReadingsOf(GetParam().bytes, "text/html").front(),
            GetParam().declares ? "ISO-8859-2" : "windows-1252");
}

const std::string kMeta = "<meta charset=iso-8859-2>";

INSTANTIATE_TEST_SUITE_P(
    All, Heads,
    ::testing::Values(Head{"First", kMeta, true},
                      Head{"BehindALongComment", "<!--" + std::string(3000, 'x') + "-->" + kMeta, true},
                      Head{"BehindALongHead",
                           "<title>a</title>" +
                               [] {
                                 std::string links;
                                 for (int i = 0; i < 200; ++i) links += "<link rel=x href=y>";
                                 return links;
                               }() +
                               kMeta,
                           true},
                      Head{"BehindTheBodysTag", "<body>a" + kMeta, true},
                      Head{"FarInTheBody", "<body>" + std::string(3000, 'a') + "<p>" + kMeta, false},
                      Head{"InAComment", "<!-- " + kMeta + " -->", false},
                      Head{"InAScript", "<script>\"" + kMeta + "\"</script>", false},
                      Head{"InATitle", "<title>" + kMeta + "</title>", false},
                      Head{"BehindAShortComment", "<!-->" + kMeta, true},
                      Head{"BehindADoctype", "<!DOCTYPE html>" + kMeta, true},
                      Head{"Unclosed", "<meta charset='iso-8859-2", false},
                      Head{"InAnotherAttribute", "<p title='" + kMeta + "'>", false},
                      Head{"WithoutEquivalent", "<meta content='text/html; charset=iso-8859-2'>", false},
                      Head{"UnknownLabel", "<meta charset=nothing>", false}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(DecodingPieces, GiveTheSameAsTheWholePage) {
  // Characters of every length lie across the edges of the pieces.
  std::string page;
  while (page.size() < 200000) page += "añ中😀";
  EXPECT_EQ(DecodePage(page, "text/html; charset=utf-8"), page);
  PageDecoder decoder(page, "text/html; charset=utf-8");
  int steps = 1;
  while (decoder.Step()) ++steps;
  EXPECT_GT(steps, 3);
}

TEST(DecodingLabels, AllHaveADecoder) {
  for (const char* label :
       {"iso-8859-16", "cp866", "macintosh", "x-mac-cyrillic", "windows-874", "gb18030", "big5-hkscs",
        "iso-8859-10", "iso-8859-13", "iso-8859-14", "iso-8859-15", "koi8-u", "windows-1258"}) {
    SCOPED_TRACE(label);
    ASSERT_FALSE(CharsetOfLabel(label).empty());
    // A decoder that is missing would be replaced by the Western one.
    EXPECT_NE(DecodePage("\xA4\xB1\xE4\xF0", std::string("text/html; charset=") + label),
              DecodePage("\xA4\xB1\xE4\xF0", "text/html; charset=windows-1252"));
  }
}

}  // namespace
}  // namespace kivandra::linux_impl
