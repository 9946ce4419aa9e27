// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform_gtk/window_test.h"

#include <utility>

namespace kivandra::gtk {

EmptyBrowser::EmptyBrowser(Gtk::Box& place) : WidgetControl(place) {
  auto* page = Gtk::make_managed<Gtk::DrawingArea>();
  page->set_focusable(true);
  page->set_expand(true);
  place.append(*page);
}

void EmptyBrowser::Navigate(const std::string&) { Alive(); }

void EmptyBrowser::Stop() { Alive(); }

void EmptyBrowser::SetEvents(WebBrowserEvents*) {}

void EmptyBrowser::GoBack() { Alive(); }

void EmptyBrowser::GoForward() { Alive(); }

void EmptyBrowser::Refresh() { Alive(); }

std::string EmptyBrowser::LocationURL() const { return {}; }

std::string EmptyBrowser::LocationName() const { return {}; }

bool EmptyBrowser::Busy() const { return false; }

void EmptyBrowser::ExecWB(int, int, int) { Alive(); }

int EmptyBrowser::QueryStatusWB(int) const { return 0; }

void EmptyBrowser::SetRegisterAsBrowser(bool) { Alive(); }

void EmptyBrowser::SetScriptObject(const std::string&, ScriptObject*) { Alive(); }

std::unique_ptr<WebBrowser> EmptyPages::MakeBrowser(Gtk::Box& place) {
  return std::make_unique<EmptyBrowser>(place);
}

std::unique_ptr<PageView> EmptyPages::MakePageView(Gtk::Box& place) {
  return std::make_unique<EmptyBrowser>(place);
}

Teller::Teller(std::string name, std::vector<std::string>& journal)
    : name_(std::move(name)), journal_(journal) {}

Teller::~Teller() = default;

void Teller::Form_Activate() { journal_.push_back(name_ + " activated"); }

void Teller::Form_Deactivate() { journal_.push_back(name_ + " deactivated"); }

void Teller::Form_Resize() { ++resizes; }

void Teller::Form_QueryUnload(bool& cancel, UnloadMode mode) {
  journal_.push_back(name_ + " asked " + std::to_string(static_cast<int>(mode)));
  cancel = refuses;
  if (whenAsked) {
    whenAsked();
  }
}

void Teller::Form_Unload() {
  journal_.push_back(name_ + " unloaded");
  if (whenUnloaded) {
    whenUnloaded();
  }
}

WindowTest::WindowTest() = default;

WindowTest::~WindowTest() { Settle(); }

bool WindowTest::Until(const std::function<bool()>& done) {
  constexpr unsigned kLookMilliseconds = 20;
  int looks = 500;
  const auto timer = Glib::signal_timeout().connect([&looks] { return --looks, true; }, kLookMilliseconds);
  while (!done() && looks > 0) {
    loop.WaitForEvents();
  }
  sigc::connection(timer).disconnect();
  return done();
}

void WindowTest::Settle() { loop.DoEvents(); }

std::shared_ptr<Form> WindowTest::LoadFrame() {
  auto frame = forms.Load("frmMain");
  area = &frame->Get<MdiClient>("MDIClient");
  return frame;
}

std::shared_ptr<Form> WindowTest::LoadChild(FormEvents& events) {
  auto child = forms.Load("frmBrowser");
  child->SetEvents(&events);
  child->Get<WebBrowser>("brwWebBrowser");
  child->SetVisible(true);
  return child;
}

}  // namespace kivandra::gtk
