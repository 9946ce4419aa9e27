// SPDX-License-Identifier: GPL-3.0-or-later
// The commands of the menus File and Favorites.
#include "filter/filter_values.h"
#include "frame/frm_main.h"
#include "support/attempt.h"

namespace kivandra {

void frmMain::mnuFileNew_Click() {
  services_.application.NewWindow();
  services_.application.Navigate(HomePage(services_.registry));
  BackBypass = false;
}

void frmMain::mnuFileOpen_Click() {
  const auto form = form_;
  std::string file;
  attempt([&] {
    CommonDialog1().SetFilter(
        "Web Pages and Office Documents "
        "(*.doc, *.xls, *.ppt, *.htm, *.html)|*.doc;*.xls;*.ppt;*.htm;*.html");
  });
  attempt([&] { CommonDialog1().SetFilterIndex(1); });
  attempt([&] { CommonDialog1().SetFlags(OFN_FILEMUSTEXIST + OFN_HIDEREADONLY); });
  attempt([&] {
    CommonDialog1().ShowOpen();
    file = CommonDialog1().FileName();
  });
  if (!file.empty()) {
    attempt([&] { services_.application.Navigate(file); });
  }
}

void frmMain::mnuPrintPreview_Click() {
  const auto child = HeldChild();
  (void)child->brwWebBrowser().QueryStatusWB(OLECMDID_PRINTPREVIEW);
  // kept on purpose: there is never a preview.
  services_.boxes.MsgBox("The Print Preview Command is Currently Disabled or Not Available.");
}

void frmMain::mnuFileExit_Click() {
  const auto form = form_;
  for (const auto& window : services_.forms.Loaded()) {
    if (window->Name() == "frmOptions") {
      attempt([&] { window->Unload(); });
    }
  }
  attempt([&] { Window().Unload(); });
}

void frmMain::mnuAddFavourites_Click() {
  const auto child = HeldChild();
  if (services_.addFavourite) {
    services_.addFavourite(child->brwWebBrowser().LocationURL(), child->cboAddress().Text());
  }
}

}  // namespace kivandra
