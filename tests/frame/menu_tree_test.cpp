// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "frame/menu_world.h"
#include "frame/menus.h"

namespace kivandra {
namespace {

struct Row {
  int depth;
  std::string name;
  std::string caption;
  std::string shortcut;

  bool operator==(const Row& other) const {
    return depth == other.depth && name == other.name && caption == other.caption &&
           shortcut == other.shortcut;
  }
};

std::ostream& operator<<(std::ostream& out, const Row& row) {
  return out << row.depth << " " << row.name << " \"" << row.caption << "\" " << row.shortcut;
}

void Flatten(const std::vector<MenuData>& entries, int depth, std::vector<Row>& rows) {
  for (const MenuData& entry : entries) {
    rows.push_back({depth, entry.name, entry.caption, entry.shortcut});
    Flatten(entry.entries, depth + 1, rows);
  }
}

const std::vector<Row>& Expected() {
  static const std::vector<Row> rows = {
      {0, "mnuFile", "&File", ""},
      {1, "mnuFileNew", "&New Browser Window...", ""},
      {1, "mnuFileOpen", "&Open...", "Ctrl+O"},
      {1, "mnuFileSave", "Save &As...", "Ctrl+S"},
      {1, "mnuFileSep1", "-", ""},
      {1, "mnuFilePrint", "&Print...", "Ctrl+P"},
      {1, "mnuPrintPreview", "P&rint Preview", ""},
      {1, "mnuFilePagesetup", "Page Set&up...", ""},
      {1, "mnuFileSep2", "-", ""},
      {1, "mnuFileProperties", "Page P&roperties", ""},
      {1, "mnuFileSep3", "-", ""},
      {1, "mnuskins", "&Skins", ""},
      {1, "mnuFileExit", "E&xit", "Ctrl+Q"},
      {0, "mnuEdit", "&Edit", ""},
      {1, "mnuEditCut", "Cu&t", "Ctrl+X"},
      {1, "mnuEditCopy", "&Copy", "Ctrl+C"},
      {1, "mnuEditPaste", "&Paste", "Ctrl+V"},
      {1, "mnuEditSep1", "-", ""},
      {1, "mnuEditSelectall", "Select &All", "Ctrl+A"},
      {1, "mnuEditSep2", "-", ""},
      {1, "mnuEditFind", "Find on this page...", "Ctrl+F"},
      {0, "mnuView", "&View", ""},
      {1, "mnuSidebar", "&Side Toolbar", ""},
      {1, "mnuContentAdvisor", "&Content Advisor", ""},
      {1, "mnuText", "Text Size", ""},
      {2, "mnuLargest", "Largest", ""},
      {2, "mnuLarger", "Larger", ""},
      {2, "mnuMedium", "Medium", ""},
      {2, "mnuSmaller", "Smaller", ""},
      {2, "mnuSmallest", "Smallest", ""},
      {1, "mnuImages", "&Enable / Disable Browser Images", ""},
      {0, "mnuGo", "&Go", ""},
      {1, "mnuGoBack", "Go &Back", ""},
      {1, "mnuGoForward", "Go &Forward", ""},
      {0, "mnuFavoritesTop", "F&avorites", ""},
      {1, "wow_Click", "Open Favourites", ""},
      {1, "mnuAddFavourites", "&Add to Favorites", ""},
      {1, "mnuAddFav", "Organize Favorites", ""},
      {0, "mnuTools", "&Tools", ""},
      {1, "mnuNotepad", "&Notepad", ""},
      {1, "mnuWordpad", "&Wordpad", ""},
      {1, "bla", "-", ""},
      {1, "Translate", "Translation Services", ""},
      {2, "mnuWorldLingo", "&World Lingo", ""},
      {2, "mnuSystran", "Systran", ""},
      {1, "Dash", "-", ""},
      {1, "mnuCalc", "&Calculator", ""},
      {1, "mnuSound", "&System Sound Volume", ""},
      {1, "mnuSlash", "-", ""},
      {1, "mnuAdmin", "&Parental Options Menu", ""},
      {0, "mnuSafe", "&Safe Sites", ""},
      {1, "mnuListSite", "Have your site listed here....", ""},
      {1, "mnuDisney", "Disney", ""},
      {1, "mnuYahooligans", "Yahooligans", ""},
      {1, "mnuBerits", "Berits Best", ""},
      {1, "mnuSesamestreet", "Sesame Street", ""},
      {1, "mnubarney", "Barney!", ""},
      {1, "mnuChildrenTelevisionWorkshop", "Childrens Television Workshop", ""},
      {1, "Mnu4Kids", "4Kids", ""},
      {1, "mnuFamilyInternet", "Family Internet", ""},
      {0, "mnuHelp", "&Help", ""},
      {1, "mnuTip", "&Tip of the Day", ""},
      {1, "mnuHelpSep1", "-", ""},
      {1, "mnuRegister", "&How to use the Kivandra...", ""},
      {1, "mnuUpdate", "&Update Kivandra", ""},
      {1, "mnuSupport", "&On-Line Customer Support", ""},
  };
  return rows;
}

TEST(MenuTreeTest, HoldsEveryEntryInItsPlaceWithItsCaptionAndShortcut) {
  std::vector<Row> rows;
  Flatten(MenuTree(), 0, rows);
  ASSERT_EQ(rows.size(), Expected().size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_EQ(rows[i], Expected()[i]);
  }
}

TEST(MenuTreeTest, NamesAndShortcutsAreThereOnce) {
  std::vector<Row> rows;
  Flatten(MenuTree(), 0, rows);
  std::set<std::string> names;
  std::set<std::string> shortcuts;
  for (const Row& row : rows) {
    EXPECT_TRUE(names.insert(row.name).second) << row.name;
    EXPECT_TRUE(row.shortcut.empty() || shortcuts.insert(row.shortcut).second) << row.shortcut;
  }
}

TEST(MenuTreeTest, IsLaidIntoTheFrame) {
  MenuWorld world;
  world.Start();
  std::vector<Row> laid;
  Flatten(world.Frame().MenusOf("Menu").menus, 0, laid);
  EXPECT_EQ(laid, Expected());
}

TEST(MenuTreeTest, EveryEntryThatOpensNothingAndIsNoSeparatorDoesSomething) {
  MenuWorld world;
  world.Start();
  for (std::size_t i = 0; i < Expected().size(); ++i) {
    const Row& row = Expected()[i];
    const bool opens = i + 1 < Expected().size() && Expected()[i + 1].depth > row.depth;
    if (opens || row.caption == "-" || row.name == "mnuFileExit") {
      continue;  // the exit is looked at where the others can't follow
    }
    if (row.name == "mnuPrintPreview") {
      world.boxes.Expect("The Print Preview Command is Currently Disabled or Not Available.");
    }
    world.Browser().back = world.Browser().forward = "http://first.example/";
    world.forms.Activate(&world.Child());
    world.journal.Clear();
    world.Choose(row.name);
    EXPECT_TRUE(row.name == "mnuSidebar" || !world.journal.lines.empty()) << row.name;
  }
}

TEST(MenuTreeTest, SeparatorsHeadsAndUnknownNamesDoNothing) {
  MenuWorld world;
  world.Start();
  for (const char* name : {"mnuFileSep1", "bla", "Dash", "mnuSlash", "mnuFile", "mnuText", "Translate",
                           "mnufilenew", "MNUDISNEY", "", "no such entry"}) {
    world.Choose(name);
    EXPECT_TRUE(world.journal.lines.empty()) << name;
  }
}

}  // namespace
}  // namespace kivandra
