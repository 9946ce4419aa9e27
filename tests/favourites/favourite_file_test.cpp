// SPDX-License-Identifier: GPL-3.0-or-later
#include "favourites/favourite_file.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "support/unicode.h"

namespace kivandra {
namespace {

TEST(FavoriteTitleTest, IsTheNameUpToTheFirstEnding) {
  EXPECT_EQ(FavoriteTitle("Otters.url"), "Otters");
  EXPECT_EQ(FavoriteTitle("Otters"), std::nullopt);
  EXPECT_EQ(FavoriteTitle("Otters.ur"), std::nullopt);
  EXPECT_EQ(FavoriteTitle(""), std::nullopt);
  EXPECT_EQ(FavoriteTitle(".url"), "");
}

TEST(FavoriteTitleTest, ANameThatGoesOnBehindTheEndingCounts) {
  EXPECT_EQ(FavoriteTitle("Otters.url.bak"), "Otters");
  EXPECT_EQ(FavoriteTitle("Otters.urls"), "Otters");
  EXPECT_EQ(FavoriteTitle("One.url two.url"), "One");
}

TEST(FavoriteTitleTest, AnEndingInCapitalsCountsAndTheTitleKeepsItsCase) {
  EXPECT_EQ(FavoriteTitle("OTTERS.URL"), "OTTERS");
  EXPECT_EQ(FavoriteTitle("oTTers.uRl"), "oTTers");
}

TEST(FavoriteUrlTest, IsTheRestOfTheFirstLineThatStartsWithTheKey) {
  EXPECT_EQ(FavoriteURL("[InternetShortcut]\r\nURL=http://a/\r\nURL=http://b/\r\n"), "http://a/");
  EXPECT_EQ(FavoriteURL("URL=http://a/?URL=b"), "http://a/?URL=b");
  EXPECT_EQ(FavoriteURL("BASEURL=http://a/\r\nURL=http://b/"), "http://b/");
  EXPECT_EQ(FavoriteURL("URL=\r\nURL=http://b/"), "");
}

TEST(FavoriteUrlTest, ALineWithTheKeyInLowerCaseIsNone) {
  EXPECT_EQ(FavoriteURL("url=http://a/\r\n"), std::nullopt);
  EXPECT_EQ(FavoriteURL("Url=http://a/\r\nURL=http://b/\r\n"), "http://b/");
  EXPECT_EQ(FavoriteURL(" URL=http://a/\r\n"), std::nullopt);
  EXPECT_EQ(FavoriteURL("URL =http://a/\r\n"), std::nullopt);
}

TEST(FavoriteUrlTest, NoSectionIsAskedFor) {
  EXPECT_EQ(FavoriteURL("[Other]\nURL=http://a/\n"), "http://a/");
  EXPECT_EQ(FavoriteURL("URL=http://a/"), "http://a/");
}

TEST(FavoriteUrlTest, LinesEndWithOneCharacterOrTwo) {
  for (const std::string end : {"\r", "\n", "\r\n", "\n\r", "\n\n"}) {
    EXPECT_EQ(FavoriteURL("[InternetShortcut]" + end + "URL=http://a/" + end + "X=1" + end), "http://a/");
  }
}

TEST(FavoriteUrlTest, ReadsAnyBytes) {
  EXPECT_EQ(FavoriteURL(""), std::nullopt);
  EXPECT_EQ(FavoriteURL(std::string("\0\xFF\nURL=http://a/\n", 17)), "http://a/");
  EXPECT_EQ(FavoriteURL("\xFF\xFEU\0R\0L\0=\0"), std::nullopt);
  const std::string wide("\xFF\xFEU\0R\0L\0=\0h\0\r\0\n\0", 16);
  EXPECT_EQ(FavoriteURL(wide), std::nullopt);
}

TEST(FavoriteUrlTest, TenMegabytesInOneLineAreRead) {
  EXPECT_EQ(FavoriteURL(std::string(10'000'000, 'x')), std::nullopt);
  EXPECT_EQ(FavoriteURL(std::string(10'000'000, 'x') + "\nURL=http://a/\n"), "http://a/");
  EXPECT_EQ(FavoriteURL(std::string(10'000'000, '\n') + "URL=http://a/"), "http://a/");
}

TEST(FavoriteUrlTest, BytesOfAnotherEncodingAreReadAsTheCodePage) {
  EXPECT_EQ(FavoriteURL("URL=http://x/caf\xE9\r\n"), "http://x/caf\u00E9");
  EXPECT_EQ(FavoriteURL("URL=http://x/\x80\r\n"), "http://x/\u20AC");
  EXPECT_EQ(FavoriteURL("URL=http://x/caf\u00E9\r\n"), "http://x/caf\u00E9");
  EXPECT_EQ(FavoriteURL("URL=http://x/\uFFFD\r\n"), "http://x/\uFFFD");
}

std::string BytesOfHex(const std::string& hex) {
  std::string bytes;
  for (std::size_t at = 0; at + 1 < hex.size(); at += 2) {
    bytes += static_cast<char>(std::stoi(hex.substr(at, 2), nullptr, 16));
  }
  return bytes;
}

/// A text field of the vectors, of code page 1252, as UTF-8.
std::string Unescaped(const std::string& text) {
  std::string bytes = "URL=";
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] != '\\') {
      bytes += text[at];
    } else if (text[++at] == 'x') {
      bytes += BytesOfHex(text.substr(at + 1, 2));
      at += 2;
    } else {
      bytes += text[at];
    }
  }
  return FavoriteURL(bytes).value_or("?");
}

TEST(FavoriteUrlTest, AgreesWithFilesWrittenByAnotherHand) {
  std::ifstream stream(std::string(KV_TEST_DATA) + "/ini.cases");
  std::string bytes;
  int rows = 0;
  for (std::string line; std::getline(stream, line);) {
    if (line.starts_with("bytes\t=>\t")) {
      bytes = line.substr(9);
    } else if (line.starts_with("favourite\t=>\t") && bytes != "none") {
      const std::string text = line.substr(13);
      const auto found = FavoriteURL(BytesOfHex(bytes));
      EXPECT_EQ(found, text == "none" ? std::nullopt : std::optional(Unescaped(text))) << bytes;
      ++rows;
    }
  }
  EXPECT_GT(rows, 15);
}

TEST(SafeFileNameTest, KeepsAnOrdinaryName) {
  EXPECT_EQ(SafeFileName("Otters & friends (1)"), "Otters & friends (1)");
  EXPECT_EQ(SafeFileName("Ca\u00F1\u00F3n"), "Ca\u00F1\u00F3n");
  EXPECT_EQ(SafeFileName("a.b.c"), "a.b.c");
}

TEST(SafeFileNameTest, NoNameLeadsElsewhere) {
  EXPECT_EQ(SafeFileName("../../etc/passwd"), "_.._etc_passwd");
  EXPECT_EQ(SafeFileName("/"), "_");
  EXPECT_EQ(SafeFileName("C:\\x"), "C__x");
  EXPECT_EQ(SafeFileName(".."), "Favorite");
  EXPECT_EQ(SafeFileName(".hidden"), "hidden");
}

TEST(SafeFileNameTest, MarksAndControlCharactersBecomeUnderscores) {
  EXPECT_EQ(SafeFileName("a*b?c\"d<e>f|g"), "a_b_c_d_e_f_g");
  EXPECT_EQ(SafeFileName(std::string("a\nb\0c\x7F", 6)), "a_b_c_");
  EXPECT_EQ(SafeFileName("a\xE9z"), "a_z");
}

TEST(SafeFileNameTest, AnEmptyNameGetsOne) {
  for (const char* text : {"", "   ", "...", ". . ."}) {
    EXPECT_EQ(SafeFileName(text), "Favorite");
  }
}

TEST(SafeFileNameTest, NamesOfDevicesAreMarked) {
  for (const std::string name : {"CON", "con", "prn", "Aux", "NUL", "com1", "LPT9", "nul.txt", "con .x"}) {
    EXPECT_EQ(SafeFileName(name), "_" + name);
  }
  for (const std::string name : {"console", "com", "com0", "lpt10", "nullable"}) {
    EXPECT_EQ(SafeFileName(name), name);
  }
}

TEST(SafeFileNameTest, TenThousandCharactersAreCutBetweenCharacters) {
  EXPECT_EQ(SafeFileName(std::string(10000, 'x')), std::string(200, 'x'));
  std::string text = "x";
  for (int count = 0; count < 10000; ++count) {
    text += "\u20AC";
  }
  const std::string name = SafeFileName(text);
  EXPECT_EQ(name.size(), 199U);  // 1 and 66 times 3
  for (std::size_t at = 0; at < name.size();) {
    EXPECT_NE(DecodeUtf8(name, at), kReplacementCharacter);
  }
}

TEST(SafeFileNameTest, AnEndingInsideDoesNotCutTheTitle) {
  const std::string name = FavoriteFileName("How .url files and .URL files work");
  EXPECT_EQ(name, "How _url files and _URL files work.url");
  EXPECT_EQ(FavoriteTitle(name), "How _url files and _URL files work");
}

TEST(FavoriteFileNameTest, ATypedEndingIsNotDoubled) {
  EXPECT_EQ(FavoriteFileName("Otters.url"), "Otters.url");
  EXPECT_EQ(FavoriteFileName("Otters.URL"), "Otters.url");
  EXPECT_EQ(FavoriteFileName(".url"), "Favorite.url");
  EXPECT_EQ(FavoriteFileName(""), "Favorite.url");
  EXPECT_EQ(FavoriteFileName("http://www.otters.org/"), "http___www.otters.org_.url");
}

}  // namespace
}  // namespace kivandra
