// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/navigation_viewer.h"

#include <string>

#include "core/core_values.h"
#include "core/unload_with_owner.h"
#include "filter/navigation_log.h"
#include "panel/log_links.h"
#include "panel/panel_values.h"
#include "platform/button.h"
#include "support/attempt.h"
#include "support/rich_text.h"

namespace kivandra {

NavigationViewer::~NavigationViewer() { UnloadWithOwner(form_.get()); }

void NavigationViewer::Show() {
  Form_Load();
  const auto form = form_;
  form->SetVisible(true);
  form->BringToFront();
}

bool NavigationViewer::Ended() const {
  return !(form_ && form_->Loaded()) && !(parentbrowse_ && parentbrowse_->Loaded());
}

void NavigationViewer::Form_Load() {
  form_ = services_.forms.Load("Navigation");
  form_->SetEvents(this);
  auto& URLS = form_->Get<RichTextBox>("URLS");
  URLS.OnLink([this](unsigned message, TextSpan link) { URLS_LinkOver(message, link); });
  form_->Get<Button>("CancelButton").OnClick([this] { CancelButton_Click(); });
  form_->Get<Button>("OKButton").OnClick([this] { OKButton_Click(); });
  // 1.
  attempt([&] { form_->SetCaption("Navigation captured on " + LogDateCaption); });
  // 2. A day without a log, or one that can't be read, is an empty window.
  attempt([&] {
    if (const auto text = ReadRichText(services_.files.ReadFile(LogFile(LogDateKey)))) {
      URLS.SetText(*text, FindLinks(*text));
    }
  });
  // 3.
  NavigationOpen = true;
}

/// kept on purpose: the button is named for something else, and the print queue shows the folder alone.
void NavigationViewer::CancelButton_Click() {
  const auto form = form_;
  attempt([&] { form->Get<RichTextBox>("URLS").PrintDoc(LogFolder()); });
}

void NavigationViewer::OKButton_Click() {
  const auto form = form_;
  attempt([&] { form->Unload(); });
}

void NavigationViewer::URLS_LinkOver(unsigned message, TextSpan link) {
  if (message != WM_LBUTTONUP) {
    return;
  }
  const auto form = form_;
  // 1.
  if (!parentbrowse_) {
    parentbrowse_ = std::make_unique<parentbrowse>(services_.forms, services_.frame);
  }
  attempt([&] { parentbrowse_->Show(); });
  // 2.
  std::string address;
  if (!attempt([&] { address = form->Get<RichTextBox>("URLS").TextRange(link); })) {
    return;
  }
  // 3.
  attempt([&] { parentbrowse_->brwWebBrowser().Navigate(address); });
}

void NavigationViewer::Form_Unload() { NavigationOpen = false; }

}  // namespace kivandra
