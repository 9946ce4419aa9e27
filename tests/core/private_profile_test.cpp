// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/private_profile.h"

#include <gtest/gtest.h>

#include <fstream>
#include <vector>

#include "fakes/fake_services.h"

namespace kivandra {
namespace {

const std::string kFile = "/data/some.ini";

struct PrivateProfileTest : testing::Test {
  fakes::Journal journal;
  fakes::FakeFileCalls files{journal};

  /// The file's bytes behind one write.
  std::string After(const std::string& before, const std::string& section, const std::string& key,
                    const std::string& value) {
    files.files[kFile] = before;
    EXPECT_TRUE(WritePrivateProfileStringA(files, section, key, value, kFile));
    return files.files[kFile];
  }
};

TEST_F(PrivateProfileTest, MakesTheFile) {
  EXPECT_TRUE(WritePrivateProfileStringA(files, "S", "k", "v", kFile));
  EXPECT_EQ(files.files[kFile], "[S]\r\nk=v\r\n");
}

TEST_F(PrivateProfileTest, ChangesOneLineAndKeepsTheRestByteForByte) {
  const std::string before = "; note\n\nloose\n[A]\nk = 1 \n ; k=2\n[S]\n\tK\t=\told\nk=twin\n\n[S]\nk=3\n";
  EXPECT_EQ(After(before, "s", "k", "new"),
            "; note\n\nloose\n[A]\nk = 1 \n ; k=2\n[S]\nK=new\nk=twin\n\n[S]\nk=3\n");
}

TEST_F(PrivateProfileTest, ANewKeyStandsBehindItsSectionsLastLineThatIsNotEmpty) {
  EXPECT_EQ(After("[S]\r\na=1\r\n\r\n[T]\r\nb=1\r\n", "S", "k", "v"),
            "[S]\r\na=1\r\nk=v\r\n\r\n[T]\r\nb=1\r\n");
  EXPECT_EQ(After("[S]\r\n[T]\r\n", "S", "k", "v"), "[S]\r\nk=v\r\n[T]\r\n");
}

TEST_F(PrivateProfileTest, ALastLineWithoutAnEndGetsOne) {
  EXPECT_EQ(After("[S]\na=1", "S", "k", "v"), "[S]\na=1\nk=v\n");
  EXPECT_EQ(After("loose", "S", "k", "v"), "loose\r\n[S]\r\nk=v\r\n");
  EXPECT_EQ(After("[S]\nk=1", "S", "k", "v"), "[S]\nk=v");
}

TEST_F(PrivateProfileTest, AHeadWithoutItsBracketIsNoHead) {
  EXPECT_EQ(After("[S\r\nk=1\r\n", "S", "k", "v"), "[S\r\nk=1\r\n[S]\r\nk=v\r\n");
}

TEST_F(PrivateProfileTest, AMarkOfUtf8BeforeTheFirstHeadIsNoPartOfIt) {
  EXPECT_EQ(After("\xEF\xBB\xBF[S]\r\nk=1\r\n", "S", "k", "v"), "\xEF\xBB\xBF[S]\r\nk=v\r\n");
}

TEST_F(PrivateProfileTest, AFileInUtf16IsLeftAlone) {
  const std::string before("\xFF\xFE[\0S\0]\0", 8);
  files.files[kFile] = before;
  EXPECT_FALSE(WritePrivateProfileStringA(files, "S", "k", "v", kFile));
  EXPECT_EQ(files.files[kFile], before);
}

TEST_F(PrivateProfileTest, BinaryAndHugeFilesAreTakenAsTheyAre) {
  const std::string binary("\0\n]\xFF[=\n", 7);
  EXPECT_EQ(After(binary, "S", "k", "v"), binary + "[S]\nk=v\n");
  std::string huge;
  for (int line = 0; line < 100000; ++line) {
    huge += "key" + std::to_string(line) + "=1\r\n";
  }
  EXPECT_EQ(After("[S]\r\n" + huge, "S", "key99999", "2").size(), 5 + huge.size());
}

TEST_F(PrivateProfileTest, AFileThatCannotBeReadOrWrittenIsLeftAsItWas) {
  files.files[kFile] = "[S]\r\nk=1\r\n";
  for (const char* call :
       {"Dir \"/data/some.ini\"", "ReadFile \"/data/some.ini\"", "WriteFile \"/data/some.ini\""}) {
    journal.failOn = call;
    EXPECT_FALSE(WritePrivateProfileStringA(files, "S", "k", "v", kFile)) << call;
    EXPECT_EQ(files.files[kFile], "[S]\r\nk=1\r\n") << call;
  }
}

// --- What the original platform's call did (tests/data/ini.cases): its cases without null pointers, but not
// those in which it tidies the file up.

std::vector<std::string> Fields(const std::string& line) {
  std::vector<std::string> fields(1);
  for (const char c : line) {
    if (c == '\t') {
      fields.emplace_back();
    } else {
      fields.back() += c;
    }
  }
  return fields;
}

std::string FromHex(const std::string& hex) {
  std::string bytes;
  for (std::size_t at = 0; hex != "-" && at < hex.size(); at += 2) {
    bytes += static_cast<char>(std::stoi(hex.substr(at, 2), nullptr, 16));
  }
  return bytes;
}

std::string Unescaped(const std::string& text) {
  std::string bytes;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] != '\\') {
      bytes += text[at];
      continue;
    }
    switch (text.at(++at)) {
      case 'x':
        bytes += FromHex(text.substr(at + 1, 2));
        at += 2;
        break;
      case '*': {
        const std::size_t bar = text.find('|', at);
        const std::size_t end = text.find('}', bar);
        const int times = std::stoi(text.substr(at + 2, bar - at - 2));
        for (int i = 0; i < times; ++i) {
          bytes += Unescaped(text.substr(bar + 1, end - bar - 1));
        }
        at = end;
        break;
      }
      default:
        bytes += text[at];
    }
  }
  return bytes;
}

TEST_F(PrivateProfileTest, DoesWhatTheOriginalPlatformDid) {
  std::ifstream cases(std::string(KV_TEST_DATA) + "/ini.cases");
  std::string line;
  std::string title;
  bool counts = false;
  int compared = 0;
  while (std::getline(cases, line)) {
    const auto fields = Fields(line);
    if (fields[0] == "case") {
      counts = fields.at(2) == "sys";
      title = fields.at(1) + " " + fields.at(3);
      files.files.clear();
    } else if (!counts) {
      continue;
    } else if (fields[0] == "file" && fields.at(1) != "none") {
      files.files[kFile] = FromHex(fields.at(1));
    } else if (fields[0] == "write") {
      counts = fields.at(3) != "(null)";
      if (counts) {
        EXPECT_TRUE(WritePrivateProfileStringA(files, Unescaped(fields.at(1)), Unescaped(fields.at(2)),
                                               Unescaped(fields.at(3)), kFile));
      }
    } else if (fields[0] == "bytes") {
      EXPECT_EQ(files.files[kFile], FromHex(fields.at(2))) << title;
      ++compared;
    }
  }
  EXPECT_GT(compared, 25);
}

}  // namespace
}  // namespace kivandra
