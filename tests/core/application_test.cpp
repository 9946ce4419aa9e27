// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/application.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "core/application_script.h"
#include "core/frm_splash.h"
#include "core/user_settings.h"
#include "fakes/fake_world.h"
#include "hosts.h"

namespace kivandra {
namespace {

struct FakeWindows : ApplicationWindows {
  explicit FakeWindows(fakes::FakeWorld& testWorld) : world(testWorld) {}
  void LoadFrame() override { world.journal.Call("LoadFrame"); }
  void SetFrameVisible(bool visible) override {
    world.journal.Call(std::string("frame visible = ") + (visible ? "True" : "False"));
  }
  WebBrowser& ActiveBrowser() override {
    if (!active) {
      throw PlatformError(kObjectNotSet, "Object variable not set");
    }
    return active->Get<WebBrowser>("brwWebBrowser");
  }
  BrowserWindow NewBrowser() override {
    auto form = world.forms.Load("frmBrowser");
    return {form, &form->Get<WebBrowser>("brwWebBrowser")};
  }
  fakes::FakeWorld& world;
  std::shared_ptr<Form> active;
};

struct ApplicationTest : testing::Test {
  fakes::FakeWorld world;
  FakeWindows windows{world};
  Application application{{world.forms, world.loop, world.boxes, world.registry, world.system, windows}};

  /// A parent types a password into the first-run window.
  void CreatePassword(const std::string& password) {
    auto& form = world.forms.Of("frmFirstLog");
    form.TextBoxOf("txtPassword1").text = password;
    form.TextBoxOf("txtPassword").text = password;
    form.ButtonOf("SkinButton1").Click();
  }
  std::string StartupError(long number, const std::string& description) {
    return std::to_string(number) + " - email:" + std::string(hosts::kSupportAddress) + " " + description;
  }
  /// Whether a value exists, and its text.
  std::string Raw(const std::string& section, const std::string& name) {
    HKEY key = 0;
    if (world.registry.RegOpenKeyExA(HKEY_CLASSES_ROOT, section, KEY_QUERY_VALUE, key) != 0) {
      return "no key";
    }
    std::uint32_t type = 0;
    std::size_t size = 0;
    if (world.registry.RegQueryValueExA(key, name, type, nullptr, size) != 0) {
      return "missing";
    }
    std::vector<std::uint8_t> bytes(size);
    world.registry.RegQueryValueExA(key, name, type, bytes.data(), size);
    return {bytes.begin(), bytes.end()};
  }
};

TEST_F(ApplicationTest, AFirstRunWaitsForThePassword) {
  world.loop.After(60000, [&] { CreatePassword("s"); });
  application.SetVisible(true);
  EXPECT_GE(world.loop.Now(), 60000 + 2500);
  EXPECT_EQ(world.Setting("T_PW"), "s");
  EXPECT_EQ(world.Setting("F_C"), "1");
  EXPECT_EQ(ParentPassword, "s");
  EXPECT_TRUE(application.Visible());
}

TEST_F(ApplicationTest, AClosedFirstRunWindowComesBackToTheWait) {
  world.loop.After(100, [&] { EXPECT_FALSE(world.forms.Of("frmFirstLog").Close(UnloadMode::ControlMenu)); });
  world.loop.After(200, [&] { CreatePassword("s"); });
  application.SetVisible(true);
  EXPECT_TRUE(world.journal.Has("frame visible = True"));
}

/// A box that notes what it says.
struct Listener : MessageBoxes {
  MsgBoxResult MsgBox(const std::string& text, int, const std::string&) override {
    texts.push_back(text);
    return MsgBoxResult::Ok;
  }
  std::vector<std::string> texts;
};

TEST(FirstRunFaults, AStoreThatFailsBeforeThereIsAPasswordIsToldAndLeavesNoWindow) {
  // The sweep over every call up to the password: a window left behind would keep a dead process alive, and
  // its button would lead nowhere.
  int failures = 0;
  bool swept = false;
  for (long fault = 1; !swept; ++fault) {
    fakes::FakeWorld world;
    FakeWindows windows(world);
    Listener boxes;
    Application application{{world.forms, world.loop, boxes, world.registry, world.system, windows}};
    world.registry.failAt = fault;
    world.loop.After(100, [&] {
      swept = world.registry.calls < fault;
      world.registry.failAt = 0;
      SaveItem(world.registry, "T_PW", "s");
    });
    application.SetVisible(true);
    if (!world.journal.Has("LoadFrame")) {
      ++failures;
      EXPECT_EQ(boxes.texts.size(), 1U) << "fault " << fault;
      EXPECT_TRUE(world.forms.Loaded().empty()) << "fault " << fault;
    }
  }
  EXPECT_GT(failures, 15);
}

TEST(FirstRunFaults, AStoreThatFailsWhileTheFirstRunWindowStandsTakesTheWindowAway) {
  fakes::FakeWorld world;
  FakeWindows windows(world);
  Listener boxes;
  Application application{{world.forms, world.loop, boxes, world.registry, world.system, windows}};
  world.loop.After(100, [&] { world.registry.failAt = world.registry.calls + 1; });
  application.SetVisible(true);
  EXPECT_TRUE(world.journal.Has("Load frmFirstLog"));
  EXPECT_EQ(boxes.texts.size(), 1U);
  EXPECT_TRUE(world.forms.Loaded().empty());
}

TEST_F(ApplicationTest, ANormalRunAsksNothingAndShowsTheSplashForTwoAndAHalfSeconds) {
  SaveItem(world.registry, "T_PW", "s");
  application.SetVisible(true);
  EXPECT_EQ(world.loop.Now(), 2500);
  EXPECT_FALSE(world.journal.Has("Load frmFirstLog"));
  const std::vector<std::string> expected = {"DoEvents",
                                             "Load frmSplash",
                                             "frmSplash.Visible = True",
                                             "frmSplash.Visible = True",
                                             "frmSplash.SplashTimer.Enabled = True",
                                             "frmSplash.SplashTimer.Enabled = False",
                                             "frmSplash.Unload",
                                             "LoadFrame",
                                             "frame visible = True"};
  EXPECT_EQ(world.journal.lines, expected);
}

TEST_F(ApplicationTest, AfterAFirstStartEveryNameExistsEmpty) {
  world.loop.After(100, [&] { CreatePassword("s"); });
  application.SetVisible(true);
  const std::string empty(1, '\0');
  for (const std::string& name : SettingNames) {
    if (name == "T_PW" || name == "F_C") {
      continue;
    }
    EXPECT_EQ(Raw(kSettingsSection, name), empty) << name;
  }
  EXPECT_EQ(Raw(kSettingsSection, "Installed"), empty);
  EXPECT_EQ(Raw(kSettingsSection, "skin"), empty);
  EXPECT_EQ(Raw(kSettingsSection, "F_C"), std::string("1\0", 2));
  for (int slot = 0; slot <= 100; ++slot) {
    EXPECT_EQ(Raw(kAllowedSection, std::to_string(slot)), empty);
    EXPECT_EQ(Raw(kDisallowedSection, std::to_string(slot)), empty);
  }
  EXPECT_EQ(Raw(kAllowedSection, "101"), "missing");
}

TEST_F(ApplicationTest, TheDefaultSkinIsTakenAndNotWrittenBack) {
  SaveItem(world.registry, "T_PW", "s");
  application.SetVisible(true);
  EXPECT_EQ(SkinFile, "/program/winaqua.skn");
  EXPECT_EQ(Raw(kSettingsSection, "skin"), std::string(1, '\0'));
}

TEST_F(ApplicationTest, AStoredSkinIsTaken) {
  SaveItem(world.registry, "T_PW", "s");
  SaveItem(world.registry, "skin", "/skins/berry.skn");
  application.SetVisible(true);
  EXPECT_EQ(SkinFile, "/skins/berry.skn");
}

TEST_F(ApplicationTest, AStartLeavesStoredValuesAsTheyWere) {
  SaveItem(world.registry, "T_PW", "s");
  SaveItem(world.registry, "POP", "1");
  application.SetVisible(true);
  EXPECT_EQ(world.Setting("POP"), "1");
  EXPECT_EQ(world.Setting("T_PW"), "s");
}

TEST_F(ApplicationTest, AStartWritesAVariablesTextInPlaceOfTheVariable) {
  ::setenv("KV_SKINS", "berries", 1);
  SaveItem(world.registry, "T_PW", "s");
  SaveItem(world.registry, "skin", "/%KV_SKINS%/a.skn");
  EXPECT_EQ(Raw(kSettingsSection, "skin"), std::string("/%KV_SKINS%/a.skn\0", 18));
  application.SetVisible(true);
  EXPECT_EQ(SkinFile, "/berries/a.skn");
  EXPECT_EQ(Raw(kSettingsSection, "skin"), std::string("/berries/a.skn\0", 15));
}

TEST_F(ApplicationTest, TheSplashNamesTheDaysLog) {
  SaveItem(world.registry, "T_PW", "s");
  application.SetVisible(true);
  EXPECT_EQ(LogDayName, "16112026");
  EXPECT_EQ(WindowsDirectory, "/data");
}

TEST_F(ApplicationTest, ADateWithoutSlashesEndsInTheErrorBoxAndNoFrame) {
  SaveItem(world.registry, "T_PW", "s");
  world.system.today = "16.11.2026";
  world.boxes.Expect(StartupError(kInvalidCall, "Invalid procedure call or argument"), kMsgExclamation);
  application.SetVisible(true);
  EXPECT_FALSE(world.journal.Has("LoadFrame"));
  EXPECT_TRUE(world.forms.Loaded().empty()) << "a hidden splash would keep the process alive";
}

TEST_F(ApplicationTest, AnOldEngineEndsTheProgramAtOnce) {
  SaveItem(world.registry, "T_PW", "s");
  world.system.engine = {5, 100};
  world.boxes.Expect(
      "Microsoft Internet Explorer 5.5 or greater is required.  Please upgrade prior to usage of the "
      "Kivandra.",
      kMsgExclamation);
  application.SetVisible(true);
  EXPECT_TRUE(world.loop.Ended());
  EXPECT_FALSE(world.journal.Has("LoadFrame"));
}

TEST_F(ApplicationTest, AFrameThatCannotBeLoadedEndsInTheErrorBox) {
  SaveItem(world.registry, "T_PW", "s");
  world.journal.failAt = 8;  // LoadFrame, see the order of a normal run
  world.boxes.Expect(StartupError(kInvalidCall, "injected fault"), kMsgExclamation);
  application.SetVisible(true);
  EXPECT_TRUE(world.journal.Has("FAILED LoadFrame"));
  EXPECT_FALSE(world.journal.Has("frame visible = True"));
}

TEST_F(ApplicationTest, HidingHidesTheFrameAndDoesNothingElse) {
  application.SetVisible(false);
  EXPECT_EQ(world.journal.lines, std::vector<std::string>{"frame visible = False"});
  EXPECT_FALSE(application.Visible());
}

TEST_F(ApplicationTest, NavigateGoesToTheActiveChild) {
  windows.active = world.forms.Load("frmBrowser");
  application.Navigate("http://site.example/");
  EXPECT_TRUE(world.journal.Has("frmBrowser#1.brwWebBrowser.Navigate \"http://site.example/\""));
}

TEST_F(ApplicationTest, NavigateWithoutAChildFails) {
  EXPECT_THROW(application.Navigate("http://site.example/"), PlatformError);
}

TEST_F(ApplicationTest, NewWindowGoesToTheStoredHomePageAndShows) {
  SaveSetting(world.registry, "Kivandra", "Home Page", "URL", "http://home.example/");
  application.NewWindow();
  const std::vector<std::string> expected = {"Load frmBrowser",
                                             "frmBrowser#1.brwWebBrowser.Navigate \"http://home.example/\"",
                                             "refuse http://home.example/", "frmBrowser#1.Visible = True"};
  EXPECT_EQ(world.journal.lines, expected);
}

TEST_F(ApplicationTest, PagesReachItUnderItsThreeNames) {
  windows.active = world.forms.Load("frmBrowser");
  ApplicationScript script(application);
  std::vector<std::string> names;
  for (const auto& member : script.Members()) {
    names.push_back(member.name + (member.isProperty ? " property" : ""));
  }
  EXPECT_EQ(names, (std::vector<std::string>{"Visible property", "Navigate", "NewWindow"}));
  script.Invoke("Navigate", {std::string("http://site.example/")});
  EXPECT_TRUE(world.journal.Has("frmBrowser#1.brwWebBrowser.Navigate \"http://site.example/\""));
  EXPECT_EQ(std::get<bool>(script.Invoke("Visible", {})), false);
  script.Invoke("Visible", {false});
  EXPECT_TRUE(world.journal.Has("frame visible = False"));
  EXPECT_THROW(script.Invoke("Navigate", {}), PlatformError);
  EXPECT_THROW(script.Invoke("Navigate", {1.0}), PlatformError);
  EXPECT_THROW(script.Invoke("Quit", {}), PlatformError);
}

TEST_F(ApplicationTest, APageThatAsksForWindowsInALoopGetsTwentyAtTheMost) {
  ApplicationScript script(application);
  int refused = 0;
  for (int asked = 0; asked < 1000; ++asked) {
    try {
      script.Invoke("NewWindow", {});
    } catch (const PlatformError&) {
      ++refused;
    }
  }
  EXPECT_EQ(refused, 980);
  EXPECT_EQ(application.Children(), 20);
  application.NewWindow();  // a person's own command is not counted against them
  EXPECT_EQ(application.Children(), 21);
  world.forms.Of("frmBrowser#1").Close(UnloadMode::ControlMenu);
  world.forms.Of("frmBrowser#2").Close(UnloadMode::ControlMenu);
  EXPECT_NO_THROW(script.Invoke("NewWindow", {}));
}

TEST_F(ApplicationTest, APageCannotPileStartsUponOneAnother) {
  SaveItem(world.registry, "T_PW", "s");
  ApplicationScript script(application);
  int asked = 0;
  world.loop.After(100, [&] {
    EXPECT_THROW(script.Invoke("Visible", {true}), PlatformError);
    EXPECT_THROW(script.Invoke("Visible", {false}), PlatformError);
    ++asked;
  });
  script.Invoke("Visible", {true});
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(world.journal.Count("Load frmSplash"), 1);
  world.journal.failOn = "frame visible = False";
  EXPECT_THROW(script.Invoke("Visible", {false}), PlatformError);
  world.journal.failOn.clear();
  EXPECT_NO_THROW(script.Invoke("Visible", {false}));  // later it may ask again
}

TEST(LogDayNameTest, JoinsDayMonthAndYearWithoutPadding) {
  EXPECT_EQ(LogDayNameOf("16/11/2026"), "16112026");
  EXPECT_EQ(LogDayNameOf("1/2/2003"), "122003");
  // Two days that share one name.
  EXPECT_EQ(LogDayNameOf("1/12/2003"), "1122003");
  EXPECT_EQ(LogDayNameOf("11/2/2003"), "1122003");
  EXPECT_EQ(LogDayNameOf("  3/4/2003"), "342003");
}

TEST(LogDayNameTest, FailsOnAnotherSeparator) {
  for (const char* date : {"16.11.2026", "16-11-2026", "16/11.2026", ""}) {
    EXPECT_THROW(LogDayNameOf(date), PlatformError) << date;
  }
}

TEST(EngineVersionTest, ComparesAsDecimalNumbers) {
  for (const char* passes : {"5.50", "5.5", "5.6", "6.0", "605.1", "5.51"}) {
    EXPECT_TRUE(EngineIsRecentEnough(passes)) << passes;
  }
  for (const char* fails : {"5.49", "5.100", "5.0", "4.9", "5", ""}) {
    EXPECT_FALSE(EngineIsRecentEnough(fails)) << fails;
  }
}

}  // namespace
}  // namespace kivandra
