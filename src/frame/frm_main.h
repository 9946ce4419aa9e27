// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "browser/frm_browser.h"
#include "core/application.h"
#include "platform/common_dialog.h"
#include "platform/event_loop.h"
#include "platform/file_calls.h"
#include "platform/form.h"
#include "platform/instance_calls.h"
#include "platform/internet_session.h"
#include "platform/keyboard_hook.h"
#include "platform/mdi_client.h"
#include "platform/menu_bar.h"
#include "platform/message_box.h"
#include "platform/page_view.h"
#include "platform/picture_box.h"
#include "platform/platform_error.h"
#include "platform/registry_calls.h"
#include "platform/shell_calls.h"
#include "platform/sound.h"
#include "platform/system_info.h"
#include "support/keyboard_events.h"

namespace kivandra {

class Banner;

/// What the frame needs; all of it outlives the frame.
struct FrameServices {
  Forms& forms;
  EventLoop& events;
  MessageBoxes& boxes;
  RegistryCalls& registry;
  InstanceCalls& instance;
  InternetSession& session;
  Sound& sound;
  KeyboardHook& keyboard;
  ShellCalls& shell;
  FileCalls& files;
  const SystemInfo& system;
  Application& application;                                ///< the frame's own, apart from the program's
  std::function<std::shared_ptr<frmBrowser>()> makeChild;  ///< loads a child window, hidden
  std::function<void(bool quiet)> CheckForUpdate;          ///< may be empty; errors reach the load's box
  std::function<void()> showPassword;                      ///< opens frmPassword and returns at once
  // The favourites; with none of these set their commands do nothing.
  std::function<void()> openFavourites;
  std::function<void(const std::string& url, const std::string& title)> addFavourite;
  std::function<void()> organizeFavourites;
};

/// The frame: the one window that holds the bars, the status bar and the child windows. What its children
/// share on it has no owner; the last event wins. Until Load, and from its unload on, every operation throws
/// PlatformError.
class frmMain : public FormEvents {
 public:
  explicit frmMain(FrameServices services);
  ~frmMain() override;
  frmMain(const frmMain&) = delete;
  frmMain& operator=(const frmMain&) = delete;

  /// Loads the window, hidden, and runs MDIForm_Load; does nothing if it is loaded or has been closed. An
  /// error inside MDIForm_Load ends it with one box, and the frame stays with what it has. Throws
  /// PlatformError if the form itself can't be loaded.
  void Load();
  void SetVisible(bool visible);
  [[nodiscard]] Form& Window() const;
  /// Whether the frame is loaded and nobody has begun to close it.
  [[nodiscard]] bool Stands() const;

  // The controls that the whole program shares.
  [[nodiscard]] BarControl& BonusBar() const;
  [[nodiscard]] MenuBar& Menu() const;
  [[nodiscard]] ComboBox& TheAddress() const;
  [[nodiscard]] StatusBar& Status() const;
  [[nodiscard]] PageView& WebBrowser2() const;
  [[nodiscard]] WebBrowser& brwBanner() const;
  [[nodiscard]] bool StartUpEnabled() const;

  // The child windows.
  /// The child in front, or null if there is none.
  [[nodiscard]] std::shared_ptr<frmBrowser> ActiveForm() const;
  /// Makes a child, hidden, and holds it until ChildUnloaded.
  std::shared_ptr<frmBrowser> NewChild();
  void ChildUnloaded(const frmBrowser& child);
  /// The child that was last deactivated. kept on purpose: nothing reads it.
  std::weak_ptr<frmBrowser> LastDeactivated;

  // Commands. With no child window those on the active child throw PlatformError unless told otherwise.
  void Logo_Animate();
  void Logo_AnimateStop();
  void ShowStillLogo();
  void cascade();
  void tileme();
  /// Makes every child a small title and lines these up at the foot of the area.
  void MiniMizer();
  /// Opens an address in the active child.
  void LoadHTML(const std::string& URL);
  /// Writes a value into an initialisation file; the rest of the file stays as it is. Says nothing if it
  /// fails.
  void ProfileSaveItem(const std::string& section, const std::string& key, const std::string& value,
                       const std::string& file);
  void mnuEditCopy_Click();
  /// Closes the panel, then the program.
  void mnuFileExit_Click();
  /// Opens a new child at the home page.
  void mnuFileNew_Click();
  /// Asks for a skin and puts it on the frame; the other windows follow when they are loaded next.
  void mnuskins_Click();
  /// Sends the frame's window into a skin; passes over what fails.
  void ApplySkin(const std::string& path);
  /// Opens a window without bars on a page of the product's site; `ending` is added to its caption. A new
  /// window each time.
  void ShowBannerFree(const std::string& ending, const std::string& path);
  /// Opens what was typed into TheAddress, in the active child or, if the box is empty, in a new one. Any
  /// failure ends it quietly.
  void GoAddress();
  /// A click on a tool of the bars; no error leaves it.
  void BonusBar_ToolClick(Tool& tool);
  /// A person goes into an edit tool: the search box empties, whatever it held.
  void BonusBar_ToolEntered(Tool& tool);
  /// Carries out a menu entry by its name, whoever asks: the menu, a tool or another window. Never throws
  /// PlatformError: with no child window most entries do nothing and say nothing. An unknown name does
  /// nothing.
  void Menu_Click(const std::string& name);
  /// Shows or hides the side bar, and fits the active child to it. Without a child it does nothing.
  void mnuSidebar_Click();
  void Keyboard_KeyDown(std::int16_t& KeyCode, std::int16_t& Shift);

  /// The keys of the whole program, as long as the window is loaded.
  std::unique_ptr<KeyboardEvents> Keyboard;
  /// Whether the menu entry of the side bar bears its check mark.
  bool mnuSidebarChecked = false;

  // The window's events.
  void Form_Resize() override;
  void Form_QueryUnload(bool& cancel, UnloadMode mode) override;
  void Form_Unload() override;

 private:
  void WireControls();
  void MDIForm_Load();
  void FillFilterIfEmpty();
  void ShowSideBarAsStored();
  void HostControls();
  void GreetFirstStart();
  void PlaceFirstChild();
  void MDIForm_Resize();
  void MDIForm_QueryUnload();
  void ClearBrowserSession();
  void CloseProgram();
  void ReleaseToolsAndCloseWindows();

  // The menu's handlers.
  void mnuFileOpen_Click();
  void mnuPrintPreview_Click();
  void mnuEditSelectall_Click();
  void mnuEditFind_Click();
  void mnuImages_Click();
  void mnuAddFavourites_Click();
  void mnuCalc_Click();
  void mnuTip_Click();
  /// Calls a service if there is one.
  template <typename Service, typename... Arguments>
  static void Call(const Service& service, Arguments... arguments) {
    if (service) {
      service(arguments...);
    }
  }
  static void SetBrowserZoom(WebBrowser& browser, int level);
  void ZoomChild(int level);
  void ExecOnChild(int command, int option);
  void Start(const char* commandLine);

  void Refreshtimer_Timer();
  void timerTips_Timer();
  void ShowTip();
  /// Holds a window's object until the window is unloaded.
  void Hold(std::shared_ptr<FormEvents> window);
  void LetGo(const FormEvents& window);
  /// Shows an error that no handler catches: one plain box with its number and text.
  void TellError(const PlatformError& error);

  /// The active child, held for as long as a command on it runs; throws PlatformError if there is none.
  [[nodiscard]] std::shared_ptr<frmBrowser> HeldChild() const;
  [[nodiscard]] MdiClient& MDIClient() const;
  [[nodiscard]] CommonDialog& CommonDialog1() const;
  [[nodiscard]] Timer& TimerOf(const char* name) const;

  // The rows of a tool's click, in their order; each says whether it knew the tool.
  bool ToolHelp(const std::string& name);
  bool ToolLink(const std::string& name);
  bool ToolCommand(const std::string& caption);
  void ToolSearch(const std::string& name, const std::string& caption);
  void ToolBack();
  void GoHome();
  void Advertise();
  void AdvertiseInNewWindow();
  void ToolFind();
  void ToolHighlight();
  void ToolCalculator();
  [[nodiscard]] std::string SearchText() const;
  void SearchInNewWindow(const std::string& url);
  /// `prefix` is the service's address up to the site.
  void SearchThisSite(const std::string& prefix, const std::string& text);

  void FillMainBar();
  void FillBonusBar();
  void FitBesideSideBar(Form& child);
  void FitWithoutSideBar(Form& child);

  FrameServices services_;
  std::shared_ptr<Form> form_;
  bool closing_ = false;
  std::unique_ptr<Banner> banner_;
  std::vector<std::shared_ptr<frmBrowser>> children_;
  std::vector<std::shared_ptr<FormEvents>> held_;
};

}  // namespace kivandra
