// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/banner_free.h"

#include <utility>

#include "core/unload_with_owner.h"
#include "platform/page_view.h"
#include "support/attempt.h"

namespace kivandra {

std::shared_ptr<BannerFree> BannerFree::Create(Forms& forms, Unloaded unloaded) {
  std::shared_ptr<BannerFree> window(new BannerFree(forms.Load("BannerFree"), std::move(unloaded)));
  window->Form_Load();
  return window;
}

BannerFree::BannerFree(std::shared_ptr<Form> form, Unloaded unloaded)
    : form_(std::move(form)), unloaded_(std::move(unloaded)) {}

BannerFree::~BannerFree() { UnloadWithOwner(form_.get()); }

void BannerFree::Form_Load() {
  form_->SetEvents(this);
  attempt([&] { form_->Get<PageView>("WebBrowser1").Move(0, 0, form_->ScaleWidth(), form_->ScaleHeight()); });
}

void BannerFree::Show(const std::string& ending, const std::string& address) {
  const auto self = shared_from_this();
  attempt([&] { form_->SetVisible(true); });
  attempt([&] { form_->SetCaption(form_->Caption() + ending); });
  attempt([&] { form_->Get<PageView>("WebBrowser1").Navigate(address); });
}

void BannerFree::Form_Unload() {
  const auto self = shared_from_this();
  unloaded_(*this);
}

}  // namespace kivandra
