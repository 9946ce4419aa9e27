// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/browser_world.h"

#include <algorithm>
#include <utility>

namespace kivandra::fakes {

std::vector<ScriptObject::Member> FakeScriptObject::Members() const { return {}; }

ScriptValue FakeScriptObject::Invoke(std::string_view, const std::vector<ScriptValue>&) { return {}; }

FakeFrame::FakeFrame(Journal& journal, FakeForms& forms)
    : journal_(journal), forms_(forms), form_(std::make_shared<FakeForm>("frmMain", "frmMain", forms)) {
  ToolData back;
  back.name = "Back";
  ToolData forward;
  forward.name = "Forward";
  BandData mainBar;
  mainBar.name = "MainBar";
  mainBar.tools = {back, forward};
  Bars().Lay({mainBar});
}

FakeFrame::~FakeFrame() = default;

void FakeFrame::Logo_Animate() { journal_.Call("Logo_Animate"); }

void FakeFrame::Logo_AnimateStop() { journal_.Call("Logo_AnimateStop"); }

void FakeFrame::ShowStillLogo() { journal_.Call("ShowStillLogo"); }

void FakeFrame::tileme() { journal_.Call("tileme"); }

void FakeFrame::cascade() { journal_.Call("cascade"); }

void FakeFrame::mnuEditCopy_Click() {
  journal_.Call("mnuEditCopy_Click");
  if (onCopy) {
    onCopy();
  }
}

ComboBox& FakeFrame::TheAddress() { return Address(); }

StatusBar& FakeFrame::Status() { return form_->StatusOf("Status"); }

BarControl& FakeFrame::BonusBar() { return Bars(); }

Twips FakeFrame::ScaleWidth() const { return form_->scaleWidth; }

Twips FakeFrame::ScaleHeight() const { return form_->scaleHeight; }

std::shared_ptr<frmBrowser> FakeFrame::ActiveForm() const {
  const auto found = std::find_if(windows.begin(), windows.end(),
                                  [this](const auto& each) { return &each->Window() == forms_.active; });
  return found == windows.end() ? nullptr : *found;
}

void FakeFrame::SetLastDeactivated(std::weak_ptr<frmBrowser> window) {
  journal_.Call("LastDeactivated = window");
  LastDeactivated = std::move(window);
}

std::shared_ptr<frmBrowser> FakeFrame::NewBrowser() {
  const auto window = frmBrowser::Create(*services);
  windows.push_back(window);
  if (onNewWindow) {
    onNewWindow(*window);
  }
  return window;
}

void FakeFrame::BrowserUnloaded(const frmBrowser& window) {
  journal_.Note("BrowserUnloaded");
  windows.erase(
      std::remove_if(windows.begin(), windows.end(), [&](const auto& each) { return each.get() == &window; }),
      windows.end());
}

void FakeFrame::SetLockEnabled(bool enabled) {
  journal_.Call(std::string("Lock.Enabled = ") + (enabled ? "True" : "False"));
}

void FakeFrame::SetCaption(const std::string& caption) {
  journal_.Call("frmMain.Caption = " + Quoted(caption));
}

std::string FakeFrame::TheAddressText() const { return form_->ComboOf("TheAddress").text; }

bool FakeFrame::StartUpEnabled() const { return startUp; }

FakeForm& FakeFrame::Window() { return *form_; }

FakeComboBox& FakeFrame::Address() { return form_->ComboOf("TheAddress"); }

FakeBarControl& FakeFrame::Bars() { return form_->BarsOf("BonusBar"); }

BrowserWorld::BrowserWorld() {
  ResetCoreValues();
  FillSettingNames();
  ResetFilterValues();
  frame.services = &services;
  registry.PutSetting("F_C", "1");
  journal.Clear();
}

BrowserWorld::~BrowserWorld() { CloseAll(); }

std::shared_ptr<frmBrowser> BrowserWorld::OpenWindow() {
  const auto window = frame.NewBrowser();
  window->Window().SetVisible(true);
  journal.Clear();
  return window;
}

FakeForm& BrowserWorld::FormOf(frmBrowser& window) { return dynamic_cast<FakeForm&>(window.Window()); }

FakeWebBrowser& BrowserWorld::EngineOf(frmBrowser& window) {
  return dynamic_cast<FakeWebBrowser&>(window.brwWebBrowser());
}

FakeComboBox& BrowserWorld::AddressOf(frmBrowser& window) {
  return dynamic_cast<FakeComboBox&>(window.cboAddress());
}

void BrowserWorld::CloseAll() {
  journal.failAt = 0;
  while (!frame.windows.empty()) {
    frame.windows.back()->Window().Unload();
  }
}

}  // namespace kivandra::fakes
