// SPDX-License-Identifier: GPL-3.0-or-later
#include "fakes/fake_forms.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace kivandra::fakes {

const std::string& FakeForm::Name() const { return name_; }

bool FakeForm::Loaded() const { return loaded; }

void FakeForm::SetEvents(FormEvents* receiver) { events = receiver; }

std::string FakeForm::Caption() const { return Alive(), caption; }

void FakeForm::SetCaption(const std::string& value) {
  Say("Caption = " + Quoted(value));
  caption = value;
}

std::string FakeForm::Tag() const { return Alive(), tag; }

void FakeForm::SetTag(const std::string& value) {
  Say("Tag = " + Quoted(value));
  tag = value;
}

bool FakeForm::Visible() const { return Alive(), visible; }

bool FakeForm::Unload() { return Close(UnloadMode::Code); }

void FakeForm::SetFocus() { Say("SetFocus"); }

enum WindowState FakeForm::WindowState() const { return Alive(), windowState; }

void FakeForm::SetWindowState(enum WindowState value) {
  Say("WindowState = " + std::to_string(static_cast<int>(value)));
  windowState = value;
}

Twips FakeForm::Left() const { return Alive(), left; }

void FakeForm::SetLeft(Twips value) { Place("Left", left, value); }

Twips FakeForm::Top() const { return Alive(), top; }

void FakeForm::SetTop(Twips value) { Place("Top", top, value); }

Twips FakeForm::Width() const { return Alive(), width; }

void FakeForm::SetWidth(Twips value) { Place("Width", width, value); }

Twips FakeForm::Height() const { return Alive(), height; }

void FakeForm::SetHeight(Twips value) { Place("Height", height, value); }

Twips FakeForm::ScaleWidth() const { return Alive(), scaleWidth; }

Twips FakeForm::ScaleHeight() const { return Alive(), scaleHeight; }

FakeTextBox& FakeForm::TextBoxOf(const std::string& name) {
  return Fetch<FakeTextBox>(name, ControlKind::TextBox);
}

FakeComboBox& FakeForm::ComboOf(const std::string& name) {
  return Fetch<FakeComboBox>(name, ControlKind::ComboBox);
}

FakeButton& FakeForm::ButtonOf(const std::string& name) {
  return Fetch<FakeButton>(name, ControlKind::Button);
}

FakeCheckBox& FakeForm::CheckOf(const std::string& name) {
  return Fetch<FakeCheckBox>(name, ControlKind::CheckBox);
}

FakeCalendar& FakeForm::CalendarOf(const std::string& name) {
  return Fetch<FakeCalendar>(name, ControlKind::Calendar);
}

FakeMenuBar& FakeForm::MenusOf(const std::string& name) {
  return Fetch<FakeMenuBar>(name, ControlKind::MenuBar);
}

FakeCommonDialog& FakeForm::DialogOf(const std::string& name) {
  return Fetch<FakeCommonDialog>(name, ControlKind::CommonDialog);
}

FakeRichTextBox& FakeForm::RichTextOf(const std::string& name) {
  return Fetch<FakeRichTextBox>(name, ControlKind::RichTextBox);
}

FakeTimer& FakeForm::TimerOf(const std::string& name) { return Fetch<FakeTimer>(name, ControlKind::Timer); }

FakeWebBrowser& FakeForm::BrowserOf(const std::string& name) {
  return Fetch<FakeWebBrowser>(name, ControlKind::WebBrowser);
}

FakePageView& FakeForm::ViewOf(const std::string& name) {
  return Fetch<FakePageView>(name, ControlKind::PageView);
}

FakeStatusBar& FakeForm::StatusOf(const std::string& name) {
  return Fetch<FakeStatusBar>(name, ControlKind::StatusBar);
}

FakeTreeView& FakeForm::TreeOf(const std::string& name) {
  return Fetch<FakeTreeView>(name, ControlKind::TreeView);
}

FakeBarControl& FakeForm::BarsOf(const std::string& name) {
  return Fetch<FakeBarControl>(name, ControlKind::BarControl);
}

void FakeForm::Alive() const {
  if (!loaded) {
    throw PlatformError(kObjectNotSet, "window " + name_ + " is unloaded");
  }
}

void FakeForm::Place(const char* what, Twips& place, Twips value) {
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

FakeMdiClient::FakeMdiClient(std::string name, Journal& journal, FakeForms& forms)
    : FakeControl(std::move(name), journal), forms_(forms) {}

void FakeMdiClient::SendMessageA(unsigned message, unsigned wParam, long lParam) {
  Say("SendMessageA " + std::to_string(message) + ", " + std::to_string(wParam) + ", " +
      std::to_string(lParam));
}

FakeForms::FakeForms(Journal& testJournal, FakeEventLoop& eventLoop)
    : journal(testJournal), loop(eventLoop) {}

FakeForms::~FakeForms() = default;

std::shared_ptr<Form> FakeForms::Load(const std::string& name) {
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

std::vector<std::shared_ptr<Form>> FakeForms::Loaded() const { return {loaded_.begin(), loaded_.end()}; }

Twips FakeForms::ScreenWidth() const { return 20490; }

FakeForm& FakeForms::Of(const std::string& journalName) {
  const auto found = byName.find(journalName);
  if (found == byName.end()) {
    throw std::logic_error("form " + journalName + " was never loaded");
  }
  return *found->second;
}

bool FakeForms::IsLoaded(const std::string& journalName) const {
  const auto found = byName.find(journalName);
  return found != byName.end() && found->second->loaded;
}

void FakeForms::Forget(const FakeForm* form) {
  loaded_.erase(
      std::remove_if(loaded_.begin(), loaded_.end(), [&](const auto& each) { return each.get() == form; }),
      loaded_.end());
}

void FakeForms::Activate(FakeForm* form) {
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

FakeForm::FakeForm(std::string name, std::string journalName, FakeForms& forms)
    : name_(std::move(name)), journalName_(std::move(journalName)), forms_(forms) {}

FakeForm::~FakeForm() = default;

bool FakeForm::MDIChild() const { return forms_.childForms.count(name_) != 0; }

void FakeForm::Say(const std::string& what) const {
  Alive();
  forms_.journal.Call(journalName_ + "." + what);
}

void FakeForm::SetVisible(bool value) {
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

void FakeForm::ShowModal() {
  Say("ShowModal");
  visible = true;
  if (events != nullptr) {
    events->Form_Activate();
  }
  while (loaded && visible) {
    forms_.loop.WaitForEvents();
  }
}

void FakeForm::BringToFront() {
  Say("BringToFront");
  if (visible && forms_.childForms.count(name_) != 0) {
    forms_.Activate(this);
  }
}

bool FakeForm::Close(UnloadMode mode) {
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

Control& FakeForm::FindControl(std::string_view name, ControlKind kind) {
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

Form* FakeMdiClient::ActiveForm() const { return forms_.active; }

}  // namespace kivandra::fakes
