// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/banner.h"

#include "frame/frm_main.h"
#include "hosts.h"
#include "support/attempt.h"

namespace kivandra {

void Banner::BeforeNavigate2(std::shared_ptr<Navigation> navigation) {
  // 1.
  const std::string url = navigation->Url();
  // 2. Anywhere in the address, capitals apart from small letters.
  const std::string bannerPlace = std::string(hosts::kProductSite) + "/banners";
  if (url.find(bannerPlace) != std::string::npos) {
    // 3.
    navigation->Allow();
    return;
  }
  // 4. With no child window the click leads nowhere.
  navigation->Refuse();
  std::shared_ptr<frmBrowser> child;
  attempt([&] { child = frame_.ActiveForm(); });
  if (child) {
    attempt([&] { child->brwWebBrowser().SetFocus(); });
    attempt([&] { child->brwWebBrowser().Navigate(url); });
  }
}

void Banner::NewWindow2(WebBrowser*& ppDisp, bool& /*Cancel*/) {
  // 1.
  std::shared_ptr<frmBrowser> child;
  attempt([&] { child = frame_.ActiveForm(); });
  // 2.
  std::shared_ptr<frmBrowser> made;
  if (!child) {
    attempt([&] { made = frame_.NewChild(); });
  }
  if (made) {
    ppDisp = &made->brwWebBrowser();
    attempt([&] { made->Window().SetVisible(true); });
    // The engine must not be handed a window that was closed meanwhile.
    if (!made->Window().Loaded()) {
      ppDisp = nullptr;
    }
  }
  // 3. The engine opens nothing then: the child goes to the address, as if it had been typed there.
  if (child) {
    ppDisp = &child->brwWebBrowser();
  }
}

void Banner::StatusTextChange(const std::string& Text) {
  attempt([&] { frame_.Status().SetText(Text); });
}

}  // namespace kivandra
