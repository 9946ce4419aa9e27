// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <webkit/webkit.h>

#include <memory>

#include "platform/gtk/web/web_signals.h"

namespace kivandra::gtk {

/// Knows when a person last pressed a button or a key in a page, so that what pages do in answer to a person
/// can be told from what their scripts do by themselves.
class Presses : public std::enable_shared_from_this<Presses> {
 public:
  void Start(WebKitWebView* view);
  void Cut() { signals_.Cut(); }

  /// Whether a person pressed something a moment ago. Each press counts once.
  [[nodiscard]] bool Take();

 private:
  gboolean OnEvent(GdkEvent* event);

  gint64 pressed_ = 0;  // when, in microseconds; 0 once it has counted
  guint32 stamp_ = 0;   // of the latest press: keys that a page has no use for come back with their old one
  SignalConnections signals_;
};

}  // namespace kivandra::gtk
