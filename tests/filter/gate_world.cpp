// SPDX-License-Identifier: GPL-3.0-or-later
#include "filter/gate_world.h"

#include <utility>

namespace kivandra::test {

FakeGateFrame::FakeGateFrame(Journal& journal) : journal_(journal) {}

FakeGateFrame::~FakeGateFrame() = default;

void FakeGateFrame::SetLockEnabled(bool enabled) {
  journal_.Call(std::string("Lock.Enabled = ") + (enabled ? "True" : "False"));
  lockEnabled = enabled;
}

void FakeGateFrame::SetCaption(const std::string& text) {
  journal_.Call("frmMain.Caption = " + Quoted(text));
  caption = text;
}

void FakeGateFrame::Logo_Animate() { journal_.Call("Logo_Animate"); }

void FakeGateFrame::Logo_AnimateStop() { journal_.Call("Logo_AnimateStop"); }

std::string FakeGateFrame::TheAddressText() const {
  journal_.Call("TheAddress.Text?");
  return addressText;
}

bool FakeGateFrame::StartUpEnabled() const {
  journal_.Call("StartUp.Enabled?");
  if (whenAskedForTheTimer) {
    whenAskedForTheTimer();
  }
  return startUp;
}

FakeGateWindow::FakeGateWindow(std::string name, Journal& journal)
    : name_(std::move(name)), journal_(journal) {}

FakeGateWindow::~FakeGateWindow() = default;

void FakeGateWindow::SetAddressText(const std::string& text) {
  journal_.Call(name_ + ".cboAddress.Text = " + Quoted(text));
  addressText = text;
}

void FakeGateWindow::StopBrowser() {
  journal_.Call(name_ + ".Stop");
  if (whenStopped) {
    whenStopped();
  }
}

enum WindowState FakeGateWindow::WindowState() const {
  journal_.Call(name_ + ".WindowState?");
  return state;
}

void FakeGateWindow::SetWindowState(enum WindowState value) {
  journal_.Call(name_ + ".WindowState = " + std::to_string(static_cast<int>(value)));
  state = value;
}

GateWorld::GateWorld() {
  ResetFilterValues();
  BadWords[1] = "porn";
  BadWords[2] = "sex";
  registry.PutSetting("F_C", "1");
  registry.PutSetting("D_EM", "0");
  gate = std::make_unique<NavigationGate>(frame, inet1, boxes, sound, registry);
}

GateWorld::~GateWorld() = default;

std::shared_ptr<fakes::FakeNavigation> GateWorld::Ask(const std::string& url,
                                                      const std::shared_ptr<GateWindow>& asking) {
  auto navigation = std::make_shared<fakes::FakeNavigation>(url, journal);
  gate->BeforeNavigate2(asking, navigation);
  return navigation;
}

std::shared_ptr<fakes::FakeNavigation> GateWorld::Ask(const std::string& url) { return Ask(url, window); }

std::vector<std::string> GateWorld::Effects() const {
  std::vector<std::string> effects;
  for (const std::string& line : journal.lines) {
    if (!line.ends_with('?')) {
      effects.push_back(line);
    }
  }
  return effects;
}

}  // namespace kivandra::test
