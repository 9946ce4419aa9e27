// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "fakes/fake_event_loop.h"
#include "fakes/journal.h"
#include "platform/bar_control.h"
#include "platform/button.h"
#include "platform/calendar.h"
#include "platform/check_box.h"
#include "platform/combo_box.h"
#include "platform/common_dialog.h"
#include "platform/label.h"
#include "platform/menu_bar.h"
#include "platform/page_view.h"
#include "platform/picture_box.h"
#include "platform/rich_text_box.h"
#include "platform/skin_form.h"
#include "platform/status_bar.h"
#include "platform/text_box.h"
#include "platform/timer.h"

namespace kivandra::fakes {

/// What every fake control does: it remembers and writes changes to the journal as `name.Property = value`.
class FakeControl : public virtual Control {
 public:
  FakeControl(std::string name, Journal& journal) : name_(std::move(name)), journal_(journal) {}

  [[nodiscard]] const std::string& FullName() const { return name_; }

  [[nodiscard]] bool Enabled() const override { return enabled; }
  void SetEnabled(bool value) override {
    Say(std::string("Enabled = ") + (value ? "True" : "False"));
    enabled = value;
  }
  [[nodiscard]] bool Visible() const override { return visible; }
  void SetVisible(bool value) override {
    Say(std::string("Visible = ") + (value ? "True" : "False"));
    visible = value;
  }
  void SetFocus() override { Say("SetFocus"); }
  [[nodiscard]] Twips Left() const override { return left; }
  [[nodiscard]] Twips Top() const override { return top; }
  [[nodiscard]] Twips Width() const override { return width; }
  [[nodiscard]] Twips Height() const override { return height; }
  void Move(Twips l, Twips t, Twips w, Twips h) override {
    Say("Move " + std::to_string(l) + "," + std::to_string(t) + "," + std::to_string(w) + "," +
        std::to_string(h));
    left = l;
    top = t;
    width = w;
    height = h;
  }

  /// The control's window is unloaded: what it holds can still be looked at, but nothing changes it any more.
  void LetGo() { gone_ = true; }

  bool enabled = true;
  bool visible = true;
  Twips left = 0;
  Twips top = 0;
  Twips width = 0;
  Twips height = 0;

 protected:
  /// Records a change; throws if the journal says so, before the change is made, or if the window is gone.
  void Say(const std::string& what) const {
    if (gone_) {
      throw PlatformError(kObjectNotSet, "the window of " + name_ + " is gone");
    }
    journal_.Call(name_ + "." + what);
  }

 private:
  std::string name_;
  Journal& journal_;
  bool gone_ = false;
};

class FakeTextBox : public FakeControl, public TextBox {
 public:
  using FakeControl::FakeControl;
  [[nodiscard]] std::string Text() const override { return text; }
  void SetText(const std::string& value) override {
    Say("Text = " + Quoted(value));
    text = value;
  }
  void SetBackColor(SystemColor color) override {
    Say(std::string("BackColor = ") + (color == SystemColor::Window ? "Window" : "Disabled"));
  }
  void OnKeyDown(KeyHandler handler) override { keyDown = std::move(handler); }
  bool Press(int keyCode) { return keyDown && keyDown(keyCode); }

  std::string text;
  KeyHandler keyDown;
};

class FakeComboBox : public FakeControl, public ComboBox {
 public:
  using FakeControl::FakeControl;
  [[nodiscard]] std::string Text() const override { return text; }
  void SetText(const std::string& value) override {
    Say("Text = " + Quoted(value));
    text = value;
  }
  [[nodiscard]] int ListCount() const override { return static_cast<int>(items.size()); }
  [[nodiscard]] std::string List(int index) const override { return items[Checked(index, items.size())]; }
  void AddItem(const std::string& value, int index) override {
    Say("AddItem " + Quoted(value) + ", " + std::to_string(index));
    items.insert(items.begin() + static_cast<std::ptrdiff_t>(Checked(index, items.size() + 1)), value);
  }
  void RemoveItem(int index) override {
    Say("RemoveItem " + std::to_string(index));
    items.erase(items.begin() + static_cast<std::ptrdiff_t>(Checked(index, items.size())));
  }
  void SetListIndex(int index) override {
    Say("ListIndex = " + std::to_string(index));
    text = items[Checked(index, items.size())];
  }
  void OnKeyDown(KeyHandler handler) override { keyDown = std::move(handler); }
  void OnDblClick(std::function<void()> handler) override { dblClick = std::move(handler); }
  void OnClick(std::function<void()> handler) override { click = std::move(handler); }
  bool Press(int keyCode) { return keyDown && keyDown(keyCode); }

  std::string text;
  std::vector<std::string> items;
  KeyHandler keyDown;
  std::function<void()> dblClick;
  std::function<void()> click;

 private:
  static std::size_t Checked(int index, std::size_t size) {
    if (index < 0 || static_cast<std::size_t>(index) >= size) {
      throw PlatformError(kInvalidCall, "no such item");
    }
    return static_cast<std::size_t>(index);
  }
};

class FakeButton : public FakeControl, public Button {
 public:
  using FakeControl::FakeControl;
  [[nodiscard]] std::string Caption() const override { return caption; }
  void SetCaption(const std::string& value) override {
    Say("Caption = " + Quoted(value));
    caption = value;
  }
  void OnClick(std::function<void()> handler) override { click = std::move(handler); }
  void Click() {
    if (click) {
      click();
    }
  }
  std::string caption;
  std::function<void()> click;
};

class FakeCheckBox : public FakeControl, public CheckBox {
 public:
  using FakeControl::FakeControl;
  [[nodiscard]] int Value() const override { return value; }
  void SetValue(int newValue) override {
    const int ticked = newValue != 0 ? 1 : 0;
    Say("Value = " + std::to_string(ticked));
    if (std::exchange(value, ticked) != ticked && click) {
      click();
    }
  }
  void OnClick(std::function<void()> handler) override { click = std::move(handler); }
  /// A person ticks or clears the box.
  void Click() {
    value = 1 - value;
    if (click) {
      click();
    }
  }
  int value = 0;
  std::function<void()> click;
};

class FakeCalendar : public FakeControl, public Calendar {
 public:
  using FakeControl::FakeControl;
  [[nodiscard]] int Day() const override { return day; }
  [[nodiscard]] int Month() const override { return month; }
  [[nodiscard]] int Year() const override { return year; }
  void Today() override { Say("Today"); }
  void OnClick(std::function<void()> handler) override { click = std::move(handler); }
  /// A person chooses a day.
  void Choose(int newDay, int newMonth, int newYear) {
    day = newDay;
    month = newMonth;
    year = newYear;
    if (click) {
      click();
    }
  }
  int day = 1;
  int month = 1;
  int year = 2026;
  std::function<void()> click;
};

class FakeRichTextBox : public FakeControl, public RichTextBox {
 public:
  using FakeControl::FakeControl;
  void SetText(const std::string& value, const std::vector<TextSpan>& spans) override {
    Say("Text = " + Quoted(value));
    text = value;
    links = spans;
  }
  [[nodiscard]] std::string TextRange(const TextSpan& span) const override {
    return text.substr(span.begin, span.end - span.begin);
  }
  void PrintDoc(const std::string& document) override { Say("PrintDoc " + Quoted(document)); }
  void OnLink(std::function<void(unsigned, TextSpan)> handler) override { link = std::move(handler); }

  std::string text;
  std::vector<TextSpan> links;
  std::function<void(unsigned, TextSpan)> link;
};

class FakeMenuBar : public FakeControl, public MenuBar {
 public:
  using FakeControl::FakeControl;
  void Lay(const std::vector<MenuData>& laid) override {
    Say("Lay");
    menus = laid;
  }
  [[nodiscard]] bool Checked(const std::string& name) const override { return checked.count(name) != 0; }
  void SetChecked(const std::string& name, bool value) override {
    Say(name + ".Checked = " + (value ? "True" : "False"));
    if (value) {
      checked.insert(name);
    } else {
      checked.erase(name);
    }
  }
  void OnClick(std::function<void(const std::string&)> handler) override { click = std::move(handler); }
  /// A person chooses an entry.
  void Choose(const std::string& name) const {
    if (click) {
      click(name);
    }
  }
  std::vector<MenuData> menus;
  std::set<std::string> checked;
  std::function<void(const std::string&)> click;
};

/// A dialog that the test answers beforehand.
class FakeCommonDialog : public FakeControl, public CommonDialog {
 public:
  using FakeControl::FakeControl;
  void SetInitDir(const std::string& value) override { Say("InitDir = " + Quoted(value)); }
  void SetFilter(const std::string& value) override { Say("Filter = " + Quoted(value)); }
  void SetFilterIndex(int value) override { Say("FilterIndex = " + std::to_string(value)); }
  void SetFlags(int value) override { Say("Flags = " + std::to_string(value)); }
  void ShowOpen() override {
    Say("ShowOpen");
    fileName = answer;
  }
  [[nodiscard]] std::string FileName() const override { return fileName; }

  std::string answer;  ///< what the person will choose; empty: cancels
  std::string fileName;
};

class FakeLabel : public FakeControl, public Label {
 public:
  using FakeControl::FakeControl;
  [[nodiscard]] std::string Caption() const override { return caption; }
  void SetCaption(const std::string& value) override {
    Say("Caption = " + Quoted(value));
    caption = value;
  }
  std::string caption;
};

class FakeStatusBar : public FakeControl, public StatusBar {
 public:
  using FakeControl::FakeControl;
  [[nodiscard]] std::string Text() const override { return text; }
  void SetText(const std::string& value) override {
    Say("Text = " + Quoted(value));
    text = value;
  }
  void SetPanelText(const std::string& key, const std::string& value) override {
    Say("Panels(" + Quoted(key) + ") = " + Quoted(value));
    text = value;
  }
  std::string text;
};

class FakeSkinForm : public FakeControl, public SkinForm {
 public:
  using FakeControl::FakeControl;
  void SetProperty14(int value) override { Say("Property14 = " + std::to_string(value)); }
  void SetSkinFile(const std::string& path) override {
    Say("SkinFile = " + Quoted(path));
    skinFile = path;
  }
  void ApplyTo(Control& control) override {
    const auto* fake = dynamic_cast<const FakeControl*>(&control);
    Say("ApplyTo " + (fake != nullptr ? fake->FullName() : std::string("?")));
  }
  std::string skinFile;
};

class FakePageView : public FakeControl, public PageView {
 public:
  using FakeControl::FakeControl;
  void Navigate(const std::string& address) override {
    Say("Navigate " + Quoted(address));
    shown = address;
  }
  void Stop() override { Say("Stop"); }
  std::string shown;
};

class FakePictureBox : public FakeControl, public PictureBox {
 public:
  using FakeControl::FakeControl;
};

class FakeTimer : public FakeControl, public Timer {
 public:
  FakeTimer(std::string name, Journal& journal, FakeEventLoop& loop, int interval, bool on)
      : FakeControl(std::move(name), journal), loop_(loop), interval_(interval) {
    enabled = on;
    if (on) {
      loop_.Arm(this, interval_);
    }
  }
  ~FakeTimer() override { loop_.Disarm(this); }

  void SetEnabled(bool value) override {
    const bool was = enabled;
    FakeControl::SetEnabled(value);
    if (value && !was) {
      loop_.Arm(this, interval_);
    } else if (!value) {
      loop_.Disarm(this);
    }
  }
  [[nodiscard]] int Interval() const override { return interval_; }
  void OnTimer(std::function<void()> handler) override { tick_ = std::move(handler); }
  void Tick() {
    loop_.Arm(this, interval_);
    if (tick_) {
      tick_();
    }
  }

 private:
  FakeEventLoop& loop_;
  int interval_;
  std::function<void()> tick_;
};

inline bool FakeEventLoop::RunNext(long until) {
  const auto event = planned_.begin();
  auto timer = timers_.end();
  for (auto each = timers_.begin(); each != timers_.end(); ++each) {
    if (timer == timers_.end() || each->second < timer->second) {
      timer = each;
    }
  }
  const bool eventFirst =
      event != planned_.end() && (timer == timers_.end() || event->first <= timer->second);
  if (eventFirst) {
    if (event->first > until) {
      return false;
    }
    now_ = std::max(now_, event->first);
    auto action = std::move(event->second);
    planned_.erase(event);
    action();
    return true;
  }
  if (timer == timers_.end() || timer->second > until) {
    return false;
  }
  now_ = std::max(now_, timer->second);
  timer->first->Tick();
  return true;
}

/// Bars that are made on demand: a test needs no table of tools.
class FakeBarControl : public FakeControl, public BarControl {
 public:
  using FakeControl::FakeControl;

  class FakeTool : public Tool {
   public:
    FakeTool(FakeBarControl& bars, std::string band, ToolData toolData)
        : data(std::move(toolData)), bars_(bars), band_(std::move(band)) {}
    [[nodiscard]] const std::string& Name() const override { return data.name; }
    [[nodiscard]] const std::string& Caption() const override { return data.caption; }
    [[nodiscard]] bool Enabled() const override { return data.enabled; }
    void SetEnabled(bool value) override {
      bars_.Tell(band_ + "." + data.name + ".Enabled = " + (value ? "True" : "False"));
      data.enabled = value;
    }
    [[nodiscard]] Twips Width() const override { return data.width; }
    void SetWidth(Twips value) override {
      bars_.Tell(band_ + "." + data.name + ".Width = " + std::to_string(value));
      data.width = value;
    }
    [[nodiscard]] std::string Text() const override { return text; }
    void SetText(const std::string& value) override {
      bars_.Tell(band_ + "." + data.name + ".Text = " + Quoted(value));
      text = value;
    }
    void SetCustom(Control* control) override {
      const auto* fake = dynamic_cast<const FakeControl*>(control);
      bars_.Tell(band_ + "." + data.name + ".Custom = " + (fake != nullptr ? fake->FullName() : "Nothing"));
    }
    ToolData data;
    std::string text;

   private:
    FakeBarControl& bars_;
    std::string band_;
  };

  class FakeBand : public Band {
   public:
    FakeBand(FakeBarControl& bars, BandData bandData) : data(std::move(bandData)), bars_(bars) {
      for (const ToolData& tool : data.tools) {
        tools.emplace(tool.name, std::make_unique<FakeTool>(bars_, data.name, tool));
      }
    }
    Tool& Tools(const std::string& name) override {
      const auto found = tools.find(name);
      if (found == tools.end()) {
        throw PlatformError(kInvalidCall, "no tool " + name);
      }
      return *found->second;
    }
    [[nodiscard]] bool Visible() const override { return visible; }
    void SetVisible(bool value) override {
      bars_.Tell(data.name + ".Visible = " + (value ? "True" : "False"));
      visible = value;
    }
    [[nodiscard]] Twips Width() const override { return width; }
    void SetWidth(Twips value) override {
      bars_.Tell(data.name + ".Width = " + std::to_string(value));
      width = value;
    }
    [[nodiscard]] Twips Height() const override { return height; }

    BandData data;
    std::map<std::string, std::unique_ptr<FakeTool>> tools;
    bool visible = true;
    Twips width = 0;
    Twips height = 0;

   private:
    FakeBarControl& bars_;
  };

  void Lay(const std::vector<BandData>& laid) override {
    Say("Lay");
    for (const BandData& band : laid) {
      bands.emplace(band.name, std::make_unique<FakeBand>(*this, band));
    }
  }
  Band& Bands(const std::string& name) override {
    const auto found = bands.find(name);
    if (found == bands.end()) {
      throw PlatformError(kInvalidCall, "no band " + name);
    }
    return *found->second;
  }
  void OnToolClick(std::function<void(Tool&)> handler) override { toolClick = std::move(handler); }
  void OnToolEntered(std::function<void(Tool&)> handler) override { toolEntered = std::move(handler); }
  void Tell(const std::string& what) { Say(what); }

  std::map<std::string, std::unique_ptr<FakeBand>> bands;
  std::function<void(Tool&)> toolClick;
  std::function<void(Tool&)> toolEntered;
};

}  // namespace kivandra::fakes
