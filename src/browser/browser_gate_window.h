// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "filter/gate_shell.h"
#include "platform/combo_box.h"
#include "platform/form.h"
#include "platform/web_browser.h"

namespace kivandra {

/// A child window as the gate sees it. It ends when its window is unloaded, and a navigation that the gate
/// still holds for it is refused then.
class BrowserGateWindow : public GateWindow {
 public:
  /// Both controls belong to `form`.
  BrowserGateWindow(std::shared_ptr<Form> form, WebBrowser& brwWebBrowser, ComboBox& cboAddress)
      : form_(std::move(form)), brwWebBrowser_(brwWebBrowser), cboAddress_(cboAddress) {}

  void SetAddressText(const std::string& text) override { cboAddress_.SetText(text); }
  void StopBrowser() override { brwWebBrowser_.Stop(); }
  [[nodiscard]] enum WindowState WindowState() const override { return form_->WindowState(); }
  void SetWindowState(enum WindowState state) override { form_->SetWindowState(state); }

 private:
  std::shared_ptr<Form> form_;
  WebBrowser& brwWebBrowser_;
  ComboBox& cboAddress_;
};

}  // namespace kivandra
