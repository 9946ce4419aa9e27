// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/bare_browser.h"

#include <algorithm>
#include <utility>

#include "core/core_values.h"
#include "core/unload_with_owner.h"
#include "platform/picture_box.h"
#include "platform/platform_error.h"
#include "platform/skin_form.h"
#include "support/attempt.h"

namespace kivandra {

namespace {

constexpr Twips kSeparatorHeight = 30;

}  // namespace

BareBrowser::BareBrowser(std::string formName, Forms& forms, PanelFrame& frame)
    : formName_(std::move(formName)), forms_(forms), frame_(frame) {}

BareBrowser::~BareBrowser() {
  if (Loaded()) {
    attempt([&] { brwWebBrowser().SetEvents(nullptr); });
  }
  UnloadWithOwner(form_.get());
}

void BareBrowser::Show() {
  if (!Loaded()) {
    Form_Load();
  }
  const auto form = form_;
  form->SetVisible(true);
  form->BringToFront();
}

WebBrowser& BareBrowser::brwWebBrowser() const {
  if (!Loaded()) {
    throw PlatformError(kObjectNotSet, "Object variable not set");
  }
  return form_->Get<WebBrowser>("brwWebBrowser");
}

void BareBrowser::Form_Load() {
  form_ = forms_.Load(formName_);
  form_->SetEvents(this);
  brwWebBrowser().SetEvents(this);
  LayOut(*form_);
}

void BareBrowser::LayOut(Form& form) {
  attempt([&] { form.Get<PictureBox>("FraSep").Move(0, 0, form.ScaleWidth(), kSeparatorHeight); });
  attempt([&] {
    form.Get<WebBrowser>("brwWebBrowser")
        .Move(0, kSeparatorHeight, form.ScaleWidth(),
              std::max<Twips>(form.ScaleHeight() - kSeparatorHeight, 0));
  });
}

void BareBrowser::Form_Activate() {
  const auto form = form_;
  LayOut(*form);
}

void BareBrowser::Form_Resize() {
  const auto form = form_;
  LayOut(*form);
}

void BareBrowser::Form_Deactivate() {
  attempt([&] { frame_.Status().SetPanelText("TEXT", ""); });
}

void BareBrowser::Form_Unload() {
  attempt([&] { brwWebBrowser().SetEvents(nullptr); });
  attempt([&] { frame_.Status().SetText(""); });
}

/// Nothing is judged here.
void BareBrowser::BeforeNavigate2(std::shared_ptr<Navigation> navigation) { navigation->Allow(); }

void BareBrowser::DownloadComplete() {
  const auto form = form_;
  attempt([&] {
    if (!form->Visible()) {
      form->Unload();
    }
  });
}

void BareBrowser::TitleChange(const std::string& Text) {
  attempt([&] { form_->SetCaption(Text); });
}

void BareBrowser::StatusTextChange(const std::string& Text) {
  attempt([&] { frame_.Status().SetText(Text); });
}

void BareBrowser::OnQuit() {
  const auto form = form_;
  attempt([&] { form->Unload(); });
}

void BareBrowser::OnVisible(bool Visible) {
  const auto form = form_;
  attempt([&] { form->SetVisible(Visible); });
}

void Help::LayOut(Form& form) {
  attempt([&] { form.Get<SkinForm>("SkinForm1").SetSkinFile(SkinFile); });
  BareBrowser::LayOut(form);
}

}  // namespace kivandra
