// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/frm_password.h"

#include <utility>

#include "core/core_values.h"
#include "core/program_sound.h"
#include "core/settings.h"
#include "core/unload_with_owner.h"
#include "platform/button.h"
#include "platform/label.h"
#include "platform/skin_form.h"
#include "platform/text_box.h"
#include "support/attempt.h"

namespace kivandra {

frmPassword::frmPassword(Services services) : services_(std::move(services)) {}

frmPassword::~frmPassword() { UnloadWithOwner(form_.get()); }

void frmPassword::Show() {
  Form_Load();
  form_->SetVisible(true);
  form_->BringToFront();
}

void frmPassword::ShowModal() {
  Form_Load();
  const auto form = form_;
  form->ShowModal();
}

void frmPassword::Form_Load() {
  if (form_ && form_->Loaded()) {
    return;
  }
  form_ = services_.forms.Load("frmPassword");
  form_->SetEvents(this);
  // 1. The skin in force.
  attempt([&] { form_->Get<SkinForm>("SkinForm1").SetProperty14(1); });
  attempt([&] { form_->Get<SkinForm>("SkinForm1").SetSkinFile(SkinFile); });
  // 2. A change made in the panel counts for the next prompt. If the store can't be read the copy stays as it
  // is.
  attempt([&] { ParentPassword = TextOf(ReadItem(services_.registry, "T_PW")); });
  // 3.
  attempt([&] { form_->Get<SkinForm>("SkinForm1").ApplyTo(form_->Get<Button>("cmdOK")); });
  attempt([&] { form_->Get<SkinForm>("SkinForm1").ApplyTo(form_->Get<Button>("cmdCancel")); });
  attempt([&] { form_->Get<SkinForm>("SkinForm1").ApplyTo(form_->Get<Label>("SkinLabel1")); });
  form_->Get<Button>("cmdOK").OnClick([this] { cmdOK_Click(); });
  form_->Get<Button>("cmdCancel").OnClick([this] { cmdCancel_Click(); });
  // 4.
  PasswordOpen = true;
}

void frmPassword::cmdOK_Click() {
  const auto form = form_;
  // 1.
  SessionAllowGranted = false;
  // 2. Exactly, case included. A field that can't be read opens nothing.
  std::string text;
  const bool read = attempt([&] { text = form->Get<TextBox>("txtPassword").Text(); });
  const bool right = read && text == ParentPassword;
  if (right && services_.grant.SessionAllowPending()) {
    // 3. A session grant; a full table is passed over.
    attempt([&] { services_.grant.AllowBlockedURL(); });
    SessionAllowGranted = true;
    attempt([&] { form->Unload(); });
  } else if (right) {
    // 4. The panel.
    attempt([&] {
      if (services_.showOptions) {
        services_.showOptions();
      }
    });
    attempt([&] {
      PlayProgramSound(services_.registry, services_.sound, services_.system, "accessgranted.wav");
    });
    attempt([&] { form->Unload(); });
  } else {
    // 5. Any number of tries, without a delay.
    attempt([&] { form->Get<TextBox>("txtPassword").SetText(""); });
    attempt([&] { services_.boxes.MsgBox("Invalid Password, try again!", kMsgOkOnly, "Password Error"); });
  }
}

void frmPassword::cmdCancel_Click() {
  const auto form = form_;
  attempt([&] { form->Unload(); });
}

void frmPassword::Form_Unload() { PasswordOpen = false; }

}  // namespace kivandra
