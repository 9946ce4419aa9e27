// SPDX-License-Identifier: GPL-3.0-or-later
// What the engine of a child window tells it.
#include <utility>

#include "browser/address_list.h"
#include "browser/browser_gate_window.h"
#include "browser/frm_browser.h"
#include "support/attempt.h"

namespace kivandra {

void frmBrowser::BeforeNavigate2(std::shared_ptr<Navigation> navigation) {
  const auto self = shared_from_this();
  // A window that has gone lets its navigation fall, and so refuses it.
  if (const auto window = gateWindow_) {
    attempt([&] { services_.gate.BeforeNavigate2(window, navigation); });
  }
}

void frmBrowser::NavigateComplete2(PageFrame& pDisp, const std::string& /*URL*/) {
  const auto self = shared_from_this();
  // 1. Pages use such a handler to throw up windows on leaving.
  attempt([&] { pDisp.ClearUnloadHandler(); });
  // 2. The address of the page, not the event's: kept on purpose, so a frame repeats the page's address.
  PutOnTop(cboAddress_, brwWebBrowser_);
  // 3.
  attempt([&] { PutOnTop(services_.frame.TheAddress(), brwWebBrowser_); });
}

void frmBrowser::DocumentComplete(PageFrame& pDisp, const std::string& /*URL*/) {
  const auto self = shared_from_this();
  mWbrDoc.reset();
  attempt([&] {
    if (pDisp.IsTopLevel()) {
      mWbrDoc = pDisp.Document();
    }
  });
}

void frmBrowser::DownloadBegin() {
  const auto self = shared_from_this();
  attempt([&] { services_.frame.Logo_Animate(); });
}

void frmBrowser::DownloadComplete() {
  const auto self = shared_from_this();
  // 1. kept on purpose: nobody counts the downloads, so the first one to end, of any window, stills the logo.
  attempt([&] { services_.frame.ShowStillLogo(); });
  // 2. A pop-up in front is shown.
  attempt([&] {
    if (const auto popUp = ActivePopUp()) {
      popUp->form_->SetVisible(true);
    }
  });
  // 3. A window that is hidden all the same goes; the steps behind then find no window and are passed over.
  attempt([&] {
    if (!form_->Visible()) {
      form_->Unload();
    }
  });
  // 4. Scripts of the page reach the program.
  attempt([&] { brwWebBrowser_.SetScriptObject("KVD", &services_.kvd); });
  // 5. The log of visits.
  if (services_.logStep) {
    attempt([&] { services_.logStep(*this); });
  }
  // 6. A bare pop-up, one that has lost its address row.
  attempt([&] {
    if (!cboAddress_.Visible()) {
      form_->BringToFront();
    }
  });
}

void frmBrowser::TitleChange(const std::string& Text) {
  const auto self = shared_from_this();
  attempt([&] { form_->SetCaption(Text); });
}

void frmBrowser::StatusTextChange(const std::string& Text) {
  const auto self = shared_from_this();
  attempt([&] { services_.frame.Status().SetText(Text); });
}

void frmBrowser::CommandStateChange(long Command, bool Enable) {
  const auto self = shared_from_this();
  const char* tool = Command == 1 ? "Forward" : Command == 2 ? "Back" : nullptr;
  if (tool != nullptr) {
    attempt([&] { services_.frame.BonusBar().Bands("MainBar").Tools(tool).SetEnabled(Enable); });
  }
}

void frmBrowser::OnQuit() {
  const auto self = shared_from_this();
  attempt([&] { form_->Unload(); });
}

void frmBrowser::OnVisible(bool Visible) {
  const auto self = shared_from_this();
  attempt([&] { form_->SetVisible(Visible); });
}

}  // namespace kivandra
