// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <webkit/webkit.h>

#include <functional>
#include <memory>
#include <utility>

#include "platform/gtk/web/web_signals.h"

namespace kivandra::gtk {

/// Knows whether anything that a page and its frames asked for is still on its way. It is the one sign of a
/// frame's load that is stopped or taken away: such a frame reports no end, and the engine tells the progress
/// of whole pages alone.
class ResourceWatch : public std::enable_shared_from_this<ResourceWatch> {
 public:
  /// `quiet` runs each time when the last thing has come or is given up.
  explicit ResourceWatch(std::function<void()> quiet) : quiet_(std::move(quiet)) {}

  void Start(WebKitWebView* view);
  void Cut();
  /// What is on its way belongs to a page that is gone, and may never be heard of.
  void Forget();
  [[nodiscard]] bool Quiet() const { return open_ == 0; }

 private:
  struct Load;

  void OnStarted(WebKitWebResource* resource, WebKitURIRequest* request);
  void Ended(unsigned page);

  std::function<void()> quiet_;
  SignalConnections signals_;
  unsigned page_ = 0;  // counts the pages
  int open_ = 0;       // of this page
};

}  // namespace kivandra::gtk
