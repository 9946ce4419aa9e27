// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/web/web_engine.h"

#include <algorithm>
#include <utility>

#include "platform/gtk/web/web_browser_control.h"
#include "platform/gtk/web/web_browser_view.h"
#include "platform/gtk/web/web_page_view.h"

namespace kivandra::gtk {

WebEngine::WebEngine(const std::string& pagesFolder) : pages_(pagesFolder) {}

WebEngine::~WebEngine() = default;

std::unique_ptr<WebBrowser> WebEngine::MakeBrowser(Gtk::Box& place) {
  WebKitWebView* opener = request_ != nullptr ? std::exchange(request_->opener_, nullptr) : nullptr;
  const auto view = BrowserView::Make(*this, place, opener);
  if (opener != nullptr) request_->made_ = view;
  view->ShowImages(imagesShown_);
  std::erase_if(views_, [](const auto& each) { return each.expired(); });
  views_.push_back(view);
  return std::make_unique<WebBrowserControl>(place, view);
}

std::unique_ptr<PageView> WebEngine::MakePageView(Gtk::Box& place) {
  return std::make_unique<WebPageView>(*this, place);
}

int WebEngine::PageWindows() const {
  return static_cast<int>(std::count_if(views_.begin(), views_.end(), [](const auto& each) {
    const auto view = each.lock();
    return view && view->StandsForPage();
  }));
}

void WebEngine::SetImagesShown(bool shown) {
  imagesShown_ = shown;
  for (const auto& each : views_) {
    if (const auto view = each.lock()) view->ShowImages(shown);
  }
}

WebEngine::WindowRequest::WindowRequest(WebEngine& engine, WebKitWebView* opener)
    : engine_(engine), outer_(std::exchange(engine.request_, this)), opener_(opener) {}

WebEngine::WindowRequest::~WindowRequest() { engine_.request_ = outer_; }

}  // namespace kivandra::gtk
