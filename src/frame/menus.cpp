// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/menus.h"

#include <utility>

namespace kivandra {
namespace {

MenuData Entry(const char* name, const char* caption, const char* shortcut = "") {
  return {.name = name, .caption = caption, .shortcut = shortcut, .entries = {}};
}

MenuData Separator(const char* name) { return Entry(name, "-"); }

MenuData Opens(const char* name, const char* caption, std::vector<MenuData> entries) {
  return {.name = name, .caption = caption, .shortcut = {}, .entries = std::move(entries)};
}

MenuData File() {
  return Opens("mnuFile", "&File",
               {Entry("mnuFileNew", "&New Browser Window..."), Entry("mnuFileOpen", "&Open...", "Ctrl+O"),
                Entry("mnuFileSave", "Save &As...", "Ctrl+S"), Separator("mnuFileSep1"),
                Entry("mnuFilePrint", "&Print...", "Ctrl+P"), Entry("mnuPrintPreview", "P&rint Preview"),
                Entry("mnuFilePagesetup", "Page Set&up..."), Separator("mnuFileSep2"),
                Entry("mnuFileProperties", "Page P&roperties"), Separator("mnuFileSep3"),
                Entry("mnuskins", "&Skins"), Entry("mnuFileExit", "E&xit", "Ctrl+Q")});
}

MenuData Edit() {
  return Opens("mnuEdit", "&Edit",
               {Entry("mnuEditCut", "Cu&t", "Ctrl+X"), Entry("mnuEditCopy", "&Copy", "Ctrl+C"),
                Entry("mnuEditPaste", "&Paste", "Ctrl+V"), Separator("mnuEditSep1"),
                Entry("mnuEditSelectall", "Select &All", "Ctrl+A"), Separator("mnuEditSep2"),
                Entry("mnuEditFind", "Find on this page...", "Ctrl+F")});
}

MenuData View() {
  return Opens(
      "mnuView", "&View",
      {Entry("mnuSidebar", "&Side Toolbar"), Entry("mnuContentAdvisor", "&Content Advisor"),
       Opens("mnuText", "Text Size",
             {Entry("mnuLargest", "Largest"), Entry("mnuLarger", "Larger"), Entry("mnuMedium", "Medium"),
              Entry("mnuSmaller", "Smaller"), Entry("mnuSmallest", "Smallest")}),
       Entry("mnuImages", "&Enable / Disable Browser Images")});
}

MenuData Go() {
  return Opens("mnuGo", "&Go", {Entry("mnuGoBack", "Go &Back"), Entry("mnuGoForward", "Go &Forward")});
}

MenuData Favorites() {
  return Opens("mnuFavoritesTop", "F&avorites",
               {Entry("wow_Click", "Open Favourites"), Entry("mnuAddFavourites", "&Add to Favorites"),
                Entry("mnuAddFav", "Organize Favorites")});
}

MenuData Tools() {
  return Opens("mnuTools", "&Tools",
               {Entry("mnuNotepad", "&Notepad"), Entry("mnuWordpad", "&Wordpad"), Separator("bla"),
                Opens("Translate", "Translation Services",
                      {Entry("mnuWorldLingo", "&World Lingo"), Entry("mnuSystran", "Systran")}),
                Separator("Dash"), Entry("mnuCalc", "&Calculator"), Entry("mnuSound", "&System Sound Volume"),
                Separator("mnuSlash"), Entry("mnuAdmin", "&Parental Options Menu")});
}

MenuData Safe() {
  return Opens("mnuSafe", "&Safe Sites",
               {Entry("mnuListSite", "Have your site listed here...."), Entry("mnuDisney", "Disney"),
                Entry("mnuYahooligans", "Yahooligans"), Entry("mnuBerits", "Berits Best"),
                Entry("mnuSesamestreet", "Sesame Street"), Entry("mnubarney", "Barney!"),
                Entry("mnuChildrenTelevisionWorkshop", "Childrens Television Workshop"),
                Entry("Mnu4Kids", "4Kids"), Entry("mnuFamilyInternet", "Family Internet")});
}

MenuData Help() {
  return Opens("mnuHelp", "&Help",
               {Entry("mnuTip", "&Tip of the Day"), Separator("mnuHelpSep1"),
                Entry("mnuRegister", "&How to use the Kivandra..."), Entry("mnuUpdate", "&Update Kivandra"),
                Entry("mnuSupport", "&On-Line Customer Support")});
}

}  // namespace

const std::vector<MenuData>& MenuTree() {
  static const std::vector<MenuData> tree = {File(),      Edit(),  View(), Go(),
                                             Favorites(), Tools(), Safe(), Help()};
  return tree;
}

}  // namespace kivandra
