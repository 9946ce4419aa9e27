// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "favourites/favourite_folders.h"
#include "platform/file_calls.h"
#include "platform/form.h"
#include "platform/message_box.h"
#include "platform/system_info.h"
#include "platform/tree_view.h"

namespace kivandra {

/// The dialog in which a person renames, moves and deletes favourites and their folders and makes new
/// folders. Its controls: the tree tvw of all that is there, the field txtName with the chosen entry's name,
/// the list cboFolder of the folders to move to, cmdRename, cmdMove, cmdDelete, cmdNewFolder, cmdclose. What
/// can't be done is told in a box, and the tree is read anew behind each change.
class frmOrganizeFavorites : public FormEvents {
 public:
  struct Services {
    Forms& forms;
    MessageBoxes& boxes;
    FileCalls& files;
    const SystemInfo& system;
  };
  explicit frmOrganizeFavorites(const Services& services) : services_(services) {}
  ~frmOrganizeFavorites() override;
  frmOrganizeFavorites(const frmOrganizeFavorites&) = delete;
  frmOrganizeFavorites& operator=(const frmOrganizeFavorites&) = delete;

  /// Shows the dialog for the folder `root` and runs events until it is closed. Throws PlatformError if it
  /// can't be loaded.
  void DoOrganizeFavDlg(const std::string& root);

 private:
  /// What a node of the tree stands for; the node's number is the place in the list, from 1.
  struct Entry {
    std::string path;
    bool isFolder = false;
  };

  void Form_Load();
  /// Fills tree and list from disk and chooses the entry of this path, if it is there.
  void Refresh(const std::string& chosen);
  void LoadFolder(TreeView& tvw, int node, int depth);
  int Add(TreeView& tvw, int parent, const std::string& text, const Entry& entry);
  /// The chosen entry; null if none is or if it is the favourites folder itself.
  [[nodiscard]] const Entry* Chosen() const;
  [[nodiscard]] std::string TextOfName() const;
  /// Moves an entry to `newPath`. If that fails, tells so in a box, leaves tree and fields as they are and
  /// gives false.
  bool Rename(const std::string& path, const std::string& newPath);
  void Tell(const std::string& text);

  void tvw_NodeSelect(int node);
  void cmdRename_Click();
  void cmdMove_Click();
  void cmdDelete_Click();
  void cmdNewFolder_Click();
  void cmdclose_Click();

  Services services_;
  std::shared_ptr<Form> form_;
  std::string root_;
  std::vector<Entry> entries_;
  std::vector<FavoriteFolder> folders_;
};

/// The command that organises the favourites. Does nothing if there is no favourites folder for this user.
void OrganizeFavorites(const frmOrganizeFavorites::Services& services);

}  // namespace kivandra
