// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>
#include <gtkmm.h>
#include <gtkmm/init.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "engine/loopback_server.h"
#include "platform/gtk/web/web_engine.h"
#include "platform/web_browser.h"

namespace kivandra::testing {

/// The one engine of the test program; its cookies and cache lie in a folder that is thrown away.
gtk::WebEngine& Engine();

/// Runs the main loop until `done` holds; false if that takes longer than a patient person would wait.
bool WaitUntil(const std::function<bool()>& done);
/// Runs the main loop until everything that waits is handled, then a little longer than a round trip to the
/// engine.
void Settle();

/// A window with one browser in it, which notes every event as a line.
class TestWindow : public WebBrowserEvents {
 public:
  TestWindow();
  ~TestWindow() override;
  TestWindow(const TestWindow&) = delete;
  TestWindow& operator=(const TestWindow&) = delete;

  /// How questions are answered; every one is allowed at first.
  std::function<void(std::shared_ptr<Navigation>)> judge = [](const auto& navigation) {
    navigation->Allow();
  };
  std::function<void(WebBrowser*& ppDisp, bool& Cancel)> newWindow = [](WebBrowser*&, bool& Cancel) {
    Cancel = true;
  };
  std::function<void(PageFrame& pDisp)> onNavigated = [](PageFrame&) {};
  std::function<void()> onQuit = [] {};

  [[nodiscard]] WebBrowser& Browser() { return *browser_; }
  [[nodiscard]] WebKitWebView* View();
  [[nodiscard]] std::unique_ptr<WebBrowser>& Owned() { return browser_; }
  /// Takes the window off the screen; it lives on.
  void Hide() { window_->set_visible(false); }
  /// Closes the window as the desktop would.
  void CloseWindow();

  std::vector<std::string> journal;
  /// How many lines begin with this.
  [[nodiscard]] int Count(const std::string& beginning) const;
  [[nodiscard]] std::string Last(const std::string& beginning) const;

  /// Goes there and waits for the end of the load.
  [[nodiscard]] bool Load(const std::string& address);
  /// Waits until a line with this beginning has been noted since `from`.
  [[nodiscard]] bool WaitFor(const std::string& beginning, int times = 1);
  /// What a script in the page's own world gives, as text.
  std::string Script(const std::string& source);
  void RunScript(const std::string& source);
  /// Waits until whatever a script began has reached the program: two turns through the page's process.
  void WaitForScripts();

  void BeforeNavigate2(std::shared_ptr<Navigation> navigation) override;
  void NavigateComplete2(PageFrame& pDisp, const std::string& URL) override;
  void DocumentComplete(PageFrame& pDisp, const std::string& URL) override;
  void DownloadBegin() override { journal.emplace_back("DownloadBegin"); }
  void DownloadComplete() override { journal.emplace_back("DownloadComplete"); }
  void TitleChange(const std::string& Text) override { journal.push_back("TitleChange " + Text); }
  void StatusTextChange(const std::string& Text) override { journal.push_back("StatusTextChange " + Text); }
  void CommandStateChange(long Command, bool Enable) override;
  void NewWindow2(WebBrowser*& ppDisp, bool& Cancel) override;
  void OnQuit() override;
  void OnVisible(bool Visible) override { journal.push_back(Visible ? "OnVisible true" : "OnVisible false"); }
  void WindowSetLeft(long Left) override { journal.push_back("WindowSetLeft " + std::to_string(Left)); }
  void WindowSetTop(long Top) override { journal.push_back("WindowSetTop " + std::to_string(Top)); }
  void WindowSetWidth(long Width) override { journal.push_back("WindowSetWidth " + std::to_string(Width)); }
  void WindowSetHeight(long Height) override {
    journal.push_back("WindowSetHeight " + std::to_string(Height));
  }

 private:
  std::unique_ptr<Gtk::Window> window_;
  Gtk::Box* place_;
  std::unique_ptr<WebBrowser> browser_;
};

}  // namespace kivandra::testing
