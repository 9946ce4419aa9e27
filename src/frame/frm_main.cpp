// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/frm_main.h"

#include <algorithm>
#include <utility>

#include "frame/banner.h"
#include "frame/bars.h"
#include "frame/menus.h"
#include "platform/timer.h"
#include "support/attempt.h"

namespace kivandra {

frmMain::frmMain(FrameServices services)
    : services_(std::move(services)), banner_(std::make_unique<Banner>(*this)) {}

frmMain::~frmMain() {
  if (form_ && form_->Loaded()) {
    attempt([&] { brwBanner().SetEvents(nullptr); });
    form_->SetEvents(nullptr);
  }
}

void frmMain::Load() {
  // A start that ran its events while the frame was being closed must not bring it back, with five unfiltered
  // seconds more.
  if (closing_ || (form_ && form_->Loaded())) {
    return;
  }
  form_ = services_.forms.Load("frmMain");
  form_->SetEvents(this);
  try {
    WireControls();
    MDIForm_Load();
  } catch (const PlatformError& error) {
    FillFilterIfEmpty();
    TellError(error);
  }
}

void frmMain::WireControls() {
  const auto disable = [this](const char* name) { attempt([&] { TimerOf(name).SetEnabled(false); }); };
  // First of all: while StartUp runs the gate lets everything pass, so no fault behind this may keep it
  // running.
  TimerOf("StartUp").OnTimer([disable] { disable("StartUp"); });
  TimerOf("CloseMe").OnTimer([disable] { disable("CloseMe"); });
  TimerOf("timerTips").OnTimer([this] { timerTips_Timer(); });
  TimerOf("Refreshtimer").OnTimer([this] { Refreshtimer_Timer(); });
  brwBanner().SetEvents(banner_.get());
  Menu().Lay(MenuTree());
  Menu().OnClick([this](const std::string& name) { Menu_Click(name); });
  BonusBar().Lay(BonusBarData());
  BonusBar().OnToolClick([this](Tool& tool) { BonusBar_ToolClick(tool); });
  BonusBar().OnToolEntered([this](Tool& tool) { BonusBar_ToolEntered(tool); });
  TheAddress().OnKeyDown([this](int keyCode) {
    if (keyCode != kKeyReturn) {
      return false;
    }
    GoAddress();
    return true;
  });
  TheAddress().OnClick([this] { GoAddress(); });
  // kept on purpose: Greet ticks for ever and does nothing; BannerTimer, BackForward and ShutDown have no
  // handler.
}

void frmMain::SetVisible(bool visible) {
  if (!closing_) {
    Window().SetVisible(visible);
  }
}

Form& frmMain::Window() const {
  if (!form_) {
    throw PlatformError(kObjectNotSet, "Object variable not set");
  }
  return *form_;
}

bool frmMain::Stands() const { return form_ && form_->Loaded() && !closing_; }

MenuBar& frmMain::Menu() const { return Window().Get<MenuBar>("Menu"); }
BarControl& frmMain::BonusBar() const { return Window().Get<BarControl>("BonusBar"); }
ComboBox& frmMain::TheAddress() const { return Window().Get<ComboBox>("TheAddress"); }
StatusBar& frmMain::Status() const { return Window().Get<StatusBar>("Status"); }
PageView& frmMain::WebBrowser2() const { return Window().Get<PageView>("WebBrowser2"); }
WebBrowser& frmMain::brwBanner() const { return Window().Get<WebBrowser>("brwBanner"); }
CommonDialog& frmMain::CommonDialog1() const { return Window().Get<CommonDialog>("CommonDialog1"); }
MdiClient& frmMain::MDIClient() const { return Window().Get<MdiClient>("MDIClient"); }
Timer& frmMain::TimerOf(const char* name) const { return Window().Get<Timer>(name); }

bool frmMain::StartUpEnabled() const { return TimerOf("StartUp").Enabled(); }

std::shared_ptr<frmBrowser> frmMain::ActiveForm() const {
  const Form* active = MDIClient().ActiveForm();
  const auto child = std::find_if(children_.begin(), children_.end(),
                                  [active](const auto& each) { return &each->Window() == active; });
  return child == children_.end() ? nullptr : *child;
}

std::shared_ptr<frmBrowser> frmMain::HeldChild() const {
  auto child = ActiveForm();
  if (!child) {
    throw PlatformError(kObjectNotSet, "Object variable not set");
  }
  return child;
}

std::shared_ptr<frmBrowser> frmMain::NewChild() {
  auto child = services_.makeChild();
  children_.push_back(child);
  return child;
}

void frmMain::ChildUnloaded(const frmBrowser& child) {
  children_.erase(std::remove_if(children_.begin(), children_.end(),
                                 [&child](const auto& each) { return each.get() == &child; }),
                  children_.end());
}

}  // namespace kivandra
