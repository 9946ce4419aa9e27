// SPDX-License-Identifier: GPL-3.0-or-later
// What a click on a tool does. Tools are told apart by exact comparison, in the order of the rows: help and
// links by the tool's name, commands by its caption, searches by either. The first row that fits ends the
// click.
#include <functional>
#include <vector>

#include "core/settings.h"
#include "core/site_page.h"
#include "core/user_settings.h"
#include "filter/filter_values.h"
#include "frame/frm_main.h"
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
  // The window, and the tool with it, may go during the command.
  const auto form = form_;
  // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
  const std::string name = tool.Name();
  // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
  const std::string caption = tool.Caption();
  if (!ToolHelp(name) && !ToolLink(name) && !ToolCommand(caption)) {
    ToolSearch(name, caption);
  }
}

bool frmMain::ToolCommand(const std::string& caption) {
  struct Row {
    std::string_view caption;
    std::function<void()> command;
  };
  const auto child = [this](auto act) { return [this, act] { act(*HeldChild()); }; };
  const auto menu = [this](const char* entry) { return [this, entry] { Menu_Click(entry); }; };
  const std::vector<Row> rows = {
      {"&Lock", child([](frmBrowser& window) { window.Padlock(); })},
      {"btnGo", [this] { GoAddress(); }},
      {"&Back", [this] { ToolBack(); }},
      {"&Forward", child([](frmBrowser& window) { window.brwWebBrowser().GoForward(); })},
      {"&Stop", child([](frmBrowser& window) { window.brwWebBrowser().Stop(); })},
      {"&Refresh", child([](frmBrowser& window) { window.brwWebBrowser().Refresh(); })},
      {"&Home", [this] { GoHome(); }},
      {"Site Of The Month", menu("mnuBerits")},
      {"World Lingo", menu("mnuWorldLingo")},
      {"Systran", menu("mnuSystran")},
      {"Largest", menu("mnuLargest")},
      {"Larger", menu("mnuLarger")},
      {"Medium", menu("mnuMedium")},
      {"Smaller", menu("mnuSmaller")},
      {"Smallest", menu("mnuSmallest")},
      {"Wordpad", menu("mnuWordpad")},
      {"&Print", menu("mnuFilePrint")},
      {"Volume", menu("mnuSound")},
      {"Advertise", [this] { Advertise(); }},
      {"How to Use", menu("mnuRegister")},
      {"Banner Free Browser", [this] { ShowBannerFree("Banner Free", "/bannerfree/"); }},
      {"On-Line Support", [this] { ShowBannerFree("Support", "/support.asp"); }},
      // kept on purpose: these two are never reached.
      {"&Back", [this] { ToolBack(); }},
      {"&Forward", child([](frmBrowser& window) { window.brwWebBrowser().GoForward(); })},
      {"Find", [this] { ToolFind(); }},
      {"Highlight", [this] { ToolHighlight(); }},
      {"Notepad", [this] { services_.shell.Shell("notepad.exe", kNormalFocus); }},
      {"Calculator", [this] { ToolCalculator(); }},
  };
  for (const Row& row : rows) {
    if (caption == row.caption) {
      // An error ends the command and is passed over: with no child window it does nothing and says nothing.
      attempt(row.command);
      return true;
    }
  }
  return false;
}

void frmMain::BonusBar_ToolEntered(Tool& tool) {
  attempt([&] {
    if (tool.Caption() == "Search") {
      tool.SetText("");
    }
  });
}

void frmMain::ToolBack() {
  const auto child = HeldChild();
  const BackBypassEnds bypassEnds;
  attempt([&] { BackBypass = Val(TextOf(ReadItem(services_.registry, "B_B"))) == 1; });
  attempt([&] { child->brwWebBrowser().GoBack(); });
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
      HeldChild()->brwWebBrowser().Stop();
      Logo_Animate();
      LoadHTML(frmBrowser::getURL(TheAddress().Text()));
    } else {
      services_.application.NewWindow();
      LoadHTML(frmBrowser::getURL(""));
    }
  });
}

void frmMain::Advertise() {
  if (!attempt([&] { LoadHTML(SitePage("/sponsor.asp")); })) {
    AdvertiseInNewWindow();
  }
}

void frmMain::AdvertiseInNewWindow() {
  services_.application.NewWindow();
  LoadHTML(SitePage("/sponsor.asp"));
}

void frmMain::ToolFind() {
  const auto child = HeldChild();
  attempt([&] { child->brwWebBrowser().SetFocus(); });
  attempt([&] { services_.shell.SendKeys("^{f}"); });
}

void frmMain::ToolHighlight() {
  const std::string text = SearchText();
  if (!text.empty()) {
    HeldChild()->highlight(text);
  }
}

void frmMain::ToolCalculator() {
  services_.shell.Shell("calc.exe", kNormalFocus);
  // The calculator's View menu: its standard view.
  services_.shell.SendKeys("%{v}");
  services_.shell.SendKeys("t");
}

}  // namespace kivandra
