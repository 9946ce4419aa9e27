// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "fakes/fake_web_browser.h"
#include "fakes/fake_world.h"
#include "filter/filter_values.h"
#include "filter/gate_shell.h"

namespace kivandra::test {

using fakes::Journal;
using fakes::Quoted;

/// A frame that remembers and writes to the journal; what is only read bears a question mark.
class FakeGateFrame : public GateFrame {
 public:
  explicit FakeGateFrame(Journal& journal) : journal_(journal) {}

  void SetLockEnabled(bool enabled) override {
    journal_.Call(std::string("Lock.Enabled = ") + (enabled ? "True" : "False"));
    lockEnabled = enabled;
  }
  void SetCaption(const std::string& text) override {
    journal_.Call("frmMain.Caption = " + Quoted(text));
    caption = text;
  }
  void Logo_Animate() override { journal_.Call("Logo_Animate"); }
  void Logo_AnimateStop() override { journal_.Call("Logo_AnimateStop"); }
  [[nodiscard]] std::string TheAddressText() const override {
    journal_.Call("TheAddress.Text?");
    return addressText;
  }
  [[nodiscard]] bool StartUpEnabled() const override {
    journal_.Call("StartUp.Enabled?");
    if (whenAskedForTheTimer) {
      whenAskedForTheTimer();
    }
    return startUp;
  }

  bool lockEnabled = true;
  std::string caption = "Kivandra 1.45";
  std::string addressText;
  bool startUp = false;
  std::function<void()> whenAskedForTheTimer;

 private:
  Journal& journal_;
};

class FakeGateWindow : public GateWindow {
 public:
  FakeGateWindow(std::string name, Journal& journal) : name_(std::move(name)), journal_(journal) {}

  void SetAddressText(const std::string& text) override {
    journal_.Call(name_ + ".cboAddress.Text = " + Quoted(text));
    addressText = text;
  }
  void StopBrowser() override {
    journal_.Call(name_ + ".Stop");
    if (whenStopped) {
      whenStopped();
    }
  }
  [[nodiscard]] enum WindowState WindowState() const override {
    journal_.Call(name_ + ".WindowState?");
    return state;
  }
  void SetWindowState(enum WindowState value) override {
    journal_.Call(name_ + ".WindowState = " + std::to_string(static_cast<int>(value)));
    state = value;
  }

  std::string addressText = "as typed";
  enum WindowState state = WindowState::Normal;
  std::function<void()> whenStopped;

 private:
  std::string name_;
  Journal& journal_;
};

/// A gate with everything around it faked: the filter is on, mail is not switched off, the words are few.
struct GateWorld : fakes::FakeWorld {
  GateWorld() {
    ResetFilterValues();
    BadWords[1] = "porn";
    BadWords[2] = "sex";
    registry.PutSetting("F_C", "1");
    registry.PutSetting("D_EM", "0");
    gate = std::make_unique<NavigationGate>(frame, inet1, boxes, sound, registry);
  }

  std::shared_ptr<fakes::FakeNavigation> Ask(const std::string& url,
                                             const std::shared_ptr<GateWindow>& asking) {
    auto navigation = std::make_shared<fakes::FakeNavigation>(url, journal);
    gate->BeforeNavigate2(asking, navigation);
    return navigation;
  }
  std::shared_ptr<fakes::FakeNavigation> Ask(const std::string& url) { return Ask(url, window); }

  /// What was done, in order, without what was only read.
  [[nodiscard]] std::vector<std::string> Effects() const {
    std::vector<std::string> effects;
    for (const std::string& line : journal.lines) {
      if (!line.ends_with('?')) {
        effects.push_back(line);
      }
    }
    return effects;
  }

  FakeGateFrame frame{journal};
  std::shared_ptr<FakeGateWindow> window = std::make_shared<FakeGateWindow>("w", journal);
  std::unique_ptr<NavigationGate> gate;
};

}  // namespace kivandra::test
