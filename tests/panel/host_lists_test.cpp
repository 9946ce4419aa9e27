// SPDX-License-Identifier: GPL-3.0-or-later
// The steps of the two lists on the settings tree, in their order, and a tree that refuses one of them.
#include "panel/host_lists.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "core/settings.h"
#include "fakes/memory_registry.h"
#include "filter/filter_values.h"

namespace kivandra {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

/// A tree that takes no value of one name.
class RefusingRegistry : public fakes::MemoryRegistry {
 public:
  using MemoryRegistry::MemoryRegistry;
  long RegSetValueExA(HKEY key, const std::string& name, std::uint32_t type, const Bytes& data) override {
    return name == refused ? ERROR_ACCESS_DENIED : MemoryRegistry::RegSetValueExA(key, name, type, data);
  }
  std::string refused;
};

struct HostListSteps : testing::Test {
  fakes::Journal journal;
  fakes::MemoryRegistry registry{&journal};

  HostListSteps() {
    ResetFilterValues();
    for (const auto& [slot, text] : {std::pair{"0", "a"}, {"1", "b"}, {"2", "c"}}) {
      registry.Put(HKEY_CLASSES_ROOT, kDisallowedSection, slot, text);
    }
  }
  /// The journal; a value is read in more than one call, which counts once here.
  std::vector<std::string> Steps() {
    auto lines = journal.lines;
    lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
    return lines;
  }
};

TEST_F(HostListSteps, AddingReadsUpToTheFirstFreeSlotAndWritesThereAlone) {
  int slot = -1;
  EXPECT_EQ(AddToHostList(registry, HostList::Disallowed, "d", slot), HostListAdding::Added);
  EXPECT_EQ(slot, 3);
  EXPECT_THAT(Steps(), ElementsAre("Read 0", "Read 1", "Read 2", "Read 3", "Write 3 = d"));
  journal.Clear();
  AppendSlotToBadWords(registry, HostList::Disallowed, slot);
  EXPECT_THAT(Steps(), ElementsAre("Read 3"));
  EXPECT_EQ(BadWords[1], "d");
}

TEST_F(HostListSteps, RemovingReadsThenBlanksEverySlotThenWritesWhatStays) {
  RemoveFromHostList(registry, HostList::Disallowed, "b");
  std::vector<std::string> expected = {"Read 0", "Read 1", "Read 2", "Read 3"};
  for (int slot = 0; slot < 100; ++slot) {
    expected.push_back("Write " + std::to_string(slot) + " = ");
  }
  expected.insert(expected.end(), {"Write 0 = a", "Write 1 = c"});
  EXPECT_THAT(Steps(), ElementsAreArray(expected));
}

TEST_F(HostListSteps, RemovingTheLastEntryWritesNothingBehindTheBlanks) {
  RemoveFromHostList(registry, HostList::Allowed, "none");
  EXPECT_EQ(journal.With("Write").size(), 100U);
  EXPECT_EQ(journal.lines.back(), "Write 99 = ");
}

TEST(RefusedHostList, ASlotThatIsRefusedByItselfIsPassedOverAndTheNextStepsHappen) {
  RefusingRegistry registry;
  for (const auto& [slot, text] : {std::pair{"0", "a"}, {"1", "b"}, {"2", "c"}}) {
    registry.Put(HKEY_CLASSES_ROOT, kAllowedSection, slot, text);
  }
  registry.refused = "50";
  RemoveFromHostList(registry, HostList::Allowed, "a");
  EXPECT_THAT(HostListEntries(registry, HostList::Allowed), ElementsAre("b", "c"));
}

TEST(RefusedHostList, ATextThatIsNotTakenForbidsNothing) {
  ResetFilterValues();
  RefusingRegistry registry;
  registry.refused = "0";
  int slot = -1;
  EXPECT_EQ(AddToHostList(registry, HostList::Allowed, "x", slot), HostListAdding::Added);
  AppendSlotToBadWords(registry, HostList::Allowed, slot);
  EXPECT_EQ(BadWords[1], "");
}

TEST(RefusedHostList, AKeyThatCannotBeMadeHidesNoEntry) {
  fakes::MemoryRegistry registry;
  registry.Put(HKEY_CLASSES_ROOT, kDisallowedSection, "0", "a");
  registry.failAt = 1;
  EXPECT_THAT(HostListEntries(registry, HostList::Disallowed), ElementsAre("a"));
}

}  // namespace
}  // namespace kivandra
