// SPDX-License-Identifier: GPL-3.0-or-later
// The side bar comes and goes; whether it stands is the one thing about the bars that is remembered.
#include "core/settings.h"
#include "frame/frm_main.h"

namespace kivandra {

void frmMain::ShowSideBarAsStored() {
  mnuSidebarChecked = TextOf(ReadItem(services_.registry, "Sidebar")) == "True";
  BonusBar().Bands("SideBar").SetVisible(mnuSidebarChecked);
}

void frmMain::mnuSidebar_Click() {}

}  // namespace kivandra
