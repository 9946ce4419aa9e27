// SPDX-License-Identifier: GPL-3.0-or-later
// What each entry of the menu does, by its name.
#include <algorithm>
#include <map>
#include <string_view>

#include "frame/frm_main.h"
#include "frame/menu_links.h"
#include "support/attempt.h"

namespace kivandra {

namespace {

// Options of ExecWB.
constexpr int kDefault = 0;
constexpr int kPrompt = 1;

}  // namespace

void frmMain::Menu_Click(const std::string& name) {
  using Handler = void (*)(frmMain&);
  static const std::map<std::string_view, Handler> handlers = {
      {"mnuFileNew", [](frmMain& frame) { frame.mnuFileNew_Click(); }},
      {"mnuFileOpen", [](frmMain& frame) { frame.mnuFileOpen_Click(); }},
      {"mnuFileSave", [](frmMain& frame) { frame.ExecOnChild(OLECMDID_SAVEAS, kPrompt); }},
      {"mnuFilePrint", [](frmMain& frame) { frame.ExecOnChild(OLECMDID_PRINT, kPrompt); }},
      {"mnuPrintPreview", [](frmMain& frame) { frame.mnuPrintPreview_Click(); }},
      {"mnuFilePagesetup", [](frmMain& frame) { frame.ExecOnChild(OLECMDID_PAGESETUP, kPrompt); }},
      {"mnuFileProperties", [](frmMain& frame) { frame.ExecOnChild(OLECMDID_PROPERTIES, kPrompt); }},
      {"mnuskins", [](frmMain& frame) { frame.mnuskins_Click(); }},
      {"mnuFileExit", [](frmMain& frame) { frame.mnuFileExit_Click(); }},

      {"mnuEditCut", [](frmMain& frame) { frame.ExecOnChild(OLECMDID_CUT, kDefault); }},
      {"mnuEditCopy", [](frmMain& frame) { frame.mnuEditCopy_Click(); }},
      {"mnuEditPaste", [](frmMain& frame) { frame.ExecOnChild(OLECMDID_PASTE, kDefault); }},
      {"mnuEditSelectall", [](frmMain& frame) { frame.mnuEditSelectall_Click(); }},
      {"mnuEditFind", [](frmMain& frame) { frame.mnuEditFind_Click(); }},

      {"mnuSidebar", [](frmMain& frame) { frame.mnuSidebar_Click(); }},
      {"mnuContentAdvisor",
       [](frmMain& frame) { frame.Start("rundll32.exe shell32.dll,Control_RunDLL inetcpl.cpl,,2"); }},
      {"mnuLargest", [](frmMain& frame) { frame.ZoomChild(4); }},
      {"mnuLarger", [](frmMain& frame) { frame.ZoomChild(3); }},
      {"mnuMedium", [](frmMain& frame) { frame.ZoomChild(2); }},
      {"mnuSmaller", [](frmMain& frame) { frame.ZoomChild(1); }},
      {"mnuSmallest", [](frmMain& frame) { frame.ZoomChild(0); }},
      {"mnuImages", [](frmMain& frame) { frame.mnuImages_Click(); }},

      // Unlike the tool this never lifts the filter.
      {"mnuGoBack", [](frmMain& frame) { frame.HeldChild()->brwWebBrowser().GoBack(); }},
      {"mnuGoForward", [](frmMain& frame) { frame.HeldChild()->brwWebBrowser().GoForward(); }},

      {"wow_Click", [](frmMain& frame) { Call(frame.services_.openFavourites); }},
      {"mnuAddFavourites", [](frmMain& frame) { frame.mnuAddFavourites_Click(); }},
      {"mnuAddFav", [](frmMain& frame) { Call(frame.services_.organizeFavourites); }},

      {"mnuNotepad", [](frmMain& frame) { frame.Start("notepad.exe"); }},
      {"mnuWordpad", [](frmMain& frame) { frame.Start("Wordpad"); }},
      {"mnuCalc", [](frmMain& frame) { frame.mnuCalc_Click(); }},
      {"mnuSound", [](frmMain& frame) { frame.Start("sndvol32.exe"); }},
      {"mnuAdmin", [](frmMain& frame) { Call(frame.services_.showPassword); }},

      {"mnuTip", [](frmMain& frame) { frame.mnuTip_Click(); }},
      {"mnuUpdate", [](frmMain& frame) { Call(frame.services_.CheckForUpdate, false); }},
  };
  if (const auto handler = handlers.find(name); handler != handlers.end()) {
    attempt([&] { handler->second(*this); });
    return;
  }
  const auto& links = MenuLinks();
  const auto link =
      std::find_if(links.begin(), links.end(), [&](const MenuLink& each) { return each.name == name; });
  if (link != links.end()) {
    attempt([&] { LoadHTML(link->address); });
  }
}

}  // namespace kivandra
