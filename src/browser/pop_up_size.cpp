// SPDX-License-Identifier: GPL-3.0-or-later
// A page's script moves or sizes its window.
#include <algorithm>

#include "browser/frm_browser.h"
#include "support/attempt.h"

namespace kivandra {
namespace {

/// The form's units for the engine's pixels. A script can ask for any number; no window lies further out than
/// this.
constexpr Twips InTwips(long pixels) {
  constexpr long kTwipsPerPixel = 15;
  constexpr long kFurthest = 32767;
  return std::clamp(pixels, -kFurthest, kFurthest) * kTwipsPerPixel;
}

}  // namespace

void frmBrowser::WindowSetLeft(long Left) {
  const auto self = shared_from_this();
  attempt([&] { form_->SetWindowState(WindowState::Normal); });
  attempt([&] { form_->SetLeft(InTwips(Left)); });
}

void frmBrowser::WindowSetTop(long Top) {
  const auto self = shared_from_this();
  attempt([&] { form_->SetWindowState(WindowState::Normal); });
  attempt([&] { form_->SetTop(InTwips(Top)); });
}

void frmBrowser::WindowSetWidth(long Width) {
  const auto self = shared_from_this();
  attempt([&] { form_->SetWindowState(WindowState::Normal); });
  attempt([&] { form_->SetWidth(InTwips(Width)); });
  // kept on purpose: btnsearch is hidden twice, and SearchWeb stays.
  HideRow(btnsearch_);
}

void frmBrowser::WindowSetHeight(long Height) {
  const auto self = shared_from_this();
  attempt([&] { form_->SetWindowState(WindowState::Normal); });
  attempt([&] { form_->SetHeight(InTwips(Height)); });
  HideRow(SearchWeb_);
  attempt([&] {
    if (const auto active = services_.frame.ActiveForm()) {
      active->form_->SetVisible(true);
    }
  });
}

/// The page fills the window: the row of controls goes, with `fourth` as its last, and the page moves up.
void frmBrowser::HideRow(Button& fourth) {
  attempt([&] { cboAddress_.SetVisible(false); });
  attempt([&] { btnGo_.SetVisible(false); });
  attempt([&] { btnsearch_.SetVisible(false); });
  attempt([&] { fourth.SetVisible(false); });
  attempt([&] {
    brwWebBrowser_.Move(brwWebBrowser_.Left(), 0, brwWebBrowser_.Width(), brwWebBrowser_.Height());
  });
}

}  // namespace kivandra
