// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
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
  FakeControl(std::string name, Journal& journal);

  [[nodiscard]] const std::string& FullName() const;

  [[nodiscard]] bool Enabled() const override;
  void SetEnabled(bool value) override;
  [[nodiscard]] bool Visible() const override;
  void SetVisible(bool value) override;
  void SetFocus() override;
  [[nodiscard]] Twips Left() const override;
  [[nodiscard]] Twips Top() const override;
  [[nodiscard]] Twips Width() const override;
  [[nodiscard]] Twips Height() const override;
  void Move(Twips l, Twips t, Twips w, Twips h) override;

  /// The control's window is unloaded: what it holds can still be looked at, but nothing changes it any more.
  void LetGo();

  bool enabled = true;
  bool visible = true;
  Twips left = 0;
  Twips top = 0;
  Twips width = 0;
  Twips height = 0;

 protected:
  /// Records a change; throws if the journal says so, before the change is made, or if the window is gone.
  void Say(const std::string& what) const;

 private:
  std::string name_;
  Journal& journal_;
  bool gone_ = false;
};

class FakeTextBox : public FakeControl, public TextBox {
 public:
  using FakeControl::FakeControl;
  [[nodiscard]] std::string Text() const override;
  void SetText(const std::string& value) override;
  void SetBackColor(SystemColor color) override;
  void OnKeyDown(KeyHandler handler) override;
  bool Press(int keyCode);

  std::string text;
  KeyHandler keyDown;
};

class FakeComboBox : public FakeControl, public ComboBox {
 public:
  using FakeControl::FakeControl;
  [[nodiscard]] std::string Text() const override;
  void SetText(const std::string& value) override;
  [[nodiscard]] int ListCount() const override;
  [[nodiscard]] std::string List(int index) const override;
  void AddItem(const std::string& value, int index) override;
  void RemoveItem(int index) override;
  void SetListIndex(int index) override;
  void OnKeyDown(KeyHandler handler) override;
  void OnDblClick(std::function<void()> handler) override;
  void OnClick(std::function<void()> handler) override;
  bool Press(int keyCode);

  std::string text;
  std::vector<std::string> items;
  KeyHandler keyDown;
  std::function<void()> dblClick;
  std::function<void()> click;

 private:
  static std::size_t Checked(int index, std::size_t size);
};

class FakeButton : public FakeControl, public Button {
 public:
  using FakeControl::FakeControl;
  [[nodiscard]] std::string Caption() const override;
  void SetCaption(const std::string& value) override;
  void OnClick(std::function<void()> handler) override;
  void Click();
  std::string caption;
  std::function<void()> click;
};

class FakeCheckBox : public FakeControl, public CheckBox {
 public:
  using FakeControl::FakeControl;
  [[nodiscard]] int Value() const override;
  void SetValue(int newValue) override;
  void OnClick(std::function<void()> handler) override;
  /// A person ticks or clears the box.
  void Click();
  int value = 0;
  std::function<void()> click;
};

class FakeCalendar : public FakeControl, public Calendar {
 public:
  using FakeControl::FakeControl;
  [[nodiscard]] int Day() const override;
  [[nodiscard]] int Month() const override;
  [[nodiscard]] int Year() const override;
  void Today() override;
  void OnClick(std::function<void()> handler) override;
  /// A person chooses a day.
  void Choose(int newDay, int newMonth, int newYear);
  int day = 1;
  int month = 1;
  int year = 2026;
  std::function<void()> click;
};

class FakeRichTextBox : public FakeControl, public RichTextBox {
 public:
  using FakeControl::FakeControl;
  void SetText(const std::string& value, const std::vector<TextSpan>& spans) override;
  [[nodiscard]] std::string TextRange(const TextSpan& span) const override;
  void PrintDoc(const std::string& document) override;
  void OnLink(std::function<void(unsigned, TextSpan)> handler) override;

  std::string text;
  std::vector<TextSpan> links;
  std::function<void(unsigned, TextSpan)> link;
};

class FakeMenuBar : public FakeControl, public MenuBar {
 public:
  using FakeControl::FakeControl;
  void Lay(const std::vector<MenuData>& laid) override;
  [[nodiscard]] bool Checked(const std::string& name) const override;
  void SetChecked(const std::string& name, bool value) override;
  void OnClick(std::function<void(const std::string&)> handler) override;
  /// A person chooses an entry.
  void Choose(const std::string& name) const;
  std::vector<MenuData> menus;
  std::set<std::string> checked;
  std::function<void(const std::string&)> click;
};

/// A dialog that the test answers beforehand.
class FakeCommonDialog : public FakeControl, public CommonDialog {
 public:
  using FakeControl::FakeControl;
  void SetInitDir(const std::string& value) override;
  void SetFilter(const std::string& value) override;
  void SetFilterIndex(int value) override;
  void SetFlags(int value) override;
  void ShowOpen() override;
  [[nodiscard]] std::string FileName() const override;

  std::string answer;  ///< what the person will choose; empty: cancels
  std::string fileName;
};

class FakeLabel : public FakeControl, public Label {
 public:
  using FakeControl::FakeControl;
  [[nodiscard]] std::string Caption() const override;
  void SetCaption(const std::string& value) override;
  std::string caption;
};

class FakeStatusBar : public FakeControl, public StatusBar {
 public:
  using FakeControl::FakeControl;
  [[nodiscard]] std::string Text() const override;
  void SetText(const std::string& value) override;
  void SetPanelText(const std::string& key, const std::string& value) override;
  std::string text;
};

class FakeSkinForm : public FakeControl, public SkinForm {
 public:
  using FakeControl::FakeControl;
  void SetProperty14(int value) override;
  void SetSkinFile(const std::string& path) override;
  void ApplyTo(Control& control) override;
  std::string skinFile;
};

class FakePageView : public FakeControl, public PageView {
 public:
  using FakeControl::FakeControl;
  void Navigate(const std::string& address) override;
  void Stop() override;
  std::string shown;
};

class FakePictureBox : public FakeControl, public PictureBox {
 public:
  using FakeControl::FakeControl;
};

class FakeTimer : public FakeControl, public Timer {
 public:
  FakeTimer(std::string name, Journal& journal, FakeEventLoop& loop, int interval, bool on);
  ~FakeTimer() override;

  void SetEnabled(bool value) override;
  [[nodiscard]] int Interval() const override;
  void OnTimer(std::function<void()> handler) override;
  void Tick();

 private:
  FakeEventLoop& loop_;
  int interval_;
  std::function<void()> tick_;
};

/// Bars that are made on demand: a test needs no table of tools.
class FakeBarControl : public FakeControl, public BarControl {
 public:
  using FakeControl::FakeControl;

  class FakeTool : public Tool {
   public:
    FakeTool(FakeBarControl& bars, std::string band, ToolData toolData);
    [[nodiscard]] const std::string& Name() const override;
    [[nodiscard]] const std::string& Caption() const override;
    [[nodiscard]] bool Enabled() const override;
    void SetEnabled(bool value) override;
    [[nodiscard]] Twips Width() const override;
    void SetWidth(Twips value) override;
    [[nodiscard]] std::string Text() const override;
    void SetText(const std::string& value) override;
    void SetCustom(Control* control) override;
    ToolData data;
    std::string text;

   private:
    FakeBarControl& bars_;
    std::string band_;
  };

  class FakeBand : public Band {
   public:
    FakeBand(FakeBarControl& bars, BandData bandData);
    Tool& Tools(const std::string& name) override;
    [[nodiscard]] bool Visible() const override;
    void SetVisible(bool value) override;
    [[nodiscard]] Twips Width() const override;
    void SetWidth(Twips value) override;
    [[nodiscard]] Twips Height() const override;

    BandData data;
    std::map<std::string, std::unique_ptr<FakeTool>> tools;
    bool visible = true;
    Twips width = 0;
    Twips height = 0;

   private:
    FakeBarControl& bars_;
  };

  void Lay(const std::vector<BandData>& laid) override;
  Band& Bands(const std::string& name) override;
  void OnToolClick(std::function<void(Tool&)> handler) override;
  void OnToolEntered(std::function<void(Tool&)> handler) override;
  void Tell(const std::string& what);

  std::map<std::string, std::unique_ptr<FakeBand>> bands;
  std::function<void(Tool&)> toolClick;
  std::function<void(Tool&)> toolEntered;
};

}  // namespace kivandra::fakes
