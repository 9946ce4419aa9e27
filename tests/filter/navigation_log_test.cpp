// SPDX-License-Identifier: GPL-3.0-or-later
#include "filter/navigation_log.h"

#include <gtest/gtest.h>

#include "core/settings.h"
#include "fakes/fake_web_browser.h"
#include "fakes/fake_world.h"
#include "support/rich_text.h"

namespace kivandra {
namespace {

const std::string kDay = "/data/21/16112026.rtf";

struct NavigationLogTest : testing::Test {
  fakes::FakeWorld world;
  fakes::FakeWebBrowser browser{"page", world.journal};
  std::string LogURL = kLogURLDesignText;

  NavigationLogTest() {
    WindowsDirectory = "/data";
    LogDayName = "16112026";
    SaveItem(world.registry, "R_N", "1");
    Show("Otters", "http://www.otters.org/");
  }
  void Show(const std::string& title, const std::string& address) {
    browser.locationName = title;
    browser.locationURL = address;
  }
  void Visit() { LogVisit(world.registry, world.files, browser, LogURL); }
  std::string Day() { return ReadRichText(world.files.files.at(kDay)).value_or("no rich text"); }
};

TEST_F(NavigationLogTest, TheFirstEntryOfADayEndsWithWhatTheBufferHeld) {
  Visit();
  EXPECT_EQ(Day(), " ->Otters URL http://www.otters.org/  LogURL");
}

TEST_F(NavigationLogTest, TouchesNoFileUnlessTheParentWantsIt) {
  for (const char* value : {"0", "", "2", "x1", "10"}) {
    SaveItem(world.registry, "R_N", value);
    Visit();
  }
  EXPECT_TRUE(world.journal.lines.empty());
  EXPECT_EQ(LogURL, "LogURL");
  SaveItem(world.registry, "R_N", "1x");
  Visit();
  EXPECT_EQ(world.files.files.count(kDay), 1U);
}

TEST_F(NavigationLogTest, ASettingThatCannotBeReadWritesNothing) {
  world.registry.calls = 0;
  world.registry.failAt = 1;
  Visit();
  EXPECT_TRUE(world.journal.lines.empty());
}

TEST_F(NavigationLogTest, TwoDownloadsOfOnePageAreTwoEntriesTheNewerInFront) {
  Visit();
  Show("Otters again", "http://www.otters.org/");
  Visit();
  EXPECT_EQ(Day(),
            " ->Otters again URL http://www.otters.org/   ->Otters URL http://www.otters.org/  LogURL");
}

TEST_F(NavigationLogTest, AnEmptyTitleLeavesNothingBetweenArrowAndURL) {
  Show("", "http://www.otters.org/");
  Visit();
  EXPECT_EQ(Day(), " -> URL http://www.otters.org/  LogURL");
}

TEST_F(NavigationLogTest, WithoutItsFolderTheBufferGrowsAndIsSavedWhenTheFolderIsThereAgain) {
  world.journal.failOn = "WriteFile \"" + kDay + "\"";
  Visit();
  Visit();
  EXPECT_TRUE(world.files.files.empty());
  world.journal.failOn.clear();
  Visit();
  const std::string entry = " ->Otters URL http://www.otters.org/  ";
  EXPECT_EQ(Day(), entry + entry + entry + "LogURL");
}

TEST_F(NavigationLogTest, TwoWindowsLoseNothingOfEachOther) {
  std::string other = kLogURLDesignText;
  Visit();
  Show("Seals", "http://www.seals.org/");
  LogVisit(world.registry, world.files, browser, other);
  Visit();
  EXPECT_EQ(Day(),
            " ->Seals URL http://www.seals.org/   ->Seals URL http://www.seals.org/  "
            " ->Otters URL http://www.otters.org/  LogURL");
}

TEST_F(NavigationLogTest, AWindowsLaterDayKeepsItsEarlierOneForATail) {
  Visit();
  LogDayName = "17112026";
  Visit();
  const std::string entry = " ->Otters URL http://www.otters.org/  ";
  EXPECT_EQ(ReadRichText(world.files.files.at("/data/21/17112026.rtf")), entry + entry + "LogURL");
}

TEST_F(NavigationLogTest, AFullDiskKeepsTheDaySoFarAndTellsNobody) {
  Visit();
  const std::string before = world.files.files.at(kDay);
  world.journal.failOn = "WriteFile \"" + kDay + "\"";
  Visit();
  EXPECT_EQ(world.files.files.at(kDay), before);
  EXPECT_TRUE(world.journal.With("MsgBox").empty());
}

TEST_F(NavigationLogTest, ATitleInAnyScriptWithAnythingInItIsKept) {
  for (const std::string& title : {std::string("Привет {мир} \\par \\'e9 שלום こんにちは \U0001F989"),
                                   std::string("one\ntwo\u2028three\u2029"), std::string("{\\rtf1 \\b x}"),
                                   std::string(1'000'000, '{'), std::string("} } \\u955? \\bin99999 ")}) {
    world.files.files.clear();
    LogURL = kLogURLDesignText;
    Show(title, "http://www.otters.org/?q={1}\\par");
    Visit();
    EXPECT_TRUE(Day() == " ->" + title + " URL http://www.otters.org/?q={1}\\par  LogURL");
    Visit();
    EXPECT_TRUE(Day().size() > 2 * title.size());
  }
}

TEST_F(NavigationLogTest, AnEmptyFileIsAnEmptyDay) {
  world.files.files[kDay] = "";
  Visit();
  EXPECT_EQ(Day(), " ->Otters URL http://www.otters.org/  ");
}

TEST_F(NavigationLogTest, OfAFileThatBreaksOffAllThatIsThereIsKept) {
  Visit();
  const std::string whole = world.files.files.at(kDay);
  world.files.files[kDay] = whole.substr(0, whole.find("URL\\par") + 2);
  Show("Seals", "http://www.seals.org/");
  Visit();
  EXPECT_EQ(Day(), " ->Seals URL http://www.seals.org/   ->Otters URL http://www.otters.org/  LogUR");
}

TEST_F(NavigationLogTest, AFileThatIsNoRichTextIsSetAsideAndNothingOfItIsLost) {
  std::string binary("SQLite\0\xFF", 8);
  world.files.files[kDay] = binary;
  Visit();
  EXPECT_EQ(Day(), " ->Otters URL http://www.otters.org/  LogURL");
  EXPECT_EQ(world.files.files.at(kDay + ".1"), binary);
  // A second one takes the next free name.
  world.files.files[kDay] = "again";
  Visit();
  EXPECT_EQ(world.files.files.at(kDay + ".1"), binary);
  EXPECT_EQ(world.files.files.at(kDay + ".2"), "again");
}

TEST_F(NavigationLogTest, AFileThatCannotBeReadIsSetAsideAndNotOverwritten) {
  Visit();
  const std::string before = world.files.files.at(kDay);
  world.journal.failOn = "ReadFile \"" + kDay + "\"";
  Visit();
  EXPECT_EQ(world.files.files.at(kDay + ".1"), before);
  EXPECT_EQ(world.files.files.count(kDay), 1U);
}

TEST_F(NavigationLogTest, AFileThatCanNeitherBeReadNorSetAsideStays) {
  for (const std::string& fault :
       {std::string("Name \"" + kDay + "\", \"" + kDay + ".1\""), std::string("Dir \"" + kDay + "\""),
        std::string("Dir \"" + kDay + ".1\"")}) {
    world.files.files = {{kDay, "no rich text"}};
    world.journal.failOn = fault;
    Visit();
    EXPECT_EQ(world.files.files.at(kDay), "no rich text") << fault;
    EXPECT_EQ(world.files.files.size(), 1U) << fault;
  }
}

TEST_F(NavigationLogTest, WhateverSingleStepFailsTheDayNeverHoldsLess) {
  Visit();
  const std::string before = Day();
  for (long fault = 1; fault <= 4; ++fault) {
    const auto files = world.files.files;
    world.journal.calls = 0;
    world.journal.failAt = fault;
    std::string fresh = kLogURLDesignText;
    LogVisit(world.registry, world.files, browser, fresh);
    world.journal.failAt = 0;
    std::string all;
    for (const auto& [path, bytes] : world.files.files) {
      all += ReadRichText(bytes).value_or("");
    }
    EXPECT_NE(all.find(before), std::string::npos) << fault;
    world.files.files = files;
  }
}

TEST_F(NavigationLogTest, AnEntryStandsInFrontOfADayOfAMegabyte) {
  std::string day;
  while (day.size() < 1'000'000) {
    day += " ->Страница {of} otters URL http://www.example.com/otters?a=1  ";
  }
  world.files.files[kDay] = WriteRichText(day);
  Visit();
  EXPECT_TRUE(Day() == " ->Otters URL http://www.otters.org/  " + day);
}

}  // namespace
}  // namespace kivandra
