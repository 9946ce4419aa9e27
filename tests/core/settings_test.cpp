// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/settings.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "core/core_values.h"
#include "core/user_settings.h"
#include "fakes/memory_registry.h"
#include "fakes/temporary_folder.h"
#include "platform/linux/settings_tree.h"
#include "platform/platform_error.h"

namespace kivandra {
namespace {

using fakes::MemoryRegistry;

const std::array<std::string, 15> kNames = {"D_B",  "D_EM", "F_C",   "No_Sw",   "O_RA",
                                            "P_IE", "P_NS", "R_N",   "T_OD",    "T_PW",
                                            "B_B",  "POP",  "Sound", "Sidebar", "FirstTime"};

class Settings : public ::testing::Test {
 protected:
  void SetUp() override {
    ResetCoreValues();
    SettingNames = kNames;
  }
  void TearDown() override { ResetCoreValues(); }

  MemoryRegistry tree_;
};

TEST_F(Settings, WhatIsSavedIsRead) {
  for (const std::string& name : kNames) {
    EXPECT_EQ(SaveItem(tree_, name, "text of " + name), Variant()) << "the result stays empty";
    EXPECT_EQ(ReadItem(tree_, name), Variant("text of " + name));
    EXPECT_EQ(tree_.Setting(name), "text of " + name);
  }
}

TEST_F(Settings, AnEmptyTextIsStoredAsOne) {
  SaveItem(tree_, "T_PW", "");
  EXPECT_EQ(ReadItem(tree_, "T_PW"), Variant(std::string()));
}

TEST_F(Settings, AMissingValueIsEmptyAndNoError) {
  EXPECT_EQ(ReadItem(tree_, "F_C"), Variant());
  EXPECT_FALSE(tree_.Setting("F_C"));
}

TEST_F(Settings, AnUnknownNameReadsEmptyAndMakesTheKey) {
  tree_.PutSetting("F_C", "1");
  for (const char* name : {"f_c", "F_C ", "Unknown", "", "Installed"}) {
    tree_.PutSetting(name, "there");
    EXPECT_EQ(ReadItem(tree_, name), Variant()) << name;
  }
  MemoryRegistry fresh;
  EXPECT_EQ(ReadItem(fresh, "Unknown"), Variant());
  EXPECT_TRUE(fresh.Has(HKEY_CLASSES_ROOT, "IXPR\\Drivers\\settings"));
}

TEST_F(Settings, AnUnknownNameIsNotSavedButMakesTheKey) {
  for (const char* name : {"f_c", "Unknown", "", "Skin", "Installed"}) {
    SaveItem(tree_, name, "x");
    EXPECT_FALSE(tree_.Setting(name)) << name;
  }
  EXPECT_TRUE(tree_.Has(HKEY_CLASSES_ROOT, "IXPR\\Drivers\\settings"));
}

TEST_F(Settings, TheSkinIsSavedButNotRead) {
  SaveItem(tree_, "skin", "/skins/winaqua.skn");
  EXPECT_EQ(tree_.Setting("skin"), "/skins/winaqua.skn");
  EXPECT_EQ(ReadItem(tree_, "skin"), Variant());
}

TEST_F(Settings, NothingIsKnownBeforeTheNamesAreFilled) {
  SettingNames = {};
  tree_.PutSetting("F_C", "1");
  EXPECT_EQ(ReadItem(tree_, "F_C"), Variant());
  SaveItem(tree_, "F_C", "0");
  EXPECT_EQ(tree_.Setting("F_C"), "1");
}

TEST_F(Settings, APasswordWithTwoPercentSignsIsStoredAsExpandable) {
  ::setenv("KV_PART", "changed", 1);
  const auto typeOf = [&](const std::string& password) {
    SaveItem(tree_, "T_PW", password);
    HKEY key = 0;
    std::uint32_t type = 0;
    std::size_t size = 0;
    tree_.RegOpenKeyExA(HKEY_CLASSES_ROOT, kSettingsSection, KEY_QUERY_VALUE, key);
    tree_.RegQueryValueExA(key, "T_PW", type, nullptr, size);
    return type;
  };
  EXPECT_EQ(typeOf("a%KV_PART%b"), REG_EXPAND_SZ);
  EXPECT_EQ(ReadItem(tree_, "T_PW"), Variant(std::string("achangedb")));
  EXPECT_EQ(typeOf("a%b"), REG_SZ);
  EXPECT_EQ(typeOf("a%%b"), REG_SZ);
}

TEST_F(Settings, EachCallMakesTheKeyFifteenTimesAndGoesOnBehindAHit) {
  tree_.PutSetting("D_B", "first");
  tree_.calls = 0;
  (void)ReadItem(tree_, "Unknown");
  const long loop = tree_.calls;
  EXPECT_EQ(loop, 30) << "made and closed";
  tree_.calls = 0;
  (void)ReadItem(tree_, "D_B");
  EXPECT_GT(tree_.calls, loop);
}

TEST_F(Settings, AFailureReachesTheCallerAndNeverReadsAsEmpty) {
  tree_.PutSetting("T_PW", "secret");
  int failures = 0;
  for (long at = 1;; ++at) {
    tree_.calls = 0;
    tree_.failAt = at;
    try {
      EXPECT_EQ(ReadItem(tree_, "T_PW"), Variant(std::string("secret")))
          << "a failed close alone is passed over";
    } catch (const PlatformError&) {
      ++failures;
    }
    if (tree_.calls < at) break;
  }
  EXPECT_GE(failures, 17);
}

TEST_F(Settings, AFailedSaveReachesTheCallerAndLeavesOldOrNew) {
  for (long at = 1;; ++at) {
    tree_.PutSetting("T_PW", "old");
    tree_.calls = 0;
    tree_.failAt = at;
    bool failed = false;
    try {
      SaveItem(tree_, "T_PW", "new");
    } catch (const PlatformError&) {
      failed = true;
    }
    const auto stored = tree_.Setting("T_PW");
    EXPECT_TRUE(stored == "new" || (failed && stored == "old")) << at;
    if (tree_.calls < at) break;
  }
}

TEST_F(Settings, SoundPlaysUnlessItIsSwitchedOff) {
  EXPECT_TRUE(SoundEnabled(tree_)) << "missing";
  for (const auto& [text, enabled] : std::vector<std::pair<std::string, bool>>{
           {"", true}, {"0", true}, {"1", false}, {"2", false}, {"x", true}, {"00", true}, {"01", false}}) {
    tree_.PutSetting("Sound", text);
    EXPECT_EQ(SoundEnabled(tree_), enabled) << text;
  }
}

// --- Leading digits
// -------------------------------------------------------------------------------------------------

std::string Unescape(const std::string& text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\') {
      result += text[i];
    } else if (text.at(++i) == 'u') {
      const std::size_t end = text.find('}', i);
      const auto code = static_cast<unsigned>(std::stoul(text.substr(i + 2, end - i - 2), nullptr, 16));
      if (code >= 0x800) {
        result += static_cast<char>(0xE0U | code >> 12U);
        result += static_cast<char>(0x80U | (code >> 6U & 0x3FU));
      } else {
        result += static_cast<char>(0xC0U | code >> 6U);
      }
      result += static_cast<char>(0x80U | (code & 0x3FU));
      i = end;
    } else {
      const char kind = text[i];
      result += kind == 't' ? '\t' : kind == 'r' ? '\r' : kind == 'n' ? '\n' : kind;
    }
  }
  return result;
}

TEST(Val, CountsTheLeadingDigitsAlone) {
  std::ifstream file(std::string(KV_TEST_DATA) + "/val.tsv");
  std::string line;
  std::getline(file, line);
  int rows = 0;
  while (std::getline(file, line)) {
    std::vector<std::string> fields(1);
    for (const char c : line) {
      if (c == '\t') {
        fields.emplace_back();
      } else {
        fields.back() += c;
      }
    }
    ASSERT_EQ(fields.size(), 6U) << line;
    const long value = Val(Unescape(fields[2]));
    EXPECT_EQ(std::to_string(value), fields[3]) << line;
    EXPECT_EQ(value == 1, fields[4] == "1") << line;
    EXPECT_EQ(value != 0, fields[5] == "1") << line;
    ++rows;
  }
  EXPECT_EQ(rows, 42);
}

TEST(Val, AVeryLongNumberIsStillNotZeroAndNotOne) {
  EXPECT_GT(Val(std::string(400, '9')), 1);
  EXPECT_GT(Val("18446744073709551617"), 1) << "1 above the range of 64 bits";
}

// --- Per-user settings
// ----------------------------------------------------------------------------------------------

TEST(UserSettings, WhatIsSavedIsReadAsItIs) {
  MemoryRegistry tree;
  EXPECT_EQ(GetSetting(tree, "Kivandra", "Home Page", "URL"), "");
  EXPECT_EQ(GetSetting(tree, "Kivandra", "Home Page", "URL", "other"), "other");
  for (const char* text : {"http://a.example/", "", "%HOME%", "caf\xC3\xA9"}) {
    SaveSetting(tree, "Kivandra", "Home Page", "URL", text);
    EXPECT_EQ(GetSetting(tree, "Kivandra", "Home Page", "URL", "other"), text);
  }
  EXPECT_EQ(tree.Text(HKEY_CURRENT_USER, "Software\\VB and VBA Program Settings\\Kivandra\\Home Page", "URL"),
            "caf\xC3\xA9");
  EXPECT_EQ(tree.OpenHandles(), 0U);
}

TEST(UserSettings, AppsSectionsAndKeysAreApart) {
  MemoryRegistry tree;
  SaveSetting(tree, "Kivandra", "Home Page", "URL", "x");
  EXPECT_EQ(GetSetting(tree, "Kivandra", "Home Page", "Other"), "");
  EXPECT_EQ(GetSetting(tree, "Kivandra", "Other", "URL"), "");
  EXPECT_EQ(GetSetting(tree, "Other", "Home Page", "URL"), "");
}

TEST(UserSettings, WhatCannotBeStoredIsTold) {
  MemoryRegistry tree;
  EXPECT_THROW(SaveSetting(tree, "Kivandra", std::string(256, 's'), "URL", "x"), PlatformError);
  EXPECT_THROW(SaveSetting(tree, "Kivandra", "Home Page", std::string(20000, 'k'), "x"), PlatformError);
  for (const long at : {1L, 2L}) {
    tree.calls = 0;
    tree.failAt = at;
    EXPECT_THROW(SaveSetting(tree, "Kivandra", "Home Page", "URL", "x"), PlatformError);
    tree.failAt = 0;
  }
  SaveSetting(tree, "Kivandra", "Home Page", "URL", "x");
  for (const long at : {1L, 2L, 3L}) {
    tree.calls = 0;
    tree.failAt = at;
    EXPECT_THROW((void)GetSetting(tree, "Kivandra", "Home Page", "URL"), PlatformError);
  }
}

// --- On the stored tree
// ---------------------------------------------------------------------------------------------

TEST_F(Settings, SettingsOutliveTheProgram) {
  const fakes::TemporaryFolder folder;
  {
    linux_impl::SettingsTree tree(folder.File("registry.db"));
    SaveItem(tree, "T_PW", "secret");
    SaveSetting(tree, "Kivandra", "Home Page", "URL", "http://a.example/");
  }
  linux_impl::SettingsTree tree(folder.File("registry.db"));
  EXPECT_EQ(ReadItem(tree, "T_PW"), Variant(std::string("secret")));
  EXPECT_EQ(GetSetting(tree, "Kivandra", "Home Page", "URL"), "http://a.example/");
}

TEST_F(Settings, ADamagedStoreIsAnErrorAndNeverAMissingPassword) {
  const fakes::TemporaryFolder folder;
  std::ofstream(folder.File("registry.db")) << "junk";
  linux_impl::SettingsTree tree(folder.File("registry.db"));
  EXPECT_THROW((void)ReadItem(tree, "T_PW"), PlatformError);
  EXPECT_THROW(SaveItem(tree, "F_C", "1"), PlatformError);
}

}  // namespace
}  // namespace kivandra
