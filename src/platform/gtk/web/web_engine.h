// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <webkit/webkit.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/gtk/engine_factory.h"
#include "platform/gtk/web/web_pages.h"
#include "platform/gtk/web/web_session.h"

namespace kivandra::gtk {

class BrowserView;

/// The engine: its session, its own pages and its controls. Outlives every control that it makes.
class WebEngine final : public EngineFactory {
 public:
  /// `pagesFolder` holds the pages that are shown in place of one that could not be opened.
  explicit WebEngine(const std::string& pagesFolder);
  ~WebEngine() override;

  std::unique_ptr<WebBrowser> MakeBrowser(Gtk::Box& place) override;
  std::unique_ptr<PageView> MakePageView(Gtk::Box& place) override;

  /// What the engine says of itself to servers, and its network layer; both live as long as the engine.
  [[nodiscard]] WebSession& Session() { return session_; }
  [[nodiscard]] const WebPages& Pages() const { return pages_; }
  /// The address that "Go home" on the engine's own pages leads to; without one, or if it gives an empty
  /// text, they don't offer it.
  void SetHome(std::function<std::string()> home) { home_ = std::move(home); }
  [[nodiscard]] std::string Home() const { return home_ ? home_() : std::string(); }

  /// Whether pages show their pictures; they do at first. Holds at once for every browser that stands and for
  /// each that is made later, from its next page on. The program's own pictures and pages don't ask.
  void SetImagesShown(bool shown);
  [[nodiscard]] bool ImagesShown() const { return imagesShown_; }

  /// How many windows that pages opened stand now.
  [[nodiscard]] int PageWindows() const;
  /// Pages get no more windows than this at a time, in the whole program, except one for each press of a
  /// person's button or key in the page that asks. What is asked for beyond that is refused silently: no
  /// event, no window. So a page that opens windows in a loop leaves a frame that can be used and closed.
  static constexpr int kMostPageWindows = 20;

  /// While it stands, the first control that is made is tied to the page that asks for a new window, as the
  /// engine demands.
  class WindowRequest {
   public:
    WindowRequest(WebEngine& engine, WebKitWebView* opener);
    ~WindowRequest();
    WindowRequest(const WindowRequest&) = delete;
    WindowRequest& operator=(const WindowRequest&) = delete;

    /// The view that was tied, or null.
    [[nodiscard]] std::shared_ptr<BrowserView> Made() const { return made_.lock(); }

   private:
    friend class WebEngine;
    WebEngine& engine_;
    WindowRequest* outer_;
    WebKitWebView* opener_;  // null once a view is tied to it
    std::weak_ptr<BrowserView> made_;
  };

 private:
  WebSession session_;
  WebPages pages_;
  std::function<std::string()> home_;
  WindowRequest* request_ = nullptr;
  bool imagesShown_ = true;
  std::vector<std::weak_ptr<BrowserView>> views_;
};

/// Makes the surroundings safe for the engine. To be called before the toolkit and the engine start, while
/// the process has one thread.
void PrepareEngineEnvironment();

/// Why the engine could not shut its pages in, as a sentence for a parent; empty if it can.
[[nodiscard]] std::string SandboxProblem();

}  // namespace kivandra::gtk
