// SPDX-License-Identifier: GPL-3.0-or-later
// A page asks for a new window.
#include <algorithm>

#include "browser/frm_browser.h"
#include "core/settings.h"
#include "support/attempt.h"

namespace kivandra {
namespace {

/// Shows every window that is `handle`, from the last loaded to the first.
void ShowFormByHandle(const Forms& forms, const Form* handle) {
  const auto loaded = forms.Loaded();
  std::for_each(loaded.rbegin(), loaded.rend(), [handle](const auto& each) {
    if (each.get() == handle) {
      each->SetVisible(true);
    }
  });
}

}  // namespace

void frmBrowser::NewWindow2(WebBrowser*& ppDisp, bool& Cancel) {
  const auto self = shared_from_this();
  // 1. The parent refuses pop-ups: without a sound or a word.
  bool refused = false;
  attempt([&] { refused = Val(TextOf(ReadItem(services_.registry, "POP"))) == 1; });
  if (refused) {
    Cancel = true;
    return;
  }
  // 2.
  std::shared_ptr<frmBrowser> popUp;
  attempt([&] { popUp = services_.frame.NewBrowser(); });
  if (popUp) {
    Form& window = popUp->Window();
    // 3.
    attempt([&] { window.SetTag("POP"); });
    // 4.
    attempt([&] { window.SetVisible(false); });
    // 5.
    attempt([&] { popUp->brwWebBrowser().SetRegisterAsBrowser(true); });
    // 6. Hidden again, twice: it must not be seen while the engine has not taken it over.
    attempt([&] { window.SetVisible(false); });
    attempt([&] { window.SetVisible(false); });
    // 7. Here the engine opens the page.
    ppDisp = &popUp->brwWebBrowser();
    // 8.
    attempt([&] { ShowFormByHandle(services_.forms, &window); });
    // 9. The frame holds the window; this reference only lasts to the end of the routine.
    // 10.
    attempt([&] { window.SetLeft(window.Left() + 1); });
    // The engine must not be handed a window that was closed meanwhile.
    if (!window.Loaded()) {
      ppDisp = nullptr;
    }
  }
  // 11. The opening page throws up nothing more when it is left.
  attempt([&] {
    if (PageFrame* page = brwWebBrowser_.Page()) {
      page->ClearUnloadHandler();
    }
  });
}

}  // namespace kivandra
