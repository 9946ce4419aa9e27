// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "platform/event_loop.h"
#include "platform/file_calls.h"
#include "platform/form.h"
#include "platform/system_info.h"
#include "platform/tree_view.h"

namespace kivandra {

/// The window with the tree of the user's favourites, read from disk at each opening: a new object for each.
/// A click on a favourite closes it. No failure is shown: what can be read is there. Favourites that take
/// long to read are read while the window stands and tells how far that is; it can be closed meanwhile.
class frmFav : public FormEvents {
 public:
  struct Services {
    Forms& forms;
    EventLoop& events;
    const FileCalls& files;
    const SystemInfo& system;
    std::function<std::chrono::steady_clock::time_point()> clock = &std::chrono::steady_clock::now;
  };
  explicit frmFav(Services services) : services_(std::move(services)) {}
  ~frmFav() override;
  frmFav(const frmFav&) = delete;
  frmFav& operator=(const frmFav&) = delete;

  /// Shows the window and runs events until it is closed; at once closed if there is no favourites folder.
  /// Throws PlatformError if the window can't be loaded.
  void ShowModal();
  /// The address of the favourite that was clicked, or an empty text.
  [[nodiscard]] const std::string& SelectedFavorite() const { return selectedFavorite_; }

 private:
  void Form_Load();
  void LoadFavorites();
  void LoadInSight();
  /// Between two entries of the load: whether it goes on.
  bool GoOn();
  /// Reads the folder that the node's full path names into the node's children, and so on below. Its own
  /// failure ends it quietly; `depth` counts the folders above.
  void LoadFavoritesFolder(TreeView& tvw, int node, int depth);
  void SetFavoriteImages(TreeView& tvw);
  void tvw_NodeClick(int node);
  void cmdclose_Click();
  void SetSelectedFavorite(const std::string& url) { selectedFavorite_ = url; }
  [[nodiscard]] std::string DiskPath(const std::string& fullPath) const;

  Services services_;
  std::shared_ptr<Form> form_;
  std::string selectedFavorite_;
  // Of the load that runs.
  std::string rootPath_;
  bool inSight_ = false;
  bool givenUp_ = false;
  int read_ = 0;  // entries
  std::chrono::steady_clock::time_point nextLook_;
};

/// The command that opens the favourites: shows the window and hands the chosen address to `navigate`.
void OpenFavorites(const frmFav::Services& services,
                   const std::function<void(const std::string& url)>& navigate);

}  // namespace kivandra
