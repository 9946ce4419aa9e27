// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/web/web_resources.h"

namespace kivandra::gtk {

struct ResourceWatch::Load {
  std::weak_ptr<ResourceWatch> watch;
  unsigned page;
};

void ResourceWatch::Start(WebKitWebView* view) {
  signals_.Connect<&ResourceWatch::OnStarted>(view, "resource-load-started", this);
}

void ResourceWatch::Cut() {
  quiet_ = nullptr;
  signals_.Cut();
}

void ResourceWatch::Forget() {
  ++page_;
  open_ = 0;
}

void ResourceWatch::OnStarted(WebKitWebResource* resource, WebKitURIRequest* /*request*/) {
  ++open_;
  const auto finished = +[](WebKitWebResource* /*resource*/, gpointer data) {
    const auto* load = static_cast<Load*>(data);
    if (const auto watch = load->watch.lock()) watch->Ended(load->page);
  };
  g_signal_connect_data(
      resource, "finished", G_CALLBACK(finished), new Load{weak_from_this(), page_},
      [](gpointer data, GClosure*) { delete static_cast<Load*>(data); }, GConnectFlags{});
}

void ResourceWatch::Ended(unsigned page) {
  if (page != page_ || open_ == 0) return;
  if (--open_ == 0 && quiet_) quiet_();
}

}  // namespace kivandra::gtk
