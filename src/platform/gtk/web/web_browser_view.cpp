// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/web/web_browser_view.h"

#include <string_view>
#include <utility>

#include "platform/gtk/web/find_bar.h"
#include "platform/gtk/web/web_address.h"
#include "platform/gtk/web/web_commands.h"
#include "platform/gtk/web/web_settings.h"
#include "platform/gtk/web/web_text.h"
#include "platform/platform_error.h"

namespace kivandra::gtk {
namespace {

/// Makes the widget; a view for a page's new window must be tied to that page's view and shares its session.
WebKitWebView* MakeWidget(WebEngine& engine, WebKitUserContentManager* scripts, WebKitWebView* opener) {
  WebKitSettings* settings = MakeReaderSettings();
  gpointer view = opener != nullptr
                      ? g_object_new(WEBKIT_TYPE_WEB_VIEW, "related-view", opener, "user-content-manager",
                                     scripts, "settings", settings, nullptr)
                      : g_object_new(WEBKIT_TYPE_WEB_VIEW, "network-session", engine.Session().Get(),
                                     "user-content-manager", scripts, "settings", settings, nullptr);
  g_object_unref(settings);
  return WEBKIT_WEB_VIEW(g_object_ref_sink(view));
}

/// Whether the answer may be shown: one part, no attachment, of a type that the engine shows by itself.
bool MayShow(WebKitResponsePolicyDecision* decision) {
  WebKitURIResponse* response = webkit_response_policy_decision_get_response(decision);
  const std::string type = Text(webkit_uri_response_get_mime_type(response));
  // Its later parts would replace the page without a question.
  if (g_ascii_strcasecmp(type.c_str(), "multipart/x-mixed-replace") == 0) return false;
  if (webkit_response_policy_decision_is_mime_type_supported(decision) == FALSE) return false;
  SoupMessageHeaders* headers = webkit_uri_response_get_http_headers(response);
  char* disposition = nullptr;
  if (headers == nullptr ||
      soup_message_headers_get_content_disposition(headers, &disposition, nullptr) == FALSE) {
    return true;
  }
  const bool attachment = g_ascii_strcasecmp(disposition, "attachment") == 0;
  g_free(disposition);
  return !attachment;
}

/// Whether the place is the frame's banner.
bool IsBanner(const Gtk::Widget& place) {
  for (const Gtk::Widget* each = &place; each != nullptr; each = each->get_parent()) {
    if (each->has_css_class("kv-banner")) return true;
  }
  return false;
}

void ForbidDragging(WebKitUserContentManager* manager) {
  WebKitUserStyleSheet* style = webkit_user_style_sheet_new(
      "* { -webkit-user-drag: none !important; -webkit-user-select: none !important; }",
      WEBKIT_USER_CONTENT_INJECT_ALL_FRAMES, WEBKIT_USER_STYLE_LEVEL_USER, nullptr, nullptr);
  webkit_user_content_manager_add_style_sheet(manager, style);
  webkit_user_style_sheet_unref(style);
}

gboolean NoMenu() { return TRUE; }

WebPages::Trouble TroubleOf(GError* error, const std::string& address) {
  // The engine drops the connection when it doesn't trust the site, and at times it hears of that before it
  // hears of the reason. A load that the program or the page gave up ends in the engine's own kind of error.
  const bool dropped = g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED) != FALSE;
  return dropped && SchemeOf(address) == "https" ? WebPages::Trouble::NotTrusted
                                                 : WebPages::Trouble::NotOpened;
}

}  // namespace

std::shared_ptr<BrowserView> BrowserView::Make(WebEngine& engine, Gtk::Box& place, WebKitWebView* opener) {
  std::shared_ptr<BrowserView> view(new BrowserView(engine, opener));
  view->banner_ = IsBanner(place);
  view->Start();
  if (opener == nullptr) {
    view->PutInto(place);
  } else {
    // The engine adds the size of the view's window to the size that a page's script asks for, so the view
    // comes into its window when it is ready to be shown.
    view->place_ = &place;
    view->placeGone_ = place.signal_destroy().connect([core = view.get()] { core->Close(); });
  }
  return view;
}

BrowserView::BrowserView(WebEngine& engine, WebKitWebView* opener)
    : engine_(engine),
      scripts_(webkit_user_content_manager_new()),
      view_(MakeWidget(engine, scripts_, opener)),
      desk_({[this](std::shared_ptr<Navigation> navigation) { Raise(navigation); },
             engine.Session().ReferrerNotes()}),
      page_(view_),
      frames_(std::make_shared<FrameReporter>(scripts_)),
      scriptObject_(std::make_shared<ScriptObjectHost>(scripts_, view_)),
      resources_(std::make_shared<ResourceWatch>([this] { EndFrameLoadsSoon(); })),
      drops_(std::make_shared<LinkDrops>([this](const std::string& address) {
        if (!banner_) Later([this, address] { Navigate(address); });
      })),
      presses_(std::make_shared<Presses>()),
      openedByPage_(opener != nullptr),
      shown_(opener == nullptr) {}

BrowserView::~BrowserView() {
  Close();
  g_object_unref(scripts_);
}

void BrowserView::Start() {
  frames_->Start(this);
  scriptObject_->Start();
  resources_->Start(view_);
  drops_->Start(view_);
  presses_->Start(view_);
  if (banner_) {
    g_signal_connect(view_, "context-menu", G_CALLBACK(NoMenu), nullptr);
    ForbidDragging(scripts_);
  } else {
    OfferFindBar(view_);
  }
  signals_.Connect<&BrowserView::OnPrint>(view_, "print", this);
  RefuseExtras(view_);
  signals_.Connect<&BrowserView::OnDecidePolicy>(view_, "decide-policy", this);
  signals_.Connect<&BrowserView::OnLoadChanged>(view_, "load-changed", this);
  signals_.Connect<&BrowserView::OnLoadFailed>(view_, "load-failed", this);
  signals_.Connect<&BrowserView::OnLoadFailedWithTlsErrors>(view_, "load-failed-with-tls-errors", this);
  signals_.Connect<&BrowserView::OnProcessTerminated>(view_, "web-process-terminated", this);
  signals_.Connect<&BrowserView::OnCreate>(view_, "create", this);
  signals_.Connect<&BrowserView::OnReadyToShow>(view_, "ready-to-show", this);
  signals_.Connect<&BrowserView::OnCloseRequested>(view_, "close", this);
  signals_.Connect<&BrowserView::OnAddress>(view_, "notify::uri", this);
  signals_.Connect<&BrowserView::OnTitle>(view_, "notify::title", this);
  signals_.Connect<&BrowserView::OnLoading>(view_, "notify::is-loading", this);
  signals_.Connect<&BrowserView::OnMouseTarget>(view_, "mouse-target-changed", this);
  signals_.Connect<&BrowserView::OnDestroy>(view_, "destroy", this);
  signals_.Connect<&BrowserView::OnHistoryChanged>(webkit_web_view_get_back_forward_list(view_), "changed",
                                                   this);
  signals_.Connect<&BrowserView::OnGeometry>(webkit_web_view_get_window_properties(view_), "notify::geometry",
                                             this);

  gtk_widget_set_hexpand(GTK_WIDGET(view_), TRUE);
  gtk_widget_set_vexpand(GTK_WIDGET(view_), TRUE);
  gtk_accessible_update_property(GTK_ACCESSIBLE(view_), GTK_ACCESSIBLE_PROPERTY_LABEL, "Page", -1);
}

void BrowserView::PutInto(Gtk::Box& place) { gtk_box_append(place.gobj(), GTK_WIDGET(view_)); }

void BrowserView::ComeIntoWindow() {
  placeGone_.disconnect();
  if (Gtk::Box* place = std::exchange(place_, nullptr)) PutInto(*place);
}

void BrowserView::Close() {
  events_ = nullptr;
  placeGone_.disconnect();
  place_ = nullptr;
  if (view_ == nullptr) return;
  signals_.Cut();
  frames_->Cut();
  scriptObject_->Cut();
  resources_->Cut();
  drops_->Cut();
  presses_->Cut();
  desk_.DropAll();
  page_.End();
  WebKitWebView* view = std::exchange(view_, nullptr);
  webkit_web_view_stop_loading(view);
  g_object_unref(view);
}

void BrowserView::OnDestroy() { Close(); }

void BrowserView::RequireView() const {
  if (view_ == nullptr) throw PlatformError(kObjectNotSet, "the browser's window is gone");
}

// --- What the program asks for
// ----------------------------------------------------------------------------------

void BrowserView::Navigate(const std::string& text) {
  RequireView();
  const std::string address = EngineSpelling(text);
  desk_.AskForLoad(
      SpellingToJudge(text, address), address, NavigationDesk::LoadKind::Address,
      [this, address] { BeginLoad([this, address] { webkit_web_view_load_uri(view_, address.c_str()); }); });
}

void BrowserView::GoInHistory(int steps) {
  RequireView();
  WebKitBackForwardListItem* item =
      webkit_back_forward_list_get_nth_item(webkit_web_view_get_back_forward_list(view_), steps);
  if (item == nullptr) throw PlatformError(kInvalidCall, "There is no page in that direction.");
  const std::shared_ptr<WebKitBackForwardListItem> held(WEBKIT_BACK_FORWARD_LIST_ITEM(g_object_ref(item)),
                                                        [](gpointer object) { g_object_unref(object); });
  const std::string address = Text(webkit_back_forward_list_item_get_uri(item));
  desk_.AskForLoad(address, address, NavigationDesk::LoadKind::History, [this, held] {
    BeginLoad([this, held] { webkit_web_view_go_to_back_forward_list_item(view_, held.get()); });
  });
}

void BrowserView::Refresh() {
  RequireView();
  if (address_.empty()) return;
  const std::string address = address_;
  desk_.AskForLoad(address, address, NavigationDesk::LoadKind::Reload, [this, address] {
    BeginLoad([this, address] {
      // After its process has ended the view has no address of its own to load again.
      if (EngineAddress() == address) {
        webkit_web_view_reload(view_);
      } else {
        webkit_web_view_load_uri(view_, address.c_str());
      }
    });
  });
}

void BrowserView::Stop() {
  RequireView();
  desk_.DropAll();
  starting_ = false;
  if (view_ != nullptr) webkit_web_view_stop_loading(view_);
}

void BrowserView::ExecWB(int command, int option, int value) {
  RequireView();
  if (command == OLECMDID_UPDATECOMMANDS) {
    Later([this] { TellHistory(); });
    return;
  }
  ExecuteCommand(view_, command, option, value);
}

int BrowserView::QueryStatusWB(int command) const {
  RequireView();
  return CommandStatus(command);
}

void BrowserView::SetFocus() {
  RequireView();
  gtk_widget_grab_focus(GTK_WIDGET(view_));
}

void BrowserView::SetScriptObject(const std::string& name, ScriptObject* object) {
  RequireView();
  scriptObject_->Set(name, object);
}

void BrowserView::ShowImages(bool shown) {
  if (view_ == nullptr || banner_) return;
  webkit_settings_set_auto_load_images(webkit_web_view_get_settings(view_), shown ? TRUE : FALSE);
}

std::string BrowserView::Title() const {
  const std::string title = view_ != nullptr ? Text(webkit_web_view_get_title(view_)) : "";
  if (!title.empty()) return title;
  return title_.empty() ? address_ : title_;
}

bool BrowserView::Busy() const { return starting_ || loading_ || desk_.Judging(); }

void BrowserView::BeginLoad(const std::function<void()>& load) {
  if (view_ == nullptr) return;
  starting_ = true;
  ownPage_ = false;
  load();
}

// --- Questions
// --------------------------------------------------------------------------------------------------

void BrowserView::Raise(const std::shared_ptr<Navigation>& navigation) {
  // Without a receiver nobody judges, and an unanswered question is refused.
  Tell([&](WebBrowserEvents& events) { events.BeforeNavigate2(navigation); });
}

gboolean BrowserView::OnDecidePolicy(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type) {
  switch (type) {
    case WEBKIT_POLICY_DECISION_TYPE_NAVIGATION_ACTION:
      desk_.DecideNavigation(decision, webkit_navigation_policy_decision_get_navigation_action(
                                           WEBKIT_NAVIGATION_POLICY_DECISION(decision)));
      return TRUE;
    case WEBKIT_POLICY_DECISION_TYPE_NEW_WINDOW_ACTION: {
      WebKitNavigationAction* action = webkit_navigation_policy_decision_get_navigation_action(
          WEBKIT_NAVIGATION_POLICY_DECISION(decision));
      if (PageMayLoad(AddressOf(action))) {
        webkit_policy_decision_use(decision);  // the window is asked for next, its address is judged there
      } else {
        desk_.DecideNavigation(decision, action);  // never loads, but the judge may have words about it
      }
      return TRUE;
    }
    case WEBKIT_POLICY_DECISION_TYPE_RESPONSE:
      break;
  }
  auto* response = WEBKIT_RESPONSE_POLICY_DECISION(decision);
  if (MayShow(response)) {
    webkit_policy_decision_use(decision);
    return TRUE;
  }
  webkit_policy_decision_ignore(decision);
  if (webkit_response_policy_decision_is_main_frame_main_resource(response) != FALSE) {
    ownPage_ = true;
    const std::string address =
        Text(webkit_uri_response_get_uri(webkit_response_policy_decision_get_response(response)));
    Later([this, address] { ShowTrouble(WebPages::Trouble::NotShown, address); });
  }
  return TRUE;
}

// --- Loading
// ----------------------------------------------------------------------------------------------------

void BrowserView::OnLoadChanged(WebKitLoadEvent event) {
  switch (event) {
    case WEBKIT_LOAD_STARTED:
      if (completing_) CompleteLoad();
      ComeIntoWindow();
      starting_ = false;
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

void BrowserView::LoadCommitted() {
  committed_ = true;
  page_.Renew();
  address_ = EngineAddress();
  title_.clear();
  toldTitle_.clear();
  judgingArrival_ = false;
  nextArrival_.reset();
  desk_.ForgetAllowedLoad();
  desk_.DropEngineQuestions();  // they came from the page that is gone
  resources_->Forget();
  Tell([&](WebBrowserEvents& events) { events.StatusTextChange("Opening page " + address_ + "..."); });
  Tell([&](WebBrowserEvents& events) { events.NavigateComplete2(page_, address_); });
  TellHistory();
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
}

gboolean BrowserView::OnLoadFailed(WebKitLoadEvent /*event*/, const char* address, GError* error) {
  const bool quiet = error->domain == WEBKIT_POLICY_ERROR ||
                     g_error_matches(error, WEBKIT_NETWORK_ERROR, WEBKIT_NETWORK_ERROR_CANCELLED);
  if (!quiet) ShowTrouble(TroubleOf(error, Text(address)), Text(address));
  return TRUE;
}

gboolean BrowserView::OnLoadFailedWithTlsErrors(const char* address, GTlsCertificate* /*certificate*/,
                                                GTlsCertificateFlags /*errors*/) {
  ShowTrouble(WebPages::Trouble::NotTrusted, Text(address));
  return TRUE;
}

void BrowserView::OnProcessTerminated(WebKitWebProcessTerminationReason /*reason*/) {
  const std::string address = address_;
  desk_.DropEngineQuestions();
  resources_->Forget();
  page_.Renew();
  loading_ = false;
  completing_ = false;
  TellDownloadComplete();
  Later([this, address] { ShowTrouble(WebPages::Trouble::Stopped, address); });
}

void BrowserView::ShowTrouble(WebPages::Trouble trouble, const std::string& address) {
  if (view_ == nullptr) return;
  ownPage_ = true;
  webkit_web_view_load_alternate_html(view_, engine_.Pages().Page(trouble, address, engine_.Home()).c_str(),
                                      address.c_str(), nullptr);
}

void BrowserView::OnLoading(GParamSpec* /*property*/) {
  if (webkit_web_view_is_loading(view_) != FALSE || !starting_) return;
  starting_ = false;
  const std::string address = EngineAddress();
  if (address == address_) return;  // not decided yet, and the engine shows the old address until then
  // A step back or forward inside the page: it was judged before it began, and the engine asks nothing.
  Later([this, address] {
    desk_.ForgetAllowedLoad();
    if (!loading_ && address != address_ && address == EngineAddress()) ReportArrival(address);
  });
}

}  // namespace kivandra::gtk
