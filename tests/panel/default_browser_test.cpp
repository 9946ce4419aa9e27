// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/default_browser.h"

#include <gtest/gtest.h>

#include <map>
#include <ostream>
#include <string>
#include <utility>
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

/// One write to the default value of a key.
struct Written {
  HKEY root;
  std::string section;
  std::string data;
  bool operator==(const Written&) const = default;
};

void PrintTo(const Written& write, std::ostream* out) {
  *out << (write.root == HKEY_CLASSES_ROOT    ? "classes "
           : write.root == HKEY_LOCAL_MACHINE ? "machine "
                                              : "elsewhere ")
       << write.section << " = " << write.data;
}

/// Notes where each write goes.
struct NotingTree : fakes::MemoryRegistry {
  using fakes::MemoryRegistry::MemoryRegistry;
  long RegCreateKeyExA(HKEY key, const std::string& path, std::uint32_t access, HKEY& result,
                       std::uint32_t& disposition) override {
    const long code = fakes::MemoryRegistry::RegCreateKeyExA(key, path, access, result, disposition);
    opened[result] = {key, path};
    return code;
  }
  long RegSetValueExA(HKEY key, const std::string& name, std::uint32_t type, const Bytes& data) override {
    EXPECT_EQ(name, "") << "only default values";
    EXPECT_EQ(type, REG_SZ);
    const auto& [root, section] = opened[key];
    writes.push_back({root, section, std::string(data.begin(), data.end() - (data.empty() ? 0 : 1))});
    return fakes::MemoryRegistry::RegSetValueExA(key, name, type, data);
  }
  std::map<HKEY, std::pair<HKEY, std::string>> opened;
  std::vector<Written> writes;
};

TEST_F(DefaultBrowserTest, WritesEachPlaceInItsOrderThenAsksTheDesktopThenSpeaks) {
  NotingTree tree(&journal);
  boxes.Expect(kClosing);
  SetAsDefaultBrowser({tree, boxes, system, desktop});
  const std::string exe = "\"/opt/kivandra/kivandra.exe\"";
  const std::string open = "/opt/kivandra/kivandra.exe %1";
  std::vector<Written> expected;
  for (const std::string ending : {"HTM", "HTML"}) {
    const std::string name = "KVD." + ending;
    for (const auto& [section, data] :
         std::vector<std::pair<std::string, std::string>>{{"." + ending, name},
                                                          {name, "KVD"},
                                                          {name + R"(\shell\open)", "&Open"},
                                                          {name + R"(\shell\open\command)", exe + " \"%1\""},
                                                          {name + R"(\DefaultIcon)", exe + ",1"}}) {
      expected.push_back({HKEY_CLASSES_ROOT, section, data});
      expected.push_back({HKEY_LOCAL_MACHINE, R"(SOFTWARE\Classes\)" + section, data});
    }
  }
  const std::vector<Written> then{
      {HKEY_LOCAL_MACHINE, R"(KVD\shell\open\command)", open},
      {HKEY_LOCAL_MACHINE, R"(KVD\shell\open\command\ddeexec)", open},
      {HKEY_LOCAL_MACHINE, R"(KVD\shell\open\ddeexec\Application)", "KVD"},
      {HKEY_LOCAL_MACHINE, R"(KVD\shell\open\ddeexec\topic)", "WWW_OpenURL"},
      {HKEY_LOCAL_MACHINE, R"(http\shell\open\command)", open},
      {HKEY_LOCAL_MACHINE, R"(http\shell\open\ddeexec\Application)", "KVD"},
      {HKEY_CLASSES_ROOT, R"(KVD\shell\open\command)", open},
      {HKEY_CLASSES_ROOT, R"(KVD\shell\open\ddeexec)", open},
      {HKEY_CLASSES_ROOT, R"(KVD\shell\open\ddeexec)", "KVD"},
      {HKEY_CLASSES_ROOT, R"(KVD\shell\open\ddeexec)", "WWW_OpenUrl"},
      {HKEY_CLASSES_ROOT, ".htm", "KVD"},
      {HKEY_CLASSES_ROOT, ".html", "KVD"},
      {HKEY_CLASSES_ROOT, R"(http\shell\open)", "&Open KVD"},
      {HKEY_CLASSES_ROOT, R"(http\shell\open)", open},
      {HKEY_CLASSES_ROOT, R"(http\shell\open\ddeexec\Application)", "KVD"},
      {HKEY_CLASSES_ROOT, R"(http\DefaultIcon)", open},
      {HKEY_CLASSES_ROOT, R"(http\shell\open\command)", open},
      {HKEY_CLASSES_ROOT, R"(https\shell\open)", "&Open KVD"},
      {HKEY_CLASSES_ROOT, R"(https\shell\open)", open},
      {HKEY_CLASSES_ROOT, R"(https\shell\open\ddeexec\Application)", "KVD"},
      {HKEY_CLASSES_ROOT, R"(https\DefaultIcon)", open},
      {HKEY_CLASSES_ROOT, R"(https\shell\open\command)", open},
      {HKEY_CLASSES_ROOT, R"(ftp\shell\open\ddeexec\Application)", "KVD"},
      {HKEY_CLASSES_ROOT, R"(ftp\shell\open\command)", open},
      {HKEY_CLASSES_ROOT, R"(gopher\shell\open\command)", open},
      {HKEY_CLASSES_ROOT, R"(gopher\shell\open\ddeexec\Application)", "KVD"},
  };
  expected.insert(expected.end(), then.begin(), then.end());
  EXPECT_EQ(tree.writes, expected);
  ASSERT_EQ(journal.lines.size(), expected.size() + 2) << "and the desktop, and the box";
  EXPECT_EQ(journal.lines[expected.size()], "Register");
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
