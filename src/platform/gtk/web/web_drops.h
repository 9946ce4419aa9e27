// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <webkit/webkit.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "platform/gtk/web/web_signals.h"

namespace kivandra::gtk {

/// Takes links and files that are dropped on a view before the engine gets them.
///
/// The engine itself asks about a dropped web address (decide-policy) like about a link of the page, but it
/// runs a dropped `javascript:` in the page without any question. So a drop is taken here: a web address is
/// gone to as if it had been typed, everything else is refused. Two things stay with the engine: what a page
/// drags to itself, since pages have drag and drop of their own, and text, which goes into the field it is
/// dropped on and never loads anything.
class LinkDrops : public std::enable_shared_from_this<LinkDrops> {
 public:
  /// `go` is given each web address; without it nothing that is dropped leads anywhere.
  explicit LinkDrops(std::function<void(const std::string& address)> go) : go_(std::move(go)) {}

  void Start(WebKitWebView* view);
  void Cut();

 private:
  struct Reading;

  gboolean OnEvent(GdkEvent* event);
  [[nodiscard]] bool ComesFromThisPage(GdkDrop* drop) const;
  void Dropped(const std::string& text);

  std::function<void(const std::string& address)> go_;
  SignalConnections signals_;
};

}  // namespace kivandra::gtk
