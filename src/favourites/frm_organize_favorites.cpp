// SPDX-License-Identifier: GPL-3.0-or-later
#include "favourites/frm_organize_favorites.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "core/core_values.h"
#include "core/unload_with_owner.h"
#include "favourites/favourite_file.h"
#include "platform/button.h"
#include "platform/skin_form.h"
#include "platform/text_box.h"
#include "support/attempt.h"

namespace kivandra {
namespace {

constexpr const char* kTitle = "Organize Favorites";

std::string NameIn(const std::string& path) { return path.substr(path.rfind('/') + 1); }
std::string FolderOf(const std::string& path) { return path.substr(0, path.rfind('/')); }

}  // namespace

frmOrganizeFavorites::~frmOrganizeFavorites() { UnloadWithOwner(form_.get()); }

void frmOrganizeFavorites::DoOrganizeFavDlg(const std::string& root) {
  root_ = root;
  Form_Load();
  const auto form = form_;
  form->ShowModal();
}

void frmOrganizeFavorites::Form_Load() {
  form_ = services_.forms.Load("frmOrganizeFavorites");
  form_->SetEvents(this);
  const std::pair<const char*, void (frmOrganizeFavorites::*)()> buttons[] = {
      {"cmdRename", &frmOrganizeFavorites::cmdRename_Click},
      {"cmdMove", &frmOrganizeFavorites::cmdMove_Click},
      {"cmdDelete", &frmOrganizeFavorites::cmdDelete_Click},
      {"cmdNewFolder", &frmOrganizeFavorites::cmdNewFolder_Click},
      {"cmdclose", &frmOrganizeFavorites::cmdclose_Click}};
  for (const auto& [name, handler] : buttons) {
    form_->Get<Button>(name).OnClick([this, call = handler] { (this->*call)(); });
  }
  form_->Get<TreeView>("tvw").OnNodeSelect([this](int node) { tvw_NodeSelect(node); });
  // In both fields Enter does what the button below does.
  const auto onEnter = [this](void (frmOrganizeFavorites::*handler)()) {
    return [this, handler](int key) {
      if (key == kKeyReturn) {
        (this->*handler)();
      }
      return key == kKeyReturn;
    };
  };
  form_->Get<TextBox>("txtName").OnKeyDown(onEnter(&frmOrganizeFavorites::cmdRename_Click));
  form_->Get<ComboBox>("cboFolder").OnKeyDown(onEnter(&frmOrganizeFavorites::cmdMove_Click));
  attempt([&] { form_->Get<SkinForm>("SkinForm1").SetSkinFile(SkinFile); });
  Refresh(root_);
}

void frmOrganizeFavorites::Refresh(const std::string& chosen) {
  attempt([&] {
    auto& tvw = form_->Get<TreeView>("tvw");
    tvw.Clear();
    entries_.clear();
    const int root = Add(tvw, 0, "YOUR FAVORITES", {root_, true});
    LoadFolder(tvw, root, 1);
    tvw.SetImage(root, "ClosedBook");
    tvw.SetExpandedImage(root, "OpenBook");
    tvw.SetExpanded(root, true);
    const auto found = std::find_if(entries_.begin(), entries_.end(),
                                    [&](const Entry& each) { return each.path == chosen; });
    const int node = found == entries_.end() ? root : static_cast<int>(found - entries_.begin()) + 1;
    tvw.SetSelectedNode(node);
    tvw_NodeSelect(node);
  });
  attempt([&] {
    folders_ = FavoriteFolders(services_.files, root_);
    FillFolderList(form_->Get<ComboBox>("cboFolder"), folders_);
  });
}

int frmOrganizeFavorites::Add(TreeView& tvw, int parent, const std::string& text, const Entry& entry) {
  const int node = tvw.AddNode(parent, {}, text);
  entries_.push_back(entry);
  return node;
}

void frmOrganizeFavorites::LoadFolder(TreeView& tvw, int node, int depth) {
  attempt([&] {
    const std::string path = entries_[static_cast<std::size_t>(node) - 1].path;
    const FolderListing listing = services_.files.ListFolder(path);
    tvw.SetSorted(node, true);
    for (const auto& folder : listing.folders) {
      const int child = Add(tvw, node, folder.name, {path + "/" + folder.name, true});
      tvw.SetImage(child, "ClosedFolder");
      tvw.SetExpandedImage(child, "OpenFolder");
      if (!folder.link && depth < kDeepestFavoritesFolder) {
        LoadFolder(tvw, child, depth + 1);
      }
    }
    for (const std::string& file : listing.files) {
      if (const auto title = FavoriteTitle(file)) {
        std::string place = path;
        place.append("/").append(file);
        tvw.SetImage(Add(tvw, node, *title, {place, false}), "Leaf");
      }
    }
  });
}

const frmOrganizeFavorites::Entry* frmOrganizeFavorites::Chosen() const {
  int node = 0;
  attempt([&] { node = form_->Get<TreeView>("tvw").SelectedNode(); });
  // The first node is the favourites folder itself.
  return node > 1 && static_cast<std::size_t>(node) <= entries_.size()
             ? &entries_[static_cast<std::size_t>(node) - 1]
             : nullptr;
}

std::string frmOrganizeFavorites::TextOfName() const {
  std::string text;
  attempt([&] { text = form_->Get<TextBox>("txtName").Text(); });
  return text;
}

void frmOrganizeFavorites::Tell(const std::string& text) {
  attempt([&] { services_.boxes.MsgBox(text, kMsgExclamation, kTitle); });
}

void frmOrganizeFavorites::tvw_NodeSelect(int node) {
  const bool entry = node > 1;  // the first is the favourites folder itself
  attempt([&] {
    form_->Get<TextBox>("txtName").SetText(entry ? form_->Get<TreeView>("tvw").Text(node) : std::string());
  });
  attempt([&] { form_->Get<TextBox>("txtName").SetEnabled(entry); });
  for (const char* button : {"cmdRename", "cmdMove", "cmdDelete"}) {
    attempt([&, button] { form_->Get<Button>(button).SetEnabled(entry); });
  }
}

bool frmOrganizeFavorites::Rename(const std::string& path, const std::string& newPath) {
  if (newPath == path) {
    return true;
  }
  if (!attempt([&] { services_.files.Name(path, newPath); })) {
    Tell("This could not be done. Perhaps there is already an entry \"" + NameIn(newPath) +
         "\" in that folder.");
    return false;
  }
  Refresh(newPath);
  return true;
}

void frmOrganizeFavorites::cmdRename_Click() {
  const Entry* entry = Chosen();
  if (entry == nullptr) {
    return;
  }
  const std::string text = TextOfName();
  if (text.empty()) {
    Tell("Type the new name first.");
    return;
  }
  const std::string path = entry->path;
  const auto form = form_;
  if (!Rename(path, FolderOf(path) + "/" + (entry->isFolder ? SafeFileName(text) : FavoriteFileName(text)))) {
    attempt([&] { form->Get<TextBox>("txtName").SetFocus(); });  // what was typed stands there
  }
}

void frmOrganizeFavorites::cmdMove_Click() {
  const Entry* entry = Chosen();
  if (entry == nullptr) {
    return;
  }
  std::string label;
  attempt([&] { label = form_->Get<ComboBox>("cboFolder").Text(); });
  const std::string folder = FolderOfLabel(folders_, label);
  if (folder.empty()) {
    Tell("Choose one of the folders in the list.");
    return;
  }
  const std::string path = entry->path;
  const auto form = form_;
  if (!Rename(path, folder + "/" + NameIn(path))) {
    attempt([&] { form->Get<ComboBox>("cboFolder").SetFocus(); });
  }
}

void frmOrganizeFavorites::cmdDelete_Click() {
  const Entry* chosen = Chosen();
  if (chosen == nullptr) {
    return;
  }
  const auto form = form_;
  const Entry entry = *chosen;
  const std::string name = NameIn(entry.path);
  const std::string question = entry.isFolder
                                   ? "Delete the folder \"" + name + "\" and everything in it?"
                                   : "Delete the favorite \"" + FavoriteTitle(name).value_or(name) + "\"?";
  MsgBoxResult answer = MsgBoxResult::No;
  attempt([&] {
    answer = services_.boxes.MsgBox(question, kMsgYesNo | kMsgQuestion | kMsgDefaultButton2, kTitle);
  });
  if (answer != MsgBoxResult::Yes || !form->Loaded()) {
    return;
  }
  const bool done = attempt([&] {
    if (entry.isFolder) {
      services_.files.DeleteFolder(entry.path);
    } else {
      services_.files.Kill(entry.path);
    }
  });
  Refresh(done ? FolderOf(entry.path) : entry.path);
  if (!done) {
    Tell("\"" + name + "\" could not be deleted.");
    return;
  }
  // The button that had the keyboard may be out of use now.
  attempt([&] { form->Get<TreeView>("tvw").SetFocus(); });
}

/// Makes the folder in the chosen folder under a name that is still free, or beside what is no folder that
/// the favourites show, such as a link; the person then renames it.
void frmOrganizeFavorites::cmdNewFolder_Click() {
  const Entry* entry = Chosen();
  std::string folder = root_;
  if (entry != nullptr) {
    const bool inside = entry->isFolder && IsShownFolder(services_.files, root_, entry->path);
    folder = inside ? entry->path : FolderOf(entry->path);
  }
  std::string made;
  const bool done = attempt([&] {
    services_.files.MakeFolder(folder);
    const FolderListing listing = services_.files.ListFolder(folder);
    std::vector<std::string> taken = listing.files;
    for (const auto& each : listing.folders) {
      taken.push_back(each.name);
    }
    std::string name = "New Folder";
    for (int number = 2; std::find(taken.begin(), taken.end(), name) != taken.end(); ++number) {
      name = "New Folder (" + std::to_string(number) + ")";
    }
    made = folder + "/" + name;
    services_.files.MakeFolder(made);
  });
  Refresh(done ? made : folder);
  if (!done) {
    Tell("The folder could not be made.");
    return;
  }
  attempt([&] { form_->Get<TextBox>("txtName").SetFocus(); });
}

void frmOrganizeFavorites::cmdclose_Click() {
  const auto form = form_;
  attempt([&] { form->Unload(); });
}

void OrganizeFavorites(const frmOrganizeFavorites::Services& services) {
  std::string root;
  if (attempt([&] { root = services.system.SHGetSpecialFolderPathA(CSIDL_FAVORITES); })) {
    frmOrganizeFavorites(services).DoOrganizeFavDlg(root);
  }
}

}  // namespace kivandra
