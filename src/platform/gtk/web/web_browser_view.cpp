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
  load_ = nullptr;
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
  desk_.AskForLoad(SpellingToJudge(text, address), address, NavigationDesk::LoadKind::Address,
                   [this, address] { BeginLoad(address, LoadOf(address)); });
}

void BrowserView::GoInHistory(int steps) {
  RequireView();
  WebKitBackForwardListItem* item =
      webkit_back_forward_list_get_nth_item(webkit_web_view_get_back_forward_list(view_), steps);
  if (item == nullptr) throw PlatformError(kInvalidCall, "There is no page in that direction.");
  const std::shared_ptr<WebKitBackForwardListItem> held(WEBKIT_BACK_FORWARD_LIST_ITEM(g_object_ref(item)),
                                                        [](gpointer object) { g_object_unref(object); });
  const std::string address = Text(webkit_back_forward_list_item_get_uri(item));
  desk_.AskForLoad(address, address, NavigationDesk::LoadKind::History, [this, address, held] {
    BeginLoad(address, [this, held] {
      step_ = held.get();
      webkit_web_view_go_to_back_forward_list_item(view_, held.get());
    });
  });
}

void BrowserView::Refresh() {
  RequireView();
  if (address_.empty()) return;
  const std::string address = address_;
  desk_.AskForLoad(address, address, NavigationDesk::LoadKind::Reload, [this, address] {
    // After its process has ended the view has no address of its own to load again; while a page is coming it
    // would load that one again.
    const bool again = EngineAddress() == address;
    BeginLoad(address, again ? [this] { webkit_web_view_reload(view_); } : LoadOf(address));
    load_ = LoadOf(address);
  });
}

void BrowserView::Stop() {
  RequireView();
  ForgetArrival();
  desk_.DropAll();
  decided_.reset();
  starting_ = false;
  if (view_ == nullptr) return;
  webkit_web_view_stop_loading(view_);
  LookWhereItStands();
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

}  // namespace kivandra::gtk
