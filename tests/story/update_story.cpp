// SPDX-License-Identifier: GPL-3.0-or-later
// The program compares itself with the product's site, and a newer one is offered, fetched and handed over.
#include <gtest/gtest.h>

#include "core/site_page.h"
#include "fakes/whole_program.h"

namespace kivandra {
namespace {

const std::string kQuestion = "A more recent version of Kivandra exists. Would you like to update it now?";
const std::string kTold = "You have the most recent version of the Kivandra.";
const std::string kFailed = "Error when loading update file\r404 Not Found";
const std::string kPackage = "OpenURL \"" + SitePage("/browser_update.exe") + "\"";

struct UpdateStory : testing::Test, fakes::WholeProgram {
  /// The product's site has another version, and its package.
  void AnotherVersionIsOut() {
    inet.version = "1.4.6";
    inet.files[SitePage("/browser_update.exe")] = "the package";
  }
  void ExpectQuestion(MsgBoxResult answer, std::function<void()> meanwhile = {}) {
    boxes.Expect(kQuestion, kMsgYesNo, {}, answer, std::move(meanwhile));
  }
  void ChooseUpdate() { Frame().MenusOf("Menu").Choose("mnuUpdate"); }
  /// Does something as soon as the package is asked for.
  void WhileThePackageComes(std::function<void()> event) {
    journal.watch = [this, event = std::move(event)](const std::string& line) {
      if (line == kPackage) {
        inet.meanwhile = event;
      }
    };
  }
  void ExpectClosedQuietly() {
    EXPECT_TRUE(forms.Loaded().empty());
    EXPECT_TRUE(files.files.empty());
    EXPECT_FALSE(loop.Ended());
  }
};

TEST_F(UpdateStory, ThePresentVersionIsToldInTheTitleUntilAPageIsJudged) {
  StartAsUsual();
  EXPECT_EQ(Frame().caption, kTold);
  EXPECT_TRUE(Frame().visible);
  PassStartUp();
  Type("http://www.porn.org");
  EXPECT_NE(Frame().caption, kTold);
  // The menu tells it again, whatever the title says.
  ChooseUpdate();
  EXPECT_EQ(Frame().caption, kTold);
}

TEST_F(UpdateStory, NoLeavesEverythingAsItIsAndTheNextStartAsksAgain) {
  AnotherVersionIsOut();
  ExpectQuestion(MsgBoxResult::No, [this] { EXPECT_FALSE(Frame().visible) << "the frame waits"; });
  StartAsUsual();
  EXPECT_EQ(Frame().caption, "Kivandra 1.45");
  EXPECT_TRUE(Frame().visible);
  EXPECT_TRUE(forms.IsLoaded("frmBrowser#1"));
  EXPECT_TRUE(files.files.empty());
  EXPECT_TRUE(Frame().Close(UnloadMode::ControlMenu));

  Program nextDay{{forms, loop, boxes, registry, instance, system, files, sound, inet1, clipboard, session,
                   keyboard, shell, inet, defaultApplication}};
  ExpectQuestion(MsgBoxResult::No);
  nextDay.Run();
  EXPECT_TRUE(Frame().visible);
}

TEST_F(UpdateStory, YesFetchesTheUpdateHandsOverToItsProgramAndEndsAtOnce) {
  AnotherVersionIsOut();
  ExpectQuestion(MsgBoxResult::Yes);
  WhileThePackageComes([this] {
    EXPECT_FALSE(forms.IsLoaded("frmBrowser#1"));
    EXPECT_TRUE(forms.Of("Updateform").visible);
  });
  boxes.Expect(
      "Kivandra needs to be restarted.  Click OK.  When the update is complete, simply restart Kivandra!  "
      "Happy New Years 2002!",
      kMsgOkOnly, {}, MsgBoxResult::Ok, [this] {
        EXPECT_FALSE(forms.IsLoaded("Updateform"));
        EXPECT_TRUE(journal.Has("sndPlaySoundA \"/program/complete.wav\", 3"));
        journal.Clear();
      });
  journal.watch = [this, before = journal.watch](const std::string& line) {
    before(line);
    if (line == "EndProgram") {
      // Nothing closes, nothing sounds: the updater is all that there still is.
      EXPECT_EQ(journal.lines, std::vector<std::string>{"Shell \"/program/update.exe\", 2"});
    }
  };
  StartAsUsual();
  EXPECT_TRUE(loop.Ended());
  EXPECT_EQ(files.files["/program/browser_update.exe"], "the package");
}

TEST_F(UpdateStory, AStartAfterAnUpdateTakesThePackageAway) {
  files.files["/program/browser_update.exe"] = "the package";
  StartAsUsual();
  EXPECT_TRUE(files.files.empty());
}

TEST_F(UpdateStory, ABrokenDownloadLeavesTheFrameUpTheNoticeOpenAndTheChildGone) {
  inet.version = "1.4.6";
  ExpectQuestion(MsgBoxResult::Yes);
  boxes.Expect(kFailed);
  StartAsUsual();
  EXPECT_TRUE(Frame().visible);
  EXPECT_TRUE(forms.Of("Updateform").visible);
  EXPECT_FALSE(forms.IsLoaded("frmBrowser#1"));
  EXPECT_FALSE(loop.Ended());

  // The day goes on with a new page window, and the notice goes with the frame at the latest.
  Frame().MenusOf("Menu").Choose("mnuFileNew");
  PassStartUp();
  inet1.pages["http://www.otters.org"] = "<p>Otters hold hands.</p>";
  Type("http://www.otters.org", 2);
  loop.Advance(100);
  EXPECT_TRUE(journal.Has("allow http://www.otters.org"));
  EXPECT_TRUE(Frame().Close(UnloadMode::ControlMenu));
  ExpectClosedQuietly();
}

TEST_F(UpdateStory, WhileTheUpdateComesInEveryPageIsStillJudged) {
  StartAsUsual();
  PassStartUp();
  AnotherVersionIsOut();
  inet.files.clear();
  ExpectQuestion(MsgBoxResult::Yes);
  WhileThePackageComes([this] {
    Frame().MenusOf("Menu").Choose("mnuFileNew");
    Type("http://www.porn.org", 2);
    // Nor does a second check begin beside the first.
    ChooseUpdate();
  });
  boxes.Expect(kFailed);
  ChooseUpdate();
  EXPECT_TRUE(journal.Has("refuse http://www.porn.org"));
  EXPECT_EQ(journal.Count(kPackage), 1);
}

TEST_F(UpdateStory, AFrameThatIsClosedWhileTheSiteIsSilentGoesWithoutAWord) {
  StartAsUsual();
  inet.meanwhile = [this] { Frame().Close(UnloadMode::ControlMenu); };
  ChooseUpdate();
  ExpectClosedQuietly();
}

TEST_F(UpdateStory, AFrameThatIsClosedWhileThePackageHangsTakesTheNoticeAlong) {
  StartAsUsual();
  AnotherVersionIsOut();
  ExpectQuestion(MsgBoxResult::Yes);
  WhileThePackageComes([this] { Frame().Close(UnloadMode::ControlMenu); });
  ChooseUpdate();
  EXPECT_FALSE(forms.IsLoaded("Updateform"));
  ExpectClosedQuietly();
}

TEST_F(UpdateStory, AFrameThatIsClosedBehindTheQuestionIsNotUpdated) {
  StartAsUsual();
  AnotherVersionIsOut();
  ExpectQuestion(MsgBoxResult::Yes, [this] { Frame().Close(UnloadMode::ControlMenu); });
  ChooseUpdate();
  EXPECT_FALSE(journal.Has(kPackage));
  ExpectClosedQuietly();
}

}  // namespace
}  // namespace kivandra
