// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/frm_browser.h"

#include <utility>

#include "browser/browser_gate_window.h"
#include "support/attempt.h"

namespace kivandra {

std::shared_ptr<frmBrowser> frmBrowser::Create(const BrowserServices& services) {
  std::shared_ptr<frmBrowser> window(new frmBrowser(services, services.forms.Load("frmBrowser")));
  window->WireControls();
  window->Form_Load();
  return window;
}

frmBrowser::frmBrowser(BrowserServices services, std::shared_ptr<Form> form)
    : services_(std::move(services)),
      form_(std::move(form)),
      brwWebBrowser_(form_->Get<WebBrowser>("brwWebBrowser")),
      cboAddress_(form_->Get<ComboBox>("cboAddress")),
      SearchWeb_(form_->Get<Button>("SearchWeb")),
      btnGo_(form_->Get<Button>("btnGo")),
      btnsearch_(form_->Get<Button>("btnsearch")),
      ResizeTimer_(form_->Get<Timer>("ResizeTimer")),
      gateWindow_(std::make_shared<BrowserGateWindow>(form_, brwWebBrowser_, cboAddress_)) {}

frmBrowser::~frmBrowser() {
  if (form_->Loaded()) {
    attempt([&] { brwWebBrowser_.SetEvents(nullptr); });
    attempt([&] { form_->SetEvents(nullptr); });
  }
}

std::function<void()> frmBrowser::WhileAlive(void (frmBrowser::*handler)()) {
  return [weak = weak_from_this(), handler] {
    if (const auto self = weak.lock()) {
      (self.get()->*handler)();
    }
  };
}

void frmBrowser::WireControls() {
  form_->SetEvents(this);
  brwWebBrowser_.SetEvents(this);
  cboAddress_.OnKeyDown([weak = weak_from_this()](int keyCode) {
    const auto self = weak.lock();
    return self && self->cboAddress_KeyDown(keyCode);
  });
  cboAddress_.OnDblClick(WhileAlive(&frmBrowser::cboAddress_DblClick));
  cboAddress_.OnClick(WhileAlive(&frmBrowser::cboAddress_Click));
  SearchWeb_.OnClick(WhileAlive(&frmBrowser::SearchWeb_Click));
  btnGo_.OnClick(WhileAlive(&frmBrowser::btnGo_Click));
  btnsearch_.OnClick(WhileAlive(&frmBrowser::btnsearch_Click));
  ResizeTimer_.OnTimer(WhileAlive(&frmBrowser::ResizeTimer_Timer));
}

void frmBrowser::Form_Load() {
  const auto self = shared_from_this();
  Keyboard = std::make_unique<KeyboardEvents>(services_.keyboard);
  Keyboard->KeyDown = [weak = weak_from_this()](std::int16_t& KeyCode, std::int16_t& Shift) {
    if (const auto window = weak.lock()) {
      window->Keyboard_KeyDown(KeyCode, Shift);
    }
  };
  std::shared_ptr<frmBrowser> active;
  attempt([&] { active = services_.frame.ActiveForm(); });
  if (!active) {
    PlaceFirstWindow();
  }
  Form_Resize();
}

/// With no other child to go by, the window goes to the corner and is no larger than the area.
void frmBrowser::PlaceFirstWindow() {
  attempt([&] { form_->SetLeft(0); });
  attempt([&] { form_->SetTop(0); });
  attempt([&] {
    if (const Twips width = services_.frame.ScaleWidth(); form_->Width() > width) {
      form_->SetWidth(width);
    }
  });
  attempt([&] {
    if (const Twips height = services_.frame.ScaleHeight(); form_->Height() > height) {
      form_->SetHeight(height);
    }
  });
}

void frmBrowser::Form_Activate() {
  const auto self = shared_from_this();
  attempt([&] { brwWebBrowser_.ExecWB(OLECMDID_UPDATECOMMANDS, 0); });
  attempt([&] {
    if (brwWebBrowser_.Busy()) {
      services_.frame.Logo_Animate();
    }
  });
  // Wipes what is typed in the box, and fills a box that a block has emptied.
  attempt([&] { cboAddress_.SetText(brwWebBrowser_.LocationURL()); });
}

void frmBrowser::Form_Deactivate() {
  const auto self = shared_from_this();
  attempt([&] { services_.frame.Status().SetPanelText("TEXT", ""); });
  attempt([&] { services_.frame.SetLastDeactivated(weak_from_this()); });
}

/// The form file lays the controls out; a pop-up in front grows a little first.
void frmBrowser::Form_Resize() {
  const auto self = shared_from_this();
  attempt([&] {
    const auto popUp = ActivePopUp();
    // Growing resizes that window in its turn, and one step is all that a resize asks for.
    if (!popUp || std::exchange(popUp->beingWidened_, true)) {
      return;
    }
    attempt([&] { popUp->form_->SetWidth(popUp->form_->Width() + 1); });
    popUp->beingWidened_ = false;
  });
}

void frmBrowser::Form_Unload() {
  const auto self = shared_from_this();
  attempt([&] { services_.frame.Logo_AnimateStop(); });
  attempt([&] { services_.frame.Status().SetText(""); });
  // From here on no event comes, no key is heard, and what the gate holds for this window is refused.
  attempt([&] { brwWebBrowser_.SetEvents(nullptr); });
  attempt([&] { form_->SetEvents(nullptr); });
  gateWindow_.reset();
  Keyboard.reset();
  mWbrDoc.reset();
  attempt([&] { services_.frame.BrowserUnloaded(*this); });
}

/// kept on purpose: the timer is off and nothing starts it.
void frmBrowser::ResizeTimer_Timer() {
  attempt([&] { form_->SetLeft(form_->Left() + 1); });
  attempt([&] { form_->SetTop(form_->Top() + 1); });
  attempt([&] { ResizeTimer_.SetEnabled(false); });
}

void frmBrowser::btnGo_Click() {
  attempt([&] { services_.frame.tileme(); });
}

void frmBrowser::btnsearch_Click() {
  attempt([&] { services_.frame.cascade(); });
}

std::shared_ptr<frmBrowser> frmBrowser::ActivePopUp() const {
  auto active = services_.frame.ActiveForm();
  return active && active->Tag() == "POP" ? std::move(active) : nullptr;
}

}  // namespace kivandra
