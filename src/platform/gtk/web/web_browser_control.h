// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "platform/gtk/controls/widget_control.h"
#include "platform/gtk/web/web_browser_view.h"
#include "platform/web_browser.h"

namespace kivandra::gtk {

/// The browser control of a form: a place in the form and the view in it.
class WebBrowserControl final : public WebBrowser, public WidgetControl {
 public:
  WebBrowserControl(Gtk::Box& place, std::shared_ptr<BrowserView> view)
      : WidgetControl(place), view_(std::move(view)) {}
  ~WebBrowserControl() override { view_->Close(); }

  [[nodiscard]] const std::shared_ptr<BrowserView>& View() const { return view_; }

  void SetFocus() override { Alive()->SetFocus(); }
  void Navigate(const std::string& address) override { Alive()->Navigate(address); }
  void Stop() override { Alive()->Stop(); }
  void SetEvents(WebBrowserEvents* events) override { view_->SetEvents(events); }
  void GoBack() override { Alive()->GoInHistory(-1); }
  void GoForward() override { Alive()->GoInHistory(1); }
  void Refresh() override { Alive()->Refresh(); }
  [[nodiscard]] std::string LocationURL() const override { return Alive()->Address(); }
  [[nodiscard]] std::string LocationName() const override { return Alive()->Title(); }
  [[nodiscard]] bool Busy() const override { return Alive()->Busy(); }
  [[nodiscard]] PageFrame* Page() override { return Alive()->Page(); }
  void ExecWB(int command, int option, int value) override { Alive()->ExecWB(command, option, value); }
  [[nodiscard]] int QueryStatusWB(int command) const override { return Alive()->QueryStatusWB(command); }
  void SetRegisterAsBrowser(bool /*value*/) override {
    (void)Alive();
  }  // every view can be the target of a window
  void SetScriptObject(const std::string& name, ScriptObject* object) override {
    Alive()->SetScriptObject(name, object);
  }

 private:
  /// The view, held for the length of an operation, since an event inside may close the window.
  [[nodiscard]] std::shared_ptr<BrowserView> Alive() const {
    (void)Widget();
    return view_;
  }

  std::shared_ptr<BrowserView> view_;
};

}  // namespace kivandra::gtk
