// SPDX-License-Identifier: GPL-3.0-or-later
// Windows that close inside their own handlers or while something waits, and events that come too late.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "browser/browser_world.h"
#include "browser/frm_browser.h"

namespace kivandra {
namespace {

using fakes::BrowserWorld;
using fakes::FakeForm;
using fakes::FakeNavigation;
using fakes::FakeWebBrowser;
using ::testing::IsEmpty;

class WindowThatGoes : public ::testing::Test, protected BrowserWorld {
 protected:
  WindowThatGoes() {
    const auto window = OpenWindow();
    watched = window;
    form = std::dynamic_pointer_cast<FakeForm>(FormOf(*window).shared_from_this());
    engine = &EngineOf(*window);
  }
  /// The form takes the window with it, and nobody but the handler that runs holds it.
  void Close() { form->Unload(); }

  std::weak_ptr<frmBrowser> watched;
  std::shared_ptr<FakeForm> form;  // keeps the controls for the test to look at
  FakeWebBrowser* engine;
};

TEST_F(WindowThatGoes, EndsWithItsForm) {
  Close();
  EXPECT_TRUE(watched.expired());
  EXPECT_EQ(engine->events, nullptr);
  EXPECT_EQ(form->events, nullptr);
  EXPECT_FALSE(keyboard.Installed());
}

TEST_F(WindowThatGoes, MayGoWhenItsPageQuits) {
  engine->events->OnQuit();
  EXPECT_TRUE(watched.expired());
}

TEST_F(WindowThatGoes, MayGoWhenItsDownloadIsFinished) {
  form->visible = false;
  engine->events->DownloadComplete();
  EXPECT_TRUE(watched.expired());
  EXPECT_FALSE(journal.Has("frmBrowser#1.brwWebBrowser.ScriptObject KVD set"));
}

TEST_F(WindowThatGoes, MayGoWhileTheWordsAreCopied) {
  frame.onCopy = [this] {
    clipboard.text = "whale";
    Close();
  };
  keyboard.Press(123);
  EXPECT_TRUE(watched.expired());
  EXPECT_THAT(journal.With(".Navigate "), IsEmpty());
  EXPECT_EQ(journal.lines.back(), "Clipboard.Clear");
}

TEST_F(WindowThatGoes, MayGoWhileItsButtonCopiesTheWords) {
  frame.onCopy = [this] {
    clipboard.text = "whale";
    Close();
  };
  form->ButtonOf("SearchWeb").Click();
  EXPECT_TRUE(watched.expired());
  EXPECT_THAT(journal.With(".Navigate "), IsEmpty());
}

TEST_F(WindowThatGoes, MayGoWhileItComesToTheFront) {
  engine->onExec = [this](int) { Close(); };
  form->events->Form_Activate();
  EXPECT_TRUE(watched.expired());
  EXPECT_THAT(journal.With("cboAddress.Text"), IsEmpty());
}

TEST_F(WindowThatGoes, MayGoWhileAMailLinkIsRefused) {
  registry.PutSetting("D_EM", "1");
  boxes.Expect("Sorry, Mail has been dis-abled", kMsgOkOnly, "", MsgBoxResult::Ok, [this] { Close(); });
  const auto navigation = engine->Ask("mailto:someone@example.org");
  EXPECT_TRUE(watched.expired());
  EXPECT_FALSE(navigation->Allowed());
}

TEST_F(WindowThatGoes, MayGoWhileItOpensAnother) {
  frame.onNewWindow = [this](frmBrowser&) { Close(); };
  WebBrowser* ppDisp = nullptr;
  bool cancel = false;
  engine->events->NewWindow2(ppDisp, cancel);
  EXPECT_TRUE(watched.expired());
  ASSERT_EQ(frame.windows.size(), 1U);
  EXPECT_EQ(ppDisp, &frame.windows.front()->brwWebBrowser());
}

TEST_F(WindowThatGoes, RefusesWhatTheGateStillHoldsForIt) {
  const auto held = engine->Ask("http://example.org/");
  ASSERT_TRUE(held->Pending());
  Close();
  journal.Clear();
  inet1.Answer("http://example.org/", "a nice page");
  EXPECT_FALSE(held->Allowed());
  EXPECT_THAT(journal.With("frmBrowser#1"), IsEmpty());
}

TEST_F(WindowThatGoes, HasControlsThatDoNothingAfterwards) {
  Close();
  journal.Clear();
  form->ButtonOf("SearchWeb").Click();
  form->ButtonOf("btnGo").Click();
  form->ButtonOf("btnsearch").Click();
  form->TimerOf("ResizeTimer").Tick();
  auto& box = form->ComboOf("cboAddress");
  EXPECT_FALSE(box.Press(13));
  box.dblClick();
  box.click();
  EXPECT_THAT(journal.lines, IsEmpty());
}

TEST_F(WindowThatGoes, TakesAnyEventThatComesTooLateWithoutHarm) {
  const auto window = watched.lock();
  Close();
  journal.Clear();
  auto navigation = std::make_shared<FakeNavigation>("http://example.org/", journal);
  const std::weak_ptr<FakeNavigation> late = navigation;
  window->BeforeNavigate2(std::exchange(navigation, nullptr));
  EXPECT_TRUE(late.expired());
  EXPECT_TRUE(journal.Has("refuse http://example.org/"));
  const auto harmless = [&] {
    WebBrowser* ppDisp = nullptr;
    bool cancel = false;
    std::int16_t key = 123;
    std::int16_t shift = 0;
    window->NavigateComplete2(engine->top, "http://example.org/");
    window->DocumentComplete(engine->top, "http://example.org/");
    window->DownloadBegin();
    window->DownloadComplete();
    window->TitleChange("title");
    window->StatusTextChange("text");
    window->CommandStateChange(1, true);
    window->NewWindow2(ppDisp, cancel);
    window->OnQuit();
    window->OnVisible(true);
    window->WindowSetLeft(1);
    window->WindowSetTop(1);
    window->WindowSetWidth(1);
    window->WindowSetHeight(1);
    window->Form_Activate();
    window->Form_Deactivate();
    window->Form_Resize();
    window->Form_Unload();
    window->Keyboard_KeyDown(key, shift);
  };
  EXPECT_NO_THROW(harmless());
  EXPECT_THAT(journal.With("frmBrowser#1.cboAddress"), IsEmpty());
}

TEST_F(WindowThatGoes, IsOnlyRememberedByTheFrameNotKept) {
  watched.lock()->Form_Deactivate();
  Close();
  EXPECT_TRUE(frame.LastDeactivated.expired());
}

TEST_F(WindowThatGoes, LetsGoOfItsControlsIfItEndsBeforeItsForm) {
  frame.windows.clear();
  EXPECT_TRUE(watched.expired());
  EXPECT_EQ(engine->events, nullptr);
  EXPECT_EQ(form->events, nullptr);
  form->ButtonOf("btnGo").Click();
  EXPECT_FALSE(journal.Has("tileme"));
}

TEST_F(WindowThatGoes, LeavesTheKeysToTheOthersInTheMiddleOfOne) {
  const auto second = OpenWindow();
  const auto third = OpenWindow();
  bool first = true;
  frame.onCopy = [&] {
    clipboard.text = "whale";
    if (std::exchange(first, false)) {
      second->Window().Unload();
    }
  };
  keyboard.Press(123);
  const auto navigations = journal.With(".Navigate ");
  ASSERT_EQ(navigations.size(), 2U);
  EXPECT_EQ(navigations[0].rfind("frmBrowser#1.", 0), 0U);
  EXPECT_EQ(navigations[1].rfind("frmBrowser#3.", 0), 0U);
}

}  // namespace
}  // namespace kivandra
