// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "platform/combo_box.h"
#include "platform/file_calls.h"

namespace kivandra {

/// A folder that favourites can lie in, as a list shows it: the favourites folder is "Favorites", a folder in
/// it "Favorites\News".
struct FavoriteFolder {
  std::string label;
  std::string path;
};

/// The favourites folder and all folders below it that the tree of the favourites enters, each behind the one
/// that holds it. Links are left out, names with the tree's separator in them, what lies too deep, and what
/// can't be read.
[[nodiscard]] std::vector<FavoriteFolder> FavoriteFolders(const FileCalls& files, const std::string& root);

/// Fills the list anew and shows the first folder.
void FillFolderList(ComboBox& box, const std::vector<FavoriteFolder>& folders);

/// The path of the folder with this label, or an empty text.
[[nodiscard]] std::string FolderOfLabel(const std::vector<FavoriteFolder>& folders, const std::string& label);

/// The path of the folder that a person has named by hand below `root`, in safe names: "News\Local", with or
/// without "Favorites" in front. It need not be there.
[[nodiscard]] std::string FolderOfTypedText(const std::string& root, const std::string& text);

/// Whether the tree of the favourites enters this folder below `root`, or would if it were made: it does not
/// lie too deep, no link leads to it, and no name on the way holds the tree's separator.
[[nodiscard]] bool IsShownFolder(const FileCalls& files, const std::string& root, const std::string& path);

}  // namespace kivandra
