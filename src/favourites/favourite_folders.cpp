// SPDX-License-Identifier: GPL-3.0-or-later
#include "favourites/favourite_folders.h"

#include <algorithm>
#include <cstddef>

#include "favourites/favourite_file.h"
#include "platform/tree_view.h"
#include "support/attempt.h"

namespace kivandra {
namespace {

constexpr const char* kRootLabel = "Favorites";

void AddFolders(const FileCalls& files, const FavoriteFolder& above, int depth,
                std::vector<FavoriteFolder>& folders) {
  if (depth >= kDeepestFavoritesFolder) {
    return;
  }
  attempt([&] {
    for (const auto& folder : files.ListFolder(above.path).folders) {
      const bool named = folder.name.find(TreeView::kPathSeparator) == std::string::npos;
      if (!folder.link && named) {
        const FavoriteFolder found{above.label + "\\" + folder.name, above.path + "/" + folder.name};
        folders.push_back(found);
        AddFolders(files, found, depth + 1, folders);
      }
    }
  });
}

}  // namespace

std::vector<FavoriteFolder> FavoriteFolders(const FileCalls& files, const std::string& root) {
  std::vector<FavoriteFolder> folders{{kRootLabel, root}};
  AddFolders(files, FavoriteFolder(folders.front()), 1, folders);
  return folders;
}

void FillFolderList(ComboBox& box, const std::vector<FavoriteFolder>& folders) {
  while (box.ListCount() > 0) {
    box.RemoveItem(box.ListCount() - 1);
  }
  int index = 0;
  for (const FavoriteFolder& folder : folders) {
    box.AddItem(folder.label, index++);
  }
  box.SetListIndex(0);
}

std::string FolderOfLabel(const std::vector<FavoriteFolder>& folders, const std::string& label) {
  const auto found = std::find_if(folders.begin(), folders.end(),
                                  [&](const FavoriteFolder& each) { return each.label == label; });
  return found == folders.end() ? std::string() : found->path;
}

std::string FolderOfTypedText(const std::string& root, const std::string& text) {
  std::string path = root;
  bool first = true;
  for (std::size_t at = 0; at <= text.size();) {
    const std::size_t end = std::min(text.find_first_of("\\/", at), text.size());
    const std::string part = text.substr(at, end - at);
    if (!part.empty() && !(first && part == kRootLabel)) {
      path += "/" + SafeFileName(part);
    }
    first = first && part.empty();
    at = end + 1;
  }
  return path;
}

bool IsShownFolder(const FileCalls& files, const std::string& root, const std::string& path) {
  int depth = 1;
  for (std::size_t at = root.size(); at < path.size(); ++depth) {
    const std::size_t end = std::min(path.find('/', at + 1), path.size());
    const std::string name = path.substr(at + 1, end - at - 1);
    bool hidden = name.find(TreeView::kPathSeparator) != std::string::npos;
    // What can't be listed is not there yet, or fails when the favourite is laid there.
    attempt([&, above = path.substr(0, at)] {
      const FolderListing listing = files.ListFolder(above);
      hidden = hidden || std::any_of(listing.folders.begin(), listing.folders.end(),
                                     [&](const auto& folder) { return folder.link && folder.name == name; });
    });
    if (hidden) {
      return false;
    }
    at = end;
  }
  return depth <= kDeepestFavoritesFolder;
}

}  // namespace kivandra
