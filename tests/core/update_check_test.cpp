// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/update_check.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>

#include "core/site_page.h"
#include "fakes/fake_inet.h"
#include "fakes/fake_world.h"
#include "version.h"

namespace kivandra {
namespace {

using Lines = std::vector<std::string>;

const std::string kVersionFile = "OpenURL \"" + SitePage("/BrowserVer.dat") + "\"";
const std::string kPackage = "OpenURL \"" + SitePage("/browser_update.exe") + "\"";
const std::string kTold = "Caption = \"You have the most recent version of the Kivandra.\"";
const std::string kQuestion = "A more recent version of Kivandra exists. Would you like to update it now?";
const std::string kRestart =
    "Kivandra needs to be restarted.  Click OK.  When the update is complete, simply restart Kivandra!  "
    "Happy "
    "New Years 2002!";
const std::string kFailed = "Error when loading update file\r";

struct FakeUpdateWindows : UpdateWindows {
  explicit FakeUpdateWindows(fakes::Journal& testJournal) : journal(testJournal) {}
  [[nodiscard]] bool FrameStands() const override { return stands; }
  void SetFrameCaption(const std::string& caption) override {
    journal.Call("Caption = " + fakes::Quoted(caption));
  }
  void UnloadActiveChild() override {
    journal.Call("UnloadActiveChild");
    if (!hasChild) {
      throw PlatformError(kObjectNotSet, "Object variable not set");
    }
    hasChild = false;
  }
  fakes::Journal& journal;
  bool stands = true;
  bool hasChild = true;
};

struct UpdateWorld : fakes::FakeWorld {
  FakeUpdateWindows windows{journal};
  UpdateCheck update{{forms, loop, boxes, files, shell, sound, registry, system, windows}};

  void PutUpdate(const std::string& version = "1.4.6") {
    inet.version = version;
    inet.files[SitePage("/browser_update.exe")] = std::string("MZ\0\xff", 4);
  }
  void ExpectQuestion(MsgBoxResult answer, std::function<void()> meanwhile = {}) {
    boxes.Expect(kQuestion, kMsgYesNo, {}, answer, std::move(meanwhile));
  }
  /// An update is wanted whose package is not there.
  void ADownloadFails() {
    inet.version = "2.0.0";
    ExpectQuestion(MsgBoxResult::Yes);
    boxes.Expect(kFailed + "404 Not Found");
    Check();
  }
  void Check(bool quiet = false) { update.CheckForUpdate(inet, quiet); }
};

struct UpdateCheckTest : testing::Test, UpdateWorld {};

TEST_F(UpdateCheckTest, AnEqualVersionIsToldInTheTitle) {
  Check();
  EXPECT_EQ(journal.lines, (Lines{kVersionFile, kTold}));
}

TEST_F(UpdateCheckTest, AServerThatDripsItsVersionHoldsTheStartUpForSecondsOnly) {
  PutUpdate();
  ExpectQuestion(MsgBoxResult::Yes);
  boxes.Expect(kRestart);
  Check();
  EXPECT_LE(inet.asked.at(SitePage("/BrowserVer.dat")).time, std::chrono::seconds(15));
  EXPECT_GE(inet.asked.at(SitePage("/browser_update.exe")).time, std::chrono::minutes(10));
}

TEST_F(UpdateCheckTest, AQuietCheckDoesNotTellOfAnEqualVersion) {
  Check(true);
  EXPECT_EQ(journal.lines, Lines{kVersionFile});
}

TEST_F(UpdateCheckTest, TheShippedSiteNamesThisVersion) {
  std::ifstream file(std::string(KV_SOURCE_DIR) + "/site/BrowserVer.dat", std::ios::binary);
  const std::string shipped(std::istreambuf_iterator<char>(file), {});
  EXPECT_EQ(shipped, kOwnVersion);
}

TEST_F(UpdateCheckTest, AnyOtherTextIsOfferedWhateverItIs) {
  // A trailing line end, an older version, nothing, a page, a byte order mark, a NUL behind it.
  for (const std::string& version :
       {std::string("1.4.5\n"), std::string("1.4.5\r\n"), std::string("1.4.4"), std::string(),
        std::string("<html>404</html>"), std::string("\xef\xbb\xbf") + "1.4.5", std::string("1.4.5\0", 6),
        std::string("1.04.0005"), std::string(" 1.4.5"), std::string(1 << 20, '\xff')}) {
    UpdateWorld world;
    world.inet.version = version;
    world.ExpectQuestion(MsgBoxResult::No);
    world.Check();
    EXPECT_EQ(world.journal.lines, (Lines{kVersionFile, "MsgBox " + fakes::Quoted(kQuestion)}));
  }
}

TEST_F(UpdateCheckTest, AQuietCheckAsksAllTheSame) {
  PutUpdate();
  ExpectQuestion(MsgBoxResult::No);
  Check(true);
}

TEST_F(UpdateCheckTest, NoChangesNothingAndTheQuestionComesAgain) {
  PutUpdate("1.4.5\n");
  for (int start = 0; start < 3; ++start) {
    ExpectQuestion(MsgBoxResult::No);
    Check();
  }
  EXPECT_EQ(journal.Count("MsgBox " + fakes::Quoted(kQuestion)), 3);
  EXPECT_EQ(journal.calls, 6);
  EXPECT_TRUE(windows.hasChild);
  EXPECT_TRUE(files.files.empty());
  EXPECT_FALSE(loop.Ended());
}

TEST_F(UpdateCheckTest, YesGoesThroughItsStepsInTheirOrder) {
  PutUpdate();
  ExpectQuestion(MsgBoxResult::Yes);
  boxes.Expect(kRestart);
  Check();
  const Lines expected = {kVersionFile,
                          "MsgBox " + fakes::Quoted(kQuestion),
                          "UnloadActiveChild",
                          "Load Updateform",
                          "Updateform.WebBrowser1.Navigate \"" + SitePage("/update/update1.html") + "\"",
                          "Updateform.Progress.Enabled = True",
                          "Updateform.Visible = True",
                          kPackage,
                          "WriteFile \"/program/browser_update.exe\"",
                          "Updateform.Unload",
                          "sndPlaySoundA \"/program/complete.wav\", 3",
                          "MsgBox " + fakes::Quoted(kRestart),
                          "Shell \"/program/update.exe\", 2",
                          "EndProgram"};
  EXPECT_EQ(journal.lines, expected);
  EXPECT_EQ(files.files["/program/browser_update.exe"], std::string("MZ\0\xff", 4));
}

TEST_F(UpdateCheckTest, WithoutSoundTheUpdateIsSilent) {
  for (const bool device : {true, false}) {
    UpdateWorld world;
    world.sound.devices = device ? 1 : 0;
    SaveItem(world.registry, "Sound", device ? "1" : "0");
    world.PutUpdate();
    world.ExpectQuestion(MsgBoxResult::Yes);
    world.boxes.Expect(kRestart);
    world.Check();
    EXPECT_TRUE(world.journal.With("sndPlaySoundA").empty());
    EXPECT_TRUE(world.loop.Ended());
  }
}

TEST_F(UpdateCheckTest, AMachineWithoutANetworkIsToldAtEachStart) {
  journal.failOn = kVersionFile;
  for (int start = 0; start < 2; ++start) {
    boxes.Expect(kFailed + "injected fault");
    Check();
  }
  EXPECT_EQ(journal.Count("FAILED " + kVersionFile), 2);
}

TEST_F(UpdateCheckTest, ADownloadErrorLeavesTheNoticeOpenAndTheChildGone) {
  ADownloadFails();
  EXPECT_TRUE(forms.IsLoaded("Updateform"));
  EXPECT_TRUE(forms.Of("Updateform").visible);
  EXPECT_EQ(journal.With("Updateform.Progress.Enabled").back(), "Updateform.Progress.Enabled = False");
  EXPECT_FALSE(windows.hasChild);
  EXPECT_TRUE(windows.stands);
  EXPECT_FALSE(loop.Ended());
  EXPECT_TRUE(files.files.empty());
}

TEST_F(UpdateCheckTest, ANoticeThatIsStillOpenIsShownAgain) {
  ADownloadFails();
  windows.hasChild = true;
  ADownloadFails();
  EXPECT_EQ(journal.Count("Load Updateform"), 1);
  EXPECT_EQ(journal.Count("Updateform.Visible = True"), 2);
  // One that was closed by hand comes anew.
  forms.Of("Updateform").Close(UnloadMode::ControlMenu);
  windows.hasChild = true;
  ADownloadFails();
  EXPECT_EQ(journal.Count("Load Updateform"), 2);
}

TEST_F(UpdateCheckTest, ANoticeThatIsClosedDuringTheDownloadStopsNothing) {
  PutUpdate();
  journal.watch = [this](const std::string& line) {
    if (line == kPackage) {
      inet.meanwhile = [this] { forms.Of("Updateform").Close(UnloadMode::ControlMenu); };
    }
  };
  ExpectQuestion(MsgBoxResult::Yes);
  boxes.Expect(kRestart);
  Check();
  EXPECT_TRUE(loop.Ended());
}

TEST_F(UpdateCheckTest, WithoutAChildTheUpdateEndsWithABox) {
  windows.hasChild = false;
  PutUpdate();
  ExpectQuestion(MsgBoxResult::Yes);
  boxes.Expect(kFailed + "Object variable not set");
  Check();
  EXPECT_EQ(journal.Count(kPackage), 0);
  EXPECT_FALSE(loop.Ended());
}

TEST_F(UpdateCheckTest, AnUpdaterThatIsMissingIsToldAndTheProgramGoesOn) {
  PutUpdate();
  journal.failOn = "Shell \"/program/update.exe\", 2";
  ExpectQuestion(MsgBoxResult::Yes);
  boxes.Expect(kRestart);
  boxes.Expect(kFailed + "injected fault");
  Check();
  EXPECT_FALSE(loop.Ended());
}

TEST_F(UpdateCheckTest, OneThatIsAskedForMeanwhileDoesNothing) {
  PutUpdate();
  inet.meanwhile = [this] { Check(); };
  ExpectQuestion(MsgBoxResult::No, [this] { Check(); });
  Check();
  EXPECT_EQ(journal.Count(kVersionFile), 1);
  // A check that has ended, well or not, is out of the way of the next one.
  journal.failOn = kVersionFile;
  boxes.Expect(kFailed + "injected fault");
  Check();
  journal.failOn.clear();
  inet.version = std::string(kOwnVersion);
  Check();
  EXPECT_EQ(journal.Count(kTold), 1);
}

TEST_F(UpdateCheckTest, AFrameThatIsClosedMeanwhileHearsNothingMore) {
  // While the version file is fetched.
  inet.meanwhile = [this] { windows.stands = false; };
  Check();
  EXPECT_EQ(journal.lines, Lines{kVersionFile});
  // While the package is fetched.
  UpdateWorld world;
  world.PutUpdate();
  world.journal.watch = [&](const std::string& line) {
    if (line == kPackage) {
      world.windows.stands = false;
    }
  };
  world.ExpectQuestion(MsgBoxResult::Yes);
  world.Check();
  EXPECT_EQ(world.journal.lines.back(), kPackage);
  EXPECT_TRUE(world.files.files.empty());
}

TEST_F(UpdateCheckTest, AnyFailureIsToldInOneBoxAndLeavesTheProgramRunning) {
  UpdateWorld clean;
  clean.PutUpdate();
  clean.ExpectQuestion(MsgBoxResult::Yes);
  clean.boxes.Expect(kRestart);
  clean.Check();
  for (long call = 1; call <= clean.journal.calls; ++call) {
    UpdateWorld broken;
    broken.PutUpdate();
    struct Tolerant : MessageBoxes {
      MsgBoxResult MsgBox(const std::string& text, int, const std::string&) override {
        texts.push_back(text);
        return text == kQuestion ? MsgBoxResult::Yes : MsgBoxResult::Ok;
      }
      Lines texts;
    } telling;
    UpdateCheck check{{broken.forms, broken.loop, telling, broken.files, broken.shell, broken.sound,
                       broken.registry, broken.system, broken.windows}};
    broken.journal.failAt = call;
    check.CheckForUpdate(broken.inet, false);
    const bool failed = !broken.journal.With("FAILED ").empty();
    EXPECT_EQ(broken.loop.Ended(), !failed) << "call " << call;
    EXPECT_EQ(std::count(telling.texts.begin(), telling.texts.end(), kFailed + "injected fault"),
              failed ? 1 : 0)
        << "call " << call;
  }
}

}  // namespace
}  // namespace kivandra
