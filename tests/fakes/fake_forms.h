// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "fakes/fake_controls.h"
#include "fakes/fake_event_loop.h"
#include "fakes/fake_tree_view.h"
#include "fakes/fake_web_browser.h"
#include "platform/form.h"
#include "platform/mdi_client.h"

namespace kivandra::fakes {

class FakeForms;

/// A window whose controls come into being when they are asked for, in the kind that is asked for.
class FakeForm : public Form, public std::enable_shared_from_this<FakeForm> {
 public:
  FakeForm(std::string name, std::string journalName, FakeForms& forms);
  ~FakeForm() override;

  [[nodiscard]] const std::string& Name() const override;
  [[nodiscard]] bool Loaded() const override;
  void SetEvents(FormEvents* receiver) override;
  [[nodiscard]] bool MDIChild() const override;
  [[nodiscard]] std::string Caption() const override;
  void SetCaption(const std::string& value) override;
  [[nodiscard]] std::string Tag() const override;
  void SetTag(const std::string& value) override;
  [[nodiscard]] bool Visible() const override;
  void SetVisible(bool value) override;
  void ShowModal() override;
  bool Unload() override;
  void BringToFront() override;
  void SetFocus() override;
  [[nodiscard]] enum WindowState WindowState() const override;
  void SetWindowState(enum WindowState value) override;
  [[nodiscard]] Twips Left() const override;
  void SetLeft(Twips value) override;
  [[nodiscard]] Twips Top() const override;
  void SetTop(Twips value) override;
  [[nodiscard]] Twips Width() const override;
  void SetWidth(Twips value) override;
  [[nodiscard]] Twips Height() const override;
  void SetHeight(Twips value) override;
  [[nodiscard]] Twips ScaleWidth() const override;
  [[nodiscard]] Twips ScaleHeight() const override;
  Control& FindControl(std::string_view name, ControlKind kind) override;

  /// Asks, tells and takes the window away, as when it is closed in the given way.
  bool Close(UnloadMode mode);
  template <typename Fake>
  Fake& Fetch(const std::string& name, ControlKind kind) {
    return dynamic_cast<Fake&>(FindControl(name, kind));
  }
  FakeTextBox& TextBoxOf(const std::string& name);
  FakeComboBox& ComboOf(const std::string& name);
  FakeButton& ButtonOf(const std::string& name);
  FakeCheckBox& CheckOf(const std::string& name);
  FakeCalendar& CalendarOf(const std::string& name);
  FakeMenuBar& MenusOf(const std::string& name);
  FakeCommonDialog& DialogOf(const std::string& name);
  FakeRichTextBox& RichTextOf(const std::string& name);
  FakeTimer& TimerOf(const std::string& name);
  FakeWebBrowser& BrowserOf(const std::string& name);
  FakePageView& ViewOf(const std::string& name);
  FakeStatusBar& StatusOf(const std::string& name);
  FakeTreeView& TreeOf(const std::string& name);
  FakeBarControl& BarsOf(const std::string& name);

  FormEvents* events = nullptr;
  bool loaded = true;
  bool visible = false;
  enum WindowState windowState = WindowState::Normal;
  std::string caption;
  std::string tag;
  Twips left = 0;
  Twips top = 0;
  Twips width = 9000;
  Twips height = 6000;
  Twips scaleWidth = 15000;
  Twips scaleHeight = 9000;

 private:
  void Alive() const;
  void Say(const std::string& what) const;
  void Place(const char* what, Twips& place, Twips value);

  std::string name_;
  std::string journalName_;
  FakeForms& forms_;
  bool unloading_ = false;
  std::map<std::string, std::unique_ptr<Control>, std::less<>> controls_;
};

class FakeMdiClient : public FakeControl, public MdiClient {
 public:
  FakeMdiClient(std::string name, Journal& journal, FakeForms& forms);
  [[nodiscard]] Form* ActiveForm() const override;
  void SendMessageA(unsigned message, unsigned wParam, long lParam) override;

 private:
  FakeForms& forms_;
};

/// All windows of a test. A name in `childForms` makes child windows, shown in the journal as `frmBrowser#1`
/// and on.
class FakeForms : public Forms {
 public:
  FakeForms(Journal& testJournal, FakeEventLoop& eventLoop);
  ~FakeForms() override;

  std::shared_ptr<Form> Load(const std::string& name) override;
  [[nodiscard]] std::vector<std::shared_ptr<Form>> Loaded() const override;
  [[nodiscard]] Twips ScreenWidth() const override;

  /// The form with this journal name; fails the test if it was never loaded.
  FakeForm& Of(const std::string& journalName);
  [[nodiscard]] bool IsLoaded(const std::string& journalName) const;
  void Forget(const FakeForm* form);
  /// Makes a child the active one and tells both children.
  void Activate(FakeForm* form);
  /// Design-time data of a timer: milliseconds between ticks, and whether it starts enabled.
  struct TimerData {
    int interval = 100;
    bool enabled = false;
  };

  Journal& journal;
  FakeEventLoop& loop;
  std::set<std::string> childForms{"frmBrowser"};
  std::map<std::string, TimerData> timers{
      {"frmSplash.SplashTimer", {2500, false}}, {"frmSplash.tmrDelay", {1, false}},
      {"frmMain.StartUp", {5000, true}},        {"frmMain.Greet", {4000, true}},
      {"frmMain.CloseMe", {3000, false}},       {"frmMain.BannerTimer", {4000, true}},
      {"frmMain.timerTips", {1500, false}},     {"frmMain.Refreshtimer", {2000, false}},
      {"frmMain.BackForward", {1, false}},      {"frmBrowser.ResizeTimer", {200, false}},
      {"frmBrowser.TimerENTER", {100, false}},  {"frmBrowser.Timer1", {40000, false}},
      {"frmFav.tmrLoad", {1, false}},
  };
  std::map<std::string, std::shared_ptr<FakeForm>> byName;
  /// Every control that was asked for: form, name, kind.
  std::set<std::tuple<std::string, std::string, ControlKind>> askedFor;
  FakeForm* active = nullptr;

 private:
  std::vector<std::shared_ptr<FakeForm>> loaded_;
  std::map<std::string, int> made_;
};

}  // namespace kivandra::fakes
