// SPDX-License-Identifier: GPL-3.0-or-later
#include "favourites/frm_add_favorite.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "fakes/fake_world.h"
#include "favourites/favourite_file.h"
#include "favourites/frm_fav.h"
#include "favourites/silent_boxes.h"
#include "support/attempt.h"

namespace kivandra {
namespace {

using ::testing::ElementsAre;

constexpr int kAsk = kMsgYesNo | kMsgQuestion | kMsgDefaultButton2;

class AddFavoriteTest : public ::testing::Test {
 protected:
  AddFavoriteTest() { world.files.folders = {{"/data/Favorites", false}}; }

  fakes::FakeForm& Dialog() { return world.forms.Of("frmAddFavorite"); }
  fakes::FakeTextBox& Name() { return Dialog().TextBoxOf("txtName"); }
  fakes::FakeComboBox& Folder() { return Dialog().ComboOf("cboFolder"); }
  void Ok() { Dialog().ButtonOf("cmdOK").Click(); }
  /// Adds a favourite; `inside` is what the person does in the dialog, which is then closed if it stands.
  void Add(const std::string& url, const std::string& title, const std::function<void()>& inside) {
    world.loop.After(10, [&] {
      inside();
      if (Dialog().Loaded()) {
        Dialog().ButtonOf("cmdCancel").Click();
      }
    });
    AddFavorite({world.forms, world.boxes, world.files, world.system}, url, title);
  }
  /// Adds a favourite under this typed name and gives the names of all files there are.
  std::vector<std::string> FilesAfterNaming(const std::string& name) {
    Add("http://x/", "title", [&] {
      Name().text = name;
      Ok();
    });
    std::vector<std::string> names;
    for (const auto& [path, bytes] : world.files.files) {
      names.push_back(path);
    }
    return names;
  }

  /// The tree of the pane that shows the favourites.
  fakes::FakeTreeView& OpenedPane() {
    world.loop.After(10, [&] { world.forms.Of("frmFav").Close(UnloadMode::ControlMenu); });
    OpenFavorites({world.forms, world.loop, world.files, world.system}, [](const std::string&) {});
    return world.forms.Of("frmFav").TreeOf("tvw");
  }

  fakes::FakeWorld world;
};

TEST_F(AddFavoriteTest, ANewFileHoldsItsSectionAndItsAddressAndNothingMore) {
  Add("http://www.otters.org/?a=1&b=2", "Otters", [&] {
    EXPECT_EQ(Name().text, "Otters");
    EXPECT_EQ(Folder().text, "Favorites");
    Ok();
  });
  ASSERT_EQ(world.files.files.size(), 1U);
  EXPECT_EQ(world.files.files["/data/Favorites/Otters.url"],
            "[InternetShortcut]\r\nURL=http://www.otters.org/?a=1&b=2\r\n");
}

TEST_F(AddFavoriteTest, CancellingWritesNoFileAndMakesNoFolder) {
  world.files.folders.clear();
  Add("http://x/", "Otters", [&] { Dialog().ButtonOf("cmdCancel").Click(); });
  Add("http://x/", "Otters", [&] { Dialog().Close(UnloadMode::ControlMenu); });
  EXPECT_TRUE(world.files.files.empty());
  EXPECT_TRUE(world.files.folders.empty());
}

TEST_F(AddFavoriteTest, WithoutAFavouritesFolderNoDialogComes) {
  world.system.favorites.clear();
  AddFavorite({world.forms, world.boxes, world.files, world.system}, "http://x/", "Otters");
  EXPECT_TRUE(world.journal.lines.empty());
}

TEST_F(AddFavoriteTest, TheFirstFavouriteMakesItsFolder) {
  world.files.folders.clear();
  Add("http://x/", "Otters", [&] { Ok(); });
  EXPECT_EQ(world.files.folders.count("/data/Favorites"), 1U);
  EXPECT_EQ(world.files.files.count("/data/Favorites/Otters.url"), 1U);
}

TEST_F(AddFavoriteTest, TheListHoldsEveryFolderButLinks) {
  world.files.folders.insert({{"/data/Favorites/Animals", false},
                              {"/data/Favorites/Animals/Wet", false},
                              {"/data/Favorites/ring", true},
                              {"/data/Other", false}});
  Add("http://x/", "Otters", [&] {
    EXPECT_THAT(Folder().items, ElementsAre("Favorites", "Favorites\\Animals", "Favorites\\Animals\\Wet"));
    Folder().text = "Favorites\\Animals\\Wet";
    Ok();
  });
  EXPECT_EQ(world.files.files.count("/data/Favorites/Animals/Wet/Otters.url"), 1U);
}

TEST_F(AddFavoriteTest, ATypedFolderIsMade) {
  for (const auto& [typed, folder] : std::vector<std::pair<std::string, std::string>>{
           {"New", "/New"}, {"Favorites\\A\\B", "/A/B"}, {"C/D", "/C/D"}, {"", ""}, {"\\\\", ""}}) {
    world.files.files.clear();
    Add("http://x/", "Otters", [&] {
      Folder().text = typed;
      Ok();
    });
    EXPECT_EQ(world.files.files.count("/data/Favorites" + folder + "/Otters.url"), 1U) << typed;
    EXPECT_EQ(world.files.folders.count("/data/Favorites" + folder), 1U) << typed;
  }
}

TEST_F(AddFavoriteTest, NoTypedFolderLeadsOutOfTheFavourites) {
  for (const char* typed : {"../../outside", "/etc", "..", "Favorites\\..\\..\\x"}) {
    Add("http://x/", "Otters", [&] {
      Folder().text = typed;
      Ok();
    });
  }
  for (const auto& [path, bytes] : world.files.files) {
    EXPECT_TRUE(path.starts_with("/data/Favorites/")) << path;
    EXPECT_EQ(path.find(".."), std::string::npos) << path;
  }
  for (const auto& [path, link] : world.files.folders) {
    EXPECT_EQ(path.find(".."), std::string::npos) << path;
  }
}

TEST_F(AddFavoriteTest, TheListHoldsOnlyFoldersThatTheFavouritesShow) {
  world.files.folders.insert({{"/data/Favorites/a", false},
                              {"/data/Favorites/a/b", false},
                              {"/data/Favorites/a\\b", false},
                              {"/data/Favorites/a\\b/inner", false}});
  Add("http://x/", "Otters",
      [&] { EXPECT_THAT(Folder().items, ElementsAre("Favorites", "Favorites\\a", "Favorites\\a\\b")); });
}

TEST_F(AddFavoriteTest, TheListEndsWhereTheFavouritesEnd) {
  std::string folder = "/data/Favorites";
  for (int depth = 1; depth <= kDeepestFavoritesFolder + 20; ++depth) {
    folder += "/d";
    world.files.folders.emplace(folder, false);
  }
  Add("http://x/", "Otters", [&] {
    EXPECT_EQ(Folder().items.size(), static_cast<std::size_t>(kDeepestFavoritesFolder));
    Folder().text = Folder().items.back();
    Ok();
  });
  ASSERT_EQ(world.files.files.size(), 1U);
  EXPECT_NE(OpenedPane().Find("Otters"), 0);
}

TEST_F(AddFavoriteTest, ATypedFolderThatTheFavouritesWouldNotShowIsRefusedAndTold) {
  world.files.folders.insert(
      {{"/data/Favorites/News", false}, {"/data/Favorites/News/away", true}, {"/data/Favorites/ring", true}});
  std::string deep = "d";
  for (int depth = 2; depth <= kDeepestFavoritesFolder; ++depth) {
    deep += "\\d";
  }
  const auto before = world.files.folders;
  for (const std::string& typed :
       {std::string("ring"), std::string("Favorites\\ring\\New"), std::string("News/away"), deep}) {
    world.boxes.Expect(
        "Your favorites would not show what lies in this folder, since it is a link or lies too deep. Choose "
        "another folder.",
        kMsgExclamation, "Add Favorite");
    Add("http://x/", "Otters", [&] {
      Folder().text = typed;
      world.journal.Clear();
      Ok();
      EXPECT_TRUE(Dialog().Loaded()) << typed;
      EXPECT_EQ(Folder().text, typed);
      EXPECT_TRUE(world.journal.Has("frmAddFavorite.cboFolder.SetFocus"));
    });
  }
  EXPECT_TRUE(world.files.files.empty());
  EXPECT_EQ(world.files.folders, before);
  Add("http://x/", "Otters", [&] {
    Folder().text = deep.substr(2);
    Ok();
  });
  EXPECT_NE(OpenedPane().Find("Otters"), 0);
}

TEST_F(AddFavoriteTest, AFolderThatCannotBeMadeIsToldAndTheDialogStays) {
  world.journal.failOn = "MakeFolder \"/data/Favorites/New\"";
  world.boxes.Expect("The folder could not be made.", kMsgExclamation, "Add Favorite");
  Add("http://x/", "Otters", [&] {
    Folder().text = "New";
    Ok();
    EXPECT_TRUE(Dialog().Loaded());
  });
  EXPECT_TRUE(world.files.files.empty());
}

TEST_F(AddFavoriteTest, NamesAreMadeSafe) {
  EXPECT_THAT(FilesAfterNaming("../../.bashrc"), ElementsAre("/data/Favorites/_.._.bashrc.url"));
  world.files.files.clear();
  EXPECT_THAT(FilesAfterNaming(""), ElementsAre("/data/Favorites/Favorite.url"));
  world.files.files.clear();
  EXPECT_THAT(FilesAfterNaming("con"), ElementsAre("/data/Favorites/_con.url"));
  world.files.files.clear();
  EXPECT_THAT(FilesAfterNaming(std::string(10000, 'x')),
              ElementsAre("/data/Favorites/" + std::string(200, 'x') + ".url"));
}

TEST_F(AddFavoriteTest, ATitleFillsABufferAndIsCutAtItsFirstZero) {
  Add("http://x/", std::string(10000, 't'), [&] { EXPECT_EQ(Name().text, std::string(259, 't')); });
  Add("http://x/", std::string(259, 't'), [&] { EXPECT_EQ(Name().text, std::string(259, 't')); });
  Add("http://x/", std::string("Otters\0gone", 11), [&] { EXPECT_EQ(Name().text, "Otters"); });
  Add("http://x/", "", [&] { EXPECT_EQ(Name().text, ""); });
  Add("http://x/", std::string(258, 't') + "\u20AC", [&] { EXPECT_EQ(Name().text, std::string(258, 't')); });
}

TEST_F(AddFavoriteTest, AnExistingFileIsAskedAboutAndKept) {
  world.files.files["/data/Favorites/Otters.url"] = "old";
  world.boxes.Expect("There is already a favorite \"Otters\" in this folder. Replace it?", kAsk,
                     "Add Favorite", MsgBoxResult::No);
  Add("http://new/", "Otters", [&] {
    Ok();
    EXPECT_TRUE(Dialog().Loaded());
  });
  EXPECT_EQ(world.files.files["/data/Favorites/Otters.url"], "old");
}

TEST_F(AddFavoriteTest, AnExistingFileIsReplacedIfThePersonSaysSo) {
  world.files.files["/data/Favorites/Otters.url"] = "[InternetShortcut]\r\nURL=http://old/\r\nIcon=1\r\n";
  world.boxes.Expect("There is already a favorite \"Otters\" in this folder. Replace it?", kAsk,
                     "Add Favorite", MsgBoxResult::Yes);
  Add("http://new/", "Otters", [&] { Ok(); });
  EXPECT_EQ(FavoriteURL(world.files.files["/data/Favorites/Otters.url"]), "http://new/");
}

TEST_F(AddFavoriteTest, ADialogClosedUnderTheQuestionWritesNothing) {
  world.files.files["/data/Favorites/Otters.url"] = "old";
  world.boxes.Expect("There is already a favorite \"Otters\" in this folder. Replace it?", kAsk,
                     "Add Favorite", MsgBoxResult::Yes, [&] { Dialog().Close(UnloadMode::ControlMenu); });
  Add("http://new/", "Otters", [&] { Ok(); });
  EXPECT_EQ(world.files.files["/data/Favorites/Otters.url"], "old");
}

TEST_F(AddFavoriteTest, AnAddressStaysOneLine) {
  Add("http://x/\r\nURL=http://y/", "Otters", [&] { Ok(); });
  EXPECT_EQ(world.files.files["/data/Favorites/Otters.url"], "[InternetShortcut]\r\nURL=http://x/\r\n");
}

TEST_F(AddFavoriteTest, WhatItWritesThePaneReads) {
  for (const std::string url : {"http://x/caf\u00E9", "http://[::1]/", "http://x/;a=\"b\"", "about:blank"}) {
    world.files.files.clear();
    Add(url, "Otters", [&] { Ok(); });
    EXPECT_EQ(FavoriteURL(world.files.files["/data/Favorites/Otters.url"]), url);
  }
}

TEST_F(AddFavoriteTest, AnyStepMayFailAndNoFileIsHalfWritten) {
  Add("http://x/", "Otters", [&] { Ok(); });
  const long calls = world.journal.calls;
  ASSERT_GT(calls, 10);
  for (long call = 1; call <= calls; ++call) {
    SCOPED_TRACE(call);
    world.files.files.clear();
    world.journal.calls = 0;
    fakes::SilentBoxes silent;
    world.journal.failAt = call;
    world.loop.After(10, [&] {
      if (Dialog().Loaded()) {
        Ok();
      }
      world.journal.failAt = 0;
      Dialog().Close(UnloadMode::ControlMenu);
    });
    AddFavorite({world.forms, silent, world.files, world.system}, "http://x/", "Otters");
    world.journal.failAt = 0;
    world.loop.Advance(20);
    for (const auto& [path, bytes] : world.files.files) {
      EXPECT_EQ(bytes, "[InternetShortcut]\r\nURL=http://x/\r\n") << path;
    }
    EXPECT_LE(world.files.files.size(), 1U);
    EXPECT_FALSE(world.forms.IsLoaded("frmAddFavorite"));
  }
}

}  // namespace
}  // namespace kivandra
