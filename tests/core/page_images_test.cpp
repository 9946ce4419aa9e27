// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/page_images.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "core/user_settings.h"
#include "fakes/memory_registry.h"
#include "fakes/temporary_folder.h"
#include "platform/linux/settings_tree.h"

namespace kivandra {
namespace {

using fakes::MemoryRegistry;

TEST(PageImages, AreShownUntilSomebodyChooses) {
  MemoryRegistry tree;
  EXPECT_TRUE(StoredImagesShown(tree));
  EXPECT_EQ(tree.OpenHandles(), 0U);
}

TEST(PageImages, TheLastChoiceHolds) {
  MemoryRegistry tree;
  for (const bool shown : {false, true, true, false}) {
    StoreImagesShown(tree, shown);
    EXPECT_EQ(StoredImagesShown(tree), shown);
  }
  EXPECT_EQ(GetSetting(tree, "Kivandra", "Pages", "Images"), "0");
}

TEST(PageImages, AnotherTextThanNoMeansShown) {
  MemoryRegistry tree;
  for (const char* text : {"", "2", "00", "no", "\xff"}) {
    SaveSetting(tree, "Kivandra", "Pages", "Images", text);
    EXPECT_TRUE(StoredImagesShown(tree)) << text;
  }
}

TEST(PageImages, ATreeThatFailsShowsThemAndFailsNobody) {
  MemoryRegistry tree;
  StoreImagesShown(tree, false);
  for (long at = 1; at <= 3; ++at) {
    tree.calls = 0;
    tree.failAt = at;
    EXPECT_TRUE(StoredImagesShown(tree)) << at;
  }
  for (long at = 1; at <= 2; ++at) {
    tree.calls = 0;
    tree.failAt = at;
    EXPECT_NO_THROW(StoreImagesShown(tree, true)) << at;
    tree.failAt = 0;
    EXPECT_FALSE(StoredImagesShown(tree)) << "the choice before it holds at the next start";
  }
  EXPECT_EQ(tree.OpenHandles(), 0U);
}

TEST(PageImages, TheChoiceOutlivesTheProgram) {
  const fakes::TemporaryFolder folder;
  {
    linux_impl::SettingsTree tree(folder.File("registry.db"));
    StoreImagesShown(tree, false);
  }
  linux_impl::SettingsTree tree(folder.File("registry.db"));
  EXPECT_FALSE(StoredImagesShown(tree));
}

TEST(PageImages, ADamagedStoreShowsThem) {
  const fakes::TemporaryFolder folder;
  std::ofstream(folder.File("registry.db")) << "junk";
  linux_impl::SettingsTree tree(folder.File("registry.db"));
  EXPECT_NO_THROW(StoreImagesShown(tree, false));
  EXPECT_TRUE(StoredImagesShown(tree));
}

}  // namespace
}  // namespace kivandra
