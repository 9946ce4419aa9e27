// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "platform/event_loop.h"
#include "platform/form.h"
#include "platform/message_box.h"
#include "platform/registry_calls.h"
#include "platform/system_info.h"
#include "platform/web_browser.h"

namespace kivandra {

/// A child window as far as Application needs it.
struct BrowserWindow {
  std::shared_ptr<Form> form;
  WebBrowser* brwWebBrowser = nullptr;  ///< lives as long as the form is loaded
};

/// What Application asks of the windows above it.
class ApplicationWindows {
 public:
  virtual ~ApplicationWindows() = default;

  /// Loads frmMain; a frame that is loaded already stays as it is.
  virtual void LoadFrame() = 0;
  virtual void SetFrameVisible(bool visible) = 0;
  /// The browser control of the active child; throws PlatformError(kObjectNotSet) if there is no child.
  virtual WebBrowser& ActiveBrowser() = 0;
  /// Makes a new frmBrowser, hidden.
  virtual BrowserWindow NewBrowser() = 0;
};

/// The automation object of the program.
class Application {
 public:
  struct Services {
    Forms& forms;
    EventLoop& events;
    MessageBoxes& boxes;
    RegistryCalls& registry;
    const SystemInfo& system;
    ApplicationWindows& windows;
  };
  explicit Application(const Services& services) : services_(services) {}

  /// True: the whole of start-up; returns when the frame is up or an error box has been answered. Events run
  /// inside. False: hides the frame and nothing else.
  void SetVisible(bool visible);
  [[nodiscard]] bool Visible() const { return visible_; }
  /// Navigates the active child. Throws PlatformError if there is none. The gate sees it like any other
  /// navigation.
  void Navigate(const std::string& Shortcut);
  /// Opens a new child at the stored home page.
  void NewWindow();
  /// How many children are open.
  [[nodiscard]] int Children() const;

 private:
  void StartUp();
  void PrepareSettings();

  Services services_;
  bool visible_ = false;
};

/// The home page that the parent stored, empty if there is none.
std::string StoredHomePage(RegistryCalls& registry);
/// The stored home page, or the product's if there is none.
std::string HomePage(RegistryCalls& registry);

}  // namespace kivandra
