// SPDX-License-Identifier: GPL-3.0-or-later
// Other programs and this one agree on rich text: documents that others wrote are read here, and a document
// from here is read by another reader.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>

#include "fakes/temporary_folder.h"
#include "filter/find_vectors.h"
#include "support/rich_text.h"

namespace kivandra {
namespace {

const std::filesystem::path kData = std::filesystem::path(KV_TEST_DATA) / "rich_text";

std::string Contents(const std::filesystem::path& path) {
  std::stringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

/// Line ends as the reader here gives them.
std::string Unix(std::string text) {
  text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
  return text;
}

TEST(RichTextReadersTest, DocumentsOfAnotherWriterAreReadAsWhatTheyStandFor) {
  int documents = 0;
  for (const auto& file : std::filesystem::directory_iterator(kData)) {
    if (file.path().extension() == ".rtf") {
      ++documents;
      EXPECT_EQ(ReadRichText(Contents(file.path())),
                Unix(Contents(std::filesystem::path(file.path()).replace_extension(".txt"))))
          << file.path();
    }
  }
  EXPECT_GE(documents, 10);
}

/// The bytes of a field: \xHH is a byte, the other escapes as everywhere.
std::string Bytes(const std::string& field) {
  std::string bytes;
  for (std::size_t at = 0; at < field.size(); ++at) {
    if (field[at] != '\\') {
      bytes.push_back(field[at]);
    } else if (field.at(at + 1) == 'x') {
      bytes.push_back(static_cast<char>(std::stoi(field.substr(at + 2, 2), nullptr, 16)));
      at += 3;
    } else {
      bytes.push_back("\\\t\r\n"[std::string("\\trn").find(field.at(++at))]);
    }
  }
  return bytes;
}

TEST(RichTextReadersTest, ReadsWhatTwoOtherReadersAgreeOn) {
  std::ifstream file(kData / "read.tsv");
  std::string line;
  std::getline(file, line);
  int rows = 0;
  while (std::getline(file, line)) {
    std::array<std::string, 4> field;
    std::stringstream fields(line);
    for (auto& each : field) {
      std::getline(fields, each, '\t');
    }
    ++rows;
    const auto text = ReadRichText(Bytes(field[2]));
    if (field[1] == "font charset 128") {
      // A code page of two bytes a character: told by replacement characters, never by wrong letters.
      EXPECT_EQ(text, "\uFFFD\uFFFD") << line;
    } else {
      // What is no rich text stands in the file with an empty text.
      EXPECT_EQ(text.value_or(""), Unix(test::Unescaped(field[3]))) << line;
    }
  }
  EXPECT_GE(rows, 40);
}

/// What unrtf makes of a document: its text with single blanks, and what it says before the line.
std::string Unrtf(const std::string& document) {
  const fakes::TemporaryFolder folder;
  const std::string file = folder.File("day.rtf");
  std::ofstream(file, std::ios::binary) << document;
  const std::unique_ptr<FILE, int (*)(FILE*)> output(
      popen(("unrtf --quiet --text '" + file + "'").c_str(), "r"), &pclose);
  std::string text;
  std::array<char, 65536> buffer{};
  while (const std::size_t got = fread(buffer.data(), 1, buffer.size(), output.get())) {
    text.append(buffer.data(), got);
  }
  const std::string line = "\n-----------------\n";
  EXPECT_EQ(text.rfind(line, 0), 0U) << text.substr(0, 100);
  return text.substr(std::min(line.size(), text.size()));
}

TEST(RichTextReadersTest, AnotherReaderReadsADocumentOfOurs) {
  const std::string text =
      " ->a {b} \\par \\c \\\\x } \\'e9 \\u955? URL http://www.example.com/?a={1}&b=\\2 "
      "->two\nlines\n\nLogURL";
  EXPECT_EQ(Unrtf(WriteRichText(text)), text + "\n");
}

TEST(RichTextReadersTest, AnotherReaderReadsADayOfAMegabyte) {
  std::string text = " ->" + std::string(300000, 'x') + " URL http://www.example.com/ LogURL";
  while (text.size() < 1'000'000) {
    text += " ->A page {of} otters URL http://www.example.com/otters?a=1";
  }
  text += " end";
  EXPECT_TRUE(Unrtf(WriteRichText(text)) == text + "\n");
}

TEST(RichTextReadersTest, LettersOfOtherScriptsDoNotHideTheAddressFromAnotherReader) {
  const std::string read = Unrtf(WriteRichText(
      " ->Привет \u05E9\u05DC\u05D5\u05DD \U0001F989 \u2028 URL http://www.example.com/ LogURL"));
  EXPECT_NE(read.find("URL http://www.example.com/ LogURL"), std::string::npos) << read;
}

}  // namespace
}  // namespace kivandra
