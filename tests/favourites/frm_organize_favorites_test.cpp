// SPDX-License-Identifier: GPL-3.0-or-later
#include "favourites/frm_organize_favorites.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <string>

#include "fakes/fake_world.h"
#include "favourites/favourite_file.h"
#include "favourites/silent_boxes.h"
#include "support/attempt.h"

namespace kivandra {
namespace {

using ::testing::ElementsAre;

constexpr int kAsk = kMsgYesNo | kMsgQuestion | kMsgDefaultButton2;
constexpr const char* kTitle = "Organize Favorites";

class OrganizeFavoritesTest : public ::testing::Test {
 protected:
  OrganizeFavoritesTest() { Fill(); }

  void Fill() {
    world.files.folders = {{kRoot, false},
                           {kRoot + "/Animals", false},
                           {kRoot + "/Animals/Wet", false},
                           {kRoot + "/ring", true}};
    world.files.files = {{kRoot + "/Animals/Otters.url", "otters"},
                         {kRoot + "/Moon.url", "moon"},
                         {kRoot + "/notes.txt", "notes"}};
  }
  fakes::FakeForm& Dialog() { return world.forms.Of("frmOrganizeFavorites"); }
  fakes::FakeTreeView& Tree() { return Dialog().TreeOf("tvw"); }
  fakes::FakeTextBox& Name() { return Dialog().TextBoxOf("txtName"); }
  void Press(const std::string& button) { Dialog().ButtonOf(button).Click(); }
  /// Text of the node that is chosen.
  std::string Chosen() { return Tree().nodes.at(static_cast<std::size_t>(Tree().selected) - 1).text; }
  /// Opens the dialog, does `inside` and closes it.
  void Organize(const std::function<void()>& inside) {
    world.loop.After(10, [&] {
      inside();
      if (Dialog().Loaded()) {
        Press("cmdclose");
      }
    });
    OrganizeFavorites({world.forms, world.boxes, world.files, world.system});
  }
  [[nodiscard]] bool IsFile(const std::string& name) const {
    return world.files.files.count(kRoot + "/" + name) != 0;
  }
  [[nodiscard]] bool IsFolder(const std::string& name) const {
    return world.files.folders.count(kRoot + "/" + name) != 0;
  }

  const std::string kRoot = "/data/Favorites";
  fakes::FakeWorld world;
};

TEST_F(OrganizeFavoritesTest, ShowsFoldersAndFavouritesAndNothingBehindLinks) {
  world.files.files[kRoot + "/ring/inside.url"] = "";
  Organize([&] {
    EXPECT_THAT(Tree().Shown("YOUR FAVORITES"), ElementsAre("Animals", "Moon", "ring"));
    EXPECT_THAT(Tree().Shown("Animals"), ElementsAre("Otters", "Wet"));
    EXPECT_EQ(Tree().At("Moon").image, "Leaf");
    EXPECT_EQ(Tree().At("Wet").image, "ClosedFolder");
    EXPECT_EQ(Tree().Find("inside"), 0);
    EXPECT_EQ(Chosen(), "YOUR FAVORITES");
    EXPECT_THAT(Dialog().ComboOf("cboFolder").items,
                ElementsAre("Favorites", "Favorites\\Animals", "Favorites\\Animals\\Wet"));
  });
}

TEST_F(OrganizeFavoritesTest, RenamesAFavourite) {
  Organize([&] {
    Tree().Click("Otters");
    EXPECT_EQ(Name().text, "Otters");
    Name().text = "Sea/otters";
    Press("cmdRename");
    EXPECT_EQ(Chosen(), "Sea_otters");
    EXPECT_EQ(Tree().Find("Otters"), 0);
  });
  EXPECT_EQ(world.files.files[kRoot + "/Animals/Sea_otters.url"], "otters");
  EXPECT_FALSE(IsFile("Animals/Otters.url"));
}

TEST_F(OrganizeFavoritesTest, TheNameFollowsTheCursorAlsoByTheKeyboard) {
  Organize([&] {
    Tree().Click("Moon");
    Tree().WalkTo("Otters");
    EXPECT_EQ(Name().text, "Otters");
    Name().text = "Sea otters";
    EXPECT_TRUE(Name().Press(kKeyReturn));
    EXPECT_FALSE(Name().Press(kKeyDelete));
  });
  EXPECT_EQ(world.files.files[kRoot + "/Animals/Sea otters.url"], "otters");
  EXPECT_EQ(world.files.files[kRoot + "/Moon.url"], "moon");
}

TEST_F(OrganizeFavoritesTest, WhatCannotBeDoneWithTheFavouritesFolderIsNotOffered) {
  Organize([&] {
    for (const char* entry : {"YOUR FAVORITES", "Moon", "Animals", "YOUR FAVORITES"}) {
      Tree().WalkTo(entry);
      const bool offered = entry != std::string("YOUR FAVORITES");
      EXPECT_EQ(Name().enabled, offered);
      for (const char* button : {"cmdRename", "cmdMove", "cmdDelete"}) {
        EXPECT_EQ(Dialog().ButtonOf(button).enabled, offered) << button << " for " << entry;
      }
      EXPECT_TRUE(Dialog().ButtonOf("cmdNewFolder").enabled);
    }
  });
}

TEST_F(OrganizeFavoritesTest, RenamesAFolderWithWhatItHolds) {
  Organize([&] {
    Tree().Click("Animals");
    Name().text = "Beasts";
    Press("cmdRename");
    EXPECT_EQ(Chosen(), "Beasts");
  });
  EXPECT_TRUE(IsFile("Beasts/Otters.url"));
  EXPECT_TRUE(IsFolder("Beasts/Wet"));
  EXPECT_FALSE(IsFolder("Animals"));
}

TEST_F(OrganizeFavoritesTest, ATakenNameIsToldAndNothingIsLost) {
  world.files.files[kRoot + "/Sun.url"] = "sun";
  world.boxes.Expect("This could not be done. Perhaps there is already an entry \"Sun.url\" in that folder.",
                     kMsgExclamation, kTitle);
  Organize([&] {
    Tree().Click("Moon");
    Name().text = "Sun";
    world.journal.Clear();
    Press("cmdRename");
    EXPECT_EQ(Chosen(), "Moon");
    EXPECT_EQ(Name().text, "Sun");  // to be typed on
    EXPECT_TRUE(world.journal.Has("frmOrganizeFavorites.txtName.SetFocus"));
    EXPECT_FALSE(world.journal.Has("frmOrganizeFavorites.tvw.Clear"));
  });
  EXPECT_EQ(world.files.files[kRoot + "/Sun.url"], "sun");
  EXPECT_EQ(world.files.files[kRoot + "/Moon.url"], "moon");
}

TEST_F(OrganizeFavoritesTest, AnEmptyNameIsAskedForAndTheSameNameChangesNothing) {
  world.boxes.Expect("Type the new name first.", kMsgExclamation, kTitle);
  Organize([&] {
    Tree().Click("Moon");
    Name().text = "";
    Press("cmdRename");
    Name().text = "Moon";
    Press("cmdRename");
  });
  EXPECT_TRUE(IsFile("Moon.url"));
  EXPECT_TRUE(world.journal.With("Name \"/data").empty());
}

TEST_F(OrganizeFavoritesTest, MovesAFavouriteToTheFolderOfTheList) {
  Organize([&] {
    Tree().Click("Moon");
    Dialog().ComboOf("cboFolder").text = "Favorites\\Animals\\Wet";
    Press("cmdMove");
    EXPECT_EQ(Chosen(), "Moon");
    EXPECT_THAT(Tree().Shown("Wet"), ElementsAre("Moon"));
  });
  EXPECT_EQ(world.files.files[kRoot + "/Animals/Wet/Moon.url"], "moon");
  EXPECT_FALSE(IsFile("Moon.url"));
}

TEST_F(OrganizeFavoritesTest, EnterInTheFolderFieldMovesWhatCanBeMoved) {
  Organize([&] {
    auto& folder = Dialog().ComboOf("cboFolder");
    folder.text = "Favorites\\Animals";
    EXPECT_TRUE(folder.Press(kKeyReturn));  // the favourites folder is chosen
    EXPECT_TRUE(world.journal.With("Name \"/data").empty());
    Tree().WalkTo("Moon");
    folder.text = "Favorites\\Animals";
    EXPECT_FALSE(folder.Press(kKeyDelete));
    EXPECT_TRUE(IsFile("Moon.url"));
    EXPECT_TRUE(folder.Press(kKeyReturn));
    EXPECT_EQ(Chosen(), "Moon");
  });
  EXPECT_TRUE(IsFile("Animals/Moon.url"));
  EXPECT_FALSE(IsFile("Moon.url"));
}

TEST_F(OrganizeFavoritesTest, ARefusedMoveKeepsTheFolderThatWasNamed) {
  world.files.files[kRoot + "/Animals/Moon.url"] = "other";
  world.boxes.Expect("This could not be done. Perhaps there is already an entry \"Moon.url\" in that folder.",
                     kMsgExclamation, kTitle);
  Organize([&] {
    Tree().selected = 0;
    for (std::size_t at = 0; at < Tree().nodes.size(); ++at) {
      if (Tree().nodes[at].text == "Moon" && Tree().nodes[at].parent == 1) {
        Tree().selected = static_cast<int>(at) + 1;
      }
    }
    Dialog().ComboOf("cboFolder").text = "Favorites\\Animals";
    Press("cmdMove");
    EXPECT_EQ(Dialog().ComboOf("cboFolder").text, "Favorites\\Animals");
    EXPECT_TRUE(world.journal.Has("frmOrganizeFavorites.cboFolder.SetFocus"));
  });
  EXPECT_EQ(world.files.files[kRoot + "/Moon.url"], "moon");
  EXPECT_EQ(world.files.files[kRoot + "/Animals/Moon.url"], "other");
}

TEST_F(OrganizeFavoritesTest, MovesAFolderUpAndNeverIntoItself) {
  world.boxes.Expect("This could not be done. Perhaps there is already an entry \"Animals\" in that folder.",
                     kMsgExclamation, kTitle);
  Organize([&] {
    Tree().Click("Animals");
    Dialog().ComboOf("cboFolder").text = "Favorites\\Animals\\Wet";
    Press("cmdMove");
    EXPECT_TRUE(IsFile("Animals/Otters.url"));
    Tree().Click("Wet");
    Dialog().ComboOf("cboFolder").text = "Favorites";
    Press("cmdMove");
  });
  EXPECT_TRUE(IsFolder("Wet"));
  EXPECT_FALSE(IsFolder("Animals/Wet"));
}

TEST_F(OrganizeFavoritesTest, AFolderThatIsNotInTheListIsAskedFor) {
  world.boxes.Expect("Choose one of the folders in the list.", kMsgExclamation, kTitle);
  Organize([&] {
    Tree().Click("Moon");
    Dialog().ComboOf("cboFolder").text = "../outside";
    Press("cmdMove");
  });
  EXPECT_TRUE(IsFile("Moon.url"));
}

TEST_F(OrganizeFavoritesTest, DeletesAfterAQuestionOnly) {
  world.boxes.Expect("Delete the favorite \"Moon\"?", kAsk, kTitle, MsgBoxResult::No);
  world.boxes.Expect("Delete the favorite \"Moon\"?", kAsk, kTitle, MsgBoxResult::Yes);
  world.boxes.Expect("Delete the folder \"Animals\" and everything in it?", kAsk, kTitle, MsgBoxResult::Yes);
  Organize([&] {
    Tree().Click("Moon");
    Press("cmdDelete");
    EXPECT_TRUE(IsFile("Moon.url"));
    EXPECT_FALSE(world.journal.Has("frmOrganizeFavorites.tvw.SetFocus"));
    Press("cmdDelete");
    EXPECT_FALSE(IsFile("Moon.url"));
    EXPECT_TRUE(world.journal.Has("frmOrganizeFavorites.tvw.SetFocus"));
    Tree().Click("Animals");
    Press("cmdDelete");
    EXPECT_THAT(Tree().Shown("YOUR FAVORITES"), ElementsAre("ring"));
  });
  EXPECT_FALSE(IsFolder("Animals/Wet"));
  EXPECT_FALSE(IsFile("Animals/Otters.url"));
  EXPECT_TRUE(IsFile("notes.txt"));
}

TEST_F(OrganizeFavoritesTest, WhatCannotBeDeletedIsTold) {
  world.journal.failOn = "Kill \"/data/Favorites/Moon.url\"";
  world.boxes.Expect("Delete the favorite \"Moon\"?", kAsk, kTitle, MsgBoxResult::Yes);
  world.boxes.Expect("\"Moon.url\" could not be deleted.", kMsgExclamation, kTitle);
  Organize([&] {
    Tree().Click("Moon");
    Press("cmdDelete");
    EXPECT_EQ(Chosen(), "Moon");
  });
}

TEST_F(OrganizeFavoritesTest, ADialogClosedUnderTheQuestionDeletesNothing) {
  world.boxes.Expect("Delete the favorite \"Moon\"?", kAsk, kTitle, MsgBoxResult::Yes,
                     [&] { Dialog().Close(UnloadMode::ControlMenu); });
  Organize([&] {
    Tree().Click("Moon");
    Press("cmdDelete");
  });
  EXPECT_TRUE(IsFile("Moon.url"));
}

TEST_F(OrganizeFavoritesTest, ANewFolderGetsAFreeNameAndIsChosen) {
  Organize([&] {
    Press("cmdNewFolder");
    EXPECT_EQ(Chosen(), "New Folder");
    EXPECT_EQ(Name().text, "New Folder");
    Tree().Click("YOUR FAVORITES");
    Press("cmdNewFolder");
    EXPECT_EQ(Chosen(), "New Folder (2)");
    Tree().Click("Otters");  // beside a favourite
    Press("cmdNewFolder");
    Tree().Click("Wet");  // in a folder
    Press("cmdNewFolder");
  });
  EXPECT_TRUE(IsFolder("New Folder"));
  EXPECT_TRUE(IsFolder("New Folder (2)"));
  EXPECT_TRUE(IsFolder("Animals/New Folder"));
  EXPECT_TRUE(IsFolder("Animals/Wet/New Folder"));
}

TEST_F(OrganizeFavoritesTest, NoNewFolderIsMadeWhereALinkLeads) {
  Organize([&] {
    Tree().Click("ring");
    Press("cmdNewFolder");
    EXPECT_EQ(Chosen(), "New Folder");
  });
  EXPECT_TRUE(IsFolder("New Folder"));
  EXPECT_FALSE(IsFolder("ring/New Folder"));
}

TEST_F(OrganizeFavoritesTest, AFolderThatCannotBeMadeIsTold) {
  world.journal.failOn = "MakeFolder \"/data/Favorites/New Folder\"";
  world.boxes.Expect("The folder could not be made.", kMsgExclamation, kTitle);
  Organize([&] { Press("cmdNewFolder"); });
  EXPECT_FALSE(IsFolder("New Folder"));
}

TEST_F(OrganizeFavoritesTest, TheFavouritesFolderItselfStays) {
  Organize([&] {
    Tree().Click("YOUR FAVORITES");
    EXPECT_EQ(Name().text, "");
    Name().text = "Mine";
    for (const char* button : {"cmdRename", "cmdMove", "cmdDelete"}) {
      Press(button);
    }
  });
  EXPECT_EQ(world.files.folders.count(kRoot), 1U);
  EXPECT_TRUE(IsFile("Moon.url"));
}

TEST_F(OrganizeFavoritesTest, AMissingFolderShowsItsNameAndCanBeFilled) {
  world.files.folders.clear();
  world.files.files.clear();
  Organize([&] {
    ASSERT_EQ(Tree().nodes.size(), 1U);
    Press("cmdNewFolder");
  });
  EXPECT_TRUE(IsFolder("New Folder"));
}

TEST_F(OrganizeFavoritesTest, WithoutAFavouritesFolderNoDialogComes) {
  world.system.favorites.clear();
  OrganizeFavorites({world.forms, world.boxes, world.files, world.system});
  EXPECT_TRUE(world.journal.lines.empty());
}

TEST_F(OrganizeFavoritesTest, AnyStepMayFailAndNothingElseIsLost) {
  const auto moveMoon = [&] {
    Tree().Click("Moon");
    Dialog().ComboOf("cboFolder").text = "Favorites\\Animals";
    Press("cmdMove");
    Press("cmdNewFolder");
  };
  fakes::SilentBoxes silent;
  const auto run = [&] {
    world.loop.After(10, [&] {
      if (Dialog().Loaded() && Tree().Find("Moon") != 0) {
        moveMoon();
      }
      world.journal.failAt = 0;
      Dialog().Close(UnloadMode::ControlMenu);
    });
    attempt([&] { OrganizeFavorites({world.forms, silent, world.files, world.system}); });
    world.journal.failAt = 0;
    world.loop.Advance(20);
  };
  run();
  const long calls = world.journal.calls;
  ASSERT_GT(calls, 40);
  for (long call = 2; call <= calls; ++call) {
    SCOPED_TRACE(call);
    Fill();
    world.journal.calls = 0;
    world.journal.failAt = call;
    run();
    std::multiset<std::string> contents;
    for (const auto& [path, bytes] : world.files.files) {
      contents.insert(bytes);
    }
    EXPECT_EQ(contents, (std::multiset<std::string>{"moon", "notes", "otters"}));
    EXPECT_FALSE(world.forms.IsLoaded("frmOrganizeFavorites"));
  }
}

}  // namespace
}  // namespace kivandra
