// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <webkit/webkit.h>

#include <memory>
#include <string>

#include "platform/gtk/web/web_document.h"
#include "platform/gtk/web/web_signals.h"
#include "platform/web_browser.h"

namespace kivandra::gtk {

/// The name of the script world in which the program's own scripts run; pages can't reach it.
inline constexpr char kOwnWorld[] = "kivandra";

/// The page itself as an event speaks of it.
class TopFrame final : public PageFrame {
 public:
  explicit TopFrame(WebKitWebView* view) : view_(view), page_(std::make_shared<PageLife>(PageLife{view})) {}

  [[nodiscard]] bool IsTopLevel() const override { return true; }
  void ClearUnloadHandler() override;
  [[nodiscard]] std::shared_ptr<HtmlDocument> Document() override;

  /// Another page stands now: whoever kept the document of the one before holds an empty one.
  void Renew() { page_ = std::make_shared<PageLife>(PageLife{view_}); }
  /// No page stands any more.
  void End() { page_.reset(); }

 private:
  WebKitWebView* view_;  // not owned; the frame lies beside it
  std::shared_ptr<PageLife> page_;
};

/// Reports what happens to the frames inside a page, by a script of its own in each of them.
class FrameReporter : public std::enable_shared_from_this<FrameReporter> {
 public:
  class Receiver {
   public:
    virtual ~Receiver() = default;
    virtual void FrameNavigated(PageFrame& frame, const std::string& url) = 0;
    virtual void FrameCompleted(PageFrame& frame, const std::string& url) = 0;
  };

  explicit FrameReporter(WebKitUserContentManager* manager) : manager_(manager) {}

  /// Begins to report to `receiver`, until Cut.
  void Start(Receiver* receiver);
  void Cut();

 private:
  gboolean OnMessage(JSCValue* message, WebKitScriptMessageReply* reply);

  WebKitUserContentManager* manager_;  // not owned
  Receiver* receiver_ = nullptr;
  SignalConnections signals_;
};

}  // namespace kivandra::gtk
