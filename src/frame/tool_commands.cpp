// SPDX-License-Identifier: GPL-3.0-or-later
// What a click on a tool does. Tools are told apart by exact comparison, in the order of the rows.
#include <array>

#include "core/settings.h"
#include "core/user_settings.h"
#include "filter/filter_values.h"
#include "frame/frm_main.h"
#include "hosts.h"
#include "support/attempt.h"

namespace kivandra {
namespace {

/// Lowers BackBypass at the end of the scope, however that ends: left up, it would let every page pass.
class BackBypassEnds {
 public:
  BackBypassEnds() = default;
  ~BackBypassEnds() { BackBypass = false; }
  BackBypassEnds(const BackBypassEnds&) = delete;
  BackBypassEnds& operator=(const BackBypassEnds&) = delete;
};

}  // namespace

void frmMain::BonusBar_ToolClick(Tool& tool) {
  struct Row {
    const char* caption;
    std::function<void()> command;
  };
  // Every command passes over its errors: with no child window it does nothing and says nothing.
  const std::array<Row, 8> rows = {{
      {"&Lock", [this] { ActiveChild().Padlock(); }},
      {"btnGo", [this] { GoAddress(); }},
      {"&Back", [this] { ToolBack(); }},
      {"&Forward", [this] { ActiveChild().brwWebBrowser().GoForward(); }},
      {"&Stop", [this] { ActiveChild().brwWebBrowser().Stop(); }},
      {"&Refresh", [this] { ActiveChild().brwWebBrowser().Refresh(); }},
      {"&Home", [this] { GoHome(); }},
      {"&Print", [this] { ActiveChild().brwWebBrowser().ExecWB(OLECMDID_PRINT, 1); }},
  }};
  const std::string& caption = tool.Caption();
  for (const Row& row : rows) {
    if (caption == row.caption) {
      attempt(row.command);
      return;
    }
  }
}

void frmMain::ToolBack() {
  const auto child = ActiveForm();
  WebBrowser& browser = ActiveChild().brwWebBrowser();
  const BackBypassEnds bypassEnds;
  attempt([&] { BackBypass = Val(TextOf(ReadItem(services_.registry, "B_B"))) == 1; });
  attempt([&] { browser.GoBack(); });
}

void frmMain::GoHome() {
  if (StoredHomePage(services_.registry).empty()) {
    SaveSetting(services_.registry, "Kivandra", "Home Page", "URL", std::string(hosts::kProductHome));
  }
  if (!ActiveForm()) {
    mnuFileNew_Click();
    return;
  }
  services_.application.Navigate(StoredHomePage(services_.registry));
}

void frmMain::GoAddress() {
  attempt([&] {
    if (!TheAddress().Text().empty()) {
      const auto child = ActiveForm();
      ActiveChild().brwWebBrowser().Stop();
      Logo_Animate();
      const std::string address = frmBrowser::getURL(TheAddress().Text());
      ActiveChild().brwWebBrowser().Navigate(address);
    } else {
      services_.application.NewWindow();
      ActiveChild().brwWebBrowser().Navigate(frmBrowser::getURL(""));
    }
  });
}

}  // namespace kivandra
