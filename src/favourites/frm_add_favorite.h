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

namespace kivandra {

/// The dialog in which a person chooses a folder and a name for a new favourite. Its controls: the field
/// txtName, the list cboFolder, in whose field the name of a new folder can be typed, cmdOK and cmdCancel.
class frmAddFavorite : public FormEvents {
 public:
  struct Services {
    Forms& forms;
    MessageBoxes& boxes;
    FileCalls& files;
    const SystemInfo& system;
  };
  explicit frmAddFavorite(const Services& services) : services_(services) {}
  ~frmAddFavorite() override;
  frmAddFavorite(const frmAddFavorite&) = delete;
  frmAddFavorite& operator=(const frmAddFavorite&) = delete;

  /// Shows the dialog with this title for a favourite below the folder `root` and runs events until it is
  /// closed. True if a place was chosen; its folder is there then, and a file of that name may be replaced.
  /// Throws PlatformError if the dialog can't be loaded.
  bool DoAddToFavDlg(const std::string& root, const std::string& title);
  /// The chosen file.
  [[nodiscard]] const std::string& Path() const { return path_; }

 private:
  void Form_Load(const std::string& title);
  void cmdOK_Click();
  void cmdCancel_Click();
  bool MayBeWritten(const std::string& path);

  Services services_;
  std::shared_ptr<Form> form_;
  std::string root_;
  std::vector<FavoriteFolder> folders_;
  bool chosen_ = false;
  std::string path_;
};

/// Asks for a folder and a name and writes the favourite there. Passes over what fails.
void AddFavorite(const frmAddFavorite::Services& services, const std::string& url, const std::string& title);

}  // namespace kivandra
