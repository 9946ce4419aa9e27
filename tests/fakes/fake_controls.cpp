// SPDX-License-Identifier: GPL-3.0-or-later
#include "fakes/fake_controls.h"

#include <utility>

namespace kivandra::fakes {

FakeControl::FakeControl(std::string name, Journal& journal) : name_(std::move(name)), journal_(journal) {}

const std::string& FakeControl::FullName() const { return name_; }

bool FakeControl::Enabled() const { return enabled; }

void FakeControl::SetEnabled(bool value) {
  Say(std::string("Enabled = ") + (value ? "True" : "False"));
  enabled = value;
}

bool FakeControl::Visible() const { return visible; }

void FakeControl::SetVisible(bool value) {
  Say(std::string("Visible = ") + (value ? "True" : "False"));
  visible = value;
}

void FakeControl::SetFocus() { Say("SetFocus"); }

Twips FakeControl::Left() const { return left; }

Twips FakeControl::Top() const { return top; }

Twips FakeControl::Width() const { return width; }

Twips FakeControl::Height() const { return height; }

void FakeControl::Move(Twips l, Twips t, Twips w, Twips h) {
  Say("Move " + std::to_string(l) + "," + std::to_string(t) + "," + std::to_string(w) + "," +
      std::to_string(h));
  left = l;
  top = t;
  width = w;
  height = h;
}

void FakeControl::LetGo() { gone_ = true; }

void FakeControl::Say(const std::string& what) const {
  if (gone_) {
    throw PlatformError(kObjectNotSet, "the window of " + name_ + " is gone");
  }
  journal_.Call(name_ + "." + what);
}

std::string FakeTextBox::Text() const { return text; }

void FakeTextBox::SetText(const std::string& value) {
  Say("Text = " + Quoted(value));
  text = value;
}

void FakeTextBox::SetBackColor(SystemColor color) {
  Say(std::string("BackColor = ") + (color == SystemColor::Window ? "Window" : "Disabled"));
}

void FakeTextBox::OnKeyDown(KeyHandler handler) { keyDown = std::move(handler); }

bool FakeTextBox::Press(int keyCode) { return keyDown && keyDown(keyCode); }

std::string FakeComboBox::Text() const { return text; }

void FakeComboBox::SetText(const std::string& value) {
  Say("Text = " + Quoted(value));
  text = value;
}

int FakeComboBox::ListCount() const { return static_cast<int>(items.size()); }

std::string FakeComboBox::List(int index) const { return items[Checked(index, items.size())]; }

void FakeComboBox::AddItem(const std::string& value, int index) {
  Say("AddItem " + Quoted(value) + ", " + std::to_string(index));
  items.insert(items.begin() + static_cast<std::ptrdiff_t>(Checked(index, items.size() + 1)), value);
}

void FakeComboBox::RemoveItem(int index) {
  Say("RemoveItem " + std::to_string(index));
  items.erase(items.begin() + static_cast<std::ptrdiff_t>(Checked(index, items.size())));
}

void FakeComboBox::SetListIndex(int index) {
  Say("ListIndex = " + std::to_string(index));
  text = items[Checked(index, items.size())];
}

void FakeComboBox::OnKeyDown(KeyHandler handler) { keyDown = std::move(handler); }

void FakeComboBox::OnDblClick(std::function<void()> handler) { dblClick = std::move(handler); }

void FakeComboBox::OnClick(std::function<void()> handler) { click = std::move(handler); }

bool FakeComboBox::Press(int keyCode) { return keyDown && keyDown(keyCode); }

std::size_t FakeComboBox::Checked(int index, std::size_t size) {
  if (index < 0 || static_cast<std::size_t>(index) >= size) {
    throw PlatformError(kInvalidCall, "no such item");
  }
  return static_cast<std::size_t>(index);
}

std::string FakeButton::Caption() const { return caption; }

void FakeButton::SetCaption(const std::string& value) {
  Say("Caption = " + Quoted(value));
  caption = value;
}

void FakeButton::OnClick(std::function<void()> handler) { click = std::move(handler); }

void FakeButton::Click() {
  if (click) {
    click();
  }
}

int FakeCheckBox::Value() const { return value; }

void FakeCheckBox::SetValue(int newValue) {
  const int ticked = newValue != 0 ? 1 : 0;
  Say("Value = " + std::to_string(ticked));
  if (std::exchange(value, ticked) != ticked && click) {
    click();
  }
}

void FakeCheckBox::OnClick(std::function<void()> handler) { click = std::move(handler); }

void FakeCheckBox::Click() {
  value = 1 - value;
  if (click) {
    click();
  }
}

int FakeCalendar::Day() const { return day; }

int FakeCalendar::Month() const { return month; }

int FakeCalendar::Year() const { return year; }

void FakeCalendar::Today() { Say("Today"); }

void FakeCalendar::OnClick(std::function<void()> handler) { click = std::move(handler); }

void FakeCalendar::Choose(int newDay, int newMonth, int newYear) {
  day = newDay;
  month = newMonth;
  year = newYear;
  if (click) {
    click();
  }
}

void FakeRichTextBox::SetText(const std::string& value, const std::vector<TextSpan>& spans) {
  Say("Text = " + Quoted(value));
  text = value;
  links = spans;
}

std::string FakeRichTextBox::TextRange(const TextSpan& span) const {
  return text.substr(span.begin, span.end - span.begin);
}

void FakeRichTextBox::PrintDoc(const std::string& document) { Say("PrintDoc " + Quoted(document)); }

void FakeRichTextBox::OnLink(std::function<void(unsigned, TextSpan)> handler) { link = std::move(handler); }

void FakeMenuBar::Lay(const std::vector<MenuData>& laid) {
  Say("Lay");
  menus = laid;
}

bool FakeMenuBar::Checked(const std::string& name) const { return checked.count(name) != 0; }

void FakeMenuBar::SetChecked(const std::string& name, bool value) {
  Say(name + ".Checked = " + (value ? "True" : "False"));
  if (value) {
    checked.insert(name);
  } else {
    checked.erase(name);
  }
}

void FakeMenuBar::OnClick(std::function<void(const std::string&)> handler) { click = std::move(handler); }

void FakeMenuBar::Choose(const std::string& name) const {
  if (click) {
    click(name);
  }
}

void FakeCommonDialog::SetInitDir(const std::string& value) { Say("InitDir = " + Quoted(value)); }

void FakeCommonDialog::SetFilter(const std::string& value) { Say("Filter = " + Quoted(value)); }

void FakeCommonDialog::SetFilterIndex(int value) { Say("FilterIndex = " + std::to_string(value)); }

void FakeCommonDialog::SetFlags(int value) { Say("Flags = " + std::to_string(value)); }

void FakeCommonDialog::ShowOpen() {
  Say("ShowOpen");
  fileName = answer;
}

std::string FakeCommonDialog::FileName() const { return fileName; }

std::string FakeLabel::Caption() const { return caption; }

void FakeLabel::SetCaption(const std::string& value) {
  Say("Caption = " + Quoted(value));
  caption = value;
}

std::string FakeStatusBar::Text() const { return text; }

void FakeStatusBar::SetText(const std::string& value) {
  Say("Text = " + Quoted(value));
  text = value;
}

void FakeStatusBar::SetPanelText(const std::string& key, const std::string& value) {
  Say("Panels(" + Quoted(key) + ") = " + Quoted(value));
  text = value;
}

void FakeSkinForm::SetProperty14(int value) { Say("Property14 = " + std::to_string(value)); }

void FakeSkinForm::SetSkinFile(const std::string& path) {
  Say("SkinFile = " + Quoted(path));
  skinFile = path;
}

void FakeSkinForm::ApplyTo(Control& control) {
  const auto* fake = dynamic_cast<const FakeControl*>(&control);
  Say("ApplyTo " + (fake != nullptr ? fake->FullName() : std::string("?")));
}

void FakePageView::Navigate(const std::string& address) {
  Say("Navigate " + Quoted(address));
  shown = address;
}

void FakePageView::Stop() { Say("Stop"); }

FakeTimer::FakeTimer(std::string name, Journal& journal, FakeEventLoop& loop, int interval, bool on)
    : FakeControl(std::move(name), journal), loop_(loop), interval_(interval) {
  enabled = on;
  if (on) {
    loop_.Arm(this, interval_);
  }
}

FakeTimer::~FakeTimer() { loop_.Disarm(this); }

void FakeTimer::SetEnabled(bool value) {
  const bool was = enabled;
  FakeControl::SetEnabled(value);
  if (value && !was) {
    loop_.Arm(this, interval_);
  } else if (!value) {
    loop_.Disarm(this);
  }
}

int FakeTimer::Interval() const { return interval_; }

void FakeTimer::OnTimer(std::function<void()> handler) { tick_ = std::move(handler); }

void FakeTimer::Tick() {
  loop_.Arm(this, interval_);
  if (tick_) {
    tick_();
  }
}

FakeBarControl::FakeTool::FakeTool(FakeBarControl& bars, std::string band, ToolData toolData)
    : data(std::move(toolData)), bars_(bars), band_(std::move(band)) {}

const std::string& FakeBarControl::FakeTool::Name() const { return data.name; }

const std::string& FakeBarControl::FakeTool::Caption() const { return data.caption; }

bool FakeBarControl::FakeTool::Enabled() const { return data.enabled; }

void FakeBarControl::FakeTool::SetEnabled(bool value) {
  bars_.Tell(band_ + "." + data.name + ".Enabled = " + (value ? "True" : "False"));
  data.enabled = value;
}

Twips FakeBarControl::FakeTool::Width() const { return data.width; }

void FakeBarControl::FakeTool::SetWidth(Twips value) {
  bars_.Tell(band_ + "." + data.name + ".Width = " + std::to_string(value));
  data.width = value;
}

std::string FakeBarControl::FakeTool::Text() const { return text; }

void FakeBarControl::FakeTool::SetText(const std::string& value) {
  bars_.Tell(band_ + "." + data.name + ".Text = " + Quoted(value));
  text = value;
}

void FakeBarControl::FakeTool::SetCustom(Control* control) {
  const auto* fake = dynamic_cast<const FakeControl*>(control);
  bars_.Tell(band_ + "." + data.name + ".Custom = " + (fake != nullptr ? fake->FullName() : "Nothing"));
}

FakeBarControl::FakeBand::FakeBand(FakeBarControl& bars, BandData bandData)
    : data(std::move(bandData)), bars_(bars) {
  for (const ToolData& tool : data.tools) {
    tools.emplace(tool.name, std::make_unique<FakeTool>(bars_, data.name, tool));
  }
}

Tool& FakeBarControl::FakeBand::Tools(const std::string& name) {
  const auto found = tools.find(name);
  if (found == tools.end()) {
    throw PlatformError(kInvalidCall, "no tool " + name);
  }
  return *found->second;
}

bool FakeBarControl::FakeBand::Visible() const { return visible; }

void FakeBarControl::FakeBand::SetVisible(bool value) {
  bars_.Tell(data.name + ".Visible = " + (value ? "True" : "False"));
  visible = value;
}

Twips FakeBarControl::FakeBand::Width() const { return width; }

void FakeBarControl::FakeBand::SetWidth(Twips value) {
  bars_.Tell(data.name + ".Width = " + std::to_string(value));
  width = value;
}

Twips FakeBarControl::FakeBand::Height() const { return height; }

void FakeBarControl::Lay(const std::vector<BandData>& laid) {
  Say("Lay");
  for (const BandData& band : laid) {
    bands.emplace(band.name, std::make_unique<FakeBand>(*this, band));
  }
}

Band& FakeBarControl::Bands(const std::string& name) {
  const auto found = bands.find(name);
  if (found == bands.end()) {
    throw PlatformError(kInvalidCall, "no band " + name);
  }
  return *found->second;
}

void FakeBarControl::OnToolClick(std::function<void(Tool&)> handler) { toolClick = std::move(handler); }

void FakeBarControl::OnToolEntered(std::function<void(Tool&)> handler) { toolEntered = std::move(handler); }

void FakeBarControl::Tell(const std::string& what) { Say(what); }

}  // namespace kivandra::fakes
