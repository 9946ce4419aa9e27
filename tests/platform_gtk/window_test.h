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
  explicit EmptyBrowser(Gtk::Box& place);
  void Navigate(const std::string&) override;
  void Stop() override;
  void SetEvents(WebBrowserEvents*) override;
  void GoBack() override;
  void GoForward() override;
  void Refresh() override;
  [[nodiscard]] std::string LocationURL() const override;
  [[nodiscard]] std::string LocationName() const override;
  [[nodiscard]] bool Busy() const override;
  void ExecWB(int, int, int) override;
  [[nodiscard]] int QueryStatusWB(int) const override;
  void SetRegisterAsBrowser(bool) override;
  void SetScriptObject(const std::string&, ScriptObject*) override;
};

class EmptyPages : public EngineFactory {
 public:
  std::unique_ptr<WebBrowser> MakeBrowser(Gtk::Box& place) override;
  std::unique_ptr<PageView> MakePageView(Gtk::Box& place) override;
};

/// Writes what a window tells into a list that several windows share.
class Teller : public FormEvents {
 public:
  Teller(std::string name, std::vector<std::string>& journal);
  ~Teller() override;

  void Form_Activate() override;
  void Form_Deactivate() override;
  void Form_Resize() override;
  void Form_QueryUnload(bool& cancel, UnloadMode mode) override;
  void Form_Unload() override;

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
  WindowTest();
  ~WindowTest() override;

  /// Runs events until `done`. Gives up after ten seconds, more than anything takes on a busy machine.
  /// Not every condition comes with an event, so it is looked at now and then.
  bool Until(const std::function<bool()>& done);
  void Settle();

  std::shared_ptr<Form> LoadFrame();
  std::shared_ptr<Form> LoadChild(FormEvents& events);

  EmptyPages pages;
  MainEvents loop;
  FormLoader forms{kAssets, pages};
  std::vector<std::string> journal;
  MdiClient* area = nullptr;
};

using Journal = std::vector<std::string>;

}  // namespace kivandra::gtk
