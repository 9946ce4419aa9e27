// SPDX-License-Identifier: GPL-3.0-or-later
// What a page does by itself: steps inside it, its frames, its new windows, and what is told besides.
#include <utility>

#include "platform/gtk/guard.h"
#include "platform/gtk/web/web_address.h"
#include "platform/gtk/web/web_browser_control.h"
#include "platform/gtk/web/web_browser_view.h"
#include "platform/gtk/web/web_dialogs.h"
#include "platform/gtk/web/web_text.h"

namespace kivandra::gtk {
namespace {

constexpr long kCanGoForward = 1;
constexpr long kCanGoBack = 2;

/// How long frames have, once nothing is on its way to them, to report that they are complete.
constexpr guint kFramesEndMilliseconds = 300;

/// The size of the window in which a view lies, as the engine takes it for a new window whose page asks for
/// none.
GdkRectangle WindowSize(WebKitWebView* view) {
  GdkRectangle size{};
  GtkRoot* root = gtk_widget_get_root(GTK_WIDGET(view));
  if (GTK_IS_WINDOW(root)) gtk_window_get_default_size(GTK_WINDOW(root), &size.width, &size.height);
  return size;
}

}  // namespace

// --- Steps inside a page
// ----------------------------------------------------------------------------------------

bool BrowserView::StandsInPage() const {
  if (view_ == nullptr || starting_) return false;
  return loading_ ? committed_ : webkit_web_view_is_loading(view_) == FALSE;
}

void BrowserView::LookWhereItStands() {
  // While a load is on its way the engine shows where it leads, before anything is judged.
  const std::string address = EngineAddress();
  if (address.empty() || address == address_ || !StandsInPage()) return;
  Later([this, address] {
    if (StandsInPage() && address == EngineAddress()) ArrivedInPage(address);
  });
}

void BrowserView::ArrivedInPage(const std::string& url) {
  if (url == address_) return;
  if (WithoutFragment(url) == WithoutFragment(address_)) {
    ReportArrival(url);  // the step was judged when it was asked for
  } else if (judgingArrival_) {
    nextArrival_ = url;  // one question at a time, however fast the page's scripts step
  } else {
    AskForArrival(url);
  }
}

void BrowserView::AskForArrival(const std::string& url) {
  judgingArrival_ = true;
  const std::weak_ptr<BrowserView> weak = weak_from_this();
  desk_.AskForArrival(url, [weak, url](bool allowed) {
    const auto self = weak.lock();
    if (!self || self->view_ == nullptr || !self->judgingArrival_) return;
    self->Later([view = self.get(), url, allowed] {
      if (!std::exchange(view->judgingArrival_, false)) return;
      const std::optional<std::string> next = std::exchange(view->nextArrival_, std::nullopt);
      if (!allowed) {
        view->LeavePage();
      } else if (next) {
        view->AskForArrival(*next);
      } else if (view->StandsInPage() && url == view->EngineAddress()) {
        view->ReportArrival(url);
      }
    });
  });
}

void BrowserView::ReportArrival(const std::string& url) {
  address_ = url;
  TellDownloadBegin();
  Tell([&](WebBrowserEvents& events) { events.NavigateComplete2(page_, address_); });
  Tell([&](WebBrowserEvents& events) { events.DocumentComplete(page_, address_); });
  TellDownloadComplete();
}

void BrowserView::LeavePage() {
  // The page stands at a refused address without having been loaded from there; all that is left is to take
  // it away.
  webkit_web_view_load_alternate_html(view_, "<!DOCTYPE html><title></title>", "about:blank", nullptr);
}

// --- Frames
// -----------------------------------------------------------------------------------------------------

void BrowserView::FrameNavigated(PageFrame& frame, const std::string& url) {
  TellDownloadBegin();
  Tell([&](WebBrowserEvents& events) { events.NavigateComplete2(frame, url); });
  if (resources_->Quiet()) EndFrameLoadsSoon();
}

void BrowserView::FrameCompleted(PageFrame& frame, const std::string& url) {
  Tell([&](WebBrowserEvents& events) { events.DocumentComplete(frame, url); });
  TellDownloadComplete();
  if (loading_) TellDownloadBegin();
}

void BrowserView::EndFrameLoadsSoon() {
  if (!downloading_ || loading_ || std::exchange(endingFrames_, true)) return;
  // A frame that has all it asked for has the time to report its end first.
  Later(
      [this] {
        endingFrames_ = false;
        if (!loading_ && resources_->Quiet()) TellDownloadComplete();
      },
      kFramesEndMilliseconds);
}

// --- New windows
// ------------------------------------------------------------------------------------------------

GtkWidget* BrowserView::OnCreate(WebKitNavigationAction* action) {
  const std::string address = AddressOf(action);
  if (!IsBlankDocument(address) && !PageMayLoad(address)) return nullptr;
  if (!presses_->Take() && engine_.PageWindows() >= WebEngine::kMostPageWindows) return nullptr;
  WebEngine::WindowRequest request(engine_, view_);
  WebBrowser* target = nullptr;
  bool cancel = false;
  Tell([&](WebBrowserEvents& events) { events.NewWindow2(target, cancel); });
  auto* control = dynamic_cast<WebBrowserControl*>(target);
  if (cancel || control == nullptr) return nullptr;
  // A view that was not made for this question must not be given to the engine, which would end the program.
  const std::shared_ptr<BrowserView> chosen = control->View();
  if (chosen == request.Made()) {
    chosen->geometry_ = WindowSize(view_);
    return GTK_WIDGET(chosen->view_);
  }
  // A window that has closed may still be held by whoever gave it.
  const bool gone = chosen->view_ == nullptr ||
                    (chosen->place_ == nullptr && gtk_widget_get_root(GTK_WIDGET(chosen->view_)) == nullptr);
  if (gone) return nullptr;
  // The window was there before. The engine can't open a page's window in it, but it can go to the same
  // address, as if that had been typed there.
  chosen->Later([view = chosen.get(), address] {
    if (!IsBlankDocument(address)) view->Navigate(address);
  });
  return nullptr;
}

gboolean BrowserView::OnPrint(WebKitPrintOperation* /*operation*/) {
  // A page may ask for the dialog in answer to a person; it can't hold anybody up with one after the other.
  if (!banner_ && presses_->Take()) Later([this] { AskPrint(view_); });
  return TRUE;
}

void BrowserView::OnReadyToShow() {
  shown_ = true;
  ComeIntoWindow();
  TellGeometry();
  Tell([](WebBrowserEvents& events) { events.OnVisible(true); });
}

void BrowserView::OnGeometry(GParamSpec* /*property*/) {
  if (shown_) TellGeometry();
}

void BrowserView::TellGeometry() {
  GdkRectangle asked{};
  if (view_ == nullptr) return;
  webkit_window_properties_get_geometry(webkit_web_view_get_window_properties(view_), &asked);
  const GdkRectangle before = std::exchange(geometry_, asked);
  if (asked.x != before.x) Tell([&](WebBrowserEvents& events) { events.WindowSetLeft(asked.x); });
  if (asked.y != before.y) Tell([&](WebBrowserEvents& events) { events.WindowSetTop(asked.y); });
  if (asked.width != before.width)
    Tell([&](WebBrowserEvents& events) { events.WindowSetWidth(asked.width); });
  if (asked.height != before.height)
    Tell([&](WebBrowserEvents& events) { events.WindowSetHeight(asked.height); });
}

void BrowserView::OnCloseRequested() {
  Tell([](WebBrowserEvents& events) { events.OnQuit(); });
}

// --- What is told besides
// ---------------------------------------------------------------------------------------

void BrowserView::OnTitle(GParamSpec* /*property*/) {
  const std::string title = Text(webkit_web_view_get_title(view_));
  if (title.empty()) return;
  Later([this, title] { TellTitle(title); });
}

void BrowserView::TellTitle(const std::string& title) {
  if (title == toldTitle_) return;
  toldTitle_ = title;
  Tell([&](WebBrowserEvents& events) { events.TitleChange(title); });
}

void BrowserView::OnMouseTarget(WebKitHitTestResult* target, guint /*modifiers*/) {
  const bool isLink = webkit_hit_test_result_context_is_link(target) != FALSE;
  std::string text = isLink ? Text(webkit_hit_test_result_get_link_uri(target)) : std::string();
  if (text == status_) return;
  status_ = std::move(text);
  Tell([&](WebBrowserEvents& events) { events.StatusTextChange(status_); });
}

void BrowserView::OnHistoryChanged(WebKitBackForwardListItem* /*added*/, gpointer /*removed*/) {
  NoteStep();
  Later([this] { TellHistory(); });
}

void BrowserView::TellHistory() {
  if (view_ == nullptr) return;
  const bool forward = webkit_web_view_can_go_forward(view_) != FALSE;
  const bool back = webkit_web_view_can_go_back(view_) != FALSE;
  Tell([&](WebBrowserEvents& events) { events.CommandStateChange(kCanGoForward, forward); });
  Tell([&](WebBrowserEvents& events) { events.CommandStateChange(kCanGoBack, back); });
}

void BrowserView::TellDownloadBegin() {
  if (std::exchange(downloading_, true)) return;
  Tell([](WebBrowserEvents& events) { events.DownloadBegin(); });
}

void BrowserView::TellDownloadComplete() {
  if (!std::exchange(downloading_, false)) return;
  Tell([](WebBrowserEvents& events) { events.DownloadComplete(); });
}

std::string BrowserView::EngineAddress() const {
  return view_ != nullptr ? Text(webkit_web_view_get_uri(view_)) : std::string();
}

void BrowserView::Later(std::function<void()> act, guint milliseconds) {
  struct Turn {
    std::weak_ptr<BrowserView> view;
    std::function<void()> act;
  };
  const auto run = [](gpointer data) -> gboolean {
    auto* turn = static_cast<Turn*>(data);
    const auto view = turn->view.lock();
    if (view && view->view_ != nullptr) Guarded([&] { turn->act(); });
    return G_SOURCE_REMOVE;
  };
  g_timeout_add_full(G_PRIORITY_DEFAULT, milliseconds, run, new Turn{weak_from_this(), std::move(act)},
                     [](gpointer data) { delete static_cast<Turn*>(data); });
}

}  // namespace kivandra::gtk
