// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "browser/browser_frame.h"
#include "core/variant.h"
#include "filter/navigation_log.h"
#include "platform/button.h"
#include "platform/clipboard.h"
#include "platform/combo_box.h"
#include "platform/form.h"
#include "platform/keyboard_hook.h"
#include "platform/message_box.h"
#include "platform/registry_calls.h"
#include "platform/script_object.h"
#include "platform/timer.h"
#include "platform/web_browser.h"
#include "support/keyboard_events.h"

namespace kivandra {

class GateWindow;
class NavigationGate;

/// What every child window needs; all of it outlives every window.
struct BrowserServices {
  Forms& forms;
  NavigationGate& gate;
  BrowserFrame& frame;
  Clipboard& clipboard;
  RegistryCalls& registry;
  MessageBoxes& boxes;
  KeyboardHook& keyboard;
  ScriptObject& kvd;                        ///< the automation object that pages reach as `KVD`
  std::function<void()> showPasswordModal;  ///< opens frmPassword and returns when it is closed
  std::function<void(frmBrowser&)>
      logStep;  ///< the navigation log's share in a finished download; may be empty
};

/// A child window of the frame: a page, its address box and three small buttons.
///
/// Every handler goes on with its next step after a step that fails, so none of them throws PlatformError. A
/// handler may close its own window, or the window may close while a handler waits: each holds its window
/// until it returns, and steps on a window that has gone fail and are passed over. Once unloaded, a window
/// gets no more events, its held navigations are refused, and it hears no more keys.
class frmBrowser : public FormEvents,
                   public WebBrowserEvents,
                   public std::enable_shared_from_this<frmBrowser> {
 public:
  /// Loads the window, hidden. Throws PlatformError if its form can't be loaded. The caller holds it until
  /// the frame is told BrowserUnloaded.
  static std::shared_ptr<frmBrowser> Create(const BrowserServices& services);
  frmBrowser(const frmBrowser&) = delete;
  frmBrowser& operator=(const frmBrowser&) = delete;
  ~frmBrowser() override;

  [[nodiscard]] Form& Window() { return *form_; }
  [[nodiscard]] WebBrowser& brwWebBrowser() { return brwWebBrowser_; }
  [[nodiscard]] ComboBox& cboAddress() { return cboAddress_; }
  /// Empty, or "POP" for a window that a page has opened.
  [[nodiscard]] std::string Tag() const { return form_->Tag(); }

  /// The keys of the whole program, as long as the window is loaded.
  std::unique_ptr<KeyboardEvents> Keyboard;
  /// The document of the page, null until one has arrived and while what is shown is no HTML.
  std::shared_ptr<HtmlDocument> mWbrDoc;
  /// The text of the hidden buffer through which this window's visits go into the log.
  std::string LogURL = kLogURLDesignText;

  /// Asks whether the last blocked address may pass for this session, asks for the password, and goes there.
  /// Events run inside.
  void Padlock();
  /// The address that a text typed into an address box stands for.
  [[nodiscard]] static std::string getURL(const std::string& text);
  /// Paints the first 5000 places of the page where a text stands, its own letters kept. A window without a
  /// document does nothing. The result is Empty.
  Variant highlight(const std::string& str);
  void HTMLFindText(const std::string& SearchStr);
  /// F12 searches for the selected words.
  void Keyboard_KeyDown(std::int16_t& KeyCode, std::int16_t& Shift);

  // The window.
  void Form_Activate() override;
  void Form_Deactivate() override;
  void Form_Resize() override;
  void Form_Unload() override;

  // The engine.
  void BeforeNavigate2(std::shared_ptr<Navigation> navigation) override;
  void NavigateComplete2(PageFrame& pDisp, const std::string& URL) override;
  void DocumentComplete(PageFrame& pDisp, const std::string& URL) override;
  void DownloadBegin() override;
  void DownloadComplete() override;
  void TitleChange(const std::string& Text) override;
  void StatusTextChange(const std::string& Text) override;
  void CommandStateChange(long Command, bool Enable) override;
  void NewWindow2(WebBrowser*& ppDisp, bool& Cancel) override;
  void OnQuit() override;
  void OnVisible(bool Visible) override;
  void WindowSetLeft(long Left) override;
  void WindowSetTop(long Top) override;
  void WindowSetWidth(long Width) override;
  void WindowSetHeight(long Height) override;

 private:
  frmBrowser(BrowserServices services, std::shared_ptr<Form> form);

  void Form_Load();
  void WireControls();
  void PlaceFirstWindow();

  // The controls.
  bool cboAddress_KeyDown(int keyCode);
  void cboAddress_DblClick();
  void cboAddress_Click();
  void SearchWeb_Click();
  void btnGo_Click();
  void btnsearch_Click();
  void ResizeTimer_Timer();

  void GoToTypedAddress();
  void HideRow(Button& fourth);
  /// The active child if a page has opened it, else null.
  [[nodiscard]] std::shared_ptr<frmBrowser> ActivePopUp() const;
  /// A handler that does nothing if this window has ended.
  [[nodiscard]] std::function<void()> WhileAlive(void (frmBrowser::*handler)());

  BrowserServices services_;
  std::shared_ptr<Form> form_;
  WebBrowser& brwWebBrowser_;
  ComboBox& cboAddress_;
  Button& SearchWeb_;
  Button& btnGo_;
  Button& btnsearch_;
  Timer& ResizeTimer_;
  std::shared_ptr<GateWindow> gateWindow_;
  bool beingWidened_ = false;
};

}  // namespace kivandra
