// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
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
  [[nodiscard]] std::vector<Member> Members() const override;
  ScriptValue Invoke(std::string_view, const std::vector<ScriptValue>&) override;
};

/// The frame as the gate and the child windows see it: its commands are journal lines, its controls are those
/// of a form "frmMain", and its active child is the form that the fakes hold for active.
class FakeFrame : public BrowserFrame, public GateFrame {
 public:
  FakeFrame(Journal& journal, FakeForms& forms);
  ~FakeFrame() override;

  // BrowserFrame, and what the gate shares with it.
  void Logo_Animate() override;
  void Logo_AnimateStop() override;
  void ShowStillLogo() override;
  void tileme() override;
  void cascade() override;
  void mnuEditCopy_Click() override;
  ComboBox& TheAddress() override;
  StatusBar& Status() override;
  BarControl& BonusBar() override;
  [[nodiscard]] Twips ScaleWidth() const override;
  [[nodiscard]] Twips ScaleHeight() const override;
  [[nodiscard]] std::shared_ptr<frmBrowser> ActiveForm() const override;
  void SetLastDeactivated(std::weak_ptr<frmBrowser> window) override;
  std::shared_ptr<frmBrowser> NewBrowser() override;
  void BrowserUnloaded(const frmBrowser& window) override;

  // GateFrame
  void SetLockEnabled(bool enabled) override;
  void SetCaption(const std::string& caption) override;
  [[nodiscard]] std::string TheAddressText() const override;
  [[nodiscard]] bool StartUpEnabled() const override;

  FakeForm& Window();
  FakeComboBox& Address();
  FakeBarControl& Bars();

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
  BrowserWorld();
  ~BrowserWorld();
  BrowserWorld(const BrowserWorld&) = delete;
  BrowserWorld& operator=(const BrowserWorld&) = delete;

  /// A child window as a person sees it: visible, in front, and with an empty journal.
  std::shared_ptr<frmBrowser> OpenWindow();
  static FakeForm& FormOf(frmBrowser& window);
  static FakeWebBrowser& EngineOf(frmBrowser& window);
  static FakeComboBox& AddressOf(frmBrowser& window);
  void CloseAll();

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
