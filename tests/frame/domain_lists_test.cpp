// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/domain_lists.h"

#include <gtest/gtest.h>

#include "core/registry.h"
#include "fakes/fake_world.h"
#include "filter/bad_words.h"
#include "filter/filter_values.h"

namespace kivandra {
namespace {

struct DomainListsTest : testing::Test {
  fakes::FakeWorld world;
  DomainListsTest() {
    ResetFilterValues();
    FillBadWords();
  }
  void Store(const std::string& section, int slot, const std::string& text) {
    cRegistry registry(world.registry, "kivandra");
    registry.SetClassKey(HKEY_CLASSES_ROOT);
    registry.SetSectionKey(section);
    registry.SetValueKey(std::to_string(slot));
    registry.SetValueType(REG_SZ);
    registry.SetValue(text);
  }
  void Load() { LoadDomainLists(world.registry, world.loop, "kivandra"); }
};

TEST_F(DomainListsTest, EmptyListsAddNothing) {
  Load();
  EXPECT_TRUE(BadWords[102].empty());
  EXPECT_TRUE(AllowedDomains[1].empty());
}

TEST_F(DomainListsTest, DisallowedEntriesStandBehindTheBuiltInRows) {
  Store(kDisallowedSection, 0, "first.example");
  Store(kDisallowedSection, 1, "porn");
  Load();
  EXPECT_EQ(BadWords[102], "first.example");
  EXPECT_EQ(BadWords[103], "porn");  // a built-in row's text is simply stored a second time
  EXPECT_TRUE(BadWords[104].empty());
}

TEST_F(DomainListsTest, AllowedEntriesStandFromTheFirstRowOn) {
  Store(kAllowedSection, 0, "good.example");
  Load();
  EXPECT_EQ(AllowedDomains[1], "good.example");
  EXPECT_TRUE(BadWords[102].empty());
}

TEST_F(DomainListsTest, AGapHidesEveryEntryBehindIt) {
  Store(kDisallowedSection, 0, "first.example");
  Store(kDisallowedSection, 2, "third.example");
  Load();
  EXPECT_EQ(BadWords[102], "first.example");
  EXPECT_TRUE(BadWords[103].empty());
}

TEST_F(DomainListsTest, AFullDisallowedListLosesItsLastEntryWithoutAWord) {
  for (int slot = 0; slot < 100; ++slot) {
    Store(kDisallowedSection, slot, "entry" + std::to_string(slot));
  }
  Load();
  EXPECT_EQ(BadWords[200], "entry98");
}

TEST_F(DomainListsTest, AllowedEntriesPastTheTableAreLostAndTheRestIsKept) {
  for (int slot = 0; slot <= 100; ++slot) {
    Store(kAllowedSection, slot, "entry" + std::to_string(slot));
  }
  Load();
  EXPECT_EQ(AllowedDomains[100], "entry99");
}

TEST_F(DomainListsTest, WaitsForTheBuiltInRows) {
  ResetFilterValues();
  world.loop.After(300, [] { FillBadWords(); });
  Load();
  EXPECT_EQ(world.loop.Now(), 300);
}

}  // namespace
}  // namespace kivandra
