// SPDX-License-Identifier: GPL-3.0-or-later
#include "favourites/frm_add_favorite.h"

#include <cstddef>

#include "core/core_values.h"
#include "core/private_profile.h"
#include "core/unload_with_owner.h"
#include "favourites/favourite_file.h"
#include "platform/button.h"
#include "platform/skin_form.h"
#include "platform/text_box.h"
#include "support/attempt.h"

namespace kivandra {
namespace {

constexpr const char* kTitle = "Add Favorite";
/// Size of a buffer for a path or a title, the closing zero counted (MAX_PATH of windef.h).
constexpr std::size_t kBufferSize = 260;

/// The text closed by a zero character and padded to the buffer's size; a longer one is cut, never inside of
/// a character.
std::string InBuffer(const std::string& text) {
  std::size_t end = kBufferSize - 1;
  while (end > 0 && end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) {
    --end;
  }
  std::string buffer = text.substr(0, end);
  buffer.resize(kBufferSize, '\0');
  return buffer;
}

std::string CutAtZero(const std::string& buffer) { return buffer.substr(0, buffer.find('\0')); }

}  // namespace

frmAddFavorite::~frmAddFavorite() { UnloadWithOwner(form_.get()); }

bool frmAddFavorite::DoAddToFavDlg(const std::string& root, const std::string& title) {
  root_ = root;
  Form_Load(title);
  const auto form = form_;
  form->ShowModal();
  return chosen_;
}

void frmAddFavorite::Form_Load(const std::string& title) {
  form_ = services_.forms.Load("frmAddFavorite");
  form_->SetEvents(this);
  form_->Get<Button>("cmdOK").OnClick([this] { cmdOK_Click(); });
  form_->Get<Button>("cmdCancel").OnClick([this] { cmdCancel_Click(); });
  attempt([&] { form_->Get<SkinForm>("SkinForm1").SetSkinFile(SkinFile); });
  attempt([&] { form_->Get<TextBox>("txtName").SetText(title); });
  folders_ = FavoriteFolders(services_.files, root_);
  attempt([&] { FillFolderList(form_->Get<ComboBox>("cboFolder"), folders_); });
  attempt([&] { form_->Get<TextBox>("txtName").SetFocus(); });
}

void frmAddFavorite::cmdOK_Click() {
  const auto form = form_;
  std::string name;
  std::string label;
  const bool read = attempt([&] {
    name = form->Get<TextBox>("txtName").Text();
    label = form->Get<ComboBox>("cboFolder").Text();
  });
  if (!read) {
    return;
  }
  std::string folder = FolderOfLabel(folders_, label);
  if (folder.empty()) {
    folder = FolderOfTypedText(root_, label);
  }
  if (!IsShownFolder(services_.files, root_, folder)) {
    attempt([&] {
      services_.boxes.MsgBox(
          "Your favorites would not show what lies in this folder, since it is a link or lies too deep. "
          "Choose another folder.",
          kMsgExclamation, kTitle);
    });
    attempt([&] { form->Get<ComboBox>("cboFolder").SetFocus(); });
    return;
  }
  if (!attempt([&] { services_.files.MakeFolder(folder); })) {
    attempt([&] { services_.boxes.MsgBox("The folder could not be made.", kMsgExclamation, kTitle); });
    return;
  }
  const std::string path = folder + "/" + FavoriteFileName(name);
  // The dialog may be closed while the question stands.
  if (MayBeWritten(path) && form->Loaded()) {
    path_ = path;
    chosen_ = true;
    attempt([&] { form->Unload(); });
  }
}

/// Nobody loses a favourite without being asked.
bool frmAddFavorite::MayBeWritten(const std::string& path) {
  bool may = false;
  attempt([&] {
    const std::string there = services_.files.Dir(path);
    may = there.empty() ||
          services_.boxes.MsgBox("There is already a favorite \"" + FavoriteTitle(there).value_or(there) +
                                     "\" in this folder. Replace it?",
                                 kMsgYesNo | kMsgQuestion | kMsgDefaultButton2, kTitle) == MsgBoxResult::Yes;
  });
  return may;
}

void frmAddFavorite::cmdCancel_Click() {
  const auto form = form_;
  attempt([&] { form->Unload(); });
}

void AddFavorite(const frmAddFavorite::Services& services, const std::string& url, const std::string& title) {
  // 1.
  const std::string titleBuffer = InBuffer(title);
  // 2.
  std::string root;
  if (!attempt([&] { root = services.system.SHGetSpecialFolderPathA(CSIDL_FAVORITES); })) {
    return;
  }
  // 3 and 4.
  frmAddFavorite dialog(services);
  bool chosen = false;
  attempt([&] { chosen = dialog.DoAddToFavDlg(root, CutAtZero(titleBuffer)); });
  if (!chosen) {
    return;
  }
  // 5. An address is one line, or the file would hold lines that nobody chose.
  (void)WritePrivateProfileStringA(services.files, "InternetShortcut", "URL",
                                   url.substr(0, url.find_first_of("\r\n")), dialog.Path());
}

}  // namespace kivandra
