// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/other_browsers.h"

#include <gtest/gtest.h>

#include <string>

#include "fakes/fake_world.h"

namespace kivandra {
namespace {

constexpr const char* kExplorerKey = "Applications\\iexplore.exe\\shell\\open\\command";
constexpr const char* kNetscapeKey = "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Netscp6.exe";
constexpr const char* kExplorer = "/programs/iexplore.exe";
constexpr const char* kNetscape = "/programs/netscp6.exe";

class OtherBrowsersTest : public testing::Test, protected fakes::FakeWorld {
 protected:
  OtherBrowsersTest() {
    registry.Put(HKEY_CLASSES_ROOT, kExplorerKey, "", "\"" + std::string(kExplorer) + "\" %1");
    registry.Put(HKEY_LOCAL_MACHINE, kNetscapeKey, "", kNetscape);
  }
  void SetExplorer(const std::string& ticked) {
    registry.PutSetting("P_IE", ticked);
    PreventInternetExplorer({registry, files, "kivandra"});
  }
  void SetNetscape(const std::string& ticked) {
    registry.PutSetting("P_NS", ticked);
    PreventNetscape({registry, files, "kivandra"});
  }
  [[nodiscard]] bool Has(const std::string& path) const { return files.files.count(path) != 0; }
  [[nodiscard]] bool Hidden(const std::string& path) const { return Has(path + "X") && !Has(path); }
  [[nodiscard]] bool Shown(const std::string& path) const { return Has(path) && !Has(path + "X"); }
};

TEST_F(OtherBrowsersTest, TickingAndClearingReturnsTheFileToItsName) {
  files.files[kExplorer] = "ie";
  files.files[kNetscape] = "ns";
  SetExplorer("1");
  SetNetscape("1");
  EXPECT_TRUE(Hidden(kExplorer));
  EXPECT_TRUE(Hidden(kNetscape));
  SetExplorer("0");
  SetNetscape("0");
  EXPECT_TRUE(Shown(kExplorer));
  EXPECT_TRUE(Shown(kNetscape));
  EXPECT_EQ(files.files[kExplorer], "ie");
}

TEST_F(OtherBrowsersTest, TickedTwiceTheFileStaysRenamed) {
  files.files[kExplorer] = "ie";
  SetExplorer("1");
  SetExplorer("0");
  SetExplorer("1");
  EXPECT_TRUE(Hidden(kExplorer));
}

TEST_F(OtherBrowsersTest, AHiddenFileComesBackFirstAndIsHiddenAnew) {
  files.files[std::string(kExplorer) + "X"] = "ie";
  SetExplorer("1");
  EXPECT_EQ(journal.With("Name"),
            (std::vector<std::string>{"Name \"/programs/iexplore.exeX\", \"/programs/iexplore.exe\"",
                                      "Name \"/programs/iexplore.exe\", \"/programs/iexplore.exeX\""}));
  EXPECT_TRUE(Hidden(kExplorer));
}

TEST_F(OtherBrowsersTest, WhereABrowserIsMissingNothingChangesAndNothingIsSaid) {
  SetNetscape("1");
  EXPECT_TRUE(files.files.empty());
  EXPECT_EQ(registry.Setting("P_NS"), "1");
}

TEST_F(OtherBrowsersTest, AnAbsentKeyRenamesNothing) {
  registry.Put(HKEY_CLASSES_ROOT, kExplorerKey, "", "");
  registry.Put(HKEY_LOCAL_MACHINE, kNetscapeKey, "", "");
  files.files["X"] = "a file of somebody's";
  SetExplorer("1");
  SetNetscape("1");
  SetNetscape("0");
  EXPECT_EQ(files.files.size(), 1U);
}

TEST_F(OtherBrowsersTest, AMachineWithoutTheKeysKeepsItsFilesAndTheBoxesAreStored) {
  ASSERT_EQ(registry.RegDeleteKeyA(HKEY_CLASSES_ROOT, kExplorerKey), ERROR_SUCCESS);
  ASSERT_EQ(registry.RegDeleteKeyA(HKEY_LOCAL_MACHINE, kNetscapeKey), ERROR_SUCCESS);
  const std::map<std::string, std::string> before{{kExplorer, "ie"}, {kNetscape, "ns"}};
  files.files = {before.begin(), before.end()};
  for (const std::string ticked : {"1", "0"}) {
    SetExplorer(ticked);
    SetNetscape(ticked);
    EXPECT_EQ((std::map<std::string, std::string>{files.files.begin(), files.files.end()}), before) << ticked;
    EXPECT_EQ(registry.Setting("P_IE"), ticked);
    EXPECT_EQ(registry.Setting("P_NS"), ticked);
  }
}

TEST_F(OtherBrowsersTest, ANameInAnotherCaseIsRestoredByTheLastStep) {
  const std::string path = "/programs/NETSCP6.EXE";
  registry.Put(HKEY_LOCAL_MACHINE, kNetscapeKey, "", path);
  files.files[path] = "ns";
  SetNetscape("1");
  EXPECT_TRUE(Hidden(path));
  journal.Clear();
  SetNetscape("1");
  EXPECT_TRUE(Hidden(path)) << "stays renamed";
  EXPECT_EQ(journal.With("FAILED").size() + journal.With("Name").size(), 1U) << "the marker does not match";
  SetNetscape("0");
  EXPECT_TRUE(Shown(path));
}

TEST_F(OtherBrowsersTest, ACommandWithAnotherTailLeadsToNoFile) {
  files.files[kExplorer] = "ie";
  registry.Put(HKEY_CLASSES_ROOT, kExplorerKey, "", "\"" + std::string(kExplorer) + "\" -nohome");
  SetExplorer("1");
  EXPECT_TRUE(Shown(kExplorer));
}

TEST_F(OtherBrowsersTest, AValueTooShortForThePathNamesNothing) {
  for (const std::string value : {"", "x", "\" %1", "\"\" %1"}) {
    registry.Put(HKEY_CLASSES_ROOT, kExplorerKey, "", value);
    SetExplorer("1");
    EXPECT_TRUE(journal.Has("Dir \"X\"")) << value;
    journal.Clear();
  }
}

TEST_F(OtherBrowsersTest, ATakenNameKeepsTheFileWhereItIs) {
  files.files[kNetscape] = "ns";
  files.files[std::string(kNetscape) + "X"] = "another";
  SetNetscape("1");
  EXPECT_EQ(files.files[kNetscape], "ns");
  EXPECT_EQ(files.files[std::string(kNetscape) + "X"], "another");
}

TEST_F(OtherBrowsersTest, AFileInUseStaysAndTheSettingIsTickedAllTheSame) {
  files.files[kNetscape] = "ns";
  journal.failOn = "Name \"/programs/netscp6.exe\", \"/programs/netscp6.exeX\"";
  SetNetscape("1");
  EXPECT_TRUE(Shown(kNetscape));
  EXPECT_EQ(registry.Setting("P_NS"), "1");
}

TEST_F(OtherBrowsersTest, WhateverFailsNothingIsLostAndNoErrorLeaves) {
  for (const std::string ticked : {"0", "1"}) {
    for (long n = 1; n <= 4; ++n) {
      files.files = {{std::string(kExplorer) + "X", "ie"}};
      journal.calls = 0;
      journal.failAt = n;
      EXPECT_NO_THROW(SetExplorer(ticked)) << n;
      EXPECT_EQ(files.files.size(), 1U) << n;
      EXPECT_EQ(files.files.begin()->second, "ie") << n;
    }
  }
}

}  // namespace
}  // namespace kivandra
