// SPDX-License-Identifier: GPL-3.0-or-later
// The life of a page's load, from its start to its end or its failure.
#include <utility>

#include "platform/gtk/web/web_address.h"
#include "platform/gtk/web/web_browser_view.h"
#include "platform/gtk/web/web_text.h"

namespace kivandra::gtk {
namespace {

/// How many pages may come before the program's load, which was asked for after them: one that sends itself
/// on comes twice.
constexpr int kMostOvertakings = 3;

WebPages::Trouble TroubleOf(GError* error, const std::string& address) {
  // The engine drops the connection when it doesn't trust the site, and at times it hears of that before it
  // hears of the reason. A load that the program or the page gave up ends in the engine's own kind of error.
  const bool dropped = g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED) != FALSE;
  return dropped && SchemeOf(address) == "https" ? WebPages::Trouble::NotTrusted
                                                 : WebPages::Trouble::NotOpened;
}

}  // namespace

std::function<void()> BrowserView::LoadOf(const std::string& address) {
  return [this, address] { webkit_web_view_load_uri(view_, address.c_str()); };
}

void BrowserView::BeginLoad(const std::string& address, std::function<void()> load) {
  if (view_ == nullptr) return;
  asked_ = address;
  overtakings_ = 0;
  ForgetArrival();  // the engine's questions were just dropped
  decided_.reset();
  step_ = nullptr;
  load_ = std::move(load);
  HandOverLoad();
}

void BrowserView::HandOverLoad() {
  ++handOvers_;
  if (decided_) desk_.AwaitAgain(*std::exchange(decided_, std::nullopt));
  toldPage_ = webkit_web_view_get_page_id(view_);
  stepMade_ = false;
  starting_ = true;
  ownPage_ = false;
  const auto load = load_;
  load();
}

void BrowserView::OnLoadChanged(WebKitLoadEvent event) {
  switch (event) {
    case WEBKIT_LOAD_STARTED:
      if (completing_) CompleteLoad();
      ComeIntoWindow();
      starting_ = false;
      decided_.reset();
      loading_ = true;
      committed_ = false;
      TellDownloadBegin();
      break;
    case WEBKIT_LOAD_REDIRECTED:
      break;
    case WEBKIT_LOAD_COMMITTED:
      LoadCommitted();
      break;
    case WEBKIT_LOAD_FINISHED:
      LoadFinished();
      break;
  }
}

std::string BrowserView::CommittedAddress() const {
  const std::string told = EngineAddress();
  WebKitWebResource* page = webkit_web_view_get_main_resource(view_);
  if (page == nullptr || ownPage_ || !(desk_.AwaitedLoad() || decided_)) return told;
  const std::string loaded = Text(webkit_web_resource_get_uri(page));
  return loaded.empty() || WithoutFragment(loaded) == WithoutFragment(told) ? told : loaded;
}

void BrowserView::LoadCommitted() {
  committed_ = true;
  page_.Renew();
  address_ = CommittedAddress();
  title_.clear();
  toldTitle_.clear();
  ForgetArrival();
  starting_ = AwaitsLoad() && ++overtakings_ <= kMostOvertakings;
  if (!starting_) ForgetLoad();
  desk_.DropEngineQuestions();  // they came from the page that is gone
  resources_->Forget();
  Tell([&](WebBrowserEvents& events) { events.StatusTextChange("Opening page " + address_ + "..."); });
  Tell([&](WebBrowserEvents& events) { events.NavigateComplete2(page_, address_); });
  TellHistory();
  LoadLostAgain();
}

void BrowserView::ForgetArrival() {
  judgingArrival_ = false;
  nextArrival_.reset();
}

void BrowserView::ForgetLoad() {
  desk_.ForgetAllowedLoad();
  decided_.reset();
}

void BrowserView::NoteStep() {
  WebKitBackForwardList* list = webkit_web_view_get_back_forward_list(view_);
  stepMade_ = stepMade_ || (step_ != nullptr && webkit_back_forward_list_get_current_item(list) == step_);
}

bool BrowserView::AwaitsLoad() const {
  // The engine asks about a load and tells of its start before its page comes: one that comes before was on
  // its way already. But about a step inside the page it never asks; that one is over when it has been made.
  return decided_ || (desk_.AwaitedLoad() && !stepMade_);
}

void BrowserView::LoadLostAgain() {
  if (view_ == nullptr || !starting_ || !AwaitsLoad()) return;
  // If the page that came lives in another process than the one that was told of the load, that one is heard
  // no more.
  if (webkit_web_view_get_page_id(view_) != toldPage_) HandOverLoad();
}

void BrowserView::LoadFinished() {
  if (!committed_ && ownPage_)
    return;  // the page that is shown instead begins next, and its end is the end of both
  if (!committed_ || !Text(webkit_web_view_get_title(view_)).empty()) {
    CompleteLoad();
    return;
  }
  // The engine tells a short page's title only after its end, and whoever notes the visit wants it: the page
  // knows.
  completing_ = true;
  const auto done = [](GObject* source, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<std::weak_ptr<BrowserView>> weak(static_cast<std::weak_ptr<BrowserView>*>(data));
    JSCValue* title = webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(source), result, nullptr);
    char* text = title != nullptr ? jsc_value_to_string(title) : nullptr;
    const auto view = weak->lock();
    if (view && view->completing_) {
      view->title_ = Text(text);
      view->CompleteLoad();
    }
    g_free(text);
    if (title != nullptr) g_object_unref(title);
  };
  webkit_web_view_evaluate_javascript(view_, "document.title", -1, kOwnWorld, nullptr, nullptr, done,
                                      new std::weak_ptr<BrowserView>(weak_from_this()));
}

void BrowserView::CompleteLoad() {
  loading_ = false;
  completing_ = false;
  ownPage_ = false;
  if (committed_) {
    TellTitle(Title());
    Tell([&](WebBrowserEvents& events) { events.DocumentComplete(page_, address_); });
  }
  Tell([&](WebBrowserEvents& events) { events.StatusTextChange("Done"); });
  TellDownloadComplete();
  LookWhereItStands();  // a step inside the page that was on the screen meanwhile
}

gboolean BrowserView::OnLoadFailed(WebKitLoadEvent /*event*/, const char* address, GError* error) {
  const bool quiet = error->domain == WEBKIT_POLICY_ERROR ||
                     g_error_matches(error, WEBKIT_NETWORK_ERROR, WEBKIT_NETWORK_ERROR_CANCELLED);
  if (!quiet && !Overtaken(Text(address))) ShowTrouble(TroubleOf(error, Text(address)), Text(address));
  return TRUE;
}

gboolean BrowserView::OnLoadFailedWithTlsErrors(const char* address, GTlsCertificate* /*certificate*/,
                                                GTlsCertificateFlags /*errors*/) {
  if (!Overtaken(Text(address))) ShowTrouble(WebPages::Trouble::NotTrusted, Text(address));
  return TRUE;
}

void BrowserView::OnProcessTerminated(WebKitWebProcessTerminationReason /*reason*/) {
  const std::string address = address_;
  ForgetArrival();
  desk_.DropEngineQuestions();
  resources_->Forget();
  page_.Renew();
  loading_ = false;
  completing_ = false;
  TellDownloadComplete();
  Later([this, address, handOvers = handOvers_] {
    if (handOvers != handOvers_) return;  // a load of the program has begun since
    if (AwaitsLoad() && ++overtakings_ <= kMostOvertakings) {
      HandOverLoad();  // whoever was told of it has gone
    } else {
      ForgetLoad();
      ShowTrouble(WebPages::Trouble::Stopped, address);
    }
  });
}

bool BrowserView::Overtaken(const std::string& address) const {
  return address != asked_ && (desk_.AwaitedLoad() || (starting_ && EngineAddress() == asked_));
}

void BrowserView::ShowTrouble(WebPages::Trouble trouble, const std::string& address) {
  if (view_ == nullptr) return;
  ownPage_ = true;
  webkit_web_view_load_alternate_html(view_, engine_.Pages().Page(trouble, address, engine_.Home()).c_str(),
                                      address.c_str(), nullptr);
}

void BrowserView::OnLoading(GParamSpec* /*property*/) {
  if (webkit_web_view_is_loading(view_) != FALSE) return;
  decided_.reset();
  if (!std::exchange(starting_, false)) return;
  const std::string address = EngineAddress();
  if (!StepsTo(address)) {
    LookWhereItStands();
    return;
  }
  // A step back or forward inside the page: it was judged before it began, and the engine asks nothing.
  Later([this, address] {
    if (!StepsTo(address)) return;
    desk_.ForgetAllowedLoad();
    if (!loading_ && address != address_ && address == EngineAddress()) ReportArrival(address);
  });
}

bool BrowserView::StepsTo(const std::string& address) const {
  const auto& awaited = desk_.AwaitedLoad();
  return awaited && awaited->kind == NavigationDesk::LoadKind::History && awaited->url == address;
}

}  // namespace kivandra::gtk
