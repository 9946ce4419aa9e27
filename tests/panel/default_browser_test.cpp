// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/default_browser.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/fake_services.h"
#include "fakes/journal.h"
#include "fakes/memory_registry.h"

namespace kivandra {
namespace {

struct Machine : fakes::FakeSystemInfo {
  [[nodiscard]] std::string ProgramDirectory() const override { return directory; }
  [[nodiscard]] std::string ProgramFileName() const override { return fileName; }
  std::string directory = "/opt/kivandra";
  std::string fileName = "kivandra";
};

class DefaultBrowserTest : public testing::Test {
 protected:
  void Press() { SetAsDefaultBrowser({registry, boxes, system, desktop}); }
  std::string Class(const std::string& section) {
    return registry.Text(HKEY_CLASSES_ROOT, section, "").value_or("(none)");
  }
  std::string OfMachine(const std::string& section) {
    return registry.Text(HKEY_LOCAL_MACHINE, section, "").value_or("(none)");
  }

  fakes::Journal journal;
  fakes::MemoryRegistry registry{&journal};
  fakes::FakeMessageBoxes boxes{journal};
  fakes::FakeDefaultApplication desktop{journal};
  Machine system;
};

constexpr const char* kClosing = "Please restart the computer to make all changes effective.";

TEST_F(DefaultBrowserTest, WritesInItsOrderThenAsksTheDesktopThenSpeaks) {
  boxes.Expect(kClosing);
  Press();
  const std::string exe = "\"/opt/kivandra/kivandra.exe\"";
  const std::string open = "/opt/kivandra/kivandra.exe %1";
  std::vector<std::string> data;
  for (const std::string ending : {"HTM", "HTML"}) {
    for (const std::string& text :
         {"KVD." + ending, std::string("KVD"), std::string("&Open"), exe + " \"%1\"", exe + ",1"}) {
      data.push_back(text);  // under each of the two roots
      data.push_back(text);
    }
  }
  for (const std::string& text :
       {open, open, std::string("KVD"), std::string("WWW_OpenURL"), open, std::string("KVD"),
        // and under the root of classes
        open, open, std::string("KVD"), std::string("WWW_OpenUrl"), std::string("KVD"), std::string("KVD"),
        std::string("&Open KVD"), open, std::string("KVD"), open, open, std::string("&Open KVD"), open,
        std::string("KVD"), open, open, std::string("KVD"), open, open, std::string("KVD")}) {
    data.push_back(text);
  }
  std::vector<std::string> expected;
  for (const std::string& text : data) {
    expected.push_back("Write  = " + text);
  }
  expected.emplace_back("Register");
  std::vector<std::string> lines = journal.lines;
  lines.resize(std::min(lines.size(), expected.size()));
  EXPECT_EQ(lines, expected);
  EXPECT_EQ(journal.lines.size(), expected.size() + 1) << "and the box";
}

TEST_F(DefaultBrowserTest, LeavesBehindWhatTheLastWriteToEachPlaceSays) {
  boxes.Expect(kClosing);
  Press();
  const std::string open = "/opt/kivandra/kivandra.exe %1";
  EXPECT_EQ(Class(".htm"), "KVD");
  EXPECT_EQ(Class(".HTML"), "KVD");
  EXPECT_EQ(Class("KVD.HTM"), "KVD") << "stays behind, and nothing points at it";
  EXPECT_EQ(Class("KVD.HTML\\shell\\open\\command"), "\"/opt/kivandra/kivandra.exe\" \"%1\"");
  EXPECT_EQ(Class("KVD\\shell\\open\\ddeexec"), "WWW_OpenUrl");
  for (const std::string scheme : {"http", "https"}) {
    EXPECT_EQ(Class(scheme + "\\shell\\open"), open);
    EXPECT_EQ(Class(scheme + "\\DefaultIcon"), open);
    EXPECT_EQ(Class(scheme + "\\shell\\open\\command"), open);
    EXPECT_FALSE(registry.Has(HKEY_CLASSES_ROOT, scheme + "\\shell\\open\\ddeexec\\topic"));
  }
  for (const std::string scheme : {"ftp", "gopher"}) {
    EXPECT_EQ(Class(scheme + "\\shell\\open\\command"), open);
    EXPECT_EQ(Class(scheme + "\\shell\\open\\ddeexec\\Application"), "KVD");
    EXPECT_FALSE(registry.Has(HKEY_CLASSES_ROOT, scheme + "\\DefaultIcon"));
  }
  EXPECT_EQ(OfMachine("KVD\\shell\\open\\ddeexec\\topic"), "WWW_OpenURL");
  EXPECT_EQ(OfMachine("KVD\\shell\\open\\command\\ddeexec"), open);
  EXPECT_FALSE(registry.Has(HKEY_LOCAL_MACHINE, "KVD\\shell\\open\\command\\ddeexe"));
}

TEST_F(DefaultBrowserTest, ADirectoryWithItsSlashGetsNoSecondOne) {
  system.directory = "/";
  boxes.Expect(kClosing);
  Press();
  EXPECT_EQ(Class("http\\shell\\open\\command"), "/kivandra.exe %1");
}

TEST_F(DefaultBrowserTest, ADirectoryWithBlanksStaysUnquotedButForTheClassesOfFiles) {
  system.directory = "/opt/two words";
  boxes.Expect(kClosing);
  Press();
  EXPECT_EQ(Class("http\\shell\\open\\command"), "/opt/two words/kivandra.exe %1");
  EXPECT_EQ(Class("KVD.HTM\\shell\\open\\command"), "\"/opt/two words/kivandra.exe\" \"%1\"");
}

TEST_F(DefaultBrowserTest, TheEndingOfTheProgramsNameIsLeftOut) {
  system.fileName = "kivandra.bin";
  boxes.Expect(kClosing);
  Press();
  EXPECT_EQ(Class("http\\shell\\open\\command"), "/opt/kivandra/kivandra.exe %1");
}

TEST_F(DefaultBrowserTest, PressedTwiceItLeavesTheSameAndSpeaksTwice) {
  boxes.Expect(kClosing);
  Press();
  const auto first = journal.lines;
  journal.Clear();
  boxes.Expect(kClosing);
  Press();
  EXPECT_EQ(journal.lines, first);
}

TEST_F(DefaultBrowserTest, EachWriteThatFailsIsSkippedByItself) {
  boxes.Expect(kClosing);
  Press();
  const std::size_t writes = journal.With("Write").size();
  const auto all = static_cast<long>(writes) + 1;  // and the desktop's registration
  for (journal.failAt = 1; journal.failAt <= all; ++journal.failAt) {
    journal.calls = 0;
    journal.Clear();
    boxes.Expect(kClosing);
    Press();
    EXPECT_EQ(journal.With("Write").size(), writes) << journal.failAt;
    EXPECT_EQ(journal.With("FAILED").size(), 1U) << journal.failAt;
  }
}

/// A tree on whose machine part this user may write nothing.
struct TreeOfOthers : fakes::MemoryRegistry {
  using fakes::MemoryRegistry::MemoryRegistry;
  long RegCreateKeyExA(HKEY key, const std::string& path, std::uint32_t access, HKEY& result,
                       std::uint32_t& disposition) override {
    if (key == HKEY_LOCAL_MACHINE) {
      ++refused;
      return ERROR_ACCESS_DENIED;
    }
    return fakes::MemoryRegistry::RegCreateKeyExA(key, path, access, result, disposition);
  }
  int refused = 0;
};

TEST_F(DefaultBrowserTest, WithoutRightsOnTheMachinesPartItsWritesAreLostWithoutAWord) {
  TreeOfOthers tree(&journal);
  boxes.Expect(kClosing);
  SetAsDefaultBrowser({tree, boxes, system, desktop});
  EXPECT_GT(tree.refused, 0);
  EXPECT_FALSE(tree.Has(HKEY_LOCAL_MACHINE, "KVD"));
  EXPECT_FALSE(tree.Has(HKEY_LOCAL_MACHINE, "http"));
  EXPECT_EQ(tree.Text(HKEY_CLASSES_ROOT, "https\\shell\\open\\command", ""), "/opt/kivandra/kivandra.exe %1");
  EXPECT_EQ(tree.Text(HKEY_CLASSES_ROOT, ".htm", ""), "KVD");
  EXPECT_TRUE(journal.Has("Register"));
}

}  // namespace
}  // namespace kivandra
