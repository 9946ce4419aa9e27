// SPDX-License-Identifier: GPL-3.0-or-later
#include "favourites/frm_fav.h"

#include <algorithm>

#include "core/core_values.h"
#include "core/unload_with_owner.h"
#include "favourites/favourite_file.h"
#include "platform/button.h"
#include "platform/label.h"
#include "platform/skin_form.h"
#include "platform/timer.h"
#include "support/attempt.h"

namespace kivandra {
namespace {

/// Below the menus of a frame that fills the screen.
constexpr Twips kTop = 1800;
/// So long a window that does not come yet is no surprise.
constexpr std::chrono::milliseconds kPatience{400};
/// Between two signs of life.
constexpr std::chrono::milliseconds kLook{100};

}  // namespace

frmFav::~frmFav() { UnloadWithOwner(form_.get()); }

void frmFav::ShowModal() {
  Form_Load();
  const auto form = form_;
  if (form->Loaded()) {
    form->ShowModal();
  }
}

void frmFav::Form_Load() {
  form_ = services_.forms.Load("frmFav");
  form_->SetEvents(this);
  attempt([&] { form_->Get<TreeView>("tvw").OnNodeClick([this](int node) { tvw_NodeClick(node); }); });
  attempt([&] { form_->Get<Button>("cmdclose").OnClick([this] { cmdclose_Click(); }); });
  attempt([&] { form_->Get<SkinForm>("SkinForm1").SetSkinFile(SkinFile); });
  attempt([&] { services_.events.DoEvents(); });
  attempt([&] { form_->SetLeft((services_.forms.ScreenWidth() - form_->Width()) / 2); });
  attempt([&] { form_->SetTop(kTop); });
  nextLook_ = services_.clock() + kPatience;
  LoadFavorites();
  if (givenUp_) {
    // Anew from inside of the modal show, where events can run and reach this window alone.
    attempt([&] {
      auto& timer = form_->Get<Timer>("tmrLoad");
      timer.OnTimer([this] { LoadInSight(); });
      timer.SetEnabled(true);
    });
  }
}

void frmFav::LoadInSight() {
  const auto form = form_;
  attempt([&] { form->Get<Timer>("tmrLoad").SetEnabled(false); });
  inSight_ = true;
  givenUp_ = false;
  read_ = 0;
  nextLook_ = services_.clock();
  LoadFavorites();
  attempt([&] { form->Get<Label>("lblProgress").SetVisible(false); });
}

bool frmFav::GoOn() {
  ++read_;
  if (givenUp_ || services_.clock() < nextLook_) {
    return !givenUp_;
  }
  if (!inSight_) {
    givenUp_ = true;
    return false;
  }
  const auto form = form_;
  attempt([&] {
    auto& progress = form->Get<Label>("lblProgress");
    progress.SetCaption("Reading your favorites: " + std::to_string(read_));
    progress.SetVisible(true);
  });
  attempt([&] { services_.events.DoEvents(); });
  nextLook_ = services_.clock() + kLook;
  givenUp_ = !form->Loaded();
  return !givenUp_;
}

void frmFav::LoadFavorites() {
  // 1 and 2.
  if (!attempt([&] { rootPath_ = services_.system.SHGetSpecialFolderPathA(CSIDL_FAVORITES); })) {
    cmdclose_Click();
    return;
  }
  attempt([&] {
    auto& tvw = form_->Get<TreeView>("tvw");
    // 3.
    tvw.Clear();
    const int root = tvw.AddNode(0, "Root", rootPath_);
    // 4.
    LoadFavoritesFolder(tvw, root, 1);
    if (givenUp_) {
      return;
    }
    // 5.
    SetFavoriteImages(tvw);
    // 6. Last, since until now the text has been the beginning of every path.
    tvw.SetText(root, "YOUR FAVORITES");
    tvw.SetImage(root, "ClosedBook");
    tvw.SetExpandedImage(root, "OpenBook");
    tvw.SetExpanded(root, true);
  });
}

/// The path of this system for a full path of the tree, which has the tree's separator behind the root.
std::string frmFav::DiskPath(const std::string& fullPath) const {
  std::string path = fullPath;
  std::replace(path.begin() + static_cast<std::ptrdiff_t>(rootPath_.size()), path.end(),
               TreeView::kPathSeparator, '/');
  return path;
}

void frmFav::LoadFavoritesFolder(TreeView& tvw, int node, int depth) {
  attempt([&] {
    // 1.
    const std::string path = DiskPath(tvw.FullPath(node));
    const FolderListing listing = services_.files.ListFolder(path);
    // 2. A link is shown and not followed, since it may lead round in a ring. A name with the separator in it
    // would make a path that names another folder.
    for (const auto& folder : listing.folders) {
      if (!GoOn()) {
        return;
      }
      const int child = tvw.AddNode(node, {}, folder.name);
      const bool named = folder.name.find(TreeView::kPathSeparator) == std::string::npos;
      if (!folder.link && named && depth < kDeepestFavoritesFolder) {
        LoadFavoritesFolder(tvw, child, depth + 1);
      }
    }
    // 3. kept on purpose: a file without an address takes that of the file before it.
    std::string url;
    for (const std::string& file : listing.files) {
      const auto title = FavoriteTitle(file);
      if (!title) {
        continue;
      }
      if (!GoOn()) {
        return;
      }
      std::string place = path;
      place.append("/").append(file);
      if (const auto found = FavoriteURL(services_.files.ReadFile(place))) {
        url = *found;
      }
      tvw.SetTag(tvw.AddNode(node, {}, *title), url);
    }
  });
}

void frmFav::SetFavoriteImages(TreeView& tvw) {
  int count = 0;
  attempt([&] { count = tvw.NodeCount(); });
  for (int node = 1; node <= count; ++node) {
    attempt([&] {
      if (tvw.Children(node) > 0) {
        attempt([&] { tvw.SetImage(node, "ClosedFolder"); });
        attempt([&] { tvw.SetExpandedImage(node, "OpenFolder"); });
        attempt([&] { tvw.SetSorted(node, true); });
      } else if (!tvw.Tag(node).empty()) {
        tvw.SetImage(node, "Leaf");
      }
    });
  }
}

void frmFav::tvw_NodeClick(int node) {
  const auto form = form_;
  std::string tag;
  attempt([&] { tag = form->Get<TreeView>("tvw").Tag(node); });
  if (!tag.empty()) {
    SetSelectedFavorite(tag);
    cmdclose_Click();
  }
}

void frmFav::cmdclose_Click() {
  const auto form = form_;
  attempt([&] { form->Unload(); });
}

void OpenFavorites(const frmFav::Services& services,
                   const std::function<void(const std::string& url)>& navigate) {
  std::string url;
  {
    frmFav window(services);
    window.ShowModal();
    url = window.SelectedFavorite();
  }
  if (!url.empty()) {
    navigate(url);
  }
}

}  // namespace kivandra
