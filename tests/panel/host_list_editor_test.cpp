// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/host_list_editor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

#include "filter/bad_words.h"
#include "panel/panel_world.h"

namespace kivandra {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kAllowed = 0;
constexpr int kDisallowed = 1;
const std::string kThere = "This entry is already in the list.";
const std::string kFull = "This list has reached its maximum storage potential.";

struct HostListTest : testing::Test, fakes::PanelWorld {
  /// Fills the slots from "0" on and opens the panel.
  void Open(int list, const std::vector<std::string>& entries) {
    for (std::size_t slot = 0; slot < entries.size(); ++slot) {
      PutSlot(Section(list), static_cast<int>(slot), entries[slot]);
    }
    panel.Show();
    journal.Clear();
  }
  static std::string Section(int list) { return list == kAllowed ? kAllowedSection : kDisallowedSection; }
  static std::vector<std::string> Numbered(int count) {
    std::vector<std::string> entries;
    for (int number = 0; number < count; ++number) {
      entries.push_back("entry" + std::to_string(number));
    }
    return entries;
  }
  std::vector<std::string> Slots(int list, int count) {
    std::vector<std::string> slots;
    for (int slot = 0; slot < count; ++slot) {
      slots.push_back(Slot(Section(list), slot));
    }
    return slots;
  }
  void Add(int list, const std::string& text) { EXPECT_TRUE(Press(list, text, kKeyReturn)); }
  void Remove(int list, const std::string& text) { EXPECT_TRUE(Press(list, text, kKeyDelete)); }
};

TEST_F(HostListTest, TheButtonOpensItsBoxAlone) {
  Open(kAllowed, {});
  Panel().ButtonOf("b_allowButton_1").Click();
  EXPECT_THAT(journal.lines,
              ElementsAre("frmOptions.Combo1_1.Enabled = True", "frmOptions.Combo1_1.SetFocus"));
  journal.Clear();
  Panel().ButtonOf("b_allowButton_0").Click();
  EXPECT_THAT(journal.lines,
              ElementsAre("frmOptions.Combo1_0.Enabled = True", "frmOptions.Combo1_0.SetFocus"));
}

TEST_F(HostListTest, OtherKeysGoOnToTheBox) {
  Open(kAllowed, {"a"});
  for (const int key : {8, 27, 32, 65, static_cast<int>(kKeyF12)}) {
    EXPECT_FALSE(Press(kAllowed, "a", key));
  }
  EXPECT_THAT(journal.lines, IsEmpty());
}

TEST_F(HostListTest, ShowsTheEntriesInTheOrderOfTheirSlots) {
  Open(kDisallowed, {"zebra", "ape", "Ape"});
  EXPECT_THAT(Combo(kDisallowed).items, ElementsAre("zebra", "ape", "Ape"));
  EXPECT_THAT(Combo(kAllowed).items, IsEmpty());
  EXPECT_EQ(Combo(kDisallowed).text, "");
}

TEST_F(HostListTest, OnlyReadingTheDisallowedListMakesItsKey) {
  panel.Show();
  cRegistry at(registry);
  at.SetClassKey(HKEY_CLASSES_ROOT);
  at.SetSectionKey(kAllowedSection);
  EXPECT_FALSE(at.KeyExists());
  at.SetSectionKey(kDisallowedSection);
  EXPECT_TRUE(at.KeyExists());
}

TEST_F(HostListTest, AnEntryIsStoredAsTypedAndShown) {
  Open(kAllowed, {"first"});
  Add(kAllowed, " http://WWW.Otters.org/ ");
  EXPECT_THAT(Slots(kAllowed, 3), ElementsAre("first", " http://WWW.Otters.org/ ", ""));
  EXPECT_THAT(Combo(kAllowed).items, ElementsAre("first", " http://WWW.Otters.org/ "));
  EXPECT_EQ(Combo(kAllowed).text, "");
}

TEST_F(HostListTest, AListOf99TakesOneMoreAndThenReportsTheMaximum) {
  Open(kAllowed, Numbered(99));
  Add(kAllowed, "the last");
  EXPECT_EQ(Slot(kAllowedSection, 99), "the last");
  boxes.Expect(kFull);
  Add(kAllowed, "one more");
  EXPECT_EQ(Slot(kAllowedSection, 100), "");
  EXPECT_EQ(Combo(kAllowed).text, "one more");
}

TEST_F(HostListTest, AFullListIsLookedThroughForTheTextFirst) {
  Open(kDisallowed, Numbered(100));
  boxes.Expect(kThere);
  Add(kDisallowed, "entry50");
  boxes.Expect(kFull);
  Add(kDisallowed, "new");
  EXPECT_EQ(Combo(kDisallowed).text, "new");
  EXPECT_EQ(BadWords[1], "");
}

TEST_F(HostListTest, AnEmptyTextIsReportedAsThereAndStoresNothing) {
  Open(kAllowed, {"a"});
  boxes.Expect(kThere);
  Add(kAllowed, "");
  EXPECT_THAT(Slots(kAllowed, 2), ElementsAre("a", ""));
  EXPECT_THAT(journal.lines, ElementsAre("MsgBox \"" + kThere + "\""));
}

TEST_F(HostListTest, AnEmptyTextOnAFullListReportsTheMaximum) {
  Open(kAllowed, Numbered(100));
  boxes.Expect(kFull);
  Add(kAllowed, "");
}

TEST_F(HostListTest, CaseAndBlanksMakeADifferentEntry) {
  Open(kAllowed, {"otters"});
  for (const char* text : {"Otters", " otters", "otters "}) {
    Add(kAllowed, text);
  }
  boxes.Expect(kThere);
  Add(kAllowed, "otters");
  EXPECT_THAT(Slots(kAllowed, 5), ElementsAre("otters", "Otters", " otters", "otters ", ""));
}

TEST_F(HostListTest, AnEntryOfEitherListIsAForbiddenWordAtOnceAndTheAllowedTableStays) {
  FillBadWords();
  Open(kAllowed, {});
  Add(kDisallowed, "refused.example");
  Add(kAllowed, "allowed.example");
  EXPECT_EQ(BadWords[102], "refused.example");
  EXPECT_EQ(BadWords[103], "allowed.example");
  EXPECT_EQ(AllowedDomains[1], "");
}

TEST_F(HostListTest, WithEveryRowOfTheWordsTakenTheEntryIsStoredAllTheSame) {
  for (std::size_t row = 1; row <= BadWordsTable::kLastRow; ++row) {
    BadWords[row] = "taken";
  }
  Open(kDisallowed, {});
  Add(kDisallowed, "refused.example");
  EXPECT_EQ(Slot(kDisallowedSection, 0), "refused.example");
}

TEST_F(HostListTest, RemovingTheFirstOfThreeMovesTheOthersUp) {
  Open(kAllowed, {"a", "b", "c"});
  Remove(kAllowed, "a");
  EXPECT_THAT(Slots(kAllowed, 5), ElementsAre("b", "c", "", "", ""));
  EXPECT_THAT(Combo(kAllowed).items, ElementsAre("b", "c"));
}

TEST_F(HostListTest, RemovingTheOnlyEntryEmptiesEverySlotOfTheList) {
  Open(kDisallowed, {"a"});
  PutSlot(kDisallowedSection, 50, std::string("behind a gap"));
  PutSlot(kDisallowedSection, 100, std::string("the end mark"));
  Remove(kDisallowed, "a");
  for (int slot = 0; slot < 100; ++slot) {
    EXPECT_EQ(Slot(kDisallowedSection, slot), "") << slot;
  }
  EXPECT_EQ(Slot(kDisallowedSection, 100), "the end mark");
}

TEST_F(HostListTest, RemovingFromAFullListKeepsTheOther99) {
  Open(kAllowed, Numbered(100));
  PutSlot(kAllowedSection, 100, std::string("the end mark"));
  Remove(kAllowed, "entry98");
  EXPECT_EQ(Slot(kAllowedSection, 97), "entry97");
  EXPECT_EQ(Slot(kAllowedSection, 98), "entry99");
  EXPECT_EQ(Slot(kAllowedSection, 99), "");
  EXPECT_EQ(Slot(kAllowedSection, 100), "the end mark");
}

TEST_F(HostListTest, DeleteInAnEmptyBoxOrWithAnUnknownTextLeavesTheListAsItWas) {
  Open(kAllowed, {"a", "b"});
  Remove(kAllowed, "");
  EXPECT_THAT(Slots(kAllowed, 3), ElementsAre("a", "b", ""));
  Remove(kAllowed, "c");
  EXPECT_THAT(Slots(kAllowed, 3), ElementsAre("a", "b", ""));
  Open(kAllowed, Numbered(100));
  Remove(kAllowed, "");
  EXPECT_EQ(Slot(kAllowedSection, 99), "entry99");
}

TEST_F(HostListTest, AGapHidesWhatStandsBehindIt) {
  Open(kAllowed, {"a", "b", "c", "d"});
  PutSlot(kAllowedSection, 1, std::string());
  panel.Show();
  Panel().ButtonOf("cmdCancel").Click();
  panel.Show();
  EXPECT_THAT(Combo(kAllowed).items, ElementsAre("a"));
  // A new entry goes into the gap, and what is behind it shows again.
  Add(kAllowed, "x");
  EXPECT_THAT(Combo(kAllowed).items, ElementsAre("a", "x", "c", "d"));
}

TEST_F(HostListTest, RemovingLosesWhatStandsBehindALaterGap) {
  Open(kAllowed, {"a", "b", "", "d"});
  Remove(kAllowed, "a");
  EXPECT_THAT(Slots(kAllowed, 5), ElementsAre("b", "", "", "", ""));
}

TEST_F(HostListTest, AnEmptyFirstSlotDoesNotEndTheWalkOfRemoving) {
  Open(kAllowed, {"", "b", "c", "d"});
  Remove(kAllowed, "c");
  EXPECT_THAT(Slots(kAllowed, 5), ElementsAre("", "b", "d", "", ""));
}

TEST_F(HostListTest, OtherTypesOfValueAreReadAsTheRegistryClassGivesThem) {
  PutSlot(kAllowedSection, 0, std::int32_t{4711}, REG_DWORD);
  ::setenv("KV_HOST_LIST_TEST", "otters", 1);
  PutSlot(kAllowedSection, 1, std::string("%KV_HOST_LIST_TEST%.example"));
  PutSlot(kAllowedSection, 2, Bytes{0xAB, 0xCD, 0, 0}, REG_BINARY);
  panel.Show();
  EXPECT_THAT(Combo(kAllowed).items, ElementsAre("4711", "otters.example", "ABCD"));
  boxes.Expect(kThere);
  Add(kAllowed, "otters.example");
  Remove(kAllowed, "4711");
  EXPECT_THAT(Slots(kAllowed, 3), ElementsAre("otters.example", "ABCD", ""));
  Remove(kAllowed, "otters.example");
  EXPECT_THAT(Slots(kAllowed, 2), ElementsAre("ABCD", ""));
}

TEST_F(HostListTest, EntriesOfTenThousandCharactersAndOfOtherScriptsComeBack) {
  Open(kAllowed, {});
  const std::string text(10000, 'x');
  Add(kAllowed, text);
  Add(kAllowed, "\u03B1\u05D0\U0001F989");
  EXPECT_THAT(Combo(kAllowed).items, ElementsAre(text, "\u03B1\u05D0\U0001F989"));
  Remove(kAllowed, text);
  EXPECT_THAT(Combo(kAllowed).items, ElementsAre("\u03B1\u05D0\U0001F989"));
}

TEST_F(HostListTest, WhateverCallFailsRemovingLosesNoOtherEntry) {
  const std::vector<std::string> whole = {"a", "b", "c"};
  Open(kAllowed, whole);
  registry.calls = 0;
  Remove(kAllowed, "b");
  const long calls = registry.calls;
  ASSERT_GT(calls, 200);
  for (long fault = 1; fault <= calls; ++fault) {
    Open(kAllowed, whole);
    registry.calls = 0;
    registry.failAt = fault;
    Remove(kAllowed, "b");
    registry.failAt = 0;
    const auto after = Slots(kAllowed, 4);
    EXPECT_TRUE(after == (std::vector<std::string>{"a", "b", "c", ""}) ||
                after == (std::vector<std::string>{"a", "c", "", ""}))
        << fault;
  }
}

TEST_F(HostListTest, WhateverCallFailsAddingOverwritesNothing) {
  const std::vector<std::string> whole = {"a", "b"};
  for (long fault = 1; fault <= 40; ++fault) {
    Open(kDisallowed, whole);
    PutSlot(kDisallowedSection, 2, std::string());
    registry.calls = 0;
    registry.failAt = fault;
    Add(kDisallowed, "c");
    registry.failAt = 0;
    EXPECT_EQ(Slot(kDisallowedSection, 0), "a") << fault;
    EXPECT_EQ(Slot(kDisallowedSection, 1), "b") << fault;
  }
}

}  // namespace
}  // namespace kivandra
