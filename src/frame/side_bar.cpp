// SPDX-License-Identifier: GPL-3.0-or-later
// The side bar comes and goes; whether it stands is the one thing about the bars that is remembered.
#include "core/settings.h"
#include "frame/frm_main.h"
#include "support/attempt.h"

namespace kivandra {

namespace {

constexpr const char* kEntry = "mnuSidebar";

}  // namespace

void frmMain::ShowSideBarAsStored() {
  mnuSidebarChecked = TextOf(ReadItem(services_.registry, "Sidebar")) == TextOf(true);
  BonusBar().Bands("SideBar").SetVisible(mnuSidebarChecked);
  // A menu that could not be laid does not stop the start.
  attempt([&] { Menu().SetChecked(kEntry, mnuSidebarChecked); });
}

void frmMain::mnuSidebar_Click() {
  // Any failure ends it, but for the one width that is tried again.
  attempt([&] {
    const auto child = HeldChild();
    // 1. kept on purpose: read and not used.
    (void)child->cboAddress().Text();
    // 2.
    Menu().SetChecked(kEntry, !mnuSidebarChecked);
    mnuSidebarChecked = !mnuSidebarChecked;
    // 3 and 4.
    BonusBar().Bands("SideBar").SetVisible(mnuSidebarChecked);
    SaveItem(services_.registry, "Sidebar", TextOf(mnuSidebarChecked));
    if (mnuSidebarChecked) {
      FitBesideSideBar(child->Window());
    } else {
      FitWithoutSideBar(child->Window());
    }
  });
}

void frmMain::FitBesideSideBar(Form& child) {
  constexpr Twips kMargin = 300;
  child.SetWidth(Window().ScaleWidth() - BonusBar().Bands("SideBar").Width() - kMargin);
  child.SetHeight(Window().ScaleHeight() - BonusBar().Bands("MainBar").Height());
}

void frmMain::FitWithoutSideBar(Form& child) {
  constexpr Twips kMargin = 200;
  const auto setWidth = [&] { child.SetWidth(Window().ScaleWidth() - kMargin); };
  if (!attempt(setWidth)) {
    // A maximised child has no width of its own until the windows are cascaded.
    cascade();
    setWidth();
    // kept on purpose: the frame's whole height here, its inside above.
    child.SetHeight(Window().Height() - BonusBar().Bands("MainBar").Height());
  }
}

}  // namespace kivandra
