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
  explicit FakeGateFrame(Journal& journal);
  ~FakeGateFrame() override;

  void SetLockEnabled(bool enabled) override;
  void SetCaption(const std::string& text) override;
  void Logo_Animate() override;
  void Logo_AnimateStop() override;
  [[nodiscard]] std::string TheAddressText() const override;
  [[nodiscard]] bool StartUpEnabled() const override;

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
  FakeGateWindow(std::string name, Journal& journal);
  ~FakeGateWindow() override;

  void SetAddressText(const std::string& text) override;
  void StopBrowser() override;
  [[nodiscard]] enum WindowState WindowState() const override;
  void SetWindowState(enum WindowState value) override;

  std::string addressText = "as typed";
  enum WindowState state = WindowState::Normal;
  std::function<void()> whenStopped;

 private:
  std::string name_;
  Journal& journal_;
};

/// A gate with everything around it faked: the filter is on, mail is not switched off, the words are few.
struct GateWorld : fakes::FakeWorld {
  GateWorld();
  ~GateWorld();

  std::shared_ptr<fakes::FakeNavigation> Ask(const std::string& url,
                                             const std::shared_ptr<GateWindow>& asking);
  std::shared_ptr<fakes::FakeNavigation> Ask(const std::string& url);

  /// What was done, in order, without what was only read.
  [[nodiscard]] std::vector<std::string> Effects() const;

  FakeGateFrame frame{journal};
  std::shared_ptr<FakeGateWindow> window = std::make_shared<FakeGateWindow>("w", journal);
  std::unique_ptr<NavigationGate> gate;
};

}  // namespace kivandra::test
