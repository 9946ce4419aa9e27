// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>
#include <gtkmm.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/bar_control.h"
#include "platform/gtk/controls/widget_control.h"
#include "platform/gtk/engine_factory.h"
#include "platform/gtk/forms/form_loader.h"
#include "platform/gtk/main_events.h"
#include "platform/mdi_client.h"

namespace kivandra::gtk {

inline const std::string kAssets = KV_SOURCE_DIR "/assets";

/// Stands for the engine: an empty page that can have the focus.
class EmptyBrowser : public WidgetControl, public WebBrowser {
 public:
  explicit EmptyBrowser(Gtk::Box& place) : WidgetControl(place) {
    auto* page = Gtk::make_managed<Gtk::DrawingArea>();
    page->set_focusable(true);
    page->set_expand(true);
    place.append(*page);
  }
  void Navigate(const std::string&) override { Alive(); }
  void Stop() override { Alive(); }
  void SetEvents(WebBrowserEvents*) override {}
  void GoBack() override { Alive(); }
  void GoForward() override { Alive(); }
  void Refresh() override { Alive(); }
  [[nodiscard]] std::string LocationURL() const override { return {}; }
  [[nodiscard]] std::string LocationName() const override { return {}; }
  [[nodiscard]] bool Busy() const override { return false; }
  void ExecWB(int, int, int) override { Alive(); }
  [[nodiscard]] int QueryStatusWB(int) const override { return 0; }
  void SetRegisterAsBrowser(bool) override { Alive(); }
  void SetScriptObject(const std::string&, ScriptObject*) override { Alive(); }
};

class EmptyPages : public EngineFactory {
 public:
  std::unique_ptr<WebBrowser> MakeBrowser(Gtk::Box& place) override {
    return std::make_unique<EmptyBrowser>(place);
  }
  std::unique_ptr<PageView> MakePageView(Gtk::Box& place) override {
    return std::make_unique<EmptyBrowser>(place);
  }
};

/// Writes what a window tells into a list that several windows share.
class Teller : public FormEvents {
 public:
  Teller(std::string name, std::vector<std::string>& journal) : name_(std::move(name)), journal_(journal) {}
  void Form_Activate() override { journal_.push_back(name_ + " activated"); }
  void Form_Deactivate() override { journal_.push_back(name_ + " deactivated"); }
  void Form_Resize() override { ++resizes; }
  void Form_QueryUnload(bool& cancel, UnloadMode mode) override {
    journal_.push_back(name_ + " asked " + std::to_string(static_cast<int>(mode)));
    cancel = refuses;
    if (whenAsked) {
      whenAsked();
    }
  }
  void Form_Unload() override {
    journal_.push_back(name_ + " unloaded");
    if (whenUnloaded) {
      whenUnloaded();
    }
  }

  bool refuses = false;
  int resizes = 0;
  std::function<void()> whenAsked;
  std::function<void()> whenUnloaded;

 private:
  std::string name_;
  std::vector<std::string>& journal_;
};

class WindowTest : public ::testing::Test {
 protected:
  ~WindowTest() override { Settle(); }

  /// Runs events until `done`. Gives up after ten seconds, more than anything takes on a busy machine.
  /// Not every condition comes with an event, so it is looked at now and then.
  bool Until(const std::function<bool()>& done) {
    constexpr unsigned kLookMilliseconds = 20;
    int looks = 500;
    const auto timer = Glib::signal_timeout().connect([&looks] { return --looks, true; }, kLookMilliseconds);
    while (!done() && looks > 0) {
      loop.WaitForEvents();
    }
    sigc::connection(timer).disconnect();
    return done();
  }
  void Settle() { loop.DoEvents(); }

  std::shared_ptr<Form> LoadFrame() {
    auto frame = forms.Load("frmMain");
    area = &frame->Get<MdiClient>("MDIClient");
    return frame;
  }
  std::shared_ptr<Form> LoadChild(FormEvents& events) {
    auto child = forms.Load("frmBrowser");
    child->SetEvents(&events);
    child->Get<WebBrowser>("brwWebBrowser");
    child->SetVisible(true);
    return child;
  }

  EmptyPages pages;
  MainEvents loop;
  FormLoader forms{kAssets, pages};
  std::vector<std::string> journal;
  MdiClient* area = nullptr;
};

using Journal = std::vector<std::string>;

}  // namespace kivandra::gtk
