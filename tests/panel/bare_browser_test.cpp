// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/bare_browser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "panel/panel_world.h"

namespace kivandra {
namespace {

using testing::ElementsAre;

struct BareBrowserTest : testing::Test, fakes::PanelWorld {
  parentbrowse window{forms, frame};
  BareBrowserTest() {
    window.Show();
    journal.Clear();
  }
  fakes::FakeForm& Form() { return forms.Of("parentbrowse"); }
  fakes::FakeWebBrowser& Page() { return Form().BrowserOf("brwWebBrowser"); }
};

TEST_F(BareBrowserTest, LetsEveryAddressPassAndLogsNothing) {
  BadWords[1] = "forbidden";
  SaveItem(registry, "R_N", "1");
  EXPECT_TRUE(Page().Ask("http://forbidden.example/")->Allowed());
  Page().ShowPage("http://forbidden.example/", "Forbidden");
  EXPECT_TRUE(files.files.empty());
  EXPECT_FALSE(journal.Has("Beep"));
  EXPECT_EQ(Page().scriptObject, nullptr);
}

TEST_F(BareBrowserTest, LaysOutWhenLoadedActivatedAndSized) {
  const std::vector<std::string> expected = {"parentbrowse.FraSep.Move 0,0,15000,30",
                                             "parentbrowse.brwWebBrowser.Move 0,30,15000,8970"};
  Form().events->Form_Resize();
  EXPECT_EQ(journal.lines, expected);
  journal.Clear();
  Form().events->Form_Activate();
  EXPECT_EQ(journal.lines, expected);
  Form().scaleHeight = 10;
  journal.Clear();
  Form().events->Form_Resize();
  EXPECT_EQ(journal.lines.back(), "parentbrowse.brwWebBrowser.Move 0,30,15000,0");
}

TEST_F(BareBrowserTest, DeactivatingBlanksTheFramesTextPanel) {
  Form().events->Form_Deactivate();
  EXPECT_THAT(journal.lines, ElementsAre("frmMain.Status.Panels(\"TEXT\") = \"\""));
}

TEST_F(BareBrowserTest, ShowsTheStatusOnTheFrameAndTheTitleOnItself) {
  Page().events->StatusTextChange("loading");
  Page().events->TitleChange("Otters");
  EXPECT_THAT(journal.lines,
              ElementsAre("frmMain.Status.Text = \"loading\"", "parentbrowse.Caption = \"Otters\""));
}

TEST_F(BareBrowserTest, ALinkThatOpensANewWindowDoesNothing) {
  WebBrowser* other = nullptr;
  bool cancel = false;
  journal.failAt = journal.calls + 1;
  Page().events->NewWindow2(other, cancel);
  EXPECT_TRUE(cancel);
  EXPECT_EQ(other, nullptr);
  EXPECT_TRUE(journal.lines.empty());
}

TEST_F(BareBrowserTest, APagesEndOrADownloadInTheDarkUnloadsIt) {
  Page().events->DownloadComplete();
  EXPECT_TRUE(window.Loaded());
  Page().events->OnVisible(false);
  EXPECT_FALSE(Form().visible);
  Page().events->DownloadComplete();
  EXPECT_FALSE(window.Loaded());
  window.Show();
  Page().events->OnQuit();
  EXPECT_FALSE(window.Loaded());
}

TEST_F(BareBrowserTest, UnloadingBlanksTheFramesStatus) {
  Form().Close(UnloadMode::ControlMenu);
  EXPECT_THAT(journal.lines, ElementsAre("parentbrowse.Unload", "frmMain.Status.Text = \"\""));
  EXPECT_EQ(Page().events, nullptr);
  EXPECT_THROW((void)window.brwWebBrowser(), PlatformError);
}

TEST_F(BareBrowserTest, WithoutAFrameEveryHandlerGoesOn) {
  for (long fault = 1; fault <= 3; ++fault) {
    journal.calls = 0;
    journal.failAt = fault;
    Form().events->Form_Deactivate();
    Page().events->StatusTextChange("x");
    Page().events->TitleChange("x");
    Form().events->Form_Resize();
  }
  journal.failAt = 0;
  EXPECT_TRUE(window.Loaded());
}

TEST(HelpWindowTest, IsTheTwinWithASkin) {
  fakes::PanelWorld world;
  Help window(world.forms, world.frame);
  window.Show();
  world.journal.Clear();
  auto& form = world.forms.Of("Help");
  form.events->Form_Resize();
  EXPECT_THAT(world.journal.lines,
              ElementsAre("Help.SkinForm1.SkinFile = \"/program/winaqua.skn\"",
                          "Help.FraSep.Move 0,0,15000,30", "Help.brwWebBrowser.Move 0,30,15000,8970"));
  EXPECT_TRUE(form.BrowserOf("brwWebBrowser").Ask("http://any.example/")->Allowed());
}

}  // namespace
}  // namespace kivandra
