// SPDX-License-Identifier: GPL-3.0-or-later
// What the parent does in the panel, and what the running program then does.
#include <gtest/gtest.h>

#include "core/registry.h"
#include "fakes/whole_program.h"
#include "hosts.h"
#include "support/rich_text.h"

namespace kivandra {
namespace {

constexpr const char* kDay = "/data/21/16112026.rtf";

struct ParentStory : testing::Test {
  fakes::WholeProgram world;

  ParentStory() {
    world.StartAsUsual();
    world.Browser().ShowPage(std::string(hosts::kProductHome), "Home");
    world.PassStartUp();
    world.journal.Clear();
  }
  fakes::FakeForm& Panel() { return world.forms.Of("frmOptions"); }
  void Tick(const std::string& box) { Panel().CheckOf(box).Click(); }
  /// Types into one of the panel's two lists and presses Enter.
  void AddTo(int list, const std::string& text) {
    const std::string number = std::to_string(list);
    Panel().ButtonOf("b_allowButton_" + number).Click();
    Panel().ComboOf("Combo1_" + number).text = text;
    Panel().ComboOf("Combo1_" + number).Press(kKeyReturn);
  }
  bool Passes(const std::string& address) {
    world.inet1.pages[address] = "<p>clean</p>";
    const auto navigation = world.Browser().Ask(address);
    world.loop.Advance(100);
    return navigation->Allowed();
  }
  /// Ends the program and starts it anew on the same settings and files.
  std::unique_ptr<fakes::WholeProgram> Restart() {
    world.Frame().Close(UnloadMode::ControlMenu);
    auto next = std::make_unique<fakes::WholeProgram>();
    for (const char* section : {kAllowedSection, kDisallowedSection}) {
      for (int slot = 0; slot < 3; ++slot) {
        cRegistry from(world.registry);
        cRegistry to(next->registry);
        for (cRegistry* each : {&from, &to}) {
          each->SetClassKey(HKEY_CLASSES_ROOT);
          each->SetSectionKey(section);
          each->SetValueKey(std::to_string(slot));
          each->SetValueType(REG_SZ);
        }
        to.SetValue(from.Value());
      }
    }
    next->StartAsUsual();
    next->PassStartUp();
    return next;
  }
};

TEST_F(ParentStory, TheRightPasswordOpensThePanelAndFileExitTakesItAlong) {
  world.OpenPanel();
  EXPECT_TRUE(OptionsOpen);
  EXPECT_FALSE(world.forms.IsLoaded("frmPassword"));
  world.Frame().Close(UnloadMode::ControlMenu);
  EXPECT_FALSE(OptionsOpen);
  EXPECT_TRUE(world.forms.Loaded().empty());
}

TEST_F(ParentStory, TheFilterObeysItsBoxAtOnce) {
  world.OpenPanel();
  EXPECT_FALSE(Passes("http://www.porn.org/"));
  Tick("Filter_Check");
  EXPECT_TRUE(Passes("http://www.porn.org/"));
  Tick("Filter_Check");
  EXPECT_FALSE(Passes("http://www.porn.org/"));
}

TEST_F(ParentStory, MailLinksObeyTheirBoxAtOnce) {
  world.OpenPanel();
  Tick("Disable_Email");
  world.boxes.Expect("Sorry, Mail has been dis-abled");
  EXPECT_FALSE(world.Browser().Ask("mailto:otter@otters.org")->Allowed());
}

TEST_F(ParentStory, BackGoesUnfilteredByItsBox) {
  world.OpenPanel();
  world.Browser().back = "http://www.porn.org";
  Tick("Back_Button");
  world.Click("MainBar", "Back");
  EXPECT_TRUE(world.journal.Has("allow http://www.porn.org"));
}

TEST_F(ParentStory, PopUpsObeyTheirBoxAtOnce) {
  world.OpenPanel();
  Tick("Popup");
  WebBrowser* made = nullptr;
  bool cancel = false;
  world.Browser().events->NewWindow2(made, cancel);
  EXPECT_TRUE(cancel);
  Tick("Popup");
  cancel = false;
  world.Browser().events->NewWindow2(made, cancel);
  EXPECT_FALSE(cancel);
  EXPECT_NE(made, nullptr);
}

TEST_F(ParentStory, SoundsObeyTheirBoxAtOnce) {
  world.OpenPanel();
  Tick("Sound");
  world.journal.Clear();
  world.OpenPanel();
  EXPECT_TRUE(world.journal.With("sndPlaySoundA").empty());
  Tick("Sound");
  world.OpenPanel();
  EXPECT_EQ(world.journal.With("sndPlaySoundA").size(), 1U);
}

TEST_F(ParentStory, AVisitIsInTodaysLogAndItsLinkOpensUnfiltered) {
  world.Browser().ShowPage("http://www.before.org/", "Before");
  EXPECT_TRUE(world.files.files.empty());
  world.OpenPanel();
  Tick("Record_Navigation");
  world.Browser().ShowPage("http://www.porn-like.org/", "Visited");
  EXPECT_EQ(ReadRichText(world.files.files.at(kDay)), " ->Visited URL http://www.porn-like.org/  LogURL");

  Panel().CalendarOf("Calendar1").Choose(16, 11, 2026);
  auto& log = world.forms.Of("Navigation").RichTextOf("URLS");
  ASSERT_EQ(log.links.size(), 1U);
  const std::string before = world.files.files.at(kDay);
  world.journal.Clear();
  log.link(WM_LBUTTONUP, log.links[0]);
  EXPECT_TRUE(world.journal.Has("allow http://www.porn-like.org/"));
  world.forms.Of("parentbrowse").BrowserOf("brwWebBrowser").ShowPage("http://www.porn-like.org/", "Visited");
  EXPECT_EQ(world.files.files.at(kDay), before);
  // The child's window is judged as ever.
  EXPECT_FALSE(Passes("http://www.porn-like.org/"));
}

TEST_F(ParentStory, ADisallowedEntryWorksAtOnce) {
  EXPECT_TRUE(Passes("http://www.otters.org/"));
  world.OpenPanel();
  AddTo(1, "otters");
  EXPECT_FALSE(Passes("http://www.otters.org/"));
  // Taking it away counts from the next start.
  Panel().ComboOf("Combo1_1").text = "otters";
  Panel().ComboOf("Combo1_1").Press(kKeyDelete);
  EXPECT_FALSE(Passes("http://www.otters.org/"));
  const auto next = Restart();
  next->inet1.pages["http://www.otters.org/"] = "<p>clean</p>";
  const auto navigation = next->Browser().Ask("http://www.otters.org/");
  next->loop.Advance(100);
  EXPECT_TRUE(navigation->Allowed());
}

TEST_F(ParentStory, AnAllowedEntryIsRefusedByItsOwnCopyAndWorksFromTheNextStart) {
  EXPECT_TRUE(Passes("http://www.otters.org/"));
  world.OpenPanel();
  AddTo(0, "otters");
  EXPECT_FALSE(Passes("http://www.otters.org/"));
  const auto next = Restart();
  EXPECT_EQ(AllowedDomains[1], "otters");
  EXPECT_TRUE(next->Browser().Ask("http://www.otters.org/porn")->Allowed());
}

TEST_F(ParentStory, AGrantCountsInAllWindowsAndEndsWithTheProgram) {
  const std::string page = "http://www.porn.org/one";
  world.Frame().MenusOf("Menu").Choose("mnuFileNew");
  EXPECT_FALSE(Passes(page));
  world.boxes.Expect("Allow " + page + " for this session?", 276, "Session Lock", MsgBoxResult::Yes);
  world.boxes.Expect("Invalid Password, try again!", kMsgOkOnly, "Password Error");
  for (const char* password : {"wrong", "Secret"}) {
    world.loop.After(100 + (password[0] == 'S' ? 100 : 0), [this, password] {
      world.forms.Of("frmPassword").TextBoxOf("txtPassword").text = password;
      world.forms.Of("frmPassword").ButtonOf("cmdOK").Click();
    });
  }
  world.Click("MainBar", "Lock");
  EXPECT_FALSE(OptionsOpen);
  EXPECT_TRUE(world.Browser(1).Ask(page)->Allowed());
  EXPECT_TRUE(world.Browser(2).Ask(page + "?more")->Allowed());
  EXPECT_FALSE(world.Browser(2).Ask("http://www.porn.org/two")->Allowed());
  const auto next = Restart();
  EXPECT_FALSE(next->Browser().Ask(page)->Allowed());
}

TEST_F(ParentStory, WhatIsBlockedWhileTheLockAsksIsNotGranted) {
  const std::string page = "http://www.porn.org/one";
  EXPECT_FALSE(Passes(page));
  const auto blockAnother = [this] { EXPECT_FALSE(world.Browser().Ask("s:sex")->Allowed()); };
  world.boxes.Expect("Allow " + page + " for this session?", 276, "Session Lock", MsgBoxResult::Yes,
                     blockAnother);
  world.loop.After(100, blockAnother);
  world.loop.After(200, [this] {
    world.forms.Of("frmPassword").TextBoxOf("txtPassword").text = "Secret";
    world.forms.Of("frmPassword").ButtonOf("cmdOK").Click();
  });
  world.Click("MainBar", "Lock");
  EXPECT_EQ(AllowedDomains[1], page);
  EXPECT_EQ(AllowedDomains[2], "");
  EXPECT_TRUE(world.journal.Has("allow " + page));
}

TEST_F(ParentStory, ANewPasswordCountsForTheNextPrompt) {
  world.OpenPanel();
  Panel().ButtonOf("Command1").Click();
  Panel().TextBoxOf("NewPassword_0").text = "Newer";
  Panel().TextBoxOf("NewPassword_1").text = "Newer";
  world.boxes.Expect(
      "Password has been recorded.  Please write down your password and store it in a safe area.");
  Panel().ButtonOf("NewPasswordButton").Click();
  Panel().ButtonOf("cmdCancel").Click();
  world.boxes.Expect("Invalid Password, try again!", kMsgOkOnly, "Password Error");
  world.OpenPanel("Secret");
  EXPECT_FALSE(OptionsOpen);
  world.OpenPanel("Newer");
  EXPECT_TRUE(OptionsOpen);
}

}  // namespace
}  // namespace kivandra
