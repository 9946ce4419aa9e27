// SPDX-License-Identifier: GPL-3.0-or-later
#include "favourites/frm_fav.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "fakes/fake_world.h"
#include "favourites/favourite_file.h"
#include "platform/label.h"
#include "support/attempt.h"

namespace kivandra {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class FrmFavTest : public ::testing::Test {
 protected:
  FrmFavTest() {
    world.files.folders = {{kRoot, false}};
    SkinFile = "/program/winaqua.skn";
  }

  void Put(const std::string& file, const std::string& url) {
    world.files.files[kRoot + "/" + file] = "[InternetShortcut]\r\nURL=" + url + "\r\n";
  }
  void PutFolder(const std::string& folder, bool link = false) {
    world.files.folders.emplace(kRoot + "/" + folder, link);
  }
  fakes::FakeForm& Pane() { return world.forms.Of("frmFav"); }
  fakes::FakeTreeView& Tree() { return Pane().TreeOf("tvw"); }
  /// Opens the pane, does `inside` while it stands, closes it, and tells what was navigated to.
  std::string Open(const std::function<void()>& inside) {
    std::string navigated;
    world.loop.After(10, [&] {
      inside();
      if (Pane().Loaded()) {
        Pane().ButtonOf("cmdclose").Click();
      }
    });
    OpenFavorites({world.forms, world.loop, world.files, world.system},
                  [&](const std::string& url) { navigated = url; });
    return navigated;
  }
  /// The tree as it stood in the pane.
  fakes::FakeTreeView& Opened() {
    Open([] {});
    return Tree();
  }

  const std::string kRoot = "/data/Favorites";
  fakes::FakeWorld world;
};

TEST_F(FrmFavTest, AnEmptyFolderIsARootWithItsNameAndImages) {
  const auto& tree = Opened();
  ASSERT_EQ(tree.nodes.size(), 1U);
  EXPECT_EQ(tree.nodes[0].key, "Root");
  EXPECT_EQ(tree.nodes[0].text, "YOUR FAVORITES");
  EXPECT_EQ(tree.nodes[0].tag, "");
  EXPECT_EQ(tree.nodes[0].image, "ClosedBook");
  EXPECT_EQ(tree.nodes[0].expandedImage, "OpenBook");
  EXPECT_TRUE(tree.nodes[0].expanded);
}

TEST_F(FrmFavTest, ItStandsInTheMiddleOfTheScreenBelowTheMenus) {
  Open([&] {
    EXPECT_EQ(Pane().left, (world.forms.ScreenWidth() - Pane().width) / 2);
    EXPECT_EQ(Pane().top, 1800);
  });
}

TEST_F(FrmFavTest, AFavouriteIsALeafWithItsAddress) {
  Put("Otters.url", "http://www.otters.org/");
  const auto& node = Opened().At("Otters");
  EXPECT_EQ(node.key, "");
  EXPECT_EQ(node.tag, "http://www.otters.org/");
  EXPECT_EQ(node.image, "Leaf");
  EXPECT_EQ(node.expandedImage, "");
  EXPECT_FALSE(node.sorted);
}

TEST_F(FrmFavTest, AFolderWithContentHasTheImagesOfAFolder) {
  PutFolder("Animals");
  Put("Animals/Otters.url", "http://www.otters.org/");
  const auto& tree = Opened();
  EXPECT_EQ(tree.At("Animals").tag, "");
  EXPECT_EQ(tree.At("Animals").image, "ClosedFolder");
  EXPECT_EQ(tree.At("Animals").expandedImage, "OpenFolder");
  EXPECT_TRUE(tree.At("Animals").sorted);
  EXPECT_THAT(tree.Shown("Animals"), ElementsAre("Otters"));
}

TEST_F(FrmFavTest, AnEmptyFolderHasNoImageAndNothingToOpen) {
  PutFolder("Empty");
  const auto& tree = Opened();
  EXPECT_EQ(tree.At("Empty").image, "");
  EXPECT_EQ(tree.At("Empty").expandedImage, "");
  EXPECT_THAT(tree.At("Empty").children, IsEmpty());
}

TEST_F(FrmFavTest, FoldersComeBeforeFilesAndTheTreeMixesThemWithoutRegardToCase) {
  PutFolder("zoo");
  PutFolder("Birds");
  Put("alpha.url", "http://a/");
  Put("Moon.url", "http://m/");
  Put("beta.url", "http://b/");
  const auto& tree = Opened();
  std::vector<std::string> added;
  for (const auto& node : tree.nodes) {
    added.push_back(node.text);
  }
  EXPECT_THAT(added, ElementsAre("YOUR FAVORITES", "Birds", "zoo", "Moon", "alpha", "beta"));
  EXPECT_THAT(tree.Shown("YOUR FAVORITES"), ElementsAre("alpha", "beta", "Birds", "Moon", "zoo"));
}

TEST_F(FrmFavTest, NamesDecideWhatIsAFavourite) {
  Put("Backup.url.bak", "http://backup/");
  Put("LOUD.URL", "http://loud/");
  Put("notes.txt", "http://notes/");
  const auto& tree = Opened();
  EXPECT_THAT(tree.Shown("YOUR FAVORITES"), ElementsAre("Backup", "LOUD"));
  EXPECT_EQ(tree.At("Backup").tag, "http://backup/");
  EXPECT_EQ(tree.At("LOUD").tag, "http://loud/");
}

TEST_F(FrmFavTest, AFileWithoutAnAddressTakesThatOfTheFileBefore) {
  world.files.files[kRoot + "/a.url"] = "url=http://lower/\r\n";
  Put("b.url", "http://b/");
  world.files.files[kRoot + "/c.url"] = "";
  world.files.files[kRoot + "/d.url"] = "URL=\r\n";
  const auto& tree = Opened();
  EXPECT_EQ(tree.At("a").tag, "");
  EXPECT_EQ(tree.At("a").image, "");
  EXPECT_EQ(tree.At("c").tag, "http://b/");
  EXPECT_EQ(tree.At("c").image, "Leaf");
  EXPECT_EQ(tree.At("d").tag, "");
}

TEST_F(FrmFavTest, EachFolderBeginsWithNoAddress) {
  PutFolder("inner");
  world.files.files[kRoot + "/inner/a.url"] = "";
  Put("inner/b.url", "http://b/");
  world.files.files[kRoot + "/z.url"] = "";
  const auto& tree = Opened();
  EXPECT_EQ(tree.At("a").tag, "");
  EXPECT_EQ(tree.At("z").tag, "");
}

TEST_F(FrmFavTest, AClickOnAFavouriteClosesThePaneAndNavigates) {
  PutFolder("Animals");
  Put("Animals/Otters.url", "http://www.otters.org/");
  EXPECT_EQ(Open([&] { Tree().Click("Otters"); }), "http://www.otters.org/");
  EXPECT_FALSE(Pane().Loaded());
}

TEST_F(FrmFavTest, AClickOnAFolderOrOnAnEmptyAddressClosesNothing) {
  PutFolder("Animals");
  world.files.files[kRoot + "/nothing.url"] = "";
  EXPECT_EQ(Open([&] {
              for (const char* text : {"Animals", "YOUR FAVORITES", "nothing"}) {
                Tree().Click(text);
                EXPECT_TRUE(Pane().Loaded()) << text;
              }
            }),
            "");
}

TEST_F(FrmFavTest, ClosingThePaneNavigatesNowhere) {
  Put("Otters.url", "http://www.otters.org/");
  bool called = false;
  world.loop.After(10, [&] { Pane().ButtonOf("cmdclose").Click(); });
  frmFav pane({world.forms, world.loop, world.files, world.system});
  pane.ShowModal();
  EXPECT_EQ(pane.SelectedFavorite(), "");
  world.loop.After(10, [&] { Pane().Close(UnloadMode::ControlMenu); });
  OpenFavorites({world.forms, world.loop, world.files, world.system},
                [&](const std::string&) { called = true; });
  EXPECT_FALSE(called);
}

TEST_F(FrmFavTest, WithoutAFavouritesFolderThePaneClosesAtOnce) {
  world.system.favorites.clear();
  OpenFavorites({world.forms, world.loop, world.files, world.system}, [](const std::string&) { FAIL(); });
  EXPECT_FALSE(Pane().Loaded());
  EXPECT_FALSE(world.journal.Has("frmFav.ShowModal"));
}

TEST_F(FrmFavTest, AMissingFolderIsAnEmptyPane) {
  world.files.folders.clear();
  const auto& tree = Opened();
  ASSERT_EQ(tree.nodes.size(), 1U);
  EXPECT_EQ(tree.nodes[0].text, "YOUR FAVORITES");
}

TEST_F(FrmFavTest, DressesItselfAndLetsEventsRunBeforeItReads) {
  Opened();
  const long skin = world.journal.Index("frmFav.SkinForm1.SkinFile = \"/program/winaqua.skn\"");
  const long events = world.journal.Index("DoEvents");
  const long list = world.journal.Index("ListFolder \"/data/Favorites\"");
  EXPECT_LT(-1, skin);
  EXPECT_LT(skin, events);
  EXPECT_LT(events, list);
}

TEST_F(FrmFavTest, AFolderThatCannotBeReadEndsItsOwnCallAlone) {
  PutFolder("a closed");
  PutFolder("b open");
  Put("a closed/hidden.url", "http://hidden/");
  Put("b open/seen.url", "http://seen/");
  Put("last.url", "http://last/");
  world.journal.failOn = "ListFolder \"/data/Favorites/a closed\"";
  const auto& tree = Opened();
  EXPECT_THAT(tree.At("a closed").children, IsEmpty());
  EXPECT_EQ(tree.At("seen").tag, "http://seen/");
  EXPECT_EQ(tree.At("last").image, "Leaf");
  EXPECT_EQ(tree.nodes[0].text, "YOUR FAVORITES");
}

TEST_F(FrmFavTest, AFileThatCannotBeReadEndsItsFolder) {
  PutFolder("inner");
  for (const char* name : {"inner/a.url", "inner/b.url", "inner/c.url", "z.url"}) {
    Put(name, "http://x/");
  }
  world.journal.failOn = "ReadFile \"/data/Favorites/inner/b.url\"";
  const auto& tree = Opened();
  EXPECT_THAT(tree.Shown("inner"), ElementsAre("a"));
  EXPECT_THAT(tree.Shown("YOUR FAVORITES"), ElementsAre("inner", "z"));
}

TEST_F(FrmFavTest, LinksToFoldersAreShownAndNotFollowed) {
  PutFolder("ring", true);
  Put("ring/inside.url", "http://inside/");
  const auto& tree = Opened();
  EXPECT_THAT(tree.Shown("YOUR FAVORITES"), ElementsAre("ring"));
  EXPECT_THAT(tree.At("ring").children, IsEmpty());
}

TEST_F(FrmFavTest, ANameWithTheSeparatorIsNotTakenForAnotherFolder) {
  PutFolder("a");
  PutFolder("a/b");
  PutFolder("a\\b");
  Put("a/b/once.url", "http://once/");
  EXPECT_EQ(Opened().nodes.size(), 5U);
  EXPECT_EQ(world.journal.Count("ListFolder \"/data/Favorites/a/b\""), 1);
}

TEST_F(FrmFavTest, FoldersAreEnteredDownToABound) {
  std::string folder = kRoot;
  for (int depth = 1; depth <= kDeepestFavoritesFolder + 20; ++depth) {
    folder += "/d";
    world.files.folders.emplace(folder, false);
  }
  // The root, and one node for every folder that a folder entered holds.
  EXPECT_EQ(Opened().nodes.size(), 1U + kDeepestFavoritesFolder);
}

TEST_F(FrmFavTest, OddFilesAreShownAndReadAsTheyAre) {
  world.files.files[kRoot + "/big.url"] = std::string(10'000'000, 'x') + "\nURL=http://big/\n";
  world.files.files[kRoot + "/binary.url"] = std::string("\0\x01\xFF\xFE\x80", 5);
  world.files.files[kRoot + "/latin.url"] = "URL=http://x/caf\xE9\r";
  world.files.files[kRoot + "/wide.url"] = std::string("\xFF\xFEU\0R\0L\0=\0w\0", 12);
  const auto& tree = Opened();
  EXPECT_EQ(tree.At("big").tag, "http://big/");
  EXPECT_EQ(tree.At("binary").tag, "http://big/");
  EXPECT_EQ(tree.At("latin").tag, "http://x/caf\u00E9");
  EXPECT_EQ(tree.At("wide").tag, "http://x/caf\u00E9");
}

TEST_F(FrmFavTest, TenThousandFavouritesAreLoaded) {
  for (int number = 0; number < 10000; ++number) {
    Put("page " + std::to_string(number) + ".url", "http://x/" + std::to_string(number));
  }
  const auto& tree = Opened();
  EXPECT_EQ(tree.nodes.size(), 10001U);
}

/// A disk on which each look at the clock finds 10 ms gone.
class SlowDiskTest : public FrmFavTest {
 protected:
  SlowDiskTest() {
    for (int number = 100; number < 400; ++number) {
      Put("page " + std::to_string(number) + ".url", "http://x/" + std::to_string(number));
    }
  }
  /// Opens the pane; whoever closes it must be planned before.
  std::string OpenSlowly() {
    std::string navigated;
    OpenFavorites({world.forms, world.loop, world.files, world.system,
                   [this] { return now += std::chrono::milliseconds(10); }},
                  [&](const std::string& url) { navigated = url; });
    return navigated;
  }
  std::chrono::steady_clock::time_point now;
};

TEST_F(SlowDiskTest, FavouritesThatTakeLongAreReadWhileThePaneTellsHowFarItIs) {
  std::string told;
  world.journal.watch = [&](const std::string& line) {
    if (line.starts_with("frmFav.lblProgress.Caption")) {
      told = line;
      EXPECT_TRUE(Pane().Visible());
      EXPECT_EQ(Tree().At(kRoot).expanded, false);
    }
  };
  world.loop.After(10000, [&] {
    EXPECT_EQ(Tree().nodes.size(), 301U);
    EXPECT_EQ(Tree().nodes[0].text, "YOUR FAVORITES");
    EXPECT_TRUE(Tree().nodes[0].expanded);
    EXPECT_FALSE(Pane().Get<Label>("lblProgress").Visible());
    Tree().Click("page 123");
  });
  EXPECT_EQ(OpenSlowly(), "http://x/123");
  EXPECT_NE(told.find("Reading your favorites: "), std::string::npos) << told;
}

TEST_F(SlowDiskTest, ThePaneMayBeClosedWhileItReads) {
  // The second of its looks at the events is in the middle of the reading.
  world.journal.watch = [&](const std::string& line) {
    if (line == "DoEvents" && Pane().Visible()) {
      Pane().ButtonOf("cmdclose").Click();
    }
  };
  EXPECT_EQ(OpenSlowly(), "");
  EXPECT_FALSE(Pane().Loaded());
  EXPECT_LT(Tree().nodes.size(), 200U);
}

TEST_F(FrmFavTest, AnEntryThatCannotBeLookedAtCostsNobodyElseAnImage) {
  PutFolder("Animals");
  Put("Animals/Otters.url", "http://www.otters.org/");
  Put("Moon.url", "http://moon/");
  for (const char* look : {"frmFav.tvw.Children 2", "frmFav.tvw.Tag 3"}) {
    world.journal.failOn = look;
    const auto& tree = Opened();
    EXPECT_EQ(tree.nodes[0].text, "YOUR FAVORITES") << look;
    EXPECT_TRUE(tree.nodes[0].expanded) << look;
    EXPECT_EQ(tree.At("Moon").image, "Leaf") << look;
    const bool folder = tree.At("Animals").image == "ClosedFolder";
    EXPECT_NE(folder, tree.At("Otters").image == "Leaf") << look;
  }
}

TEST_F(FrmFavTest, AWindowThatCannotBeLoadedIsAnError) {
  world.journal.failOn = "Load frmFav";
  EXPECT_THROW(OpenFavorites({world.forms, world.loop, world.files, world.system}, [](const auto&) {}),
               PlatformError);
}

TEST_F(FrmFavTest, ThePaneMayCloseWhileItLoads) {
  world.journal.watch = [&](const std::string& line) {
    if (line == "ListFolder \"/data/Favorites\"") {
      Pane().Close(UnloadMode::ControlMenu);
    }
  };
  Put("Otters.url", "http://www.otters.org/");
  OpenFavorites({world.forms, world.loop, world.files, world.system}, [](const std::string&) { FAIL(); });
  EXPECT_FALSE(Pane().Loaded());
}

TEST_F(FrmFavTest, AnyStepMayFailAndThePaneStillOpensAndCloses) {
  PutFolder("Animals");
  Put("Animals/Otters.url", "http://www.otters.org/");
  Put("Moon.url", "http://moon/");
  Open([] {});
  const long calls = world.journal.calls;
  ASSERT_GT(calls, 20);
  for (long call = 2; call <= calls; ++call) {  // the first is the loading of the window
    SCOPED_TRACE(call);
    world.journal.Clear();
    world.journal.calls = 0;
    world.journal.failAt = call;
    bool shown = false;
    std::string navigated;
    world.loop.After(10, [&] {
      shown = true;
      world.journal.failAt = 0;
      auto& tree = Tree();
      // Whatever is there is right.
      for (const auto& node : tree.nodes) {
        EXPECT_TRUE(node.tag.empty() || node.tag.starts_with("http://"));
        EXPECT_TRUE(node.image != "Leaf" || !node.tag.empty());
      }
      Pane().Close(UnloadMode::ControlMenu);
    });
    attempt([&] {
      OpenFavorites({world.forms, world.loop, world.files, world.system},
                    [&](const std::string& url) { navigated = url; });
    });
    world.journal.failAt = 0;
    world.loop.Advance(20);
    EXPECT_TRUE(shown);
    EXPECT_EQ(navigated, "");
  }
}

}  // namespace
}  // namespace kivandra
