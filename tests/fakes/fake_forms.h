// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <tuple>
#include <utility>
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

  [[nodiscard]] const std::string& Name() const override { return name_; }
  [[nodiscard]] bool Loaded() const override { return loaded; }
  void SetEvents(FormEvents* receiver) override { events = receiver; }
  [[nodiscard]] bool MDIChild() const override;
  [[nodiscard]] std::string Caption() const override { return Alive(), caption; }
  void SetCaption(const std::string& value) override {
    Say("Caption = " + Quoted(value));
    caption = value;
  }
  [[nodiscard]] std::string Tag() const override { return Alive(), tag; }
  void SetTag(const std::string& value) override {
    Say("Tag = " + Quoted(value));
    tag = value;
  }
  [[nodiscard]] bool Visible() const override { return Alive(), visible; }
  void SetVisible(bool value) override;
  void ShowModal() override;
  bool Unload() override { return Close(UnloadMode::Code); }
  void BringToFront() override;
  void SetFocus() override { Say("SetFocus"); }
  [[nodiscard]] enum WindowState WindowState() const override { return Alive(), windowState; }
  void SetWindowState(enum WindowState value) override {
    Say("WindowState = " + std::to_string(static_cast<int>(value)));
    windowState = value;
  }
  [[nodiscard]] Twips Left() const override { return Alive(), left; }
  void SetLeft(Twips value) override { Place("Left", left, value); }
  [[nodiscard]] Twips Top() const override { return Alive(), top; }
  void SetTop(Twips value) override { Place("Top", top, value); }
  [[nodiscard]] Twips Width() const override { return Alive(), width; }
  void SetWidth(Twips value) override { Place("Width", width, value); }
  [[nodiscard]] Twips Height() const override { return Alive(), height; }
  void SetHeight(Twips value) override { Place("Height", height, value); }
  [[nodiscard]] Twips ScaleWidth() const override { return Alive(), scaleWidth; }
  [[nodiscard]] Twips ScaleHeight() const override { return Alive(), scaleHeight; }
  Control& FindControl(std::string_view name, ControlKind kind) override;

  /// Asks, tells and takes the window away, as when it is closed in the given way.
  bool Close(UnloadMode mode);
  template <typename Fake>
  Fake& Fetch(const std::string& name, ControlKind kind) {
    return dynamic_cast<Fake&>(FindControl(name, kind));
  }
  FakeTextBox& TextBoxOf(const std::string& name) { return Fetch<FakeTextBox>(name, ControlKind::TextBox); }
  FakeComboBox& ComboOf(const std::string& name) { return Fetch<FakeComboBox>(name, ControlKind::ComboBox); }
  FakeButton& ButtonOf(const std::string& name) { return Fetch<FakeButton>(name, ControlKind::Button); }
  FakeCheckBox& CheckOf(const std::string& name) { return Fetch<FakeCheckBox>(name, ControlKind::CheckBox); }
  FakeCalendar& CalendarOf(const std::string& name) {
    return Fetch<FakeCalendar>(name, ControlKind::Calendar);
  }
  FakeMenuBar& MenusOf(const std::string& name) { return Fetch<FakeMenuBar>(name, ControlKind::MenuBar); }
  FakeCommonDialog& DialogOf(const std::string& name) {
    return Fetch<FakeCommonDialog>(name, ControlKind::CommonDialog);
  }
  FakeRichTextBox& RichTextOf(const std::string& name) {
    return Fetch<FakeRichTextBox>(name, ControlKind::RichTextBox);
  }
  FakeTimer& TimerOf(const std::string& name) { return Fetch<FakeTimer>(name, ControlKind::Timer); }
  FakeWebBrowser& BrowserOf(const std::string& name) {
    return Fetch<FakeWebBrowser>(name, ControlKind::WebBrowser);
  }
  FakePageView& ViewOf(const std::string& name) { return Fetch<FakePageView>(name, ControlKind::PageView); }
  FakeStatusBar& StatusOf(const std::string& name) {
    return Fetch<FakeStatusBar>(name, ControlKind::StatusBar);
  }
  FakeTreeView& TreeOf(const std::string& name) { return Fetch<FakeTreeView>(name, ControlKind::TreeView); }
  FakeBarControl& BarsOf(const std::string& name) {
    return Fetch<FakeBarControl>(name, ControlKind::BarControl);
  }

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
  void Alive() const {
    if (!loaded) {
      throw PlatformError(kObjectNotSet, "window " + name_ + " is unloaded");
    }
  }
  void Say(const std::string& what) const;
  void Place(const char* what, Twips& place, Twips value) {
    Alive();
    if (windowState != WindowState::Normal) {
      throw PlatformError(384, "a form can't be moved or sized while minimized or maximized");
    }
    Say(std::string(what) + " = " + std::to_string(value));
    place = value;
    if (events != nullptr && (&place == &width || &place == &height)) {
      events->Form_Resize();
    }
  }

  std::string name_;
  std::string journalName_;
  FakeForms& forms_;
  bool unloading_ = false;
  std::map<std::string, std::unique_ptr<Control>, std::less<>> controls_;
};

class FakeMdiClient : public FakeControl, public MdiClient {
 public:
  FakeMdiClient(std::string name, Journal& journal, FakeForms& forms)
      : FakeControl(std::move(name), journal), forms_(forms) {}
  [[nodiscard]] Form* ActiveForm() const override;
  void SendMessageA(unsigned message, unsigned wParam, long lParam) override {
    Say("SendMessageA " + std::to_string(message) + ", " + std::to_string(wParam) + ", " +
        std::to_string(lParam));
  }

 private:
  FakeForms& forms_;
};

/// All windows of a test. A name in `childForms` makes child windows, shown in the journal as `frmBrowser#1`
/// and on.
class FakeForms : public Forms {
 public:
  FakeForms(Journal& testJournal, FakeEventLoop& eventLoop) : journal(testJournal), loop(eventLoop) {}

  std::shared_ptr<Form> Load(const std::string& name) override {
    journal.Call("Load " + name);
    std::string journalName = name;
    if (childForms.count(name) != 0) {
      journalName += "#" + std::to_string(++made_[name]);
    }
    auto form = std::make_shared<FakeForm>(name, journalName, *this);
    loaded_.push_back(form);
    byName[journalName] = form;
    return form;
  }
  [[nodiscard]] std::vector<std::shared_ptr<Form>> Loaded() const override {
    return {loaded_.begin(), loaded_.end()};
  }
  [[nodiscard]] Twips ScreenWidth() const override { return 20490; }

  /// The form with this journal name; fails the test if it was never loaded.
  FakeForm& Of(const std::string& journalName) {
    const auto found = byName.find(journalName);
    if (found == byName.end()) {
      throw std::logic_error("form " + journalName + " was never loaded");
    }
    return *found->second;
  }
  [[nodiscard]] bool IsLoaded(const std::string& journalName) const {
    const auto found = byName.find(journalName);
    return found != byName.end() && found->second->loaded;
  }
  void Forget(const FakeForm* form) {
    loaded_.erase(
        std::remove_if(loaded_.begin(), loaded_.end(), [&](const auto& each) { return each.get() == form; }),
        loaded_.end());
  }
  /// Makes a child the active one and tells both children.
  void Activate(FakeForm* form) {
    if (active == form) {
      return;
    }
    FakeForm* old = std::exchange(active, form);
    if (old != nullptr && old->loaded && old->events != nullptr) {
      old->events->Form_Deactivate();
    }
    if (form != nullptr && form->events != nullptr) {
      form->events->Form_Activate();
    }
  }
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

inline FakeForm::FakeForm(std::string name, std::string journalName, FakeForms& forms)
    : name_(std::move(name)), journalName_(std::move(journalName)), forms_(forms) {}

inline bool FakeForm::MDIChild() const { return forms_.childForms.count(name_) != 0; }

inline void FakeForm::Say(const std::string& what) const {
  Alive();
  forms_.journal.Call(journalName_ + "." + what);
}

inline void FakeForm::SetVisible(bool value) {
  Say(std::string("Visible = ") + (value ? "True" : "False"));
  const bool shown = value && !visible;
  visible = value;
  if (forms_.childForms.count(name_) != 0) {
    if (shown) {
      forms_.Activate(this);
    } else if (!value && forms_.active == this) {
      forms_.Activate(nullptr);
    }
  } else if (shown && events != nullptr) {
    events->Form_Activate();
  }
}

inline void FakeForm::ShowModal() {
  Say("ShowModal");
  visible = true;
  if (events != nullptr) {
    events->Form_Activate();
  }
  while (loaded && visible) {
    forms_.loop.WaitForEvents();
  }
}

inline void FakeForm::BringToFront() {
  Say("BringToFront");
  if (visible && forms_.childForms.count(name_) != 0) {
    forms_.Activate(this);
  }
}

inline bool FakeForm::Close(UnloadMode mode) {
  if (!loaded || unloading_) {
    return true;
  }
  const auto self = shared_from_this();
  forms_.journal.Call(journalName_ + ".Unload");
  if (events != nullptr) {
    bool cancel = false;
    events->Form_QueryUnload(cancel, mode);
    if (cancel) {
      return false;
    }
  }
  if (!loaded) {
    return true;
  }
  unloading_ = true;
  if (events != nullptr) {
    events->Form_Unload();
  }
  loaded = false;
  visible = false;
  events = nullptr;
  if (forms_.active == this) {
    forms_.active = nullptr;
  }
  // Its timers tick no more; the other controls stay readable for the test.
  for (auto& [name, control] : controls_) {
    if (auto* timer = dynamic_cast<FakeTimer*>(control.get()); timer != nullptr) {
      forms_.loop.Disarm(timer);
    }
    if (auto* fake = dynamic_cast<FakeControl*>(control.get()); fake != nullptr) {
      fake->LetGo();
    }
  }
  forms_.Forget(this);
  return true;
}

inline Control& FakeForm::FindControl(std::string_view name, ControlKind kind) {
  forms_.askedFor.emplace(name_, std::string(name), kind);
  const auto found = controls_.find(name);
  if (found != controls_.end()) {
    return *found->second;
  }
  const std::string full = journalName_ + "." + std::string(name);
  Journal& journal = forms_.journal;
  std::unique_ptr<Control> made;
  switch (kind) {
    case ControlKind::BarControl:
      made = std::make_unique<FakeBarControl>(full, journal);
      break;
    case ControlKind::Button:
      made = std::make_unique<FakeButton>(full, journal);
      break;
    case ControlKind::Calendar:
      made = std::make_unique<FakeCalendar>(full, journal);
      break;
    case ControlKind::CheckBox:
      made = std::make_unique<FakeCheckBox>(full, journal);
      break;
    case ControlKind::CommonDialog:
      made = std::make_unique<FakeCommonDialog>(full, journal);
      break;
    case ControlKind::ComboBox:
      made = std::make_unique<FakeComboBox>(full, journal);
      break;
    case ControlKind::Label:
      made = std::make_unique<FakeLabel>(full, journal);
      break;
    case ControlKind::MdiClient:
      made = std::make_unique<FakeMdiClient>(full, journal, forms_);
      break;
    case ControlKind::MenuBar:
      made = std::make_unique<FakeMenuBar>(full, journal);
      break;
    case ControlKind::RichTextBox:
      made = std::make_unique<FakeRichTextBox>(full, journal);
      break;
    case ControlKind::PageView:
      made = std::make_unique<FakePageView>(full, journal);
      break;
    case ControlKind::PictureBox:
      made = std::make_unique<FakePictureBox>(full, journal);
      break;
    case ControlKind::SkinForm:
      made = std::make_unique<FakeSkinForm>(full, journal);
      break;
    case ControlKind::StatusBar:
      made = std::make_unique<FakeStatusBar>(full, journal);
      break;
    case ControlKind::TextBox:
      made = std::make_unique<FakeTextBox>(full, journal);
      break;
    case ControlKind::Timer: {
      const auto data = forms_.timers[name_ + "." + std::string(name)];
      made = std::make_unique<FakeTimer>(full, journal, forms_.loop, data.interval, data.enabled);
      break;
    }
    case ControlKind::TreeView:
      made = std::make_unique<FakeTreeView>(full, journal);
      break;
    case ControlKind::WebBrowser:
      made = std::make_unique<FakeWebBrowser>(full, journal);
      break;
  }
  return *controls_.emplace(std::string(name), std::move(made)).first->second;
}

inline Form* FakeMdiClient::ActiveForm() const { return forms_.active; }

}  // namespace kivandra::fakes
