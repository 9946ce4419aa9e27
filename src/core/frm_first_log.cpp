// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/frm_first_log.h"

#include "core/program_files.h"
#include "core/settings.h"
#include "core/unload_with_owner.h"
#include "platform/button.h"
#include "platform/label.h"
#include "platform/skin_form.h"
#include "platform/text_box.h"
#include "support/attempt.h"

namespace kivandra {

frmFirstLog::frmFirstLog(Forms& forms, EventLoop& events, MessageBoxes& boxes, RegistryCalls& registry,
                         const SystemInfo& system)
    : forms_(forms), events_(events), boxes_(boxes), registry_(registry), system_(system) {}

frmFirstLog::~frmFirstLog() { UnloadWithOwner(form_.get()); }

void frmFirstLog::Show() {
  Form_Load();
  form_->SetVisible(true);
}

void frmFirstLog::ShowModal() {
  Form_Load();
  form_->ShowModal();
}

void frmFirstLog::Form_Load() {
  form_ = forms_.Load("frmFirstLog");
  form_->SetEvents(this);
  // 1. Before anything else can happen: a fresh system is filtered from its first page on.
  SaveItem(registry_, "F_C", "1");
  // 2. Always the default skin, whatever the setting holds. A skin that can't be loaded costs the looks
  // alone.
  attempt([&] { form_->Get<SkinForm>("SkinForm1").SetProperty14(1); });
  attempt([&] { form_->Get<SkinForm>("SkinForm1").SetSkinFile(ProgramFile(system_, kDefaultSkin)); });
  attempt([&] { form_->Get<SkinForm>("SkinForm1").ApplyTo(form_->Get<Button>("SkinButton1")); });
  attempt([&] { form_->Get<SkinForm>("SkinForm1").ApplyTo(form_->Get<Label>("SkinLabel1")); });
  attempt([&] { form_->Get<SkinForm>("SkinForm1").ApplyTo(form_->Get<Label>("SkinLabel2")); });

  form_->Get<Button>("SkinButton1").OnClick([this] { SkinButton1_Click(); });
  // Return goes from field to field and never presses the button.
  const auto moveFocusOnReturn = [this](const char* from, const char* to) {
    form_->Get<TextBox>(from).OnKeyDown([this, to](int keyCode) {
      if (keyCode != kKeyReturn) {
        return false;
      }
      attempt([&] { form_->Get<TextBox>(to).SetFocus(); });
      return true;
    });
  };
  moveFocusOnReturn("txtPassword1", "txtPassword");
  moveFocusOnReturn("txtPassword", "txtPassword1");
  // 3.
  events_.DoEvents();
}

void frmFirstLog::Form_Activate() {
  attempt([&] { form_->Get<TextBox>("txtPassword1").SetFocus(); });
}

void frmFirstLog::SkinButton1_Click() {
  const auto form = form_;
  // 1.
  std::string first;
  std::string second;
  attempt([&] { first = form->Get<TextBox>("txtPassword1").Text(); });
  attempt([&] { second = form->Get<TextBox>("txtPassword").Text(); });
  if (first == second && !first.empty()) {
    // 2. Accepted.
    attempt([&] { SaveItem(registry_, "T_PW", first); });
    attempt([&] { form->Unload(); });
    return;
  }
  // 3. Refused.
  attempt([&] { form->Get<TextBox>("txtPassword1").SetText(""); });
  attempt([&] { form->Get<TextBox>("txtPassword").SetText(""); });
  attempt([&] { form->Get<TextBox>("txtPassword1").SetFocus(); });
  attempt([&] { boxes_.MsgBox("Invalid Password, try again!", kMsgOkOnly, "Login"); });
}

void frmFirstLog::Form_QueryUnload(bool& cancel, UnloadMode mode) {
  std::string password;
  attempt([&] { password = TextOf(ReadItem(registry_, "T_PW")); });
  // Any other kind of closing lets the window go.
  if (password.empty() && mode == UnloadMode::ControlMenu) {
    cancel = true;
  }
}

}  // namespace kivandra
