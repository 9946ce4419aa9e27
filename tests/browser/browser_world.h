// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "browser/frm_browser.h"
#include "core/core_values.h"
#include "fakes/fake_event_loop.h"
#include "fakes/fake_forms.h"
#include "fakes/fake_keyboard_hook.h"
#include "fakes/fake_services.h"
#include "fakes/journal.h"
#include "fakes/memory_registry.h"
#include "filter/filter_values.h"
#include "filter/gate_shell.h"

namespace kivandra::fakes {

class FakeScriptObject : public ScriptObject {
 public:
  [[nodiscard]] std::vector<Member> Members() const override { return {}; }
  ScriptValue Invoke(std::string_view, const std::vector<ScriptValue>&) override { return {}; }
};

/// The frame as the gate and the child windows see it: its commands are journal lines, its controls are those
/// of a form "frmMain", and its active child is the form that the fakes hold for active.
class FakeFrame : public BrowserFrame, public GateFrame {
 public:
  FakeFrame(Journal& journal, FakeForms& forms)
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

  // BrowserFrame, and what the gate shares with it.
  void Logo_Animate() override { journal_.Call("Logo_Animate"); }
  void Logo_AnimateStop() override { journal_.Call("Logo_AnimateStop"); }
  void ShowStillLogo() override { journal_.Call("ShowStillLogo"); }
  void tileme() override { journal_.Call("tileme"); }
  void cascade() override { journal_.Call("cascade"); }
  void mnuEditCopy_Click() override {
    journal_.Call("mnuEditCopy_Click");
    if (onCopy) {
      onCopy();
    }
  }
  ComboBox& TheAddress() override { return Address(); }
  StatusBar& Status() override { return form_->StatusOf("Status"); }
  BarControl& BonusBar() override { return Bars(); }
  [[nodiscard]] Twips ScaleWidth() const override { return form_->scaleWidth; }
  [[nodiscard]] Twips ScaleHeight() const override { return form_->scaleHeight; }
  [[nodiscard]] std::shared_ptr<frmBrowser> ActiveForm() const override {
    const auto found = std::find_if(windows.begin(), windows.end(),
                                    [this](const auto& each) { return &each->Window() == forms_.active; });
    return found == windows.end() ? nullptr : *found;
  }
  void SetLastDeactivated(std::weak_ptr<frmBrowser> window) override {
    journal_.Call("LastDeactivated = window");
    LastDeactivated = std::move(window);
  }
  std::shared_ptr<frmBrowser> NewBrowser() override {
    const auto window = frmBrowser::Create(*services);
    windows.push_back(window);
    if (onNewWindow) {
      onNewWindow(*window);
    }
    return window;
  }
  void BrowserUnloaded(const frmBrowser& window) override {
    journal_.Note("BrowserUnloaded");
    windows.erase(std::remove_if(windows.begin(), windows.end(),
                                 [&](const auto& each) { return each.get() == &window; }),
                  windows.end());
  }

  // GateFrame
  void SetLockEnabled(bool enabled) override {
    journal_.Call(std::string("Lock.Enabled = ") + (enabled ? "True" : "False"));
  }
  void SetCaption(const std::string& caption) override {
    journal_.Call("frmMain.Caption = " + Quoted(caption));
  }
  [[nodiscard]] std::string TheAddressText() const override { return form_->ComboOf("TheAddress").text; }
  [[nodiscard]] bool StartUpEnabled() const override { return startUp; }

  FakeForm& Window() { return *form_; }
  FakeComboBox& Address() { return form_->ComboOf("TheAddress"); }
  FakeBarControl& Bars() { return form_->BarsOf("BonusBar"); }

  const BrowserServices* services = nullptr;
  std::vector<std::shared_ptr<frmBrowser>> windows;
  std::weak_ptr<frmBrowser> LastDeactivated;
  std::function<void()> onCopy;  ///< what a copy does to the clipboard
  std::function<void(frmBrowser&)> onNewWindow;
  bool startUp = false;

 private:
  Journal& journal_;
  FakeForms& forms_;
  std::shared_ptr<FakeForm> form_;
};

/// A frame with no child yet, the gate, and what child windows need; every process-wide value is fresh.
struct BrowserWorld {
  BrowserWorld() {
    ResetCoreValues();
    FillSettingNames();
    ResetFilterValues();
    frame.services = &services;
    registry.PutSetting("F_C", "1");
    journal.Clear();
  }
  ~BrowserWorld() { CloseAll(); }
  BrowserWorld(const BrowserWorld&) = delete;
  BrowserWorld& operator=(const BrowserWorld&) = delete;

  /// A child window as a person sees it: visible, in front, and with an empty journal.
  std::shared_ptr<frmBrowser> OpenWindow() {
    const auto window = frame.NewBrowser();
    window->Window().SetVisible(true);
    journal.Clear();
    return window;
  }
  static FakeForm& FormOf(frmBrowser& window) { return dynamic_cast<FakeForm&>(window.Window()); }
  static FakeWebBrowser& EngineOf(frmBrowser& window) {
    return dynamic_cast<FakeWebBrowser&>(window.brwWebBrowser());
  }
  static FakeComboBox& AddressOf(frmBrowser& window) {
    return dynamic_cast<FakeComboBox&>(window.cboAddress());
  }
  void CloseAll() {
    journal.failAt = 0;
    while (!frame.windows.empty()) {
      frame.windows.back()->Window().Unload();
    }
  }

  Journal journal;
  FakeEventLoop loop{journal};
  FakeForms forms{journal, loop};
  FakeFrame frame{journal, forms};
  FakeMessageBoxes boxes{journal};
  MemoryRegistry registry{&journal};
  FakeSound sound{journal};
  FakePageFetch inet1{journal, loop};
  FakeClipboard clipboard{journal};
  FakeKeyboardHook keyboard{journal};
  FakeScriptObject kvd;
  NavigationGate gate{frame, inet1, boxes, sound, registry};
  std::function<void()> whilePasswordIsAsked;  ///< what happens while frmPassword is open
  BrowserServices services{forms,
                           gate,
                           frame,
                           clipboard,
                           registry,
                           boxes,
                           keyboard,
                           kvd,
                           [this] {
                             journal.Call("frmPassword.ShowModal");
                             if (whilePasswordIsAsked) {
                               whilePasswordIsAsked();
                             }
                           },
                           [this](frmBrowser&) { journal.Call("log step"); }};
};

}  // namespace kivandra::fakes
