// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/frm_tip.h"

#include <utility>

#include "core/core_values.h"
#include "core/site_page.h"
#include "core/unload_with_owner.h"
#include "platform/button.h"
#include "platform/page_view.h"
#include "platform/skin_form.h"
#include "support/attempt.h"

namespace kivandra {

std::shared_ptr<frmTip> frmTip::Create(Forms& forms, Unloaded unloaded) {
  std::shared_ptr<frmTip> tip(new frmTip(forms.Load("frmTip"), std::move(unloaded)));
  tip->Form_Load();
  return tip;
}

frmTip::frmTip(std::shared_ptr<Form> form, Unloaded unloaded)
    : form_(std::move(form)), unloaded_(std::move(unloaded)) {}

frmTip::~frmTip() { UnloadWithOwner(form_.get()); }

void frmTip::Form_Load() {
  form_->SetEvents(this);
  // cmdOK closes the window.
  attempt([&] {
    form_->Get<Button>("cmdOK").OnClick([weak = std::weak_ptr<Form>(form_)] {
      if (const auto form = weak.lock()) {
        attempt([&] { form->Unload(); });
      }
    });
  });
  attempt([&] { form_->Get<SkinForm>("SkinForm1").SetSkinFile(SkinFile); });
  attempt([&] { form_->Get<SkinForm>("SkinForm1").ApplyTo(form_->Get<Button>("cmdOK")); });
  TipOpen = true;
  attempt([&] { form_->Get<PageView>("TipBrowser").Navigate(SitePage("/tips/default.htm")); });
}

void frmTip::Form_Unload() {
  const auto self = shared_from_this();
  TipOpen = false;
  unloaded_(*this);
}

}  // namespace kivandra
