// SPDX-License-Identifier: GPL-3.0-or-later
// Windows: loading, closing, waiting.
#include <utility>

#include "platform/button.h"
#include "platform/combo_box.h"
#include "platform/gtk/gtk_message_boxes.h"
#include "platform/label.h"
#include "platform/page_view.h"
#include "platform/status_bar.h"
#include "platform/text_box.h"
#include "platform/timer.h"
#include "platform_gtk/window_test.h"

namespace kivandra::gtk {
namespace {

class FormTest : public WindowTest {};

TEST_F(FormTest, IsLoadedHiddenAndNamed) {
  const auto form = forms.Load("frmPassword");
  EXPECT_EQ(form->Name(), "frmPassword");
  EXPECT_FALSE(form->Visible());
  EXPECT_EQ(form->Caption(), "Kivandra");
  EXPECT_EQ(forms.Loaded(), std::vector<std::shared_ptr<Form>>{form});
}

TEST_F(FormTest, SaysThatThereIsNoSuchForm) {
  EXPECT_THROW((void)forms.Load("frmNowhere"), PlatformError);
  EXPECT_TRUE(forms.Loaded().empty());
}

TEST_F(FormTest, AChildWindowNeedsTheFrame) { EXPECT_THROW((void)forms.Load("frmBrowser"), PlatformError); }

TEST_F(FormTest, RefusesAControlUnderAnotherKind) {
  const auto form = forms.Load("frmPassword");
  EXPECT_THROW(form->Get<ComboBox>("txtPassword"), PlatformError);
  EXPECT_NO_THROW(form->Get<TextBox>("txtPassword"));
  EXPECT_THROW(form->Get<Button>("txtPassword"), PlatformError);
  EXPECT_THROW(form->Get<Button>("cmdNowhere"), PlatformError);
}

TEST_F(FormTest, GivesTheSameControlEachTime) {
  const auto form = forms.Load("frmPassword");
  EXPECT_EQ(&form->Get<TextBox>("txtPassword"), &form->Get<TextBox>("txtPassword"));
}

TEST_F(FormTest, ThrowsOnceItIsUnloaded) {
  const auto form = forms.Load("frmPassword");
  TextBox& field = form->Get<TextBox>("txtPassword");
  EXPECT_TRUE(form->Unload());
  EXPECT_FALSE(form->Loaded());
  EXPECT_THROW((void)form->Caption(), PlatformError);
  EXPECT_THROW(field.SetText("x"), PlatformError);
  Settle();
  EXPECT_THROW((void)field.Text(), PlatformError);
  EXPECT_TRUE(form->Unload());
}

TEST_F(FormTest, ControlsStillWorkWhileItIsBeingUnloaded) {
  const auto form = forms.Load("frmPassword");
  TextBox& field = form->Get<TextBox>("txtPassword");
  Teller teller("form", journal);
  std::string text;
  teller.whenUnloaded = [&] { text = field.Text(); };
  form->SetEvents(&teller);
  field.SetText("secret");
  form->Unload();
  EXPECT_EQ(text, "secret");
}

TEST_F(FormTest, StaysWhenItsOwnerRefuses) {
  const auto form = forms.Load("frmFirstLog");
  Teller teller("form", journal);
  teller.refuses = true;
  form->SetEvents(&teller);
  EXPECT_FALSE(form->Unload());
  EXPECT_TRUE(form->Loaded());
  EXPECT_EQ(journal, Journal{"form asked 1"});
  teller.refuses = false;
  EXPECT_TRUE(form->Unload());
}

TEST_F(FormTest, UnloadingInTheMiddleOfUnloadingDoesNothing) {
  const auto form = forms.Load("frmFirstLog");
  Teller teller("form", journal);
  teller.whenAsked = [&] { EXPECT_TRUE(form->Unload()); };
  teller.whenUnloaded = [&] { EXPECT_TRUE(form->Unload()); };
  form->SetEvents(&teller);
  form->Unload();
  EXPECT_EQ(journal, (Journal{"form asked 1", "form unloaded"}));
}

TEST_F(FormTest, MayUnloadItselfInsideItsOwnButton) {
  auto form = forms.Load("frmPassword");
  form->SetVisible(true);
  auto& button = form->Get<Button>("cmdCancel");
  int presses = 0;
  button.OnClick([&] {
    ++presses;
    form->Unload();
    form.reset();
    Settle();  // the window goes while its handler still runs
  });
  Gtk::Widget& widget = dynamic_cast<WidgetControl&>(button).Widget();
  g_signal_emit_by_name(widget.gobj(), "clicked");
  EXPECT_EQ(presses, 1);
  EXPECT_TRUE(forms.Loaded().empty());
}

TEST_F(FormTest, ReturnsFromAModalWaitWhenItIsHiddenOrUnloaded) {
  for (const bool unload : {false, true}) {
    const auto form = forms.Load("frmPassword");
    Glib::signal_idle().connect_once([&] { unload ? (void)form->Unload() : form->SetVisible(false); });
    form->ShowModal();
    EXPECT_EQ(form->Loaded(), !unload);
    form->Unload();
  }
}

TEST_F(FormTest, TheFrameAsksItsChildrenAndStaysIfOneRefuses) {
  const auto frame = LoadFrame();
  Teller frameTeller("frame", journal);
  frame->SetEvents(&frameTeller);
  Teller one("one", journal);
  Teller two("two", journal);
  const auto first = LoadChild(one);
  const auto second = LoadChild(two);
  journal.clear();
  two.refuses = true;
  EXPECT_FALSE(frame->Unload());
  EXPECT_EQ(journal, (Journal{"frame asked 1", "one asked 4", "two asked 4"}));
  EXPECT_EQ(forms.Loaded().size(), 3U);
  two.refuses = false;
  journal.clear();
  EXPECT_TRUE(frame->Unload());
  EXPECT_TRUE(forms.Loaded().empty());
  EXPECT_EQ(journal.back(), "frame unloaded");
}

TEST_F(FormTest, TimersTickWhileTheyAreEnabled) {
  const auto form = forms.Load("frmSplash");
  auto& timer = form->Get<Timer>("tmrDelay");
  EXPECT_EQ(form->Get<Timer>("SplashTimer").Interval(), 2500);
  EXPECT_FALSE(timer.Enabled());
  int ticks = 0;
  timer.OnTimer([&] { ++ticks; });
  timer.SetEnabled(true);
  EXPECT_TRUE(Until([&] { return ticks == 3; }));
  timer.SetEnabled(false);
  const int before = ticks;
  bool passed = false;
  Glib::signal_timeout().connect_once([&] { passed = true; }, 20);
  EXPECT_TRUE(Until([&] { return passed; }));
  EXPECT_EQ(ticks, before);
}

TEST_F(FormTest, ATimerEndsWithItsWindowInsideItsOwnTick) {
  auto form = forms.Load("frmSplash");
  auto& timer = form->Get<Timer>("tmrDelay");
  int ticks = 0;
  timer.OnTimer([&] {
    ++ticks;
    form->Unload();
    form.reset();
    Settle();
  });
  timer.SetEnabled(true);
  EXPECT_TRUE(Until([&] { return ticks > 0; }));
  bool passed = false;
  Glib::signal_timeout().connect_once([&] { passed = true; }, 20);
  EXPECT_TRUE(Until([&] { return passed; }));
  EXPECT_EQ(ticks, 1);
}

TEST_F(FormTest, KeepsWholeTextsAndShowsWhatCanBeShown) {
  const struct {
    const char* name;
    std::string text;
  } kTexts[] = {
      {"plain", "Otters at home"},
      {"broken UTF-8", "caf\xe9 \xff\xfe!"},
      {"a NUL inside", std::string("before\0after", 12)},
      {"a megabyte", std::string(1 << 20, 'w')},
      {"a megabyte of broken bytes", std::string(1 << 20, '\xfe')},
      {"empty", ""},
  };
  const auto frame = LoadFrame();
  auto& status = frame->Get<StatusBar>("Status");
  auto& address = frame->Get<ComboBox>("TheAddress");
  frame->SetVisible(true);
  for (const auto& row : kTexts) {
    frame->SetCaption(row.text);
    status.SetText(row.text);
    address.AddItem(row.text, 0);
    address.SetListIndex(0);
    Settle();
    EXPECT_EQ(frame->Caption(), row.text) << row.name;
    EXPECT_EQ(status.Text(), row.text) << row.name;
    EXPECT_EQ(address.Text(), row.text) << row.name;
    EXPECT_EQ(address.List(0), row.text) << row.name;
    const auto& label = dynamic_cast<Gtk::Label&>(dynamic_cast<WidgetControl&>(status).Widget());
    EXPECT_LE(label.get_text().size(), 401U) << row.name;
    EXPECT_TRUE(label.get_text().validate()) << row.name;
  }
  address.SetText("typed over");
  EXPECT_EQ(address.Text(), "typed over");
  EXPECT_THROW((void)address.List(6), PlatformError);
  EXPECT_THROW(address.RemoveItem(-1), PlatformError);
}

class BoxTest : public WindowTest {
 protected:
  GtkMessageBoxes boxes{forms};
};

/// The one box on the screen.
Gtk::Window* Box() {
  for (Gtk::Window* window : Gtk::Window::list_toplevels()) {
    if (window->get_visible() && window->has_css_class("kv-plain")) {
      return window;
    }
  }
  return nullptr;
}

TEST_F(BoxTest, AnswersWithTheButtonThatIsTheDefault) {
  const struct {
    const char* name;
    int style;
    MsgBoxResult answer;
  } kRows[] = {
      {"Ok alone", kMsgOkOnly | kMsgExclamation, MsgBoxResult::Ok},
      {"Yes first", kMsgYesNo | kMsgQuestion, MsgBoxResult::Yes},
      {"No as default", kMsgYesNo | kMsgCritical | kMsgDefaultButton2, MsgBoxResult::No},
  };
  for (const auto& row : kRows) {
    Glib::signal_idle().connect_once([] { Box()->get_default_widget()->activate(); });
    EXPECT_EQ(boxes.MsgBox("May this page be shown?", row.style, "Session Lock"), row.answer) << row.name;
  }
}

TEST_F(BoxTest, ClosingCountsAsOkOrAsNo) {
  Glib::signal_idle().connect_once([] { Box()->close(); });
  EXPECT_EQ(boxes.MsgBox("Invalid Password, try again!", kMsgOkOnly, "Login"), MsgBoxResult::Ok);
  Glib::signal_idle().connect_once([] { Box()->close(); });
  EXPECT_EQ(boxes.MsgBox("Allow?", kMsgYesNo, "Login"), MsgBoxResult::No);
}

TEST_F(BoxTest, ALongTextLeavesTheButtonsOnASmallScreen) {
  for (const std::string& text : {std::string(4000, 'W'), "http://" + std::string(60000, 'x')}) {
    int height = 0;
    Glib::signal_idle().connect_once([&] {
      Gtk::Window* box = Box();
      Gtk::Requisition least;
      Gtk::Requisition natural;
      box->get_preferred_size(least, natural);
      height = natural.get_height();
      box->close();
    });
    boxes.MsgBox("Allow " + text + " for this session?", kMsgYesNo, "Session Lock");
    EXPECT_GT(height, 300);
    EXPECT_LT(height, 560);
  }
}

TEST_F(BoxTest, BearsTheProgramsNameIfItHasNone) {
  std::string title;
  Glib::signal_idle().connect_once([&] {
    title = Box()->get_title();
    Box()->close();
  });
  boxes.MsgBox("Text", kMsgOkOnly, "");
  EXPECT_EQ(title, "Kivandra");
}

TEST_F(FormTest, ASecondCloseRequestHasATurnOfItsOwnInsideTheFirst) {
  const auto form = forms.Load("frmPassword");
  Teller teller("form", journal);
  form->SetEvents(&teller);
  form->SetVisible(true);
  bool again = false;
  teller.whenAsked = [&] {
    if (std::exchange(again, true)) {
      return;
    }
    for (Gtk::Window* window : Gtk::Window::list_toplevels()) {
      if (window->get_visible()) {
        window->close();
        break;
      }
    }
    Settle();
    EXPECT_FALSE(form->Loaded());
  };
  ASSERT_TRUE(Until([&] { return journal == Journal{"form activated"}; }));
  EXPECT_TRUE(form->Unload());
  EXPECT_EQ(journal, (Journal{"form activated", "form asked 1", "form asked 0", "form unloaded"}));
}

TEST_F(FormTest, APictureThatIsMissingIsNoError) {
  const auto frame = LoadFrame();
  PageView& logo = frame->Get<PageView>("WebBrowser2");
  EXPECT_NO_THROW(logo.Navigate(kAssets + "/no-such-picture.gif"));
  EXPECT_NO_THROW(logo.Stop());
  EXPECT_NO_THROW(logo.Navigate(kAssets + "/smilestop.jpg"));
}

}  // namespace
}  // namespace kivandra::gtk
