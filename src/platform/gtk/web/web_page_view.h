// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>
#include <webkit/webkit.h>

#include <string>

#include "platform/gtk/controls/widget_control.h"
#include "platform/gtk/web/web_drops.h"
#include "platform/gtk/web/web_engine.h"
#include "platform/page_view.h"

namespace kivandra::gtk {

/// A view of the product's own pages. No gate stands before it, so a page can't lead away from its own host,
/// or from its own folder if it is a file.
class WebPageView final : public PageView, public WidgetControl {
 public:
  WebPageView(WebEngine& engine, Gtk::Box& place);
  ~WebPageView() override;

  void Navigate(const std::string& address) override;
  void Stop() override;

 private:
  static gboolean OnDecidePolicy(WebKitWebView* view, WebKitPolicyDecision* decision,
                                 WebKitPolicyDecisionType type, gpointer self);
  static gboolean OnLoadFailed(WebKitWebView* view, WebKitLoadEvent event, const char* address, GError* error,
                               gpointer self);

  WebEngine& engine_;
  WebKitWebView* view_;
  std::shared_ptr<LinkDrops> drops_ = std::make_shared<LinkDrops>(nullptr);
  std::string home_;  // what every address of the page begins with
};

}  // namespace kivandra::gtk
