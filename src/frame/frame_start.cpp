// SPDX-License-Identifier: GPL-3.0-or-later
// The frame's load, step by step. An error ends it where it stands; Load tells it in a box.
#include "core/core_values.h"
#include "core/program_files.h"
#include "core/program_sound.h"
#include "core/settings.h"
#include "core/site_page.h"
#include "filter/bad_words.h"
#include "filter/filter_values.h"
#include "frame/domain_lists.h"
#include "frame/frm_main.h"
#include "platform/skin_form.h"
#include "platform/timer.h"
#include "support/attempt.h"

namespace kivandra {

void frmMain::MDIForm_Load() {
  // 1.
  ShowSideBarAsStored();
  // 2. The keyboard hook hears the frame.
  Keyboard = std::make_unique<KeyboardEvents>(services_.keyboard);
  Keyboard->KeyDown = [this](std::int16_t& KeyCode, std::int16_t& Shift) {
    Keyboard_KeyDown(KeyCode, Shift);
  };
  // 3.
  HostControls();
  // 4.
  PlayProgramSound(services_.registry, services_.sound, services_.system, "welcome.wav");
  // 5.
  brwBanner().Navigate(SitePage("/banners/banner1.html"));
  // 6.
  WebBrowser2().Navigate(ProgramFile(services_.system, "smile.gif"));
  // 7.
  Window().Get<SkinForm>("SkinForm1").SetProperty14(1);
  // 8.
  ApplySkin(SkinFile);
  // 9.
  FillBadWords();
  // 10.
  LoadDomainLists(services_.registry, services_.events, services_.system.ProgramFileName());
  // 11. kept on purpose: the same banner page again.
  brwBanner().Navigate(SitePage("/banners/banner1.html"));
  // 12.
  Window().SetCaption("Kivandra 1.45");
  // 13.
  mnuFileNew_Click();
  // 14.
  GreetFirstStart();
  // 15.
  PlaceFirstChild();
  // 16. The tip of the day comes a moment after the frame.
  if (Val(TextOf(ReadItem(services_.registry, "T_OD"))) != 0 && !TipOpen) {
    TimerOf("timerTips").SetEnabled(true);
  }
  // 17.
  if (services_.CheckForUpdate) {
    services_.CheckForUpdate(false);
  }
}

void frmMain::FillFilterIfEmpty() {
  // A load that an error has ended leaves a frame in which a child can still be opened; empty tables would
  // let every page pass there.
  if (BadWords[1].empty()) {
    FillBadWords();
    attempt(
        [&] { LoadDomainLists(services_.registry, services_.events, services_.system.ProgramFileName()); });
  }
}

void frmMain::HostControls() {
  const auto host = [this](const char* band, const char* tool, Control& control) {
    BonusBar().Bands(band).Tools(tool).SetCustom(&control);
  };
  host("MainBar", "Spacer", Window().Get<PictureBox>("TheSpacer"));
  host("Bonus Bar", "AddressBar", TheAddress());
  host("MainBar", "Banner", Window().Get<PictureBox>("picBannerBorder"));
  host("MainBar", "LogoBox", Window().Get<PictureBox>("Logo"));
}

void frmMain::GreetFirstStart() {
  if (!TextOf(ReadItem(services_.registry, "FirstTime")).empty()) {
    return;
  }
  WebBrowser2().Stop();
  // Saved before the page is asked for, so a machine without a network is greeted once all the same.
  SaveItem(services_.registry, "FirstTime", "1");
  HeldChild()->brwWebBrowser().Navigate(SitePage("/onetime.asp"));
}

void frmMain::PlaceFirstChild() {
  constexpr Twips kCorner = 100;
  constexpr Twips kMargin = 200;
  constexpr Twips kMarginBesideSideBar = 300;
  const auto held = HeldChild();
  Form& child = held->Window();
  child.SetTop(kCorner);
  child.SetLeft(kCorner);
  child.SetHeight(Window().ScaleHeight() - kMargin);
  if (mnuSidebarChecked) {
    child.SetWidth(Window().Width() - BonusBar().Bands("SideBar").Width() - kMarginBesideSideBar);
  } else {
    child.SetWidth(Window().ScaleWidth() - kMargin);
  }
}

}  // namespace kivandra
