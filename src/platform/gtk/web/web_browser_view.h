// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>
#include <webkit/webkit.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/gtk/web/web_drops.h"
#include "platform/gtk/web/web_engine.h"
#include "platform/gtk/web/web_frames.h"
#include "platform/gtk/web/web_navigation_desk.h"
#include "platform/gtk/web/web_presses.h"
#include "platform/gtk/web/web_resources.h"
#include "platform/gtk/web/web_script_object.h"
#include "platform/gtk/web/web_signals.h"
#include "platform/web_browser.h"

namespace kivandra::gtk {

/// One view of the engine and what it tells its window. Signals hold it while their handlers run, so the
/// control that owns it may go away inside any event; after Close it tells nothing more.
class BrowserView final : public std::enable_shared_from_this<BrowserView>, private FrameReporter::Receiver {
 public:
  /// A view inside `place`. `opener` is the view whose page asked for this one, or null.
  ///
  /// In a place that is dressed as the banner (class "kv-banner" on it or around it) the view is part of the
  /// frame: it has no menu of its own, nothing can be dragged onto it or out of it, nobody searches in it,
  /// and it always shows its pictures.
  static std::shared_ptr<BrowserView> Make(WebEngine& engine, Gtk::Box& place, WebKitWebView* opener);
  ~BrowserView() override;

  void SetEvents(WebBrowserEvents* events) { events_ = events; }
  /// Ends every question and every event. May be called inside an event and more than once.
  void Close();

  // The operations of WebBrowser; each throws PlatformError if the view is gone.
  void Navigate(const std::string& text);
  void GoInHistory(int steps);
  void Refresh();
  void Stop();
  void ExecWB(int command, int option, int value);
  [[nodiscard]] int QueryStatusWB(int command) const;
  void SetFocus();
  void SetScriptObject(const std::string& name, ScriptObject* object);

  /// Whether the next page shows its pictures. Does nothing once the view is gone.
  void ShowImages(bool shown);

  [[nodiscard]] std::string Address() const { return address_; }
  [[nodiscard]] std::string Title() const;
  [[nodiscard]] bool Busy() const;
  [[nodiscard]] PageFrame* Page() { return view_ != nullptr ? &page_ : nullptr; }
  [[nodiscard]] WebKitWebView* Widget() const { return view_; }
  /// Whether a page asked for this view and it still stands.
  [[nodiscard]] bool StandsForPage() const { return view_ != nullptr && openedByPage_; }

 private:
  BrowserView(WebEngine& engine, WebKitWebView* opener);
  void Start();
  void PutInto(Gtk::Box& place);
  void ComeIntoWindow();
  void RequireView() const;

  // Signals of the engine.
  void OnLoadChanged(WebKitLoadEvent event);
  gboolean OnLoadFailed(WebKitLoadEvent event, const char* address, GError* error);
  gboolean OnLoadFailedWithTlsErrors(const char* address, GTlsCertificate* certificate,
                                     GTlsCertificateFlags errors);
  void OnProcessTerminated(WebKitWebProcessTerminationReason reason);
  gboolean OnDecidePolicy(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type);
  GtkWidget* OnCreate(WebKitNavigationAction* action);
  gboolean OnPrint(WebKitPrintOperation* operation);
  void OnReadyToShow();
  void OnCloseRequested();
  void OnAddress(GParamSpec* /*property*/) { LookWhereItStands(); }
  void OnTitle(GParamSpec* property);
  void OnLoading(GParamSpec* property);
  void OnGeometry(GParamSpec* property);
  void OnMouseTarget(WebKitHitTestResult* target, guint modifiers);
  void OnHistoryChanged(WebKitBackForwardListItem* added, gpointer removed);
  void OnDestroy();

  // FrameReporter::Receiver
  void FrameNavigated(PageFrame& frame, const std::string& url) override;
  void FrameCompleted(PageFrame& frame, const std::string& url) override;

  void Raise(const std::shared_ptr<Navigation>& navigation);
  /// Takes over a load that was allowed, and begins it.
  void BeginLoad(const std::string& address, std::function<void()> load);
  void HandOverLoad();
  void ForgetLoad();
  [[nodiscard]] std::function<void()> LoadOf(const std::string& address);
  /// Looks whether the program's step through the history has been made.
  void NoteStep();
  /// Whether the engine has not yet begun the program's last load.
  [[nodiscard]] bool AwaitsLoad() const;
  /// Whether a step of the program through the history leads there, and the engine has not asked about it.
  [[nodiscard]] bool StepsTo(const std::string& address) const;
  /// Begins the program's last load once more if the engine lost it over the page that has just come.
  void LoadLostAgain();
  void LoadCommitted();
  /// The address of the page that has just come. While a later load of the program is on its way the engine
  /// tells where that one leads.
  [[nodiscard]] std::string CommittedAddress() const;
  void LoadFinished();
  void CompleteLoad();
  /// Whether the engine's address is that of the page on the screen, and not that of a load on its way.
  [[nodiscard]] bool StandsInPage() const;
  /// Notices a step inside the page that has not been told yet.
  void LookWhereItStands();
  void ArrivedInPage(const std::string& url);
  void AskForArrival(const std::string& url);
  void ForgetArrival();
  void ReportArrival(const std::string& url);
  void LeavePage();
  /// Whether a later load of the program is on its way, and this address is that of the one before.
  [[nodiscard]] bool Overtaken(const std::string& address) const;
  void ShowTrouble(WebPages::Trouble trouble, const std::string& address);
  void TellDownloadBegin();
  void TellDownloadComplete();
  void EndFrameLoadsSoon();
  void TellHistory();
  void TellTitle(const std::string& title);
  void TellGeometry();
  [[nodiscard]] std::string EngineAddress() const;

  /// Calls `tell` with the receiver, if there is one.
  void Tell(const std::function<void(WebBrowserEvents&)>& tell) {
    if (events_ != nullptr) tell(*events_);
  }
  /// Calls `act` from the event loop, unless the view is closed by then.
  void Later(std::function<void()> act, guint milliseconds = 0);

  WebEngine& engine_;
  WebKitUserContentManager* scripts_;
  WebKitWebView* view_;  // null once closed
  WebBrowserEvents* events_ = nullptr;
  NavigationDesk desk_;
  TopFrame page_;
  std::shared_ptr<FrameReporter> frames_;
  std::shared_ptr<ScriptObjectHost> scriptObject_;
  std::shared_ptr<ResourceWatch> resources_;
  std::shared_ptr<LinkDrops> drops_;
  std::shared_ptr<Presses> presses_;
  SignalConnections signals_;

  std::string address_;                                 // of the page that is shown
  std::string asked_;                                   // address of the program's last load
  std::function<void()> load_;                          // begins it once more
  int handOvers_ = 0;                                   // how often a load of the program was begun
  std::optional<NavigationDesk::AllowedLoad> decided_;  // the engine has asked about it and not started it
  const WebKitBackForwardListItem* step_ = nullptr;     // where it leads, if it is a step through the history
  bool stepMade_ = false;
  guint64 toldPage_ = 0;  // the engine's number of the page that was told of it, new in each process
  std::string title_;     // of the page that is shown, as long as the engine does not tell it
  std::string toldTitle_;
  std::string status_;       // last text told
  bool starting_ = false;    // the program's load was handed to the engine and has not started
  int overtakings_ = 0;      // pages that were on their way before the program's load and came first
  bool loading_ = false;     // between the start and the end of a page's load
  bool committed_ = false;   // the load that runs, or ran last, has put its page on the screen
  bool completing_ = false;  // the load has ended, its end is told in a moment
  bool ownPage_ = false;     // the load that runs shows a page of the program in place of the one that failed
  bool downloading_ = false;   // DownloadBegin was told, DownloadComplete not yet
  bool endingFrames_ = false;  // a look at whether frames have stopped loading is on its way
  bool banner_ = false;        // the view is a part of the frame
  bool openedByPage_;
  bool shown_;  // the window of a page's script has been shown
  bool judgingArrival_ = false;
  std::optional<std::string> nextArrival_;  // where the page went while its last step was being judged
  GdkRectangle geometry_{};
  Gtk::Box* place_ = nullptr;  // where the view goes when it is ready to be shown
  sigc::connection placeGone_;
};

}  // namespace kivandra::gtk
